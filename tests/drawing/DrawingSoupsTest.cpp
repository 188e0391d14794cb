#include "zvi/drawing/MakeDrawingDomains.h"

#include "tests/drawing/DrawingFixtures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <random>
#include <set>

using namespace zvi::lib;
using namespace drawing_fixtures;

namespace {

constexpr double kPi = 3.14159265358979323846;

DrawingCurve Line(DrawingPoint a, DrawingPoint b) {
    DrawingCurve c;
    c.start = a;
    c.end = b;
    return c;
}

DrawingCurve Arc(DrawingPoint center, double radius, double from, double to, bool clockwise) {
    DrawingCurve c;
    c.type = DrawingCurveType::kArc;
    c.center = center;
    c.radius = radius;
    c.clockwise = clockwise;
    c.start = {center.x + radius * std::cos(from), center.y + radius * std::sin(from)};
    c.end = {center.x + radius * std::cos(to), center.y + radius * std::sin(to)};
    return c;
}

/// Curves thrown at random. On the lattice their points are small whole numbers, which makes shared ends, overlaps,
/// tangents and crossings in one point common; `noise` shakes every number afterwards.
std::vector<DrawingCurve> Soup(unsigned seed, int count, bool lattice, double noise) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    auto const number = [&](double low, double high) {
        double const v = low + unit(random) * (high - low);
        return (lattice ? std::round(v) : v) + noise * (unit(random) - 0.5);
    };
    std::vector<DrawingCurve> curves;
    for (int i = 0; i < count; ++i) {
        DrawingPoint const p{number(0, 8), number(0, 8)};
        double const radius = std::fabs(number(1, 3));
        switch (random() % 3) {
        case 0:
            curves.push_back(Line(p, {number(0, 8), number(0, 8)}));
            break;
        case 1: {
            double const quarter = lattice ? 0.5 * kPi : 1.0;
            bool const clockwise = random() % 2 == 0;
            double const to = quarter * number(0, 4);
            double const from = quarter * number(0, 4);
            curves.push_back(Arc(p, radius, from, to, clockwise));
            break;
        }
        default:
            curves.push_back(Arc(p, radius, 0.0, 0.0, false));
            curves.back().type = DrawingCurveType::kCircle;
        }
        curves.back().id = static_cast<unsigned int>(i) + 1;
    }
    return curves;
}

/// Faces of a plane graph are edges - vertices + parts. The edges are the stretches between the fractions that pieces
/// begin and end at, the vertices the points that stand there.
class EulerCount {
public:
    explicit EulerCount(DrawingResult const &result) {
        for (DrawingDomain const &d : result.domains) {
            AddAll(d.outer);
            for (auto const &hole : d.holes)
                AddAll(hole);
        }
        for (DrawingLeftover const &left : result.leftovers)
            if (left.reason == LeftoverReason::kDangle || left.reason == LeftoverReason::kBridge)
                Add(left.piece);
    }

    int Faces() {
        int edges = 0;
        for (auto &[id, stretches] : curves)
            for (auto const &[from, to] : stretches) {
                auto const begin = ends[id].find(from), end = ends[id].find(to);
                for (auto at = begin; at != end; ++at)
                    if (counted.insert({id, at->first}).second) {
                        ++edges;
                        Unite(at->second, std::next(at)->second);
                    }
            }
        int parts = 0;
        for (auto const &[v, parent] : link)
            parts += v == parent;
        return edges - static_cast<int>(link.size()) + parts;
    }

private:
    using Point = std::pair<double, double>;

    void AddAll(std::vector<DrawingPiece> const &loop) {
        for (DrawingPiece const &p : loop)
            Add(p);
    }
    void Add(DrawingPiece const &p) {
        DrawingPoint const a = p.reversed ? p.end : p.start, b = p.reversed ? p.start : p.end;
        ends[p.curve].emplace(p.from, Point(a.x, a.y));
        ends[p.curve].emplace(p.to, Point(b.x, b.y));
        curves[p.curve].insert({p.from, p.to});
    }
    Point Root(Point v) {
        link.emplace(v, v);
        while (link[v] != v)
            v = link[v];
        return v;
    }
    void Unite(Point a, Point b) {
        Point const u = Root(a), v = Root(b);
        link[u] = v;
    }

    std::map<unsigned int, std::map<double, Point>> ends;
    std::map<unsigned int, std::set<std::pair<double, double>>> curves;
    std::set<std::pair<unsigned int, double>> counted;
    std::map<Point, Point> link;
};

} // namespace

TEST(DrawingSoups, KeepTheBalanceOfFacesEdgesAndPlaces) {
    for (unsigned seed = 1; seed <= 600; ++seed) {
        bool const lattice = seed % 2 == 0;
        double const noises[] = {0.0, 1e-13, 1e-9, 1e-6};
        std::vector<DrawingCurve> const curves =
            Soup(seed, 4 + static_cast<int>(seed % 23), lattice, noises[seed / 2 % 4]);
        DrawingResult const result = MakeDrawingDomains(curves);
        ASSERT_EQ(WhatIsWrong(curves, result), "") << "seed " << seed;
        ASSERT_EQ(EulerCount(result).Faces(), static_cast<int>(result.domains.size())) << "seed " << seed;
    }
}

