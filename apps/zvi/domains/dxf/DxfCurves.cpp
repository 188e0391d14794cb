#include "apps/zvi/domains/dxf/DxfCurves.h"

#include "apps/zvi/domains/geometry/BulgeArc.h"
#include "apps/zvi/domains/geometry/Flatten.h"
#include "apps/zvi/domains/geometry/Spline.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zvi::app {

namespace {

using lib::DrawingCurve;
using lib::DrawingCurveType;
using lib::DrawingPoint;

constexpr double kTurn = 2.0 * std::numbers::pi;

/// A plane counts as level when its directions rise by less than this part of their length.
constexpr double kLevel = 1e-9;

DrawingPoint FromAbove(Point3 const &p) {
    return {p.x, p.y};
}

bool Same(DrawingPoint const &a, DrawingPoint const &b) {
    return a.x == b.x && a.y == b.y;
}

/// An arc in the plane of its entity: `sweep` radians from the direction `from`, between two known points.
struct EntityArc {
    Point3 center;
    double radius = 0.0;
    double from = 0.0;
    double sweep = 0.0;
    Point3 start;
    Point3 end;
};

class ShapeDrawer {
public:
    ShapeDrawer(Affine const &placed, ChordError const &error) : m_place(placed), m_chordError(error) {}

    DrawnShape Take();

    void operator()(DxfNoCurve const &) {}
    void operator()(DxfMesh const &) {}
    void operator()(DxfInsert const &) {}
    void operator()(DxfLine const &line);
    void operator()(DxfArc const &arc);
    void operator()(DxfPolyline const &polyline);
    void operator()(DxfEllipse const &ellipse);
    void operator()(Spline const &spline);

private:
    void AddLine(DrawingPoint const &start, DrawingPoint const &end);
    void AddArc(DrawingPoint const &center, DrawingPoint const &start, DrawingPoint const &end, bool clockwise);
    void AddCircle(DrawingPoint const &center, double radius);
    void AddChords(std::vector<DrawingPoint> const &points, double error);
    void AddEllipseArc(EllipseArc const &arc, DrawingPoint const &start, DrawingPoint const &end);
    void AddEntityArc(Affine const &map, EntityArc const &arc);
    void AddSegment(Affine const &map, DxfVertex const &from, DxfVertex const &to);
    void NotePlane(Affine const &map);
    void NoteHeight(Point3 const &placed);

