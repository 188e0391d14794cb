#include "apps/zvi/domains/output/LayerList.h"

#include "apps/zvi/domains/output/TextTable.h"

namespace zvi::app {

std::vector<std::size_t> CurvesOnLayers(DrawingInput const &input) {
    std::vector<std::size_t> counts(input.layers.size(), 0);
    for (CurveOrigin const &origin : input.origins)
        ++counts[origin.layer];
    return counts;
}

char const *StateName(DrawingLayer const &layer) {
    return layer.isFrozen ? "frozen" : layer.isOff ? "off" : "on";
}

std::string LayerTable(DrawingInput const &input, bool color) {
    std::vector<std::size_t> const curves = CurvesOnLayers(input);
    std::vector<std::vector<std::string>> rows{{"curves", "others", "state", "layer"}};
    for (std::size_t i = 0; i < input.layers.size(); ++i) {
        DrawingLayer const &layer = input.layers[i];
        rows.push_back({std::to_string(curves[i]), std::to_string(layer.others), StateName(layer), layer.name});
    }
    return TextTable(rows, true, color) + std::to_string(input.layers.size()) + " layers, " +
           std::to_string(input.curves.size()) + " curves\n";
}

} // namespace zvi::app
