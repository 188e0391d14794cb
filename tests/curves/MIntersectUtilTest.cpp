#include "zvi/curves/MIntersectUtil.h"

#include "zvi/curves/T_LINE2D_G.h"
#include "zvi/math/MMathFunc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using zvi::MArray;
using zvi::lib::MIntersectUtil;
using zvi::lib::MMathFunc;
using zvi::lib::T_LINE_G;
using zvi::lib::T_MBR3D;
using zvi::lib::T_REGION2D_G;
using Vec3 = zvi::MVector<double, 3>;
using Points = MArray<Vec3>;

namespace {

constexpr double kPi = 3.14159265358979323846;

double Distance(Vec3 const &a, Vec3 const &b) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) + (a[2] - b[2]) * (a[2] - b[2]));
}

double PlanDistance(Vec3 const &a, Vec3 const &b) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]));
}

T_LINE_G Line(Vec3 const &a, Vec3 const &b) {
    T_LINE_G line;
    return line.Set(a, b);
}

T_LINE_G Circle(Vec3 const &center, double radius) {
    T_LINE_G circle;
    return circle.Set(center, radius, {0, 0, 1});
}

/// A plan arc between two directions in degrees. Counter-clockwise arcs get ends exactly on the axes where the
/// directions are, clockwise ones as the cosines come out.
T_LINE_G Arc(Vec3 const &center, double radius, double from, double to, double side = 1.0, int is2D = 1) {
    auto const clean = [&](double v) { return side > 0 && std::fabs(v) < 1e-15 ? 0.0 : v; };
    auto const at = [&](double degrees) {
        return Vec3(center[0] + radius * clean(std::cos(degrees * kPi / 180)),
                    center[1] + radius * clean(std::sin(degrees * kPi / 180)), center[2]);
    };
    T_LINE_G arc;
    return arc.Set(at(from), at(to), 1, center, {0, 0, side}, is2D, 1e-9);
}

/// Intersection by its definition: every angle is computed, nothing is decided by a shortcut.
class ByDefinition {
public:
    explicit ByDefinition(double tol) : m_tol(tol) {}

    int IsOnCurve(Vec3 const &p, T_LINE_G const &curve, int withEnds) const {
        if (curve.IsCurv != 0 && std::fabs(curve.Normal[2]) < 1e-9)
            return 0;
        bool const isSwapped = curve.IsCurv != 0 && curve.Normal[2] < 0;
        Vec3 const &a = isSwapped ? curve.Pos2 : curve.Pos1;
        Vec3 const &b = isSwapped ? curve.Pos1 : curve.Pos2;
        T_MBR3D box;
        MIntersectUtil::GetMbr_line(box, curve, m_tol);
        if (curve.IsCurv != 0)
            box.SetWithCurv(a, b, m_tol, curve.Center);
        if (box.IsInnerPoint(p) == 0)
            return 0;
        bool const isAtEnd = Distance(p, a) < m_tol || Distance(p, b) < m_tol;
        if (isAtEnd)
            return withEnds != 0 ? 1 : 0;
        return curve.IsCurv != 0 ? IsOnArc(p, a, b, curve.Center) : IsOnSegment(p, a, b, box);
    }

    int Meet(T_LINE_G const &a, T_LINE_G const &b, Points &out) const {
        out.Clear();
        if (a.IsCurv == 0 && b.IsCurv == 0)
            MeetLines(a, b, out);
        else if (a.IsCurv != 0 && b.IsCurv != 0)
            MeetArcs(a, b, out);
        else
            MeetArcAndLine(a.IsCurv != 0 ? a : b, a.IsCurv != 0 ? b : a, out);
        return out.Empty() || Overlap(a, b) ? 0 : 1;
    }

