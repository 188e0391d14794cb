#include "zvi/drawing/DrawingFacesDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// For each half-edge the next clockwise one of its block at its origin.
std::vector<int> ClockwiseNeighbours(Network const &network, Blocks const &blocks, Spokes const &spokes) {
    std::vector<int> clockwise(2 * network.edges.size(), -1);
    std::vector<int> sorted;
    for (std::size_t p = 0; p < network.places.size(); ++p) {
        sorted.assign(spokes.Begin(static_cast<int>(p)), spokes.End(static_cast<int>(p)));
        auto const block = [&](int h) { return blocks.blockOfEdge[At(EdgeOfHalf(h))]; };
        std::stable_sort(sorted.begin(), sorted.end(), [&](int a, int b) { return block(a) < block(b); });
        for (std::size_t i = 0, j = 0; i < sorted.size(); i = j) {
            for (j = i + 1; j < sorted.size() && block(sorted[j]) == block(sorted[i]);)
                ++j;
            for (std::size_t k = i; k < j; ++k)
                clockwise[At(sorted[k])] = sorted[k > i ? k - 1 : j - 1];
        }
    }
    return clockwise;
}

} // namespace

double LoopArea(Network const &network, std::vector<int> const &halfEdges) {
    DrawingPoint const origin = network.places[At(OriginOf(network, halfEdges[0]))];
    double twice = 0.0, segments = 0.0;
    for (int const h : halfEdges) {
        Edge const &e = network.edges[At(EdgeOfHalf(h))];
        double const sign = (h & 1) == 0 ? 1.0 : -1.0;
        twice += sign * Cross(e.start - origin, e.end - origin);
        segments += sign * SegmentAreaOf(e);
    }
    return 0.5 * twice + segments;
}

double LoopLength(Network const &network, std::vector<int> const &halfEdges) {
    double length = 0.0;
    for (int const h : halfEdges)
        length += LengthOf(network.edges[At(EdgeOfHalf(h))]);
    return length;
}

Faces FindFaces(Network const &network, Blocks const &blocks, Spokes const &spokes, std::vector<double> const &) {
    std::vector<int> const clockwise = ClockwiseNeighbours(network, blocks, spokes);
    Faces result;
    result.faceOfHalf.assign(2 * network.edges.size(), -1);
    for (std::size_t b = 0; b < blocks.edges.size(); ++b) {
        std::size_t outside = result.faces.size();
        for (int const e : blocks.edges[b])
            for (int const start : {2 * e, 2 * e + 1}) {
                if (result.faceOfHalf[At(start)] >= 0)
                    continue;
                Face face;
                face.block = static_cast<int>(b);
                int h = start;
                do {
                    result.faceOfHalf[At(h)] = static_cast<int>(result.faces.size());
                    face.halfEdges.push_back(h);
                    h = clockwise[At(TwinOf(h))];
                } while (h != start);
                face.area = LoopArea(network, face.halfEdges);
                result.faces.push_back(std::move(face));
                if (result.faces.back().area < result.faces[outside].area)
                    outside = result.faces.size() - 1;
            }
        result.faces[outside].isOutside = true;
    }
    return result;
}

} // namespace zvi::lib::drawing
