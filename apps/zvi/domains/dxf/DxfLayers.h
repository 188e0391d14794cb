#pragma once

#include "apps/zvi/domains/dxf/DxfDocument.h"
#include "apps/zvi/domains/model/DrawingInput.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zvi::app {

/// The layers of a drawing, those of its table first, then those that only entities name.
class DxfLayers {
public:
    /// `chosen` are the names and patterns of the layers to take, empty for all.
    DxfLayers(DxfDocument const &document, std::vector<std::string> const &chosen);

    /// The number of a layer; it is added when it is new.
    std::uint32_t IndexOf(std::string_view name);

    bool IsOff(std::uint32_t layer) const { return m_layers[layer].isOff && !m_isChosen[layer]; }
    bool IsFrozen(std::uint32_t layer) const { return m_layers[layer].isFrozen && !m_isChosen[layer]; }
    /// Whether the choice of layers, if there is one, leaves this one out.
    bool IsLeftOut(std::uint32_t layer) const { return !m_wanted.empty() && !m_isChosen[layer]; }

    void CountOther(std::uint32_t layer) { ++m_layers[layer].others; }

    /// Throws InputError when no layer that was met fits one of the choices, with the nearest name that was.
    void CheckChoice() const;

    /// The layers by number.
    std::vector<DrawingLayer> const &Layers() const { return m_layers; }

private:
    std::uint32_t Add(std::string const &name);

    std::string_view m_codePage;
    std::vector<std::string> const &m_wanted;
    std::vector<std::string> m_patterns;                      ///< `m_wanted`, folded
    std::unordered_map<std::string, std::uint32_t> m_numbers; ///< by name as it is written
    std::unordered_map<std::string, std::uint32_t> m_folded;  ///< by folded name
    std::vector<DrawingLayer> m_layers;
    std::vector<bool> m_isChosen; ///< beside the layers
};

} // namespace zvi::app