    int MeetSorted(T_LINE_G const &a, T_LINE_G const &b, Points &out) const {
        out.Clear();
        T_REGION2D_G const boxA = Box(a);
        T_REGION2D_G const boxB = Box(b);
        if (boxA.MinX > boxB.MaxX || boxB.MinX > boxA.MaxX || boxA.MinY > boxB.MaxY || boxB.MinY > boxA.MaxY)
            return 0;
        Points found;
        if (Meet(a, b, found) == 0)
            return 0;
        MArray<int> order;
        a.SortByDist(found, 1e-9, order);
        for (std::size_t i = found.Size(); i-- > 1;) {
            if (Distance(found[i], found[i - 1]) < 1e-9)
                found.RemoveAt(i);
        }
        out = found;
        return 1;
    }

private:
    int IsOnSegment(Vec3 const &p, Vec3 const &a, Vec3 const &b, T_MBR3D const &box) const {
        double const length = Distance(a, b);
        Vec3 const u = (b - a) / length;
        double const t = MMathFunc::Dot((p - a).Data(), u.Data()) / MMathFunc::Dot(u.Data(), u.Data());
        Vec3 const foot = a + t * u;
        return t >= 0 && t <= length && Distance(p, foot) <= m_tol && box.IsInnerPoint(foot) != 0 ? 1 : 0;
    }

    int IsOnArc(Vec3 const &p, Vec3 const &a, Vec3 const &b, Vec3 const &center) const {
        if (std::fabs(PlanDistance(center, a) - PlanDistance(center, p)) > m_tol)
            return 0;
        T_LINE_G arc;
        arc.Set(a, b, 1, center, {0, 0, 1}, 1, 0.0001);
        double const swept = arc.GetAngleOf(a, p);
        Vec3 moved = p;
        arc.ProjectToLine(moved);
        return 0 <= swept && swept <= arc.GetAngleOf(a, b) && !(Distance(p, moved) > m_tol) ? 1 : 0;
    }

    int IsOnCarrier(Vec3 const &p, T_LINE_G const &curve) const {
        if (Distance(p, curve.Pos1) < m_tol || Distance(p, curve.Pos2) < m_tol)
            return 1;
        if (curve.IsCurv != 0)
            return std::fabs(PlanDistance(curve.Center, curve.Pos1) - PlanDistance(curve.Center, p)) <= m_tol;
        Vec3 const u = (curve.Pos2 - curve.Pos1) / Distance(curve.Pos1, curve.Pos2);
        double const t = MMathFunc::Dot((p - curve.Pos1).Data(), u.Data()) / MMathFunc::Dot(u.Data(), u.Data());
        return Distance(p, curve.Pos1 + t * u) <= m_tol;
    }

    bool Overlap(T_LINE_G const &a, T_LINE_G const &b) const { return LiesOn(a, b) || LiesOn(b, a); }

    bool LiesOn(T_LINE_G const &curve, T_LINE_G const &carrier) const {
        Vec3 middle;
        return IsOnCarrier(curve.Pos1, carrier) != 0 && IsOnCarrier(curve.Pos2, carrier) != 0 &&
               (curve.IsCurv == 0 || (curve.GetLineCenter(middle) != 0 && IsOnCarrier(middle, carrier) != 0));
    }

    void Offer(Vec3 const &p, T_LINE_G const &a, T_LINE_G const &b, Points &out) const {
        if (IsOnCurve(p, a, 1) != 0 && IsOnCurve(p, b, 1) != 0)
            out.PushBack(p);
    }

    void MeetLines(T_LINE_G const &a, T_LINE_G const &b, Points &out) const {
        double gap = 0;
        Vec3 p;
        if (MMathFunc::mathIntersectLine2(a.Pos1.Data(), a.Pos2.Data(), b.Pos1.Data(), b.Pos2.Data(), m_tol, gap,
                                          p.Data()) != 0)
            Offer(p, a, b, out);
    }

    void MeetArcAndLine(T_LINE_G const &arc, T_LINE_G const &line, Points &out) const {
        Vec3 const &p = line.Pos1;
        Vec3 const d = line.Pos2 - line.Pos1;
        Vec3 const &c = arc.Center;
        double const qa = d[0] * d[0] + d[1] * d[1];
        double const qb = 2.0 * ((p[0] - c[0]) * d[0] + (p[1] - c[1]) * d[1]);
        double const qc = c[0] * c[0] + c[1] * c[1] + (p[0] * p[0] + p[1] * p[1]) - 2.0 * (c[0] * p[0] + c[1] * p[1]) -
                          arc.Radius * arc.Radius;
        double const discriminant = qb * qb - 4.0 * qa * qc;
        bool const isTangent = std::fabs(discriminant) < 1e-6;
        if (qa == 0 || (!isTangent && !(discriminant > 0)))
            return;
        double const root = isTangent ? 0.0 : std::sqrt(discriminant);
        for (double const t : {(root - qb) / (2.0 * qa), (-root - qb) / (2.0 * qa)}) {
            Offer({p[0] + t * d[0], p[1] + t * d[1], p[2]}, arc, line, out);
            if (isTangent)
                return;
        }
    }

