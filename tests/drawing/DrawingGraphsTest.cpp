#include "tests/drawing/CoveredArea.h"
#include "tests/drawing/DrawingFamilies.h"
#include "tests/drawing/DrawingInvariants.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/drawing/MakeDrawingDomains.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>

namespace zvi::lib::test {

namespace {

/// How many graphs are tried; the environment may ask for more.
int GraphCount() {
    char const *const wanted = std::getenv("ZVI_RANDOM_GRAPHS");
    return wanted ? std::atoi(wanted) : 1000;
}

/// A random plane graph: a net of squares with one diagonal each, bent and with holes. Some nets stand on whole
/// numbers, so that edges are parallel to the axes and leftmost places tie; the others are shaken and turned. Taking
/// many edges out leaves tails, bridges, cut places and parts within parts. Some edges are arcs, some of those two over
/// one chord.
class GraphMaker {
public:
    explicit GraphMaker(std::uint64_t seed) : m_dice(seed) {}

    std::vector<DrawingCurve> Make() {
        int const size = m_dice.Whole(2, 7);
        m_share = m_dice.Real(0.35, 1.0);
        m_arcShare = m_dice.Chance(0.33) ? 0.0 : m_dice.Real(0.0, 0.7);
        double const shake = m_dice.Chance(0.3) ? 0.0 : 0.15;
        Motion motion;
        motion.turn = shake == 0.0 ? 0.0 : m_dice.Real(0.0, 6.3);
        motion.scale = std::pow(10.0, m_dice.Real(0.0, 3.0));
        motion.shift = {m_dice.Real(-1e5, 1e5), m_dice.Real(-1e5, 1e5)};
        std::vector<DrawingCurve> places;
        for (int j = 0; j <= size; ++j)
            for (int i = 0; i <= size; ++i)
                places.push_back(
                    LineOf({i + m_dice.Real(-shake, shake), j + m_dice.Real(-shake, shake)}, DrawingPoint()));
        places = Moved(places, motion);
        auto const at = [&](int i, int j) { return places[static_cast<std::size_t>(j * (size + 1) + i)].start; };
        for (int j = 0; j <= size; ++j)
            for (int i = 0; i <= size; ++i) {
                if (i < size)
                    Add(at(i, j), at(i + 1, j));
                if (j < size)
                    Add(at(i, j), at(i, j + 1));
                if (i < size && j < size)
                    m_dice.Chance(0.5) ? Add(at(i, j), at(i + 1, j + 1)) : Add(at(i + 1, j), at(i, j + 1));
            }
        return m_dice.Shuffled(std::move(m_curves));
    }

private:
    void Add(DrawingPoint a, DrawingPoint b) {
        if (!m_dice.Chance(m_share))
            return;
        if (m_dice.Chance(0.5))
            std::swap(a, b);
        if (!m_dice.Chance(m_arcShare))
            return Add(LineOf(a, b));
        double const rise = m_dice.Real(0.005, 0.05);
        Add(ArcOver(a, b, m_dice.Chance(0.5) ? rise : -rise));
        if (m_dice.Chance(0.2))
            Add(ArcOver(b, a, m_curves.back().clockwise ? -rise : rise));
    }

    void Add(DrawingCurve curve) {
        curve.id = static_cast<unsigned int>(m_curves.size()) + 1;
        m_curves.push_back(curve);
    }

    Dice m_dice;
    std::vector<DrawingCurve> m_curves;
    double m_share = 1.0, m_arcShare = 0.0;
};

/// Ends and curves, as the domain maker's promise looks at them.
class Graph {
public:
    explicit Graph(std::vector<DrawingCurve> const &curves) {
        for (DrawingCurve const &c : curves)
            m_edges.push_back({Place(c.start), Place(c.end)});
    }

    /// Neither a bridge nor a cut vertex: without any one place the others hang together as before, and no place has a
    /// single curve.
    bool IsFirm() const {
        std::vector<int> degree(m_places.size());
        for (auto const &[a, b] : m_edges) {
            ++degree[a];
            ++degree[b];
        }
        for (std::size_t v = 0; v < degree.size(); ++v)
            if (degree[v] < 2 || Parts(v) > Parts(degree.size()))
                return false;
        return true;
    }

private:
    std::size_t Place(DrawingPoint p) { return m_places.try_emplace({p.x, p.y}, m_places.size()).first->second; }

    /// How many parts there are without the place `left`.
    std::size_t Parts(std::size_t left) const {
        std::vector<std::size_t> part(m_places.size());
        for (std::size_t i = 0; i < part.size(); ++i)
            part[i] = i;
        auto const root = [&](std::size_t v) {
            while (part[v] != v)
                v = part[v] = part[part[v]];
            return v;
        };
        std::size_t parts = part.size() - (left < part.size());
        for (auto const &[a, b] : m_edges)
            if (a != left && b != left && root(a) != root(b)) {
                part[root(a)] = root(b);
                --parts;
            }
        return parts;
    }

