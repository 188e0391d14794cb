#include "apps/zvi/domains/geometry/Spline.h"

#include "apps/zvi/domains/geometry/Flatten.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <tuple>

namespace zvi::app {

namespace {

Point3 operator+(Point3 const &a, Point3 const &b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Point3 operator-(Point3 const &a, Point3 const &b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Point3 operator*(double s, Point3 const &a) {
    return {s * a.x, s * a.y, s * a.z};
}

double Length(Point3 const &a) {
    return lib::Hypot(a.x, a.y, a.z);
}

/// For more control points than the degree.
std::vector<double> EvenKnots(std::size_t controls, int degree) {
    assert(degree >= 0 && controls > static_cast<std::size_t>(degree));
    std::vector<double> knots;
    int const last = static_cast<int>(controls) - degree;
    for (int i = -degree; i <= last + degree; ++i)
        knots.push_back(std::clamp(i, 0, last));
    return knots;
}

bool HasUsableControls(Spline const &spline) {
    std::size_t const count = spline.controls.size();
    if (spline.degree < 1 || spline.degree > kHighestDegree || count < static_cast<std::size_t>(spline.degree) + 1)
        return false;
    auto const &weights = spline.weights;
    bool const positive = std::all_of(weights.begin(), weights.end(), [](double w) { return w > 0.0; });
    auto const degree = static_cast<std::size_t>(spline.degree);
    return positive && (weights.empty() || weights.size() == count) && spline.knots.size() == count + degree + 1 &&
           std::is_sorted(spline.knots.begin(), spline.knots.end()) && spline.knots[degree] < spline.knots[count];
}

/// The fit points without those that repeat their forerunner; closed splines end where they start.
std::vector<Point3> DistinctFitPoints(Spline const &spline) {
    std::vector<Point3> points;
    for (Point3 const &p : spline.fitPoints) {
        if (points.empty() || Length(p - points.back()) > 0.0)
            points.push_back(p);
    }
    if (spline.closed && points.size() > 2 && Length(points.back() - points.front()) > 0.0)
        points.push_back(points.front());
    return points;
}

/// A row of a system in which each unknown meets its two neighbours only.
struct Row {
    double before = 0.0;
    double own = 1.0;
    double after = 0.0;
    Point3 right;
};

/// Solves the rows, each unknown a point (elimination from the top, no pivoting: the systems here are dominated by
/// their diagonals).
std::vector<Point3> SolveRows(std::vector<Row> rows) {
    for (std::size_t i = 1; i < rows.size(); ++i) {
        double const factor = rows[i].before / rows[i - 1].own;
        rows[i].own -= factor * rows[i - 1].after;
        rows[i].right = rows[i].right - factor * rows[i - 1].right;
    }
    std::vector<Point3> solution(rows.size());
    for (std::size_t i = rows.size(); i-- > 0;) {
        Point3 const known = i + 1 < rows.size() ? rows[i].after * solution[i + 1] : Point3{};
        solution[i] = (1.0 / rows[i].own) * (rows[i].right - known);
    }
    return solution;
}

/// As SolveRows, with the first row's `before` and the last row's `after` meeting around the end (Sherman and Morrison:
/// the system is the one without those two, changed by a matrix of rank one). At least three rows.
std::vector<Point3> SolveCyclicRows(std::vector<Row> rows) {
    assert(rows.size() >= 3);
    double const corner = rows.front().before;
    double const otherCorner = rows.back().after;
    double const gamma = -rows.front().own;
    rows.front().own -= gamma;
    rows.back().own -= corner * otherCorner / gamma;
    std::vector<Point3> solution = SolveRows(rows);
    for (Row &row : rows)
        row.right = {};
    rows.front().right.x = gamma;
    rows.back().right.x = otherCorner;
    std::vector<Point3> const change = SolveRows(rows);
    double const share = corner / gamma;
    double const scale = 1.0 / (1.0 + change.front().x + share * change.back().x);
    Point3 const factor = scale * (solution.front() + share * solution.back());
    for (std::size_t i = 0; i < solution.size(); ++i)
        solution[i] = solution[i] - change[i].x * factor;
    return solution;
}

/// Continuous curvature at the point between the chords a-b and b-c of lengths h and k, for the speeds at a, b and c.
Row SmoothRow(Point3 const &a, Point3 const &b, Point3 const &c, double h, double k) {
    return {k, 2.0 * (h + k), h, 3.0 * ((k / h) * (b - a) + (h / k) * (c - b))};
}

/// The row of an end, beside a chord with a length: its speed is the unit tangent where one is given, otherwise the
/// curvature there is zero.
Row EndRow(Point3 const &tangent, Point3 const &chord, double length) {
    assert(length > 0.0);
    double const given = Length(tangent);
    if (given > 0.0)
        return {0.0, 1.0, 0.0, (1.0 / given) * tangent};
    return {1.0, 2.0, 1.0, (3.0 / length) * chord};
}

/// The speed of the spline at each of its points, its parameter being the length of the chords.
std::vector<Point3> Speeds(Spline const &spline, std::vector<Point3> const &points,
                           std::vector<double> const &lengths) {
    std::size_t const last = points.size() - 1;
    std::vector<Row> rows;
    auto const smoothRow = [&](std::size_t i) {
        return SmoothRow(points[i - 1], points[i], points[i + 1], lengths[i - 1], lengths[i]);
    };
    if (spline.closed && last > 2) {
        rows.push_back(SmoothRow(points[last - 1], points[0], points[1], lengths[last - 1], lengths[0]));
        for (std::size_t i = 1; i < last; ++i)
            rows.push_back(smoothRow(i));
        std::vector<Point3> speeds = SolveCyclicRows(std::move(rows));
        speeds.push_back(speeds.front());
        return speeds;
    }
    rows.push_back(EndRow(spline.startTangent, points[1] - points[0], lengths[0]));
    for (std::size_t i = 1; i < last; ++i)
        rows.push_back(smoothRow(i));
    rows.push_back(EndRow(spline.endTangent, points[last] - points[last - 1], lengths[last - 1]));
    return SolveRows(std::move(rows));
}

std::optional<Spline> ThroughFitPoints(Spline const &spline) {
    std::vector<Point3> const points = DistinctFitPoints(spline);
    if (points.size() < 2)
        return std::nullopt;
    std::vector<double> lengths;
    for (std::size_t i = 1; i < points.size(); ++i)
        lengths.push_back(Length(points[i] - points[i - 1]));
    std::vector<Point3> const speeds = Speeds(spline, points, lengths);
    Spline fitted;
    fitted.closed = spline.closed;
    fitted.controls = {points[0]};
    fitted.knots = {0.0, 0.0, 0.0, 0.0};
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        double const third = lengths[i] / 3.0;
        fitted.controls.push_back(points[i] + third * speeds[i]);
        fitted.controls.push_back(points[i + 1] - third * speeds[i + 1]);
        fitted.controls.push_back(points[i + 1]);
        fitted.knots.insert(fitted.knots.end(), 3, fitted.knots.back() + lengths[i]);
    }
    fitted.knots.push_back(fitted.knots.back());
    return fitted;
}

/// A control point in the drawing plane with its weight, multiplied in.
struct Weighted {
    double x = 0.0;
    double y = 0.0;
    double w = 1.0;
};

Weighted Mix(Weighted const &a, Weighted const &b, double share) {
    auto const mix = [share](double from, double to) { return (1.0 - share) * from + share * to; };
    return {mix(a.x, b.x), mix(a.y, b.y), mix(a.w, b.w)};
}

using Poles = std::vector<Weighted>;

/// Control points of the span [knots[k], knots[k + 1]] as a curve of its own with parameters from 0 to 1. Pole j is the
/// blossom of the spline at j times the end of the span and its beginning for the rest (de Boor's algorithm with a
/// parameter for each step). Where the knots are those of such a curve, its poles are the spline's to the last bit.
Poles PolesOfSpan(Spline const &spline, Poles const &controls, std::size_t k) {
    auto const degree = static_cast<std::size_t>(spline.degree);
    assert(k >= degree && k < controls.size());
    Poles poles;
    for (std::size_t pole = 0; pole <= degree; ++pole) {
        std::array<Weighted, kHighestDegree + 1> d;
        std::copy_n(controls.begin() + static_cast<std::ptrdiff_t>(k - degree), degree + 1, d.begin());
        for (std::size_t r = 1; r <= degree; ++r) {
            double const t = spline.knots[r <= pole ? k + 1 : k];
            for (std::size_t j = degree; j >= r; --j) {
                double const low = spline.knots[j + k - degree];
                d[j] = Mix(d[j - 1], d[j], (t - low) / (spline.knots[j + 1 + k - r] - low));
            }
        }
        poles.push_back(d[degree]);
    }
    return poles;
}

/// Point of such a curve (de Casteljau's algorithm).
lib::DrawingPoint AtParameter(Poles const &poles, double t) {
    std::array<Weighted, kHighestDegree + 1> d;
    std::copy(poles.begin(), poles.end(), d.begin());
    for (std::size_t left = poles.size() - 1; left > 0; --left) {
        for (std::size_t j = 0; j < left; ++j)
            d[j] = Mix(d[j], d[j + 1], t);
    }
    return {d[0].x / d[0].w, d[0].y / d[0].w};
}

/// Appends the corners of a span, whose beginning is there. Whichever way it runs it gives the same ones to the last
/// bit, so that splines that share a stretch stay together.
void AddSpan(Poles poles, double error, std::vector<lib::DrawingPoint> &points) {
    auto const comesFirst = [](Weighted const &a, Weighted const &b) {
        return std::tie(a.x, a.y, a.w) < std::tie(b.x, b.y, b.w);
    };
    bool const isTurned =
        std::lexicographical_compare(poles.rbegin(), poles.rend(), poles.begin(), poles.end(), comesFirst);
    if (isTurned)
        std::reverse(poles.begin(), poles.end());
    PlaneCurve const curve = [&poles](double t) { return AtParameter(poles, t); };
    std::vector<lib::DrawingPoint> corners{curve(0.0)};
    FlattenSpan(curve, 0.0, 1.0, error, corners);
    if (isTurned)
        std::reverse(corners.begin(), corners.end());
    points.insert(points.end(), corners.begin() + (points.empty() ? 0 : 1), corners.end());
}

} // namespace

std::optional<Spline> WithControlPoints(Spline const &spline) {
    Spline candidate = spline;
    bool const isKnown = candidate.degree >= 1 && candidate.degree <= kHighestDegree;
    if (isKnown && candidate.knots.empty() && candidate.controls.size() > static_cast<std::size_t>(candidate.degree))
        candidate.knots = EvenKnots(candidate.controls.size(), candidate.degree);
    if (HasUsableControls(candidate))
        return candidate;
    return ThroughFitPoints(spline);
}

std::vector<lib::DrawingPoint> FlattenSpline(Spline const &spline, Affine const &map, double error,
                                             std::size_t mostPoints) {
    assert(HasUsableControls(spline));
    Poles controls;
    for (std::size_t i = 0; i < spline.controls.size(); ++i) {
        Point3 const p = map.Point(spline.controls[i]);
        double const w = spline.weights.empty() ? 1.0 : spline.weights[i];
        controls.push_back({w * p.x, w * p.y, w});
    }
    std::vector<lib::DrawingPoint> points;
    for (auto k = static_cast<std::size_t>(spline.degree); k < controls.size() && points.size() <= mostPoints; ++k) {
        if (spline.knots[k] < spline.knots[k + 1])
            AddSpan(PolesOfSpan(spline, controls, k), error, points);
    }
    return points;
}

} // namespace zvi::app
