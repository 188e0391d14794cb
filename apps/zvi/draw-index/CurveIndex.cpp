#include "apps/zvi/draw-index/CurveIndex.h"

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace zvi::app {

namespace {

using lib::DrawingCurve;
using lib::DrawingCurveType;
using lib::DrawingPoint;
using lib::MQuadMBR2D;
using lib::MQuadNode;

/// Part of the extent of all curves that the root region begins with beside the first one.
constexpr double kFirstShare = 1.0 / 16.0;

/// Whether an arc, counter-clockwise from `start` to `end`, passes the direction; all in radians.
bool Passes(double start, double end, double direction) {
    constexpr double kTurn = 2.0 * std::numbers::pi;
    auto const from = [start](double angle) {
        double const sweep = std::fmod(angle - start, kTurn);
        return sweep < 0.0 ? sweep + kTurn : sweep;
    };
    double const sweep = from(end);
    return from(direction) <= (sweep == 0.0 ? kTurn : sweep);
}

void Include(MQuadMBR2D &box, DrawingPoint const &p) {
    box = {std::min(box.minX, p.x), std::min(box.minY, p.y), std::max(box.maxX, p.x), std::max(box.maxY, p.y)};
}

/// What all finite rectangles take up along the longer side; 1 where that is nothing.
double ExtentOf(std::vector<MQuadMBR2D> const &boxes) {
    MQuadMBR2D all{INFINITY, INFINITY, -INFINITY, -INFINITY};
    for (MQuadMBR2D const &box : boxes) {
        Include(all, {box.minX, box.minY});
        Include(all, {box.maxX, box.maxY});
    }
    double const longer = std::max(all.maxX - all.minX, all.maxY - all.minY);
    return longer > 0.0 && std::isfinite(longer) ? longer : 1.0;
}

} // namespace

MQuadMBR2D RectangleOf(DrawingCurve const &curve) {
    DrawingPoint const &c = curve.center;
    double const r = curve.radius;
    if (curve.type == DrawingCurveType::kCircle)
        return {c.x - r, c.y - r, c.x + r, c.y + r};
    MQuadMBR2D box{curve.start.x, curve.start.y, curve.start.x, curve.start.y};
    Include(box, curve.end);
    if (curve.type == DrawingCurveType::kLine)
        return box;
    double start = lib::Atan2(curve.start.y - c.y, curve.start.x - c.x);
    double end = lib::Atan2(curve.end.y - c.y, curve.end.x - c.x);
    if (curve.clockwise)
        std::swap(start, end);
    DrawingPoint const extremes[] = {{c.x + r, c.y}, {c.x, c.y + r}, {c.x - r, c.y}, {c.x, c.y - r}};
    for (int quarter = 0; quarter < 4; ++quarter) {
        if (Passes(start, end, quarter * 0.5 * std::numbers::pi))
            Include(box, extremes[quarter]);
    }
    return box;
}

std::unique_ptr<lib::MQuadTree> MakeCurveIndex(std::vector<DrawingCurve> const &curves, int capacity) {
    std::vector<MQuadMBR2D> boxes;
    boxes.reserve(curves.size());
    for (DrawingCurve const &curve : curves)
        boxes.push_back(RectangleOf(curve));
    double const size = ExtentOf(boxes) * kFirstShare;
    auto tree = std::make_unique<lib::MQuadTree>(size, size, capacity);
    for (std::size_t i = 0; i < boxes.size(); ++i)
        tree->Insert(static_cast<unsigned int>(i), boxes[i]);
    return tree;
}

IndexTotals TotalsOf(lib::MQuadTree const &tree) {
    IndexTotals totals;
    std::vector<std::pair<MQuadNode const *, std::size_t>> pending;
    if (tree.GetRoot())
        pending.emplace_back(tree.GetRoot(), 0);
    while (!pending.empty()) {
        auto const [node, level] = pending.back();
        pending.pop_back();
        auto const count = static_cast<std::size_t>(node->GetPool().GetCount());
        ++totals.nodes;
        totals.depth = std::max(totals.depth, level);
        (node->IsLeaf() ? totals.inLeaves : totals.inInner) += count;
        if (node->IsLeaf()) {
            ++totals.leaves;
            totals.largestLeaf = std::max(totals.largestLeaf, count);
        }
        for (int i = 0; !node->IsLeaf() && i < MQuadNode::kChildCount; ++i)
            pending.emplace_back(node->GetChild(i), level + 1);
    }
    return totals;
}

} // namespace zvi::app
