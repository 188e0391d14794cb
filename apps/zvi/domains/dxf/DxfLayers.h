#pragma once

#include "apps/zvi/domains/dxf/DxfDocument.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zvi::app {

/// The layers of a drawing, those of its table first, then those that only entities name.
class DxfLayers {
public:
    /// `chosen` are the layers to take, empty for all; it must outlive this object.
    DxfLayers(DxfDocument const &document, std::vector<std::string> const &chosen);

    /// The number of a layer; it is added when it is new.
    std::uint32_t IndexOf(std::string_view name);

    bool IsOff(std::uint32_t layer) const { return m_states[layer].off && !m_states[layer].chosen; }
    bool IsFrozen(std::uint32_t layer) const { return m_states[layer].frozen && !m_states[layer].chosen; }
    /// Whether the choice of layers, if there is one, leaves this one out.
    bool IsLeftOut(std::uint32_t layer) const { return !m_wanted.empty() && !m_states[layer].chosen; }

    /// Throws InputError when a chosen layer was never met, with the nearest name that was.
    void CheckChoice() const;

    /// The names as UTF-8, by number.
    std::vector<std::string> const &Names() const { return m_names; }

private:
    struct State {
        bool off = false;
        bool frozen = false;
        bool chosen = false;
    };

    std::string_view m_codePage;
    std::vector<std::string> const &m_wanted;
    std::unordered_map<std::string, std::uint32_t> m_numbers; ///< by name in small letters: capitals do not count
    std::vector<State> m_states;
    std::vector<std::string> m_names;
};

} // namespace zvi::app
