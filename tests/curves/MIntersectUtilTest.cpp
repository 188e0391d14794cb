#include "zvi/curves/MIntersectUtil.h"

#include "tests/curves/CurveFixtures.h"
#include "zvi/curves/T_LINE2D_G.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>

namespace zvi::lib::test {

namespace {

/// Whether the point lies on the arc, from its angles alone; the code takes them only where nothing quicker is certain.
int IsOnArcByAngles(Vec3 const &p, T_LINE_G const &arc, double tol, int withEnds) {
    if (std::fabs(arc.Normal[2]) < 1e-9)
        return 0;
    Vec3 const &a = arc.Normal[2] < 0 ? arc.Pos2 : arc.Pos1;
    Vec3 const &b = arc.Normal[2] < 0 ? arc.Pos1 : arc.Pos2;
    T_MBR3D box;
    box.SetWithCurv(a, b, tol, arc.Center);
    if (box.IsInnerPoint(p) == 0)
        return 0;
    if (Distance(p, a) < tol || Distance(p, b) < tol)
        return withEnds;
    double const radius = std::hypot(a[0] - arc.Center[0], a[1] - arc.Center[1]);
    if (std::fabs(radius - std::hypot(p[0] - arc.Center[0], p[1] - arc.Center[1])) > tol)
        return 0;
    T_LINE_G const range = T_LINE_G().Set(a, b, 1, arc.Center, {0, 0, 1}, 1, kTol);
    double const swept = range.GetAngleOf(a, p);
    Vec3 moved = p;
    range.ProjectToLine(moved);
    return 0 <= swept && swept <= range.GetAngleOf(a, b) && !(Distance(p, moved) > tol) ? 1 : 0;
}

/// Nearer than this to a line or circle a point is on neither side of it.
constexpr double kNoSide = 1e-9;

/// Where `b`, followed in small steps, passes from one side of the carrier of `a` to the other, seen in plan.
Points Passages(T_LINE_G const &a, T_LINE_G const &b) {
    auto const at = [&](double ratio) {
        Vec3 p;
        b.GetPosByRatio(p, ratio);
        return p;
    };
    auto const side = [&](Vec3 const &p) {
        if (a.IsCurv != 0)
            return std::hypot(p[0] - a.Center[0], p[1] - a.Center[1]) - a.Radius;
        Vec3 const d = a.Pos2 - a.Pos1;
        return d[0] * (p[1] - a.Pos1[1]) - d[1] * (p[0] - a.Pos1[0]);
    };
    Points found;
    for (int k = 0; k < 64; ++k) {
        double low = k / 64.0;
        double high = (k + 1) / 64.0;
        if (!(side(at(low)) * side(at(high)) < 0) || std::fabs(side(at(low))) < kNoSide)
            continue;
        for (int halving = 0; halving < 40; ++halving) {
            double const middle = (low + high) / 2;
            (side(at(low)) * side(at(middle)) < 0 ? high : low) = middle;
        }
        found.PushBack(at(low));
    }
    return found;
}

bool AreBoxesApart(T_LINE_G const &a, T_LINE_G const &b, double tol) {
    T_REGION2D_G boxA, boxB;
    a.GetMBR2D(boxA, tol);
    b.GetMBR2D(boxB, tol);
    return boxA.MinX > boxB.MaxX || boxB.MinX > boxA.MaxX || boxA.MinY > boxB.MaxY || boxB.MinY > boxA.MaxY;
}

/// Random curves, many of them on a small lattice so that ends, tangents, diameters and quarter points coincide, or as
/// good as.
class CurveSource {
public:
    CurveSource(unsigned seed, double scale) : m_random(seed), m_scale(scale) {}

    T_LINE_G Make() {
        Vec3 const center = {Coordinate(), Coordinate(), Height()};
        double const radius = std::max(std::fabs(Coordinate()), m_scale / 8);
        switch (Pick(4)) {
        case 0:
            return Line(center, {Coordinate(), Coordinate(), Height()});
        case 1:
            return Circle(center, radius);
        default:
            T_LINE_G arc = Arc(center, radius, Degrees(), Degrees(), Pick(2) == 0 ? 1 : -1);
            arc.Is2D = Pick(4) != 0;
            return arc;
        }
    }

    /// A point about as near to the curve as the tolerance, half of them at its ends and quarters.
    Vec3 Beside(T_LINE_G const &curve, double tol) {
        Vec3 p;
        curve.GetPosByRatio(p, Pick(2) == 0 ? Pick(5) * 0.25 : std::fabs(Unit()));
        return p + Vec3(Unit(), Unit(), Pick(8) == 0 ? Unit() : 0.0) * tol;
    }

private:
    int Pick(unsigned count) { return static_cast<int>(m_random() % count); }
    double Unit() { return std::uniform_real_distribution<double>(-1.0, 1.0)(m_random); }
    double Coordinate() { return m_scale * (Pick(3) == 0 ? Unit() : std::round(4 * Unit()) / 4); }
    double Height() { return Pick(8) == 0 ? m_scale : 0.0; }
    double Degrees() { return Pick(2) == 0 ? 180 * Unit() : 45.0 * Pick(8) + Pick(2) * 1e-13; }

