#include "apps/zvi/domains/dxf/DxfLayers.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/TextDecoding.h"

#include <algorithm>

namespace zvi::app {

namespace {

/// The names in double quotes; of many the first few.
std::string ShownNames(std::vector<std::string> const &names) {
    constexpr std::size_t kMostShown = 12;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), kMostShown); ++i)
        text += Joined(i == 0 ? "\"" : ", \"", names[i], "\"");
    return names.size() > kMostShown ? Joined(text, " and ", std::to_string(names.size() - kMostShown), " more") : text;
}

} // namespace

DxfLayers::DxfLayers(DxfDocument const &document, std::vector<std::string> const &chosen)
    : m_codePage(document.codePage), m_wanted(chosen) {
    for (DxfLayer const &layer : document.layers) {
        State &state = m_states[IndexOf(layer.name)];
        state.off = layer.off;
        state.frozen = layer.frozen;
    }
    IndexOf("0");
}

std::uint32_t DxfLayers::IndexOf(std::string_view name) {
    auto const [entry, isNew] = m_numbers.try_emplace(Lowered(name), static_cast<std::uint32_t>(m_names.size()));
    if (isNew) {
        m_names.push_back(DecodeDxfText(name, m_codePage));
        bool const chosen = std::any_of(m_wanted.begin(), m_wanted.end(),
                                        [this](std::string const &w) { return SameNoCase(w, m_names.back()); });
        m_states.push_back({false, false, chosen});
    }
    return entry->second;
}

void DxfLayers::CheckChoice() const {
    for (std::string const &name : m_wanted) {
        bool const met =
            std::any_of(m_names.begin(), m_names.end(), [&name](std::string const &n) { return SameNoCase(n, name); });
        if (met)
            continue;
        std::string const nearest = NearestName(name, m_names);
        throw InputError(
            0, "there is no layer \"" + name + "\"; " +
                   (nearest.empty() ? "there are " + ShownNames(m_names) : "did you mean \"" + nearest + "\"?"));
    }
}

} // namespace zvi::app
