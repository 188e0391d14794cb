#include "apps/zvi/domains/dxf/DxfLayers.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/TextDecoding.h"
#include "apps/zvi/domains/dxf/LayerPattern.h"

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
    for (std::string const &pattern : m_wanted)
        m_patterns.push_back(FoldedLayerName(pattern));
    for (DxfLayer const &given : document.layers) {
        DrawingLayer &layer = m_layers[IndexOf(given.name)];
        layer.isOff = given.off;
        layer.isFrozen = given.frozen;
        layer.color = given.color;
    }
    IndexOf("0");
}

std::uint32_t DxfLayers::IndexOf(std::string_view name) {
    std::string written(name);
    auto const known = m_numbers.find(written);
    if (known != m_numbers.end())
        return known->second;
    std::uint32_t const number = Add(DecodeDxfText(name, m_codePage));
    m_numbers.emplace(std::move(written), number);
    return number;
}

/// The number of the layer of this name, which is made when it is new.
std::uint32_t DxfLayers::Add(std::string const &name) {
    std::string const folded = FoldedLayerName(name);
    auto const [entry, isNew] = m_folded.try_emplace(folded, static_cast<std::uint32_t>(m_layers.size()));
    if (isNew) {
        m_layers.push_back({name});
        m_isChosen.push_back(std::any_of(m_patterns.begin(), m_patterns.end(),
                                         [&folded](std::string const &p) { return FitsPattern(folded, p); }));
    }
    return entry->second;
}

void DxfLayers::CheckChoice() const {
    std::vector<std::string> names;
    for (DrawingLayer const &layer : m_layers)
        names.push_back(layer.name);
    for (std::size_t i = 0; i < m_patterns.size(); ++i) {
        auto const fits = [this, i](auto const &layer) { return FitsPattern(layer.first, m_patterns[i]); };
        if (std::any_of(m_folded.begin(), m_folded.end(), fits))
            continue;
        std::string const nearest = NearestName(m_wanted[i], names);
        throw InputError(
            0, Joined("there is no layer \"", m_wanted[i], "\"; ",
                      nearest.empty() ? "there are " + ShownNames(names) : "did you mean \"" + nearest + "\"?"));
    }
}

} // namespace zvi::app