    void MeetArcs(T_LINE_G const &a, T_LINE_G const &b, Points &out) const {
        double const dx = b.Center[0] - a.Center[0];
        double const dy = b.Center[1] - a.Center[1];
        double const d = std::sqrt(dx * dx + dy * dy);
        if (d < m_tol || a.Radius + b.Radius < d || d + b.Radius < a.Radius || d + a.Radius < b.Radius)
            return;
        double const along = (d * d - b.Radius * b.Radius + a.Radius * a.Radius) / (2.0 * d);
        double const s = std::sqrt(a.Radius * a.Radius - along * along) / d;
        Vec3 const base = {a.Center[0] + dx * along / d, a.Center[1] + dy * along / d, a.Pos1[2]};
        if (std::fabs(s) < 1e-6) {
            Offer(base, a, b, out);
        } else if (s > 0) {
            Offer(base + Vec3(dy * s, -dx * s, 0), a, b, out);
            Offer(base - Vec3(dy * s, -dx * s, 0), a, b, out);
        }
    }

    T_REGION2D_G Box(T_LINE_G const &curve) const {
        T_REGION2D_G box;
        curve.GetMBR2D(box, m_tol);
        if (curve.IsCurv == 0 || curve.IsCircle != 0)
            return box;
        Vec3 const &c = curve.Center;
        double const r = PlanDistance(c, curve.Pos1);
        double a = Direction(curve.Normal[2] >= 0 ? curve.Pos1 : curve.Pos2, c);
        double b = Direction(curve.Normal[2] >= 0 ? curve.Pos2 : curve.Pos1, c);
        if (a > b)
            b += 360;
        box = {std::min(curve.Pos1[0], curve.Pos2[0]), std::min(curve.Pos1[1], curve.Pos2[1]),
               std::max(curve.Pos1[0], curve.Pos2[0]), std::max(curve.Pos1[1], curve.Pos2[1])};
        for (int q = 0; q <= 720; q += 90) {
            if (!(a <= q && q <= b))
                continue;
            (q % 360 == 0     ? box.MaxX
             : q % 360 == 90  ? box.MaxY
             : q % 360 == 180 ? box.MinX
                              : box.MinY) = q % 360 == 0     ? std::max(box.MaxX, c[0] + r)
                                            : q % 360 == 90  ? std::max(box.MaxY, c[1] + r)
                                            : q % 360 == 180 ? std::min(box.MinX, c[0] - r)
                                                             : std::min(box.MinY, c[1] - r);
        }
        return {box.MinX - m_tol, box.MinY - m_tol, box.MaxX + m_tol, box.MaxY + m_tol};
    }

    static double Direction(Vec3 const &p, Vec3 const &center) {
        double const length = PlanDistance(center, p);
        double const degrees =
            MMathFunc::mathCrossAngle2D(1.0, 0.0, (p[0] - center[0]) / length, (p[1] - center[1]) / length);
        return degrees < 0 ? degrees + 360 : degrees;
    }

    double m_tol;
};

/// Random curves, many of them on a small lattice so that ends, tangents, diameters and quarter points coincide.
class CurveSource {
public:
    CurveSource(unsigned seed, double scale) : m_random(seed), m_scale(scale) {}

    T_LINE_G Make() {
        Vec3 const center = {Coordinate(), Coordinate(), m_random() % 8 == 0 ? m_scale : 0.0};
        double const radius = std::max(std::fabs(Coordinate()), m_scale / 8);
        switch (m_random() % 4) {
        case 0:
            return Line(center, {Coordinate(), Coordinate(), m_random() % 8 == 0 ? m_scale : 0.0});
        case 1:
            return Circle(center, radius);
        default:
            return Arc(center, radius, Degrees(), Degrees(), m_random() % 2 == 0 ? 1 : -1, m_random() % 4 != 0);
        }
    }

private:
    double Unit() { return std::uniform_real_distribution<double>(-1.0, 1.0)(m_random); }
    double Coordinate() { return m_scale * (m_random() % 3 == 0 ? Unit() : std::round(4 * Unit()) / 4); }
    double Degrees() { return m_random() % 2 == 0 ? 180 * Unit() : 45.0 * static_cast<double>(m_random() % 8); }

