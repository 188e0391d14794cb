#include "zvi/curves/MDomainMaker.h"

#include "tests/Rows.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace zvi::lib::test {

namespace {

using Points = std::vector<DM_VTEX>;

struct Curve {
    unsigned int id;
    DM_VTEX from, to;
};

std::vector<Curve> operator+(std::vector<Curve> curves, std::vector<Curve> const &added) {
    curves.insert(curves.end(), added.begin(), added.end());
    return curves;
}

/// A closed ring of straight curves with the ids `firstId`, `firstId` + 1, ...
std::vector<Curve> Ring(unsigned int firstId, Points const &corners) {
    std::vector<Curve> ring;
    for (std::size_t i = 0; i < corners.size(); ++i)
        ring.push_back({firstId + static_cast<unsigned int>(i), corners[i], corners[(i + 1) % corners.size()]});
    return ring;
}

void AddRing(MDomainMaker &maker, unsigned int firstId, Points const &corners) {
    for (Curve const &curve : Ring(firstId, corners))
        maker.AddCurv(curve.id, curve.from, curve.to);
}

/// A square about the origin, turned a little so that nothing is level or upright.
Points Square(double radius) {
    return {{-radius, -0.1 * radius}, {0.1 * radius, -radius}, {radius, 0.1 * radius}, {-0.1 * radius, radius}};
}

using Ints = std::vector<int>;

Ints Values(MArray<int> const &values) {
    return {values.begin(), values.end()};
}

double SignedArea(MDomainMaker &maker, DM_SURF_SUB const &loop) {
    MArray<DM_VTEX> coordinates;
    maker.GetResultVtexCoord(coordinates);
    double twice = 0;
    for (std::size_t i = 0; i + 1 < loop.Vtex.Size(); ++i) {
        DM_VTEX const &p = coordinates[static_cast<std::size_t>(loop.Vtex[i])];
        DM_VTEX const &q = coordinates[static_cast<std::size_t>(loop.Vtex[i + 1])];
        twice += p.x * q.y - q.x * p.y;
    }
    return twice / 2;
}

std::size_t VtexCount(MDomainMaker &maker) {
    MArray<DM_VTEX> coordinates;
    maker.GetResultVtexCoord(coordinates);
    return coordinates.Size();
}

} // namespace

TEST(MDomainMaker, MergesEndsNearerThanTheToleranceInBothCoordinates) {
    for (auto const &[x, y, vertices] : Rows<double, double, std::size_t>(
             "0.00009 -0.00009 2; 0.0001 0 3; 0 0.0001 3; -0.00009999 0.00009999 2; nan 0 3")) {
        MDomainMaker maker;
        maker.AddCurv(1, {0, 0}, {5, 5});
        maker.AddCurv(2, {x, y}, {5, 5});
        EXPECT_EQ(VtexCount(maker), vertices) << x << ' ' << y;
    }
}

TEST(MDomainMaker, IgnoresMidPointsItHasNoUseFor) {
    MDomainMaker maker;
    MArray<DM_VTEX> two = {{0, 0}, {1, 1}};
    maker.AddCurvedCurvOnce(1, two);
    EXPECT_EQ(VtexCount(maker), 0u);
    maker.AddCurv(1, {0, 0}, {1, 1});
    maker.AddCurvMidPoint(2, two);
    MArray<DM_VTEX> none;
    maker.AddCurvMidPoint(1, none);
    EXPECT_EQ(VtexCount(maker), 2u);
}

// A loop begins at its leftmost vertex. The first corner with a chord is the one after that; the right half starts
// there, the left one at the other end of the chord. Holes run the other way.
TEST(MDomainMaker, FindsTheDomainsOfSmallFigures) {
    struct Domain {
        Ints curves, directions = {}, hole = {};
    };
    struct Figure {
        std::vector<Curve> curves;
        std::vector<Domain> domains;
    };
    Points const square = Square(1);
    Figure const figures[] = {
        {Ring(11, square), {{{11, 12, 13, 14}}}},
        {Ring(1, square) + std::vector<Curve>{{5, square[3], square[1]}},
         {{{2, 3, 5}, {0, 0, 0}}, {{4, 1, 5}, {0, 0, 1}}}},
        // Squares within squares: each is a hole of the one around it, and a domain.
        {Ring(1, square) + Ring(5, Square(3)) + Ring(9, Square(2)),
         {{{5, 6, 7, 8}, {}, {12, 11, 10, 9}}, {{9, 10, 11, 12}, {}, {4, 3, 2, 1}}, {{1, 2, 3, 4}}}},
        // What encloses nothing: an edge that dangles inside and goes on, the first curve once more and turned, one
        // without a length, an open polyline.
        {Ring(1, square) + std::vector<Curve>{{20, square[0], {0, 0}},
                                              {21, {0, 0}, {0.2, 0.1}},
                                              {30, square[1], square[0]},
                                              {31, square[2], square[2]},
                                              {40, {5, 5}, {6, 7}},
                                              {41, {6, 7}, {9, 7}}},
         {{{1, 2, 3, 4}}}},
    };
    for (Figure const &figure : figures) {
        SCOPED_TRACE(testing::Message() << "figure " << &figure - figures);
        MDomainMaker maker;
        for (Curve const &curve : figure.curves)
            maker.AddCurv(curve.id, curve.from, curve.to);
        maker.MakeDomain();
        MArray<DM_SURF> surfs;
        maker.GetResultSurf(surfs);
        ASSERT_EQ(surfs.Size(), figure.domains.size());
        for (std::size_t i = 0; i < surfs.Size(); ++i) {
            Domain const &expected = figure.domains[i];
            EXPECT_EQ(Values(surfs[i].Curv), expected.curves);
            EXPECT_EQ(Values(surfs[i].CurvDir), expected.directions);
            EXPECT_EQ(surfs[i].Vtex.Size(), expected.curves.size() + 1);
            EXPECT_GT(SignedArea(maker, surfs[i]), 0);
            ASSERT_EQ(surfs[i].Holes.Size(), expected.hole.empty() ? 0u : 1u);
            EXPECT_TRUE(expected.hole.empty() || Values(surfs[i].Holes[0].Curv) == expected.hole);
            EXPECT_TRUE(expected.hole.empty() || SignedArea(maker, surfs[i].Holes[0]) < 0);
        }
    }
}