TEST(DrawingSoups, LoseNothingWhateverIsSwitchedOff) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::vector<DrawingCurve> const curves = Soup(seed, 12, seed % 2 == 0, 0.0);
        for (DrawingOptions const &options : {DrawingOptions{0.0, true, false}, DrawingOptions{1e-4, true, true},
                                              DrawingOptions{1e-4, false, false}, DrawingOptions{1e-2, true, false}}) {
            std::string const wrong = WhatIsWrong(curves, MakeDrawingDomains(curves, options));
            // Curves that cross uncut enclose no clear areas, but none may be lost or used twice.
            bool const isFine =
                options.split ? wrong.empty()
                              : wrong.find("lost") == std::string::npos && wrong.find("twice") == std::string::npos;
            ASSERT_TRUE(isFine) << wrong << "seed " << seed << " join " << options.joinTolerance << " split "
                                << options.split << " keep " << options.keepDuplicates;
        }
    }
}

TEST(DrawingSoups, AnswerWildNumbers) {
    double const inf = std::numeric_limits<double>::infinity();
    double const wild[] = {0.0, -0.0, 1.0, 1e-320, 1e-160, 1e-9, 1e9, 1e149, 1e160, 1e308, inf, -inf, std::nan("")};
    std::mt19937 random(7);
    auto const any = [&] { return wild[random() % std::size(wild)]; };
    for (int round = 0; round < 3000; ++round) {
        std::vector<DrawingCurve> curves(1 + random() % 6);
        for (DrawingCurve &c : curves) {
            c.id = static_cast<unsigned int>(random() % 3); // 0 and repeated ids are carried through
            c.type = static_cast<DrawingCurveType>(random() % 3);
            c.start = {any(), any()};
            c.end = {any(), any()};
            c.center = {any(), any()};
            c.radius = any();
            c.clockwise = random() % 2 == 0;
        }
        DrawingOptions options;
        options.joinTolerance = any();
        DrawingResult const result = MakeDrawingDomains(curves, options);
        for (DrawingDomain const &d : result.domains)
            ASSERT_TRUE(std::isfinite(d.area)) << "round " << round;
        ASSERT_FALSE(result.domains.empty() && result.leftovers.empty());
    }
}

TEST(DrawingSoups, BearManyCurvesInOnePlace) {
    std::vector<DrawingCurve> curves;
    for (int i = 0; i < 5000; ++i)
        curves.push_back(Arc({1.0, 2.0}, 3.0, 0.0, kPi, i % 2 == 0));
    EXPECT_EQ(MakeDrawingDomains(curves).domains.size(), 1u);
    EXPECT_EQ(MakeDrawingDomains(curves).counts.duplicates, 4998);

    curves.clear(); // a wheel with more spokes than any circle of directions has room for
    int const spokes = 3000;
    for (int i = 0; i < spokes; ++i) {
        double const a = 2.0 * kPi * i / spokes, b = 2.0 * kPi * (i + 1) / spokes;
        curves.push_back(Arc({0.0, 0.0}, 100.0, a, b, false));
        curves.push_back(Line({0.0, 0.0}, curves.back().start));
    }
    DrawingResult const wheel = MakeDrawingDomains(curves);
    EXPECT_EQ(wheel.domains.size(), static_cast<std::size_t>(spokes));
    EXPECT_NEAR(TotalArea(wheel), 1e4 * kPi, 1e-6);
}

TEST(DrawingSoups, GiveTheSameFarAwayAndAtAnySize) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        std::vector<DrawingCurve> const curves = Soup(seed, 15, seed % 2 == 0, 0.0);
        DrawingResult const here = MakeDrawingDomains(curves);
        struct Move {
            double scale, x, y;
        };
        for (Move const m : {Move{1.0, 4194304.0, -8388608.0}, Move{0x1p-20, 0.0, 0.0}, Move{0x1p30, 0.0, 0.0}}) {
            std::vector<DrawingCurve> moved = curves;
            for (DrawingCurve &c : moved) {
                for (DrawingPoint *p : {&c.start, &c.end, &c.center})
                    *p = {p->x * m.scale + m.x, p->y * m.scale + m.y};
                c.radius *= m.scale;
            }
            DrawingOptions options;
            options.joinTolerance *= m.scale;
            DrawingResult const there = MakeDrawingDomains(moved, options);
            ASSERT_EQ(there.domains.size(), here.domains.size()) << "seed " << seed << " scale " << m.scale;
            ASSERT_NEAR(TotalArea(there) / (m.scale * m.scale), TotalArea(here), 1e-5 * TotalArea(here));
        }
    }
}