    std::mt19937 m_random;
    double m_scale;
};

} // namespace

TEST(MIntersectUtil, FindsWhereCurvesMeet) {
    double const h = std::sqrt(0.75);
    double const r = std::sqrt(3.0);
    double const near = std::sqrt(4 * 5e-7);
    double const nearer = std::sqrt(1.5e-8 * 4 / 3);
    struct Row {
        T_LINE_G a, b;
        int result;
        Points points;
    };
    Row const rows[] = {
        {Line({0, 0, 0}, {4, 0, 0}), Line({1, -1, 0}, {1, 1, 0}), 1, {{1, 0, 0}}},
        {Line({0, 0, 0}, {4, 0, 0}), Line({4, 0, 0}, {5, 3, 0}), 1, {{4, 0, 0}}},       // end to end
        {Line({0, 0, 0}, {4, 0, 0}), Line({2, 0, 0}, {9, 0, 0}), 0, {}},                // overlap
        {Line({0, 0, 0}, {4, 0, 0}), Line({1, 1, 0}, {1, 3, 0}), 0, {}},                // short of it
        {Line({0, 0, 0}, {4, 0, 0}), Line({0.995, -9e-7, 0}, {1.005, 9e-7, 0}), 0, {}}, // the second lies on the first
        {Line({0.995, -9e-7, 0}, {1.005, 9e-7, 0}), Line({0, 0, 0}, {4, 0, 0}), 0, {}},
        {Line({-3, 1, 5}, {3, 1, 5}), Circle({0, 0, 6}, 2), 1, {{-r, 1, 5}, {r, 1, 5}}}, // at the height of the line
        {Line({3, 1, 5}, {-3, 1, 5}), Circle({0, 0, 5}, 2), 1, {{r, 1, 5}, {-r, 1, 5}}},
        {Line({-3, 0, 0}, {3, 0, 0}), Circle({0, 0, 0}, 2), 0, {}}, // start and middle of the circle are on the line
        {Line({-3, 2, 0}, {3, 2, 0}), Circle({0, 0, 0}, 2), 1, {{0, 2, 0}}}, // tangent
        {Line({-3, 3, 0}, {3, 3, 0}), Circle({0, 0, 0}, 2), 0, {}},
        {Line({-3, 2 - 5e-7, 0}, {3, 2 - 5e-7, 0}), Circle({0, 0, 0}, 2), 1, {{-near, 2, 0}, {near, 2, 0}}},
        {Line({-2, 0, 0}, {2, 0, 0}), Circle({0, 0, 0}, 2), 0, {}}, // both ends on the circle
        {Arc({0, 0, 0}, 2, 90, 180), Line({-3, 0.5, 0}, {3, 0.5, 0}), 1, {{-std::sqrt(3.75), 0.5, 0}}},
        {Arc({0, 0, 0}, 1, 0, 180), Arc({1, 0, 0}, 1, 0, 180), 1, {{0.5, h, 0}}},
        {Circle({0, 0, 1}, 1), Circle({1, 0, 0}, 1), 1, {{0.5, h, 1}, {0.5, -h, 1}}}, // along the first circle
        {Circle({0, 0, 0}, 1), Circle({3, 0, 0}, 2), 1, {{1, 0, 0}}},                 // touch
        {Circle({0, 0, 0}, 1), Circle({3 - 1.5e-8, 0, 0}, 2), 1, {{1, nearer, 0}, {1, -nearer, 0}}},
        {Circle({0, 0, 0}, 1), Circle({4, 0, 0}, 2), 0, {}},
        {Circle({0, 0, 0}, 1), Circle({0, 0, 0}, 2), 0, {}},                // concentric
        {Arc({0, 0, 0}, 2, 0, 90), Arc({0, 0, 0}, 2, 45, 180), 0, {}},      // of one circle
        {Arc({0, 0, 0}, 1, -20, 20), Arc({0, 2e-6, 0}, 1, -80, 80), 0, {}}, // the shorter lies on the longer
        {Arc({0, 2e-6, 0}, 1, -80, 80), Arc({0, 0, 0}, 1, -20, 20), 0, {}},
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
                EXPECT_LT(Distance(out[i], row.points[i] + Vec3(shift, -shift, 0)), 1e-6) << &row - rows;
        }
    }
}

TEST(MIntersectUtil, AnOverlapLeavesItsPointWithoutTheBoxRoute) {
    using Row = std::tuple<T_LINE_G, T_LINE_G, std::size_t>;
    for (auto const &[a, b, count] :
         {Row{Line({-2, 0, 0}, {2, 0, 0}), Circle({0, 0, 0}, 2), 2},
          Row{Line({-2, 0, 0}, {2, 0, 0}), Circle({0, 9, 0}, 2), 0},
          Row{Circle({0, 0, 0}, 2), Circle({0, 5e-7, 0}, 2), 0}}) { // concentric within the tolerance
        Points out;
        EXPECT_EQ(MIntersectUtil::IsIntersectLine2Line(a, b, out, 1e-6), 0);
        EXPECT_EQ(out.Size(), count);
    }
}

