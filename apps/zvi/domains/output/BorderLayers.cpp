#include "apps/zvi/domains/output/BorderLayers.h"

#include "apps/zvi/domains/output/Loops.h"

#include <algorithm>

namespace zvi::app {

namespace {

struct Part {
    std::uint32_t layer = 0;
    double length = 0.0;
};

void AddParts(std::vector<Part> &parts, DrawingInput const &input, std::vector<lib::DrawingPiece> const &loop) {
    for (lib::DrawingPiece const &piece : loop) {
        std::uint32_t const layer = input.OriginOf(piece.curve).layer;
        auto const known =
            std::find_if(parts.begin(), parts.end(), [layer](Part const &p) { return p.layer == layer; });
        if (known == parts.end())
            parts.push_back({layer, LengthOf(piece)});
        else
            known->length += LengthOf(piece);
    }
}

} // namespace

std::vector<std::uint32_t> BorderLayers(DrawingInput const &input, lib::DrawingDomain const &domain) {
    std::vector<Part> parts;
    AddParts(parts, input, domain.outer);
    for (auto const &hole : domain.holes)
        AddParts(parts, input, hole);
    std::stable_sort(parts.begin(), parts.end(), [](Part const &a, Part const &b) { return a.length > b.length; });
    std::vector<std::uint32_t> layers;
    layers.reserve(parts.size());
    for (Part const &part : parts)
        layers.push_back(part.layer);
    return layers;
}

} // namespace zvi::app
