#include "zvi/drawing/DrawingNestingDetail.h"

#include "zvi/drawing/BoxIndexDetail.h"
#include "zvi/drawing/DrawingFrameDetail.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace zvi::lib::drawing {

namespace {

/// Sets that grow together.
class DisjointSets {
public:
    explicit DisjointSets(std::size_t count) : parent(count) { std::iota(parent.begin(), parent.end(), 0); }

    int Find(int i) {
        while (parent[At(i)] != i)
            i = parent[At(i)] = parent[At(parent[At(i)])];
        return i;
    }
    /// The set of each.
    std::vector<int> Sets() {
        std::vector<int> sets(parent.size());
        for (std::size_t i = 0; i < sets.size(); ++i)
            sets[i] = Find(static_cast<int>(i));
        return sets;
    }
    void Unite(int a, int b) { parent[At(std::max(Find(a), Find(b)))] = std::min(Find(a), Find(b)); }

private:
    std::vector<int> parent;
};

/// A part of an edge along which y only rises or only falls.
struct Run {
    int edge = 0;
    double lowY = 0.0, highY = 0.0;
    double side = 0.0;   ///< of an arc: -1 for its left half, 1 for its right half
    bool upward = false; ///< the edge runs upward here
};

/// The parts of an edge that rise or fall, at most three.
int RunsOf(Edge const &e, int index, std::array<Run, 3> &runs) {
    if (!e.isArc) {
        runs[0] = {index, std::min(e.start.y, e.end.y), std::max(e.start.y, e.end.y), 0.0, e.start.y < e.end.y};
        return 1;
    }
    bool const counter = e.sweep > 0.0;
    double const top = TurnTo(e, {e.center.x, e.center.y + e.radius});
    double const bottom = TurnTo(e, {e.center.x, e.center.y - e.radius});
    double const turn = std::fabs(e.sweep);
    std::array<std::pair<double, double>, 4> stops; // turn, y
    int stopCount = 0;
    auto const addStop = [&](double at, double y) { stops[At(stopCount++)] = {at, y}; };
    addStop(0.0, e.start.y);
    bool const topFirst = top < bottom;
    for (bool const isTop : {topFirst, !topFirst})
        if (double const at = isTop ? top : bottom; at > 0.0 && at < turn)
            addStop(at, isTop ? e.center.y + e.radius : e.center.y - e.radius);
    addStop(turn, e.end.y);
    int count = 0;
    for (int i = 0; i + 1 < stopCount; ++i) {
        auto const &a = stops[At(i)], &b = stops[At(i + 1)];
        // The right half of a counter-clockwise arc rises.
        double const middle = 0.5 * (a.first + b.first);
        double const x = PointAt(e, middle / turn).x - e.center.x;
        double const side = x < 0.0 ? -1.0 : 1.0;
        runs[At(count++)] = {index, std::min(a.second, b.second), std::max(a.second, b.second), side,
                             counter == (side > 0.0)};
    }
    return count;
}

/// Where the run passes the height `y`.
double XAt(Edge const &e, Run const &run, double y) {
    if (!e.isArc) {
        double const t = (y - e.start.y) / (e.end.y - e.start.y);
        return e.start.x + t * (e.end.x - e.start.x);
    }
    double const v = y - e.center.y;
    return e.center.x + run.side * std::sqrt(std::max(0.0, (e.radius - v) * (e.radius + v)));
}

/// Nests the connected parts of the drawing in one another.
class PartNesting {
public:
    PartNesting(Network const &someNetwork, Blocks const &someBlocks, Faces const &someFaces,
                std::vector<int> somePartOfBlock)
        : network(someNetwork), blocks(someBlocks), faces(someFaces), partOfBlock(std::move(somePartOfBlock)) {}

    /// For each part the face that its leftmost point sees to its left, -1 for none; `order` gets the parts from left
    /// to right.
    std::vector<int> SeenFaces(std::vector<int> &order) {
        TurnEdges();
        FindLeftmost();
        order.clear();
        for (std::size_t part = 0; part < leftmost.size(); ++part)
            if (hasLeftmost[part])
                order.push_back(static_cast<int>(part));
        std::sort(order.begin(), order.end(), [this](int a, int b) {
            return leftmost[At(a)].x != leftmost[At(b)].x ? leftmost[At(a)].x < leftmost[At(b)].x : a < b;
        });
        std::vector<int> seen(leftmost.size(), -1);
        BoxIndex index(boxes);
        for (int const part : order)
            seen[At(part)] = FaceLeftOf(index, part);
        return seen;
    }

private:
    void TurnEdges() {
        for (std::size_t e = 0; e < network.edges.size(); ++e) {
            if (blocks.blockOfEdge[e] < 0)
                continue;
            edges.push_back(static_cast<int>(e));
            turned.push_back(Turned(network.edges[e]));
            boxes.push_back(BoxOf(turned.back()));
        }
        double sum = 0.0;
        for (Box const &box : boxes)
            sum += box.maxX - box.minX;
        if (sum > 0.0)
            firstWidth = sum / static_cast<double>(boxes.size());
    }

    int PartOf(int i) const { return partOfBlock[At(blocks.blockOfEdge[At(edges[At(i)])])]; }