    std::map<std::pair<double, double>, std::size_t> m_places;
    std::vector<std::pair<std::size_t, std::size_t>> m_edges;
};

/// Area that the curves with these ids enclose, one after another.
double AreaAround(std::vector<DrawingCurve> const &curves, zvi::MArray<int> const &ids) {
    auto const curveOf = [&](int id) {
        return *std::find_if(curves.begin(), curves.end(), [&](auto const &c) { return static_cast<int>(c.id) == id; });
    };
    auto const same = [](DrawingPoint a, DrawingPoint b) { return a.x == b.x && a.y == b.y; };
    DrawingCurve const first = curveOf(ids[0]), second = curveOf(ids[1]);
    bool const isForward = same(first.end, second.start) || same(first.end, second.end);
    DrawingPoint const origin = first.start;
    DrawingPoint at = isForward ? first.start : first.end;
    double area = 0.0;
    for (int const id : ids) {
        DrawingCurve const c = curveOf(id);
        bool const isAlong = same(c.start, at);
        area += (isAlong ? 1.0 : -1.0) * AreaFrom(origin, c, SweepOf(c));
        at = isAlong ? c.end : c.start;
    }
    return std::fabs(area);
}

struct Regions {
    std::vector<double> areas;
    std::size_t holes = 0;
};

/// What the domain maker finds, curved curves given by some points between their ends.
Regions MakerRegions(std::vector<DrawingCurve> const &curves) {
    constexpr int kSteps = 8;
    MDomainMaker maker;
    for (DrawingCurve const &c : curves) {
        zvi::MArray<DM_VTEX> points;
        for (int i = 0; i <= kSteps; ++i) {
            DrawingPoint const p = PointAt(c, SweepOf(c), static_cast<double>(i) / kSteps);
            points.PushBack({p.x, p.y});
        }
        if (c.type == DrawingCurveType::kLine)
            maker.AddCurv(c.id, {c.start.x, c.start.y}, {c.end.x, c.end.y});
        else
            maker.AddCurvedCurvOnce(c.id, points);
    }
    maker.MakeDomain();
    Regions regions;
    for (DM_SURF const &surf : maker.GetResultSurf()) {
        regions.areas.push_back(AreaAround(curves, surf.Curv));
        for (DM_SURF_SUB const &hole : surf.Holes)
            regions.areas.back() -= AreaAround(curves, hole.Curv);
        regions.holes += static_cast<std::size_t>(surf.Holes.Size());
    }
    std::sort(regions.areas.rbegin(), regions.areas.rend());
    return regions;
}

std::string Difference(std::vector<double> const &found, std::vector<double> const &other) {
    if (found.size() != other.size())
        return std::to_string(found.size()) + " domains, otherwise " + std::to_string(other.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        if (std::fabs(found[i] - other[i]) > 1e-6 * other[i])
            return "area " + std::to_string(found[i]) + ", otherwise " + std::to_string(other[i]);
    return "";
}

} // namespace

TEST(DrawingGraphs, GiveTheRegionsThatAScanFindsAndThoseOfTheDomainMakerWithinItsPromise) {
    int firm = 0;
    for (int seed = 1; seed <= GraphCount(); ++seed) {
        std::vector<DrawingCurve> const curves = GraphMaker(static_cast<std::uint64_t>(seed)).Make();
        DrawingResult const result = MakeDrawingDomains(curves);
        ASSERT_EQ(WhatIsWrong(curves, {}, result), "") << "seed " << seed;
        ASSERT_EQ(Difference(AreasOf(result), ScanRegions(curves, 0.0, Gaps::kAsDrawn).areas), "") << "seed " << seed;
        ASSERT_EQ(result.counts.joined + result.counts.cut + result.counts.duplicates, 0) << "seed " << seed;
        bool const isTurned = std::none_of(curves.begin(), curves.end(), [](DrawingCurve const &c) {
            return c.start.y == c.end.y || std::fabs(c.start.y - c.end.y) < 1e-9 * Distance(c.start, c.end);
        });
        if (!isTurned || !Graph(curves).IsFirm())
            continue;
        ++firm;
        Regions const made = MakerRegions(curves);
        ASSERT_EQ(Difference(AreasOf(result), made.areas), "") << "seed " << seed;
        ASSERT_EQ(HoleCount(result), made.holes) << "seed " << seed;
    }
    EXPECT_GT(firm, GraphCount() / 50);
}

} // namespace zvi::lib::test