TEST(MDomainMaker, CopiesShareNothing) {
    MDomainMaker original;
    AddRing(original, 1, Square(3));
    MDomainMaker copy(original);
    AddRing(copy, 5, Square(1));
    MDomainMaker assigned;
    assigned = copy;
    original.MakeDomain();
    copy.MakeDomain();
    EXPECT_EQ(original.GetResultSurf().Size(), 1u);
    EXPECT_EQ(copy.GetResultSurf().Size(), 2u);
    EXPECT_EQ(assigned.GetResultSurf().Size(), 0u);
    assigned.MakeDomain();
    EXPECT_EQ(assigned.GetResultSurf().Size(), 2u);
    MArray<DM_SURF> out;
    copy.GetResultSurf(out);
    out[0].Curv[0] = -7;
    EXPECT_NE(copy.GetResultSurf()[0].Curv[0], -7);
}

// Coordinates that are no places must not bring it down; what is sound beside them is still found.
TEST(MDomainMaker, SurvivesCoordinatesBeyondAllMeasure) {
    double const huge = std::numeric_limits<double>::max();
    double const infinite = std::numeric_limits<double>::infinity();
    for (double const odd : {std::nan(""), huge, -huge, infinite, 1e-310}) {
        MDomainMaker maker;
        AddRing(maker, 1, Square(1));
        AddRing(maker, 5, {{odd, 0}, {1, odd}, {odd, odd}, {2, 2}});
        AddRing(maker, 9, {{-odd, 3}, {odd, 4}, {5, 5}});
        maker.MakeDomain();
        EXPECT_FALSE(maker.GetResultSurf().Empty());
    }
}

// On a triangulated grid the domains are the bounded faces, two a square, and their areas sum up to the area within the
// rim.
TEST(MDomainMaker, FindsEveryFaceOfAMesh) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> jitter(-0.2, 0.2); // from 0.25 on a diagonal could leave its square
    int const size = 100;                                     // enough for the vertices to be numbered anew
    auto const isRim = [](int i) { return i == 0 || i == size - 1; };
    Points points;
    for (int i = 0; i < size * size; ++i) {
        double const reach = isRim(i % size) || isRim(i / size) ? 0 : 1;
        points.push_back({i % size + reach * jitter(random), i / size + reach * jitter(random)});
    }
    std::vector<std::pair<int, int>> edges;
    for (int i = 0; i < size * size; ++i) {
        bool const hasRight = i % size + 1 < size;
        bool const hasUpper = i + size < size * size;
        if (hasRight)
            edges.push_back({i, i + 1});
        if (hasUpper)
            edges.push_back({i + size, i});
        if (hasRight && hasUpper)
            edges.push_back({i, i + size + 1});
    }
    std::shuffle(edges.begin(), edges.end(), random);
    MDomainMaker maker;
    unsigned int id = 0;
    for (auto const &[from, to] : edges)
        maker.AddCurv(++id, points[static_cast<std::size_t>(from)], points[static_cast<std::size_t>(to)]);
    maker.MakeDomain();
    MArray<DM_SURF> const &surfs = maker.GetResultSurf();
    EXPECT_EQ(surfs.Size(), 2u * (size - 1) * (size - 1));
    double area = 0;
    for (DM_SURF const &surf : surfs) {
        EXPECT_EQ(surf.Curv.Size(), 3u);
        area += SignedArea(maker, surf);
    }
    EXPECT_NEAR(area, (size - 1.0) * (size - 1.0), 1e-9);
}

} // namespace zvi::lib::test