    void FindLeftmost() {
        leftmost.resize(partOfBlock.size());
        hasLeftmost.assign(partOfBlock.size(), false);
        farLeft = HUGE_VAL;
        for (std::size_t i = 0; i < turned.size(); ++i) {
            auto const part = At(PartOf(static_cast<int>(i)));
            farLeft = std::min(farLeft, boxes[i].minX);
            if (hasLeftmost[part] && boxes[i].minX >= leftmost[part].x)
                continue;
            hasLeftmost[part] = true;
            Edge const &e = turned[i];
            double const y = e.start.x == boxes[i].minX ? e.start.y : e.end.x == boxes[i].minX ? e.end.y : e.center.y;
            leftmost[part] = {boxes[i].minX, y};
        }
    }

    /// The face on the near side of the curve next to the left of the part's leftmost point.
    int FaceLeftOf(BoxIndex &index, int part) {
        DrawingPoint const p = leftmost[At(part)];
        double width = firstWidth;
        for (;;) {
            double const left = p.x - width;
            index.Find({left, p.y, p.x, p.y}, found);
            double bestX = -HUGE_VAL;
            int face = -1;
            for (int const i : found)
                if (PartOf(i) != part)
                    LookAt(i, p, bestX, face);
            if (bestX >= left || left <= farLeft)
                return face;
            width *= 4.0;
        }
    }

    void LookAt(int i, DrawingPoint p, double &bestX, int &face) const {
        std::array<Run, 3> runs;
        int const count = RunsOf(turned[At(i)], i, runs);
        for (int k = 0; k < count; ++k) {
            Run const &run = runs[At(k)];
            if (!(run.lowY <= p.y) || !(p.y < run.highY))
                continue;
            double const x = XAt(turned[At(i)], run, p.y);
            if (x > p.x || x <= bestX)
                continue;
            bestX = x;
            int const half = 2 * edges[At(i)];
            face = faces.faceOfHalf[At(run.upward ? half + 1 : half)];
        }
    }

    Network const &network;
    Blocks const &blocks;
    Faces const &faces;
    std::vector<int> partOfBlock;
    std::vector<int> edges; ///< those in blocks
    std::vector<Edge> turned;
    std::vector<Box> boxes;
    std::vector<DrawingPoint> leftmost;
    std::vector<bool> hasLeftmost;
    std::vector<int> found;
    double farLeft = 0.0;
    double firstWidth = 1.0; ///< how far to the left the first look goes
};

/// What hangs together by the places that blocks share: their sides that see one another there, and the blocks.
struct Groups {
    std::vector<int> regionOfFace;
    std::vector<int> partOfBlock;
};

Groups GroupAtPlaces(Network const &network, Blocks const &blocks, Spokes const &spokes, Faces const &faces) {
    DisjointSets regions(faces.faces.size());
    DisjointSets parts(blocks.edges.size());
    for (std::size_t p = 0; p < network.places.size(); ++p) {
        int const *begin = spokes.Begin(static_cast<int>(p)), *end = spokes.End(static_cast<int>(p));
        for (int const *h = begin; h != end; ++h) {
            int const next = h + 1 == end ? *begin : h[1];
            int const block = blocks.blockOfEdge[At(EdgeOfHalf(*h))];
            int const nextBlock = blocks.blockOfEdge[At(EdgeOfHalf(next))];
            if (block == nextBlock)
                continue;
            parts.Unite(block, nextBlock);
            regions.Unite(faces.faceOfHalf[At(*h)], faces.faceOfHalf[At(TwinOf(next))]);
        }
    }
    return {regions.Sets(), parts.Sets()};
}

} // namespace

std::vector<int> NestOutsides(Network const &network, Blocks const &blocks, Spokes const &spokes, Faces const &faces) {
    Groups const groups = GroupAtPlaces(network, blocks, spokes, faces);
    std::size_t const count = faces.faces.size();
    std::vector<int> innerOfRegion(count, -1);
    for (std::size_t f = 0; f < count; ++f)
        if (!faces.faces[f].isOutside)
            innerOfRegion[At(groups.regionOfFace[f])] = static_cast<int>(f);
    std::vector<int> outsideOfPart(blocks.edges.size(), -1); // its region
    for (std::size_t f = 0; f < count; ++f)
        if (faces.faces[f].isOutside && innerOfRegion[At(groups.regionOfFace[f])] < 0)
            outsideOfPart[At(groups.partOfBlock[At(faces.faces[f].block)])] = groups.regionOfFace[f];
    std::vector<int> order;
    std::vector<int> const seen = PartNesting(network, blocks, faces, groups.partOfBlock).SeenFaces(order);
    for (int const part : order) {
        int const around = seen[At(part)];
        if (around >= 0 && outsideOfPart[At(part)] >= 0)
            innerOfRegion[At(outsideOfPart[At(part)])] = innerOfRegion[At(groups.regionOfFace[At(around)])];
    }
    std::vector<int> parents(count, -1);
    for (std::size_t f = 0; f < count; ++f)
        if (faces.faces[f].isOutside)
            parents[f] = innerOfRegion[At(groups.regionOfFace[f])];
    return parents;
}

} // namespace zvi::lib::drawing
