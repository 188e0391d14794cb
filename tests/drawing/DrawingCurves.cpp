#include "tests/drawing/DrawingCurves.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace zvi::lib::test {

namespace {

constexpr double kDegree = kPi / 180.0;

/// Directions at whole quarters are exact.
DrawingPoint OnCircle(DrawingPoint center, double radius, double degrees) {
    double const quarters = degrees / 90.0;
    if (quarters == std::floor(quarters)) {
        int const q = static_cast<int>(quarters) & 3;
        double const x[] = {1.0, 0.0, -1.0, 0.0}, y[] = {0.0, 1.0, 0.0, -1.0};
        return {center.x + radius * x[q], center.y + radius * y[q]};
    }
    return {center.x + radius * std::cos(degrees * kDegree), center.y + radius * std::sin(degrees * kDegree)};
}

double DegreesOf(DrawingCurve const &c, DrawingPoint p) {
    return std::atan2(p.y - c.center.y, p.x - c.center.x) / kDegree;
}

double Cross(DrawingPoint a, DrawingPoint b) {
    return a.x * b.y - a.y * b.x;
}

DrawingPoint From(DrawingPoint origin, DrawingPoint p) {
    return {p.x - origin.x, p.y - origin.y};
}

bool IsWithinTurn(DrawingCurve const &c, DrawingPoint p) {
    DrawingPoint s = From(c.center, c.start), e = From(c.center, c.end), u = From(c.center, p);
    if (c.clockwise)
        std::swap(s, e);
    if (Cross(s, e) >= 0.0)
        return Cross(s, u) >= 0.0 && Cross(u, e) >= 0.0;
    return !(Cross(e, u) > 0.0 && Cross(u, s) > 0.0);
}

double DistanceToLine(DrawingCurve const &c, DrawingPoint p) {
    DrawingPoint const d = From(c.start, c.end), u = From(c.start, p);
    double const squared = d.x * d.x + d.y * d.y;
    double const t = squared > 0.0 ? std::clamp((d.x * u.x + d.y * u.y) / squared, 0.0, 1.0) : 0.0;
    return Distance(u, {t * d.x, t * d.y});
}

} // namespace

std::vector<DrawingCurve> Curves(std::string const &text) {
    std::vector<DrawingCurve> curves;
    std::string rows = text;
    std::replace(rows.begin(), rows.end(), ';', '\n');
    std::istringstream items(rows);
    for (std::string item; std::getline(items, item);) {
        std::istringstream in(item);
        std::string kind;
        unsigned int id = 0;
        double n[5] = {0.0, 0.0, 0.0, 0.0, 0.0};
        if (!(in >> kind >> id))
            continue;
        in >> n[0] >> n[1] >> n[2] >> n[3] >> n[4];
        curves.push_back(kind == "line"  ? LineOf({n[0], n[1]}, {n[2], n[3]})
                         : kind == "arc" ? ArcOf({n[0], n[1]}, n[2], n[3], n[4])
                                         : CircleOf({n[0], n[1]}, n[2]));
        curves.back().id = id;
    }
    return curves;
}

std::string TextOf(std::vector<DrawingCurve> const &curves) {
    std::ostringstream out;
    out.precision(17);
    for (DrawingCurve const &c : curves) {
        char const *const names[] = {"line", "arc", "circle"};
        out << names[static_cast<int>(c.type)] << ' ' << c.id << ' ';
        if (c.type == DrawingCurveType::kLine)
            out << c.start.x << ' ' << c.start.y << ' ' << c.end.x << ' ' << c.end.y;
        else
            out << c.center.x << ' ' << c.center.y << ' ' << c.radius;
        if (c.type == DrawingCurveType::kArc)
            out << ' ' << DegreesOf(c, c.clockwise ? c.end : c.start) << ' '
                << DegreesOf(c, c.clockwise ? c.start : c.end);
        out << '\n';
    }
    return out.str();
}

DrawingCurve LineOf(DrawingPoint a, DrawingPoint b) {
    DrawingCurve c;
    c.start = a;
    c.end = b;
    return c;
}

DrawingCurve ArcOf(DrawingPoint center, double radius, double startDegrees, double endDegrees) {
    DrawingCurve c;
    c.type = DrawingCurveType::kArc;
    c.center = center;
    c.radius = radius;
    c.start = OnCircle(center, radius, startDegrees);
    c.end = OnCircle(center, radius, endDegrees);
    return c;
}

DrawingCurve CircleOf(DrawingPoint center, double radius) {
    DrawingCurve c = ArcOf(center, radius, 0.0, 0.0);
    c.type = DrawingCurveType::kCircle;
    return c;
}

DrawingCurve ArcOver(DrawingPoint a, DrawingPoint b, double rise) {
    double const dx = b.x - a.x, dy = b.y - a.y, offset = (0.25 - rise * rise) / (2.0 * rise);
    DrawingCurve arc = LineOf(a, b);
    arc.type = DrawingCurveType::kArc;
    arc.center = {0.5 * (a.x + b.x) - dy * offset, 0.5 * (a.y + b.y) + dx * offset};
    arc.radius = Distance(a, arc.center);
    arc.clockwise = rise < 0.0;
    return arc;
}

