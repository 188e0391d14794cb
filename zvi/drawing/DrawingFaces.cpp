#include "zvi/drawing/DrawingFacesDetail.h"

#include "zvi/drawing/DrawingBlockFacesDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// Finds the faces of one block after another.
class FaceFinder {
public:
    FaceFinder(Network const &someNetwork, Blocks const &someBlocks, std::vector<double> const &someDirections)
        : network(someNetwork), blocks(someBlocks), directions(someDirections), corners(blocks.edges.size()),
          scratch(2 * network.edges.size()) {
        result.faceOfHalf.assign(2 * network.edges.size(), -1);
    }

    Faces Find(Spokes const &spokes) {
        SplitCorners(spokes);
        for (std::size_t b = 0; b < blocks.edges.size(); ++b)
            FindInBlock(static_cast<int>(b));
        return std::move(result);
    }

private:
    /// Parts the spokes of each place by block, each part in its order.
    void SplitCorners(Spokes const &spokes) {
        sorted = spokes.halfEdges;
        auto const blockOf = [&](int h) { return blocks.blockOfEdge[At(EdgeOfHalf(h))]; };
        for (std::size_t p = 0; p < network.places.size(); ++p) {
            auto const begin = sorted.begin() + spokes.begins[p], end = sorted.begin() + spokes.begins[p + 1];
            auto const less = [&](int a, int b) { return blockOf(a) < blockOf(b); };
            if (!std::is_sorted(begin, end, less))
                std::stable_sort(begin, end, less);
            for (auto i = begin; i != end;) {
                auto j = i;
                while (j != end && blockOf(*j) == blockOf(*i))
                    ++j;
                corners[At(blockOf(*i))].push_back(
                    {static_cast<int>(p), static_cast<int>(i - sorted.begin()), static_cast<int>(j - i)});
                i = j;
            }
        }
    }

    void FindInBlock(int b) {
        BlockView const view{&network, &blocks.edges[At(b)], &corners[At(b)], &sorted, &directions};
        bool const isLoop =
            std::all_of(view.corners->begin(), view.corners->end(), [](Corner const &c) { return c.count == 2; });
        std::size_t const first = result.faces.size();
        if (isLoop) {
            AddLoop(view, b);
            return;
        }
        for (auto &loop : FacesByDomainMaker(view, scratch))
            AddFace(b, std::move(loop));
        if (!AddOutside(view, b, first))
            WalkAll(view, b, first);
    }

    void AddFace(int b, std::vector<int> loop, bool isOutside = false) {
        Face face;
        face.block = b;
        face.isOutside = isOutside;
        face.area = LoopArea(network, loop);
        for (int const h : loop)
            result.faceOfHalf[At(h)] = static_cast<int>(result.faces.size());
        face.halfEdges = std::move(loop);
        result.faces.push_back(std::move(face));
    }

    /// A block that is one loop has two sides, and the one that runs counter-clockwise is the inside.
    void AddLoop(BlockView const &view, int b) {
        std::vector<int> loop = LoopFrom(view, 2 * view.edges->front());
        std::vector<int> back;
        for (auto h = loop.rbegin(); h != loop.rend(); ++h)
            back.push_back(TwinOf(*h));
        bool const isInside = LoopArea(network, loop) > 0.0;
        AddFace(b, std::move(isInside ? loop : back));
        AddFace(b, std::move(isInside ? back : loop), true);
    }

    /// Sets `scratch` of each half-edge to the next clockwise one at its corner.
    void LinkClockwise(BlockView const &view) {
        for (Corner const &c : *view.corners)
            for (int i = 0; i < c.count; ++i)
                scratch[At(sorted[At(c.begin + i)])] = sorted[At(c.begin + (i + c.count - 1) % c.count)];
    }

    std::vector<int> LoopFrom(BlockView const &view, int start) {
        LinkClockwise(view);
        return Walk(start);
    }

    /// The loop with the face on its left: at each place the next spoke clockwise from where the loop came.
    std::vector<int> Walk(int start) const {
        std::vector<int> loop;
        int h = start;
        do {
            loop.push_back(h);
            h = scratch[At(TwinOf(h))];
        } while (h != start);
        return loop;
    }

    /// Adds the outside and checks that each side of each edge has its face, once. False when that does not hold,
    /// because curves cross uncut.
    bool AddOutside(BlockView const &view, int b, std::size_t first) {
        std::size_t covered = 0;
        for (std::size_t f = first; f < result.faces.size(); ++f) {
            covered += result.faces[f].halfEdges.size();
            for (int const h : result.faces[f].halfEdges)
                if (result.faceOfHalf[At(h)] != static_cast<int>(f))
                    return false;
        }
        int open = -1;
        for (int const e : *view.edges)
            for (int const h : {2 * e, 2 * e + 1})
                if (result.faceOfHalf[At(h)] < 0)
                    open = h;
        if (open < 0)
            return false;
        std::vector<int> outside = LoopFrom(view, open);
        for (int const h : outside)
            if (result.faceOfHalf[At(h)] >= 0)
                return false;
        covered += outside.size();
        AddFace(b, std::move(outside), true);
        return covered == 2 * view.edges->size() &&
               result.faces.size() - first + view.corners->size() == view.edges->size() + 2;
    }

    /// The faces of a block whose curves cross, as far as a walk along their sides tells: those that run
    /// counter-clockwise are domains.
    void WalkAll(BlockView const &view, int b, std::size_t first) {
        result.faces.resize(first);
        for (int const e : *view.edges)
            result.faceOfHalf[At(2 * e)] = result.faceOfHalf[At(2 * e + 1)] = -1;
        LinkClockwise(view);
        for (int const e : *view.edges)
            for (int const h : {2 * e, 2 * e + 1})
                if (result.faceOfHalf[At(h)] < 0) {
                    AddFace(b, Walk(h));
                    result.faces.back().isOutside = !(result.faces.back().area > 0.0);
                }
    }

    Network const &network;
    Blocks const &blocks;
    std::vector<double> const &directions;
    std::vector<std::vector<Corner>> corners; ///< of each block
    std::vector<int> sorted;                  ///< the spokes of each corner, counter-clockwise
    std::vector<int> scratch;
    Faces result;
};

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

Faces FindFaces(Network const &network, Blocks const &blocks, Spokes const &spokes,
                std::vector<double> const &directions) {
    return FaceFinder(network, blocks, directions).Find(spokes);
}

} // namespace zvi::lib::drawing