    std::mt19937 m_random;
    double m_scale;
};

} // namespace

TEST(MIntersectUtil, FindsWhereCurvesMeet) {
    double const h = std::sqrt(0.75);
    double const r = std::sqrt(3.0);
    struct Row {
        T_LINE_G a;
        T_LINE_G b;
        int result;
        Points points;
    };
    Row const rows[] = {
        {Line({0, 0, 0}, {4, 0, 0}), Line({1, -1, 0}, {1, 1, 0}), 1, {{1, 0, 0}}},
        {Line({0, 0, 0}, {4, 0, 0}), Line({4, 0, 0}, {5, 3, 0}), 1, {{4, 0, 0}}}, // end to end
        {Line({0, 0, 0}, {4, 0, 0}), Line({2, 0, 0}, {9, 0, 0}), 0, {}},          // overlap
        {Line({0, 0, 0}, {4, 0, 0}), Line({1, 1, 0}, {1, 3, 0}), 0, {}},          // short of it
        {Line({-3, 1, 5}, {3, 1, 5}), Circle({0, 0, 5}, 2), 1, {{-r, 1, 5}, {r, 1, 5}}},
        {Line({3, 1, 5}, {-3, 1, 5}), Circle({0, 0, 5}, 2), 1, {{r, 1, 5}, {-r, 1, 5}}},
        {Line({-3, 0, 0}, {3, 0, 0}), Circle({0, 0, 0}, 2), 0, {}}, // start and middle of the circle are on the line
        {Line({-3, 2, 0}, {3, 2, 0}), Circle({0, 0, 0}, 2), 1, {{0, 2, 0}}}, // tangent
        {Line({-3, 3, 0}, {3, 3, 0}), Circle({0, 0, 0}, 2), 0, {}},
        {Line({-2, 0, 0}, {2, 0, 0}), Circle({0, 0, 0}, 2), 0, {}}, // both ends on the circle
        {Arc({0, 0, 0}, 2, 90, 180), Line({-3, 0.5, 0}, {3, 0.5, 0}), 1, {{-std::sqrt(3.75), 0.5, 0}}},
        {Arc({0, 0, 0}, 1, 0, 180), Arc({1, 0, 0}, 1, 0, 180), 1, {{0.5, h, 0}}},
        {Circle({0, 0, 0}, 1), Circle({1, 0, 0}, 1), 1, {{0.5, h, 0}, {0.5, -h, 0}}}, // along the first circle
        {Circle({0, 0, 0}, 1), Circle({3, 0, 0}, 2), 1, {{1, 0, 0}}},                 // touch
        {Circle({0, 0, 0}, 1), Circle({4, 0, 0}, 2), 0, {}},
        {Circle({0, 0, 0}, 1), Circle({0, 0, 0}, 2), 0, {}},           // concentric
        {Arc({0, 0, 0}, 2, 0, 90), Arc({0, 0, 0}, 2, 45, 180), 0, {}}, // of one circle
    };
    for (Row const &row : rows) {
        for (double const shift : {0.0, 1024.0}) {
            T_LINE_G a = row.a;
            T_LINE_G b = row.b;
            for (T_LINE_G *const curve : {&a, &b}) {
                for (Vec3 *const p : {&curve->Pos1, &curve->Pos2, &curve->Center})
                    *p += Vec3(shift, -shift, 0);
            }
            Points out = {{9, 9, 9}};
            EXPECT_EQ(MIntersectUtil::GetIntersectPointByLine2Line(a, b, out, 1e-6), row.result);
            ASSERT_EQ(out.Size(), row.points.Size()) << &row - rows;
            for (std::size_t i = 0; i < out.Size(); ++i)
                EXPECT_LT(Distance(out[i], row.points[i] + Vec3(shift, -shift, 0)), 1e-9) << &row - rows;
        }
    }
}

TEST(MIntersectUtil, AnOverlapLeavesItsPointWithoutTheBoxRoute) {
    Points out;
    T_LINE_G const chord = Line({-2, 0, 0}, {2, 0, 0});
    EXPECT_EQ(MIntersectUtil::IsIntersectLine2Line(chord, Circle({0, 0, 0}, 2), out, 1e-6), 0);
    EXPECT_EQ(out.Size(), 2u);
    EXPECT_EQ(MIntersectUtil::IsIntersectLine2Line(chord, Circle({0, 9, 0}, 2), out, 1e-6), 0);
    EXPECT_EQ(out.Size(), 0u);
}