TEST(MIntersectUtil, TellsPointsOnCurves) {
    T_LINE_G const line = Line({0, 0, 0}, {4, 0, 0});
    T_LINE_G const arc = Arc({0, 0, 0}, 2, 0, 90);
    T_LINE_G const clockwise = Arc({0, 0, 0}, 2, 0, 90, -1);
    T_LINE_G const circle = Circle({0, 0, 0}, 2);
    T_LINE_G const rising = Helix({0, 0, 0}, 2, 0, 90, 1, 0, 1);
    T_LINE_G const tiny = Arc({0, 0, 0}, 1000, 0, 1e-5);
    T_LINE_G const almost = Arc({0, 0, 0}, 1, 0, 359.998); // its ends are too near for a range by angles
    T_LINE_G const upright = T_LINE_G().Set({1, 0, 0}, {-1, 0, 0}, 1, {0, 0, 0}, {0, 1, 0}, 0, kTol);
    double const h = std::sqrt(2.0);
    using Row = std::tuple<Vec3, T_LINE_G const &, int, int>;
    for (auto const &[p, curve, open, closed] : std::initializer_list<Row>{
             {{1, 0.5e-6, 0}, line, 1, 1},
             {{1, 2e-6, 0}, line, 0, 0},
             {{4, 0, 0}, line, 0, 1},
             {{4.1, 0, 0}, line, 0, 0},
             {{h, h, 0}, arc, 1, 1},
             {{-h, h, 0}, arc, 0, 0},
             {{0, 2, 0}, arc, 0, 1},
             {{1, 1, 0}, arc, 0, 0},
             {{h, h, 0}, clockwise, 0, 0},
             {{-h, h, 0}, clockwise, 1, 1},
             {{1, 0, 0}, upright, 0, 0},
             {{0, 0, 1}, upright, 0, 0},
             {{0, 1, 0}, almost, 0, 0},
             {{0, 1000, 0}, tiny, 0, 0},
             {{h, h, 0.5}, rising, 1, 1},
             {{0, -2, 0}, circle, 1, 1},
             {{0, -2.1, 0}, circle, 0, 0},
         }) {
        EXPECT_EQ(MIntersectUtil::IsPointOnLine(p, curve, 1e-6, 0), open) << p[0] << ' ' << p[1];
        EXPECT_EQ(MIntersectUtil::IsPointOnLine(p, curve, 1e-6, 1), closed) << p[0] << ' ' << p[1];
    }
}

TEST(MIntersectUtil, FindsAllMeetingsOfRandomCurvesInOrder) {
    unsigned seed = 11;
    int passages = 0;
    for (auto const &[scale, tol] : {std::pair{1.0, 1e-6}, {1e3, 1e-4}, {1e-3, 1e-6}, {1e-2, 1e-9}, {1.0, 1e-2}}) {
        CurveSource source(++seed, scale);
        for (int i = 0; i < 5000; ++i) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " pair " << i);
            T_LINE_G const a = source.Make();
            T_LINE_G const b = source.Make();
            for (T_LINE_G const *arc : {&a, &b}) {
                for (Vec3 const &p : {a.Pos1, source.Beside(*arc, tol), source.Beside(*arc, tol)})
                    ASSERT_TRUE(arc->IsCurv == 0 || MIntersectUtil::IsPointOnLine(p, *arc, tol, i % 2) ==
                                                        IsOnArcByAngles(p, *arc, tol, i % 2));
            }
            Points met, ordered;
            int const result = MIntersectUtil::IsIntersectLine2Line(a, b, met, tol);
            double const z = a.Pos1[2];
            bool const isLevel = a.Pos2[2] == z && b.Pos1[2] == z && b.Pos2[2] == z;
            // In a tiny drawing every line that meets a circle counts as its tangent.
            Points const candidates = isLevel && scale >= 1 ? Passages(a, b) : Points();
            for (Vec3 const &p : candidates) {
                if (MIntersectUtil::IsPointOnLine(p, a, tol, 0) == 0 ||
                    MIntersectUtil::IsPointOnLine(p, b, tol, 0) == 0)
                    continue;
                auto const isHere = [&p, near = 1e-5 * scale](Vec3 const &q) { return Distance(p, q) < near; };
                ASSERT_TRUE(std::any_of(met.begin(), met.end(), isHere));
                ++passages;
            }
            // By way of the boxes the same comes in order and without repeats.
            if (MIntersectUtil::GetIntersectPointByLine2Line(a, b, ordered, tol) == 0) {
                ASSERT_TRUE(ordered.Empty() && (result == 0 || AreBoxesApart(a, b, tol)));
                continue;
            }
            MArray<int> order;
            a.SortByDist(met, 1e-9, order);
            if (met.Size() == 2 && Distance(met[0], met[1]) < 1e-9)
                met.RemoveAt(1);
            ASSERT_TRUE(result == 1 && ordered == met);
        }
    }
    EXPECT_GT(passages, 3000);
}

} // namespace zvi::lib::test
