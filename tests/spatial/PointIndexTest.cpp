#include "zvi/spatial/MHHPointSpatialIndex.h"
#include "zvi/spatial/MHashPointSpatialIndex.h"

#include "tests/FailingMemory.h"
#include "tests/Rows.h"

#include "zvi/core/MVector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <type_traits>
#include <vector>

namespace zvi::lib::test {

namespace {

using Point = MVector<double, 3>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Value n is point n; it knows them all.
class Points final : public ICalcDist {
public:
    explicit Points(std::vector<Point> points) : all(std::move(points)) {}
    std::vector<Point> all;
    double CalcDist(std::uint64_t a, std::uint64_t b) const override { return CalcDist(all[a].Data(), b); }
    double CalcDist(float const *p, std::uint64_t value) const override {
        return CalcDist(Point(p[0], p[1], p[2]).Data(), value);
    }
    double CalcDist(double const *p, std::uint64_t value) const override {
        Point const d = Point::FromArray(p) - all[value];
        return d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
    }
};

template <typename Index>
Index &Lay(Index &index, Point const &low, Point const &high, int division) {
    index.SetBoundaryAndDivision(low.Data(), high.Data(), division);
    return index;
}

std::vector<std::uint64_t> Found(IPointSpatialIndex const &index, Point const &p, double tol, ICalcDist const &calc) {
    MList<std::uint64_t> list{77};
    int const count = index.FindWithinTol(p.Data(), tol, list, &calc);
    if (count == 0 && list.GetCount() == 1) // it does not search
        list.RemoveAll();
    EXPECT_EQ(static_cast<std::uint64_t>(count), list.GetCount());
    return {list.begin(), list.end()};
}

/// What is told of a place where nothing can be stored, summed up.
std::uint64_t AllAnswersAt(IPointSpatialIndex &index, Point const &p, ICalcDist const &calc) {
    int const answers =
        index.Insert(p.Data(), 1) + index.Delete(p.Data(), 1) + index.ExistDuplicate(p.Data(), 1, &calc);
    return static_cast<std::uint64_t>(answers) + index.FindNearest(p.Data(), 1, &calc) +
           Found(index, p, 1, calc).size();
}

template <typename Index>
class PointIndex : public testing::Test {};
using Indexes = testing::Types<MHashPointSpatialIndex, MHHPointSpatialIndex>;
TYPED_TEST_SUITE(PointIndex, Indexes);

} // namespace

/// The number of cells along an axis shows in the highest cell of a triangle that goes beyond the box.
TYPED_TEST(PointIndex, LaysAnOddNumberOfCellsAlongEachAxis) {
    for (auto const &[dx, dy, dz, division, nx, ny, nz] : Rows<double, double, double, int, int, int, int>(R"(
            1 1 1 10  13 13 13; 1 1 1 11  13 13 13; 8 4 0 10  13 7 1; 1 1 1 0  3 3 3; 0 0 5 3  1 1 5)")) {
        TypeParam index;
        Lay(index, {1, 1, 1}, {1 + dx, 1 + dy, 1 + dz}, division);
        float const far[] = {1e6f, 1e6f, 1e6f};
        float const middle[] = {float(1 + dx / 2), float(1 + dy / 2), float(1 + dz / 2)};
        std::array<int, 3> low, high;
        index.GetBoxIndexByTriangle(far, middle, far, low.data(), high.data());
        EXPECT_EQ(high, (std::array{nx - 1, ny - 1, nz - 1})) << dx << ' ' << dy;
        EXPECT_EQ(low, (std::array{nx / 2, ny / 2, nz / 2})) << "the middle cell";
        EXPECT_EQ(index.Insert(nx - 1, ny - 1, nz - 1, 1), 1);
        EXPECT_EQ(index.Insert(nx, ny - 1, nz - 1, 1), 0) << "behind the last cell";
        EXPECT_EQ(index.Insert(nx, 0, 0, 1), ny * nz > 1 ? 1 : 0) << "beyond a row lies the next one";
        EXPECT_EQ(index.Insert(-1, 0, 0, 1), 0);
        EXPECT_TRUE(index.IsConsistent());
    }
}

TYPED_TEST(PointIndex, AnswersBadGridsAndPoints) {
    Points const calc(std::vector<Point>(2));
    for (auto const &[low, high, division] : Rows<double, double, int>(
             "0 1 1000000000; 0 1 -1; 0 0 10; 1 0 10; nan 1 10; 0 nan 10; 0 inf 10; -1e308 1e308 10; 0 1 2147483647")) {
        TypeParam index;
        Lay(index, {low, low, low}, {high, high, high}, division);
        Point const p(0.5, 0.5, 0.5);
        EXPECT_EQ(index.Insert(0, 0, 0, 1), 0) << low << ' ' << high << ' ' << division;
        EXPECT_EQ(AllAnswersAt(index, p, calc), 0u) << low << ' ' << high << ' ' << division;
        index.RemoveAll();
        EXPECT_TRUE(index.IsConsistent());
    }
    TypeParam index;
    Lay(index, {0, 0, 0}, {1, 1, 1}, 10);
    for (double const bad : {kNan, kInfinity, -kInfinity, 1e300, -1e300})
        EXPECT_EQ(AllAnswersAt(index, Point(0.5, bad, 0.5), calc), 0u) << bad;
    int const most = std::numeric_limits<int>::max();
    EXPECT_EQ(index.Insert(most, most, most, 1) + index.Insert(-most, -most, most, 1), 0);
    EXPECT_EQ(MPointSpatialIndex::GetInterfaceST(nullptr), nullptr);
    EXPECT_EQ(MPointSpatialIndex::GetInterfaceST(&index), static_cast<IPointSpatialIndex *>(&index));
}

/// Every other point lies on a lattice, so that distances are equal to one another and to the tolerance.
TYPED_TEST(PointIndex, FindsWhatIsNearAsASlowSearchDoes) {
    constexpr bool kIsPlain = std::is_same_v<TypeParam, MHashPointSpatialIndex>;
    std::mt19937 random(11);
    std::uniform_real_distribution<double> place(-3, 5);
    TypeParam index;
    Lay(index, {-3, -3, -3}, {5, 5, 1}, 9);
    Points points({Point(1e9, 1e9, 1e9)}); // value 0 is nothing
    std::set<std::uint64_t> present;
    for (int step = 0; step < 3000; ++step) {
        auto const at = [&] { return step % 2 == 0 ? place(random) : std::round(place(random) * 2) / 2; };
        std::uint64_t const value = points.all.size();
        points.all.emplace_back(at(), at(), std::min(at(), 1.0));
        EXPECT_EQ(index.Insert(points.all[value].Data(), value), 1);
        present.insert(value);
        std::uint64_t const gone = kIsPlain ? random() % value + 1 : value;
        if (step % 3 == 0) {
            EXPECT_EQ(index.Delete(points.all[gone].Data(), gone), static_cast<int>(present.erase(gone)));
        }
        Point const query(at(), at(), at());
        double const tol = 0.1 * static_cast<double>(random() % 20), limit = tol * tol;
        std::multiset<std::uint64_t> expected;
        double best = limit;
        for (std::uint64_t const each : present) {
            double const distance = points.CalcDist(query.Data(), each);
            if (kIsPlain && distance <= limit)
                expected.insert(each);
            best = std::min(best, distance);
        }
        std::vector<std::uint64_t> const found = Found(index, query, tol, points);
        EXPECT_EQ(std::multiset(found.begin(), found.end()), expected);
        EXPECT_EQ(index.ExistDuplicate(query.Data(), tol, &points), expected.empty() ? 0 : 1);
        std::uint64_t const nearest = index.FindNearest(query.Data(), tol, &points);
        double const distance = points.CalcDist(query.Data(), nearest);
        if (kIsPlain || best < limit)
            EXPECT_TRUE(nearest == 0 ? best == limit : distance == best && best < limit) << step;
        else
            EXPECT_TRUE(nearest == 0 || distance < 2 * limit) << step;
    }
    index.RemoveAll();
    EXPECT_TRUE(index.IsConsistent());
    EXPECT_EQ(index.FindNearest(Point().Data(), 100, &points), 0u);
    EXPECT_EQ(index.Insert(points.all[1].Data(), 1), 1);
}

template <typename Index>
class ShortageOfPoints : public FailingMemoryTest {};
TYPED_TEST_SUITE(ShortageOfPoints, Indexes);

TYPED_TEST(ShortageOfPoints, IsFilledAgain) {
    Points points({});
    for (int i = 0; i < 40; ++i)
        points.all.emplace_back(i / 40.0, i % 4, i / 50.0);
    using Work = std::pair<std::unique_ptr<TypeParam>, std::uint64_t>;
    WorkInShortages<Work>(
        [&points](Work &work) {
            auto &[index, found] = work;
            EXPECT_TRUE(!index || index->IsConsistent());
            index = std::make_unique<TypeParam>();
            Lay(*index, {0, 0, 0}, {5, 5, 5}, 20);
            for (std::uint64_t value = 1; value < 40; ++value)
                index->Insert(points.all[value].Data(), value);
            index->Delete(points.all[39].Data(), 39);
            found = Found(*index, points.all[1], 1.0, points).size();
            found += index->FindNearest(points.all[7].Data(), 1.0, &points);
        },
        [](Work const &work) { return work.first->IsConsistent() ? work.second : 0; });
}

TEST(MHashPointSpatialIndex, FindsTheLatestOfACellFirst) {
    MHashPointSpatialIndex index;
    Lay(index, {0, 0, 0}, {8, 8, 8}, 3);
    Points const points({Point(), {3, 4, 4}, {5, 4, 4}, {5, 4, 4}});
    for (std::uint64_t value = 1; value < 4; ++value)
        index.Insert(points.all[value].Data(), value);
    Point const middle(4, 4, 4);
    float const floats[] = {4, 4, 4};
    MList<std::uint64_t> list{9};
    EXPECT_EQ(index.FindWithinTol(floats, 1, list, &points), 3);
    EXPECT_EQ(index.FindNearest(middle.Data(), 1.5, &points), 3u);
    EXPECT_TRUE(Found(index, middle, kNan, points).empty());
    EXPECT_EQ(index.Delete(points.all[2].Data(), 2), 1);
    EXPECT_EQ(Found(index, middle, 1, points), (std::vector<std::uint64_t>{3, 1}));
}

TEST(MHHPointSpatialIndex, FindsBeyondTheToleranceAndTakesOutTheLatestAlone) {
    MHHPointSpatialIndex index;
    Lay(index, {0, 0, 0}, {8, 8, 8}, 3);
    Points const points({Point(), {4.85, 4.85, 4}, {4.85, 4.85, 4}, {5.1, 4, 4}});
    for (std::uint64_t value = 1; value < 4; ++value)
        index.Insert(points.all[value].Data(), value);
    float const floats[] = {4, 4, 4};
    Point const middle(4, 4, 4);
    EXPECT_EQ(index.FindNearest(middle.Data(), 1, &points), 2u) << "at 1.2 within the cube, the latest of two";
    MList<std::uint64_t> list{5, 6};
    EXPECT_EQ(index.FindWithinTol(middle.Data(), 9, list, &points) + index.FindWithinTol(floats, 9, list, &points), 0);
    EXPECT_EQ(list.GetCount(), 2u) << "left as it was";
    EXPECT_EQ(index.Delete(points.all[1].Data(), 1), 0) << "lies deeper in its cell";
    for (std::uint64_t value = 3; value > 0; --value)
        EXPECT_EQ(index.Delete(points.all[value].Data(), value), 1);
    EXPECT_EQ(index.Delete(points.all[1].Data(), 1), 0) << "an empty cell";
}

} // namespace zvi::lib::test