TEST(MIntersectUtil, TellsPointsOnCurves) {
    T_LINE_G const line = Line({0, 0, 0}, {4, 0, 0});
    T_LINE_G const arc = Arc({0, 0, 0}, 2, 0, 90);
    T_LINE_G const clockwise = Arc({0, 0, 0}, 2, 0, 90, -1);
    T_LINE_G upright;
    upright.Set({1, 0, 0}, {-1, 0, 0}, 1, {0, 0, 0}, {0, 1, 0}, 0, 1e-9);
    double const h = std::sqrt(2.0);
    struct Row {
        Vec3 p;
        T_LINE_G const &curve;
        int open;
        int closed;
    };
    Row const rows[] = {
        {{1, 0.5e-6, 0}, line, 1, 1},  {{1, 2e-6, 0}, line, 0, 0}, {{4, 0, 0}, line, 0, 1},
        {{4.1, 0, 0}, line, 0, 0},     {{h, h, 0}, arc, 1, 1},     {{-h, h, 0}, arc, 0, 0},
        {{0, 2, 0}, arc, 0, 1},        {{1, 1, 0}, arc, 0, 0},     {{h, h, 0}, clockwise, 0, 0},
        {{-h, h, 0}, clockwise, 1, 1}, {{1, 0, 0}, upright, 0, 0}, {{0, 0, 1}, upright, 0, 0},
    };
    for (Row const &row : rows) {
        EXPECT_EQ(MIntersectUtil::IsPointOnLine(row.p, row.curve, 1e-6, 0), row.open) << row.p[0] << " " << row.p[1];
        EXPECT_EQ(MIntersectUtil::IsPointOnLine(row.p, row.curve, 1e-6, 1), row.closed) << row.p[0] << " " << row.p[1];
    }
    EXPECT_EQ(MIntersectUtil::IsPointOnLine({0, -2, 0}, Circle({0, 0, 0}, 2), 1e-6, 1), 1);
    EXPECT_EQ(MIntersectUtil::IsPointOnLine({0, -2.1, 0}, Circle({0, 0, 0}, 2), 1e-6, 1), 0);
    T_MBR3D box;
    EXPECT_EQ(MIntersectUtil::GetMbr_line(box, arc, 0.5), 1);
    EXPECT_DOUBLE_EQ(box.MaxZ, 2.5);
    EXPECT_DOUBLE_EQ(box.MinX, -2.5);
}

TEST(MIntersectUtil, AgreesWithItsDefinitionOnRandomCurves) {
    struct Frame {
        double scale;
        double tol;
    };
    unsigned seed = 11;
    int meetings = 0;
    for (Frame const &frame :
         {Frame{1, 1e-6}, Frame{1000, 1e-4}, Frame{1e-3, 1e-6}, Frame{1e-2, 1e-9}, Frame{1, 1e-2}}) {
        CurveSource source(++seed, frame.scale);
        ByDefinition const definition(frame.tol);
        for (int i = 0; i < 20000; ++i) {
            T_LINE_G const a = source.Make();
            T_LINE_G const b = source.Make();
            Points expected;
            Points actual;
            ASSERT_EQ(MIntersectUtil::GetIntersectPointByLine2Line(a, b, actual, frame.tol),
                      definition.MeetSorted(a, b, expected))
                << "seed " << seed << " pair " << i;
            ASSERT_EQ(actual, expected) << "seed " << seed << " pair " << i;
            ASSERT_EQ(MIntersectUtil::IsIntersectLine2Line(a, b, actual, frame.tol), definition.Meet(a, b, expected))
                << "seed " << seed << " pair " << i;
            ASSERT_EQ(actual, expected) << "seed " << seed << " pair " << i;
            ASSERT_EQ(MIntersectUtil::IsPointOnLine(a.Pos1, b, frame.tol, i % 2),
                      definition.IsOnCurve(a.Pos1, b, i % 2))
                << "seed " << seed << " pair " << i;
            meetings += static_cast<int>(actual.Size());
        }
    }
    EXPECT_GT(meetings, 20000);
}