    Affine const &m_place;
    ChordError const &m_chordError;
    DrawnShape m_drawn;
    Point3 m_low{HUGE_VAL, HUGE_VAL, HUGE_VAL}; ///< of the points whose height was noted
    Point3 m_high{-HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
};

/// What was drawn. An entity is level when its points are.
DrawnShape ShapeDrawer::Take() {
    double const rise = m_high.z - m_low.z;
    double const size = std::max({m_high.x - m_low.x, m_high.y - m_low.y, rise});
    m_drawn.tilted = m_drawn.tilted || rise > kLevel * size;
    m_drawn.height = m_low.z + 0.0; // no -0
    return std::move(m_drawn);
}

void ShapeDrawer::NoteHeight(Point3 const &placed) {
    m_low = {std::min(m_low.x, placed.x), std::min(m_low.y, placed.y), std::min(m_low.z, placed.z)};
    m_high = {std::max(m_high.x, placed.x), std::max(m_high.y, placed.y), std::max(m_high.z, placed.z)};
}

void ShapeDrawer::AddLine(DrawingPoint const &start, DrawingPoint const &end) {
    DrawingCurve curve;
    curve.start = start;
    curve.end = end;
    m_drawn.curves.push_back(curve);
}

void ShapeDrawer::AddArc(DrawingPoint const &center, DrawingPoint const &start, DrawingPoint const &end,
                         bool clockwise) {
    DrawingCurve curve;
    curve.type = DrawingCurveType::kArc;
    curve.start = start;
    curve.end = end;
    curve.center = center;
    curve.radius = lib::Hypot(start.x - center.x, start.y - center.y);
    curve.clockwise = clockwise;
    m_drawn.curves.push_back(curve);
}

void ShapeDrawer::AddCircle(DrawingPoint const &center, double radius) {
    DrawingCurve curve;
    curve.type = DrawingCurveType::kCircle;
    curve.center = center;
    curve.radius = radius;
    curve.start = curve.end = {center.x + radius, center.y};
    m_drawn.curves.push_back(curve);
}

void ShapeDrawer::AddChords(std::vector<DrawingPoint> const &points, double error) {
    std::size_t const first = m_drawn.curves.size();
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (!Same(points[i - 1], points[i]))
            AddLine(points[i - 1], points[i]);
    }
    std::size_t const count = m_drawn.curves.size() - first;
    if (count > 0)
        m_drawn.runs.push_back({first, count});
    m_drawn.chords += count;
    m_drawn.chordError = std::max(m_drawn.chordError, error);
}

/// Adds the arc as a circle or arc when it is one, else as chords. `start` and `end` are its exact ends; for a full
/// turn they are one point.
void ShapeDrawer::AddEllipseArc(EllipseArc const &arc, DrawingPoint const &start, DrawingPoint const &end) {
    if (IsCollapsed(arc)) {
        m_drawn.unusable = true;
        return;
    }
    bool const mirrored = arc.cosineAxis.x * arc.sineAxis.y - arc.cosineAxis.y * arc.sineAxis.x < 0.0;
    bool const full = std::abs(arc.sweep) >= kTurn;
    if (IsCircular(arc) && full) {
        AddCircle(arc.center, lib::Hypot(arc.cosineAxis.x, arc.cosineAxis.y));
    } else if (IsCircular(arc)) {
        AddArc(arc.center, start, end, mirrored != (arc.sweep < 0.0));
    } else {
        EllipseArc const principal = arc.WithPrincipalAxes();
        double const size = 2.0 * std::max(lib::Hypot(principal.cosineAxis.x, principal.cosineAxis.y),
                                           lib::Hypot(principal.sineAxis.x, principal.sineAxis.y));
        double const error = m_chordError.ForSize(size);
        std::vector<DrawingPoint> points = FlattenEllipse(arc, error);
        points.front() = start;
        points.back() = end;
        AddChords(points, error);
    }
}

void ShapeDrawer::AddEntityArc(Affine const &map, EntityArc const &arc) {
    EllipseArc seen;
    seen.center = FromAbove(map.Point(arc.center));
    seen.cosineAxis = FromAbove(map.Direction({arc.radius, 0.0, 0.0}));
    seen.sineAxis = FromAbove(map.Direction({0.0, arc.radius, 0.0}));
    seen.from = arc.from;
    seen.sweep = arc.sweep;
    AddEllipseArc(seen, FromAbove(map.Point(arc.start)), FromAbove(map.Point(arc.end)));
}

/// Notes a plane that is not level once it is placed.
void ShapeDrawer::NotePlane(Affine const &map) {
    auto const rises = [&map](Point3 const &direction) {
        Point3 const v = map.Direction(direction);
        return std::abs(v.z) > kLevel * lib::Hypot(v.x, v.y, v.z);
    };
    m_drawn.tilted = m_drawn.tilted || rises({1.0, 0.0, 0.0}) || rises({0.0, 1.0, 0.0});
}

void ShapeDrawer::operator()(DxfLine const &line) {
    Point3 const start = m_place.Point(line.start);
    Point3 const end = m_place.Point(line.end);
    NoteHeight(start);
    NoteHeight(end);
    AddLine(FromAbove(start), FromAbove(end));
}

void ShapeDrawer::operator()(DxfArc const &arc) {
    Affine const map = Then(FromExtrusion(arc.extrusion), m_place);
    NotePlane(map);
    NoteHeight(map.Point(arc.center));
    EntityArc drawnArc{arc.center, arc.radius, 0.0, kTurn, {}, {}};
    double const sweepDegrees = SweepBetween(arc.startDegrees, arc.endDegrees, 360.0);
    auto const at = [&arc](double degrees) {
        Point3 const unit = UnitAtDegrees(degrees);
        return Point3{arc.center.x + arc.radius * unit.x, arc.center.y + arc.radius * unit.y, arc.center.z};
    };
    drawnArc.start = at(arc.startDegrees);
    drawnArc.end = drawnArc.start;
    drawnArc.from = std::fmod(arc.startDegrees, 360.0) * std::numbers::pi / 180.0;
    if (sweepDegrees < 360.0) {
        drawnArc.end = at(arc.endDegrees);
        drawnArc.sweep = sweepDegrees * std::numbers::pi / 180.0;
    }
    if (arc.radius > 0.0) {
        AddEntityArc(map, drawnArc);
    } else {
        // Handed on as it is, so that it turns up among the leftovers.
        AddCircle(FromAbove(map.Point(arc.center)), arc.radius);
    }
}

/// Adds the segment of a polyline between two vertices.
void ShapeDrawer::AddSegment(Affine const &map, DxfVertex const &from, DxfVertex const &to) {
    Point3 const &p = from.at;
    Point3 const &q = to.at;
    DrawingPoint const start = FromAbove(map.Point(p));
    DrawingPoint const end = FromAbove(map.Point(q));
    if (p.x == q.x && p.y == q.y && p.z == q.z)
        return;
    if (IsStraightBulge(from.bulge)) {
        AddLine(start, end);
        return;
    }
    BulgeArc const bent = ArcOfBulge(p, q, from.bulge);
    EntityArc arc;
    arc.center = bent.center;
    arc.radius = bent.radius;
    arc.from = bent.from;
    arc.sweep = bent.sweep;
    arc.start = p;
    arc.end = q;
    AddEntityArc(map, arc);
}

void ShapeDrawer::operator()(DxfPolyline const &polyline) {
    Affine const map = Then(FromExtrusion(polyline.extrusion), m_place);
    NotePlane(map);
    auto const &vertices = polyline.vertices;
    for (DxfVertex const &vertex : vertices)
        NoteHeight(map.Point(vertex.at));
    for (std::size_t i = 1; i < vertices.size(); ++i)
        AddSegment(map, vertices[i - 1], vertices[i]);
    if (polyline.closed && vertices.size() > 1)
        AddSegment(map, vertices.back(), vertices.front());
    m_drawn.unusable = m_drawn.unusable || vertices.size() < 2;
}

void ShapeDrawer::operator()(DxfEllipse const &ellipse) {
    double const length = lib::Hypot(ellipse.extrusion.x, ellipse.extrusion.y, ellipse.extrusion.z);
    Point3 const normal = length > 0.0 ? ellipse.extrusion : Point3{0.0, 0.0, 1.0};
    Point3 const across = Cross(normal, ellipse.majorAxis);
    double const factor = ellipse.ratio / (length > 0.0 ? length : 1.0);
    Point3 const major = m_place.Direction(ellipse.majorAxis);
    Point3 const minor = m_place.Direction({factor * across.x, factor * across.y, factor * across.z});
    m_drawn.tilted = std::abs(major.z) > kLevel * lib::Hypot(major.x, major.y, major.z) ||
                     std::abs(minor.z) > kLevel * lib::Hypot(minor.x, minor.y, minor.z);
    NoteHeight(m_place.Point(ellipse.center));
    EllipseArc arc{FromAbove(m_place.Point(ellipse.center)), FromAbove(major), FromAbove(minor), 0.0, 0.0};
    arc.from = std::fmod(ellipse.from, kTurn);
    arc.sweep = SweepBetween(ellipse.from, ellipse.to, kTurn);
    DrawingPoint const start = arc.At(arc.from);
    AddEllipseArc(arc, start, arc.sweep < kTurn ? arc.At(arc.from + arc.sweep) : start);
}

void ShapeDrawer::operator()(Spline const &given) {
    std::optional<Spline> const spline = WithControlPoints(given);
    if (!spline) {
        m_drawn.unusable = true;
        return;
    }
    for (Point3 const &control : spline->controls)
        NoteHeight(m_place.Point(control));
    double const size = lib::Hypot(m_high.x - m_low.x, m_high.y - m_low.y);
    m_drawn.unusable = !(size > 0.0) || !std::isfinite(size);
    double const error = m_chordError.ForSize(size);
    if (!m_drawn.unusable)
        AddChords(FlattenSpline(*spline, m_place, error, kMostChordsOfEntity), error);
}

} // namespace

DrawnShape DrawShape(DxfShape const &shape, Affine const &place, ChordError const &chordError) {
    ShapeDrawer drawer(place, chordError);
    std::visit(drawer, shape);
    DrawnShape drawn = drawer.Take();
    drawn.tooManyChords = drawn.chords > kMostChordsOfEntity;
    if (drawn.unusable) {
        drawn.curves.clear();
        drawn.runs.clear();
        drawn.chords = 0;
    }
    return drawn;
}

} // namespace zvi::app