std::vector<DrawingCurve> Numbered(std::vector<DrawingCurve> curves) {
    unsigned int id = 0;
    for (DrawingCurve &c : curves)
        c.id = ++id;
    return curves;
}

DrawingCurve CurveOf(DrawingPiece const &piece) {
    return {piece.curve, piece.type, piece.start, piece.end, piece.center, piece.radius, piece.clockwise};
}

double Distance(DrawingPoint a, DrawingPoint b) {
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y)); // hypot is slow
}

double DistanceTo(DrawingCurve const &c, DrawingPoint p) {
    if (c.type == DrawingCurveType::kLine)
        return DistanceToLine(c, p);
    if (c.type == DrawingCurveType::kCircle || IsWithinTurn(c, p))
        return std::fabs(Distance(c.center, p) - c.radius);
    return std::min(Distance(c.start, p), Distance(c.end, p));
}

/// An arc turns once at most; one that passes its start by less than this angle is a full turn.
constexpr double kPassesStart = 1e-6;

double SweepOf(DrawingCurve const &c, double near) {
    if (c.type == DrawingCurveType::kLine)
        return 0.0;
    if (c.type == DrawingCurveType::kCircle)
        return c.clockwise ? -2.0 * kPi : 2.0 * kPi;
    DrawingPoint const s = From(c.center, c.start), e = From(c.center, c.end);
    double const sweep = std::atan2(Cross(s, e), s.x * e.x + s.y * e.y);
    double const nearest = sweep + 2.0 * kPi * std::round((near - sweep) / (2.0 * kPi));
    return std::fabs(nearest) > 2.0 * kPi + kPassesStart ? nearest - std::copysign(2.0 * kPi, nearest) : nearest;
}

double SweepOf(DrawingCurve const &c) {
    return SweepOf(c, c.start.x == c.end.x && c.start.y == c.end.y ? 0.0 : c.clockwise ? -kPi : kPi);
}

bool IsOverHalf(DrawingCurve const &c) {
    double const cross = Cross(From(c.center, c.start), From(c.start, c.end));
    return c.type == DrawingCurveType::kArc && (c.clockwise ? cross > 0.0 : cross < 0.0);
}

double LengthOf(DrawingCurve const &c) {
    return c.type == DrawingCurveType::kLine ? Distance(c.start, c.end) : c.radius * std::fabs(SweepOf(c));
}

double LengthOf(std::vector<DrawingCurve> const &curves) {
    double length = 0.0;
    for (DrawingCurve const &c : curves)
        length += LengthOf(c);
    return length;
}

DrawingPoint PointAt(DrawingCurve const &c, double sweep, double t) {
    bool const isCircle = c.type == DrawingCurveType::kCircle;
    DrawingPoint const start = isCircle ? DrawingPoint{c.center.x + c.radius, c.center.y} : c.start;
    if (t == 0.0 || t == 1.0)
        return t == 0.0 || isCircle ? start : c.end;
    if (c.type == DrawingCurveType::kLine)
        return {c.start.x + t * (c.end.x - c.start.x), c.start.y + t * (c.end.y - c.start.y)};
    double const a = t * sweep;
    DrawingPoint const u = From(c.center, start);
    return {c.center.x + u.x * std::cos(a) - u.y * std::sin(a), c.center.y + u.x * std::sin(a) + u.y * std::cos(a)};
}

/// t - sin t; below a tenth by its series, which loses no digits.
double TurnMinusSine(double t) {
    double const t2 = t * t;
    return std::fabs(t) > 0.1 ? t - std::sin(t)
                              : t * t2 / 6.0 * (1.0 - t2 / 20.0 * (1.0 - t2 / 42.0 * (1.0 - t2 / 72.0)));
}

double AreaFrom(DrawingPoint origin, DrawingCurve const &c, double sweep) {
    double const segment = c.type == DrawingCurveType::kLine ? 0.0 : c.radius * c.radius * TurnMinusSine(sweep);
    return 0.5 * (Cross(From(origin, c.start), From(origin, c.end)) + segment);
}

double SizeOf(std::vector<DrawingCurve> const &curves) {
    double size = 0.0;
    for (DrawingCurve const &c : curves) {
        bool const isLine = c.type == DrawingCurveType::kLine;
        for (DrawingPoint const p : {isLine ? c.start : c.center, isLine ? c.end : c.center})
            size = std::max({size, std::fabs(p.x) + c.radius, std::fabs(p.y) + c.radius});
    }
    return size;
}

std::vector<DrawingCurve> Moved(std::vector<DrawingCurve> curves, Motion const &motion) {
    double const c = motion.scale * std::cos(motion.turn), s = motion.scale * std::sin(motion.turn);
    double const up = motion.isMirrored ? -1.0 : 1.0;
    for (DrawingCurve &curve : curves) {
        for (DrawingPoint *p : {&curve.start, &curve.end, &curve.center})
            *p = {motion.shift.x + c * p->x - s * up * p->y, motion.shift.y + s * p->x + c * up * p->y};
        curve.radius *= motion.scale;
        curve.clockwise = curve.type == DrawingCurveType::kArc && curve.clockwise != motion.isMirrored;
    }
    return curves;
}

} // namespace zvi::lib::test
