#include "zvi/drawing/SuggestedJoinTolerance.h"

#include "zvi/drawing/ReadCurvesDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib {

namespace {

using namespace drawing;

/// The tolerance as a share of the size. Held against 41 drawings with settled numbers: all of them are right with it,
/// and not all with a tenth or three times as much.
constexpr double kShareOfSize = 1e-6;

/// How many times farther than three of four curves a stray one lies.
constexpr double kStray = 10.0;
constexpr double kMostCurves = 0.75, kHalf = 0.5;

/// The element that such a share of some values, of which there is one at least, does not exceed.
double Quantile(std::vector<double> values, double share) {
    assert(!values.empty());
    auto const at = values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

DrawingPoint MedianOfMiddles(std::vector<Box> const &boxes) {
    std::vector<double> x;
    std::vector<double> y;
    for (Box const &box : boxes) {
        x.push_back(0.5 * box.minX + 0.5 * box.maxX);
        y.push_back(0.5 * box.minY + 0.5 * box.maxY);
    }
    return {Quantile(std::move(x), kHalf), Quantile(std::move(y), kHalf)};
}

/// How far the nearest point of a box is from `p`, and how far the farthest.
double Nearest(Box const &box, DrawingPoint p) {
    return std::max({0.0, box.minX - p.x, p.x - box.maxX, box.minY - p.y, p.y - box.maxY});
}
double Farthest(Box const &box, DrawingPoint p) {
    return std::max({p.x - box.minX, box.maxX - p.x, p.y - box.minY, box.maxY - p.y});
}

std::vector<Box> BoxesOf(std::vector<DrawingCurve> const &curves) {
    std::vector<Box> boxes;
    for (Stretch const &s : ReadCurves(curves, 0.0, base::Workers()).stretches)
        boxes.push_back(BoxOf(s));
    return boxes;
}

} // namespace

double DrawingSize(std::vector<DrawingCurve> const &curves) {
    std::vector<Box> const boxes = BoxesOf(curves);
    if (boxes.empty())
        return 0.0;
    DrawingPoint const middle = MedianOfMiddles(boxes);
    std::vector<double> reaches(boxes.size());
    std::transform(boxes.begin(), boxes.end(), reaches.begin(),
                   [middle](Box const &box) { return Farthest(box, middle); });
    double const near = kStray * Quantile(std::move(reaches), kMostCurves);
    Box all{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (Box const &box : boxes) {
        if (Nearest(box, middle) > near)
            continue;
        all = {std::min(all.minX, box.minX), std::min(all.minY, box.minY), std::max(all.maxX, box.maxX),
               std::max(all.maxY, box.maxY)};
    }
    return std::max(all.maxX - all.minX, all.maxY - all.minY);
}

double SuggestedJoinTolerance(std::vector<DrawingCurve> const &curves) {
    return kShareOfSize * DrawingSize(curves);
}

} // namespace zvi::lib
