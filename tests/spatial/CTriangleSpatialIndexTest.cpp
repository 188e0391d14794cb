#include "zvi/spatial/CTriangleSpatialIndex.h"

#include "tests/FailingMemory.h"
#include "tests/Rows.h"
#include "tests/TemporaryFolder.h"
#include "tests/spatial/Bodies.h"

#include "zvi/interface/IProgressBar.h"
#include "zvi/spatial/triangles/ContactProgressDetail.h"
#include "zvi/spatial/triangles/TriangleBoxDetail.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace zvi::lib::test {

namespace {

using spatial::FloatPoint;
using Corners = std::array<FloatPoint, 3>;

struct Triangle {
    Corners corners;
    int group = 0;
};

BodyTriangle Doubles(Corners const &corners) {
    BodyTriangle triangle;
    for (std::size_t i = 0; i < 3; ++i)
        triangle[i] = {double(corners[i][0]), double(corners[i][1]), double(corners[i][2])};
    return triangle;
}

double GapOf(Triangle const &first, Triangle const &second) {
    return DistanceOf(Doubles(first.corners), Doubles(second.corners));
}

class Comparison final : public ICompTri {
public:
    std::multiset<std::pair<Triangle *, Triangle *>> reported;

    int Compare(void *item1, void *item2, float tol) override {
        auto const &first = *static_cast<Triangle *>(item1);
        auto const &second = *static_cast<Triangle *>(item2);
        EXPECT_NE(first.group, second.group);
        return GapOf(first, second) <= static_cast<double>(tol) ? 1 : 0;
    }
    void Report(void *item1, void *item2) override {
        reported.emplace(static_cast<Triangle *>(item1), static_cast<Triangle *>(item2));
    }
    int GetTriangle(void *item, float *a, float *b, float *c, float *normal) override {
        Corners const &corners = static_cast<Triangle *>(item)->corners;
        for (std::size_t i = 0; i < 3; ++i)
            std::ranges::copy(corners[i], std::array{a, b, c}[i]);
        normal[2] = 1;
        return static_cast<Triangle *>(item)->group != 9 ? 1 : 0;
    }
};

int Insert(CTriangleSpatialIndex &index, Triangle &triangle, float tol) {
    Corners const &c = triangle.corners;
    return index.Insert(c[0].data(), c[1].data(), c[2].data(), triangle.group, tol, &triangle);
}

/// Triangles of three groups, and their pairs; with seed 4 they are small beside the tolerance.
struct SlowSearch {
    float const tol;
    std::vector<Triangle> triangles = std::vector<Triangle>(250);
    std::set<std::pair<Triangle *, Triangle *>> pairs; ///< the later one first
    std::map<std::array<int, 2>, std::multiset<double>> gaps;

    explicit SlowSearch(unsigned seed) : tol(seed == 3 ? 0.0f : seed == 4 ? 1.0f : 0.25f) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> place(0, 10);
        std::normal_distribution<float> side(0, seed == 2 ? 2.0f : seed == 4 ? 0.02f : 0.5f);
        for (std::size_t i = 0; i < triangles.size(); ++i) {
            FloatPoint const begin = {place(random), place(random), seed == 3 ? 5.0f : place(random)};
            for (FloatPoint &p : triangles[i].corners)
                p = {begin[0] + side(random), begin[1] + side(random), begin[2] + (seed == 3 ? 0 : side(random))};
            triangles[i].group = static_cast<int>(i % 3);
            for (std::size_t j = 0; j < i; ++j)
                Compare(triangles[i], triangles[j]);
        }
        EXPECT_GT(pairs.size(), 20u);
    }

    void Compare(Triangle &later, Triangle &earlier) {
        double const gap = GapOf(later, earlier);
        if (later.group == earlier.group || gap > static_cast<double>(tol))
            return;
        pairs.emplace(&later, &earlier);
        gaps[{std::min(later.group, earlier.group), std::max(later.group, earlier.group)}].insert(gap);
    }
};

class Bar : public zvi_interface::IProgressBar {
public:
    std::vector<std::wstring> texts;
    int refreshed = 0;
    void SetText(wchar_t const *text) override { texts.emplace_back(text); }
    void Refresh() override { ++refreshed; }
};

} // namespace

/// The distance of a triangle from the cube's twelve decides as well, but for what merely touches.
TEST(TriangleBox, TouchesWhatHasNoDistance) {
    std::mt19937 random(3);
    std::normal_distribution<float> place(0, 1.5);
    int touching = 0;
    for (int i = 0; i < 2000; ++i) {
        Triangle triangle;
        FloatPoint const begin = {place(random), place(random), place(random)};
        for (FloatPoint &p : triangle.corners) {
            for (std::size_t axis = 0; axis < 3; ++axis)
                p[axis] = begin[axis] + (i % 3 == 0 ? 0.2f : 1.0f) * place(random);
        }
        double distance = 9;
        for (BodyTriangle const &side : CubeAt({}))
            distance = std::min(distance, DistanceOf(Doubles(triangle.corners), side));
        auto const isInside = [](FloatPoint const &p) {
            return std::abs(p[0]) < 1 && std::abs(p[1]) < 1 && std::abs(p[2]) < 1;
        };
        bool const touches = spatial::TouchesCube(triangle.corners, spatial::Cube(1));
        EXPECT_EQ(touches, distance == 0 || isInside(triangle.corners[0])) << "triangle " << i << " at " << distance;
        EXPECT_EQ(touches, spatial::IsNotSeparated(triangle.corners, spatial::Cube(1))) << "triangle " << i;
        touching += touches ? 1 : 0;
    }
    EXPECT_GT(touching, 300);
}

TEST(CTriangleSpatialIndex, FindsThePairsThatASlowSearchFinds) {
    for (unsigned const seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        SlowSearch slow(seed);
        float const box[] = {-9, -9, -9, 19, 19, 19};
        CTriangleSpatialIndex index(box, 20, seed == 1 ? 1.9f : 0.0f);
        int stored = 0;
        for (Triangle &triangle : slow.triangles)
            stored += Insert(index, triangle, slow.tol / 2 + 1e-5f);
        EXPECT_EQ(index.GetItemCount(), stored);
        EXPECT_TRUE(index.IsConsistent());
        Comparison comparison;
        index.FindTriWithinTol(slow.tol, &comparison);
        std::set<std::pair<Triangle *, Triangle *>> const found(comparison.reported.begin(), comparison.reported.end());
        EXPECT_EQ(found, slow.pairs) << "the one stored later comes first";
        index.RemoveAll();
        EXPECT_EQ(index.GetItemCount(), 0);
        EXPECT_TRUE(index.IsConsistent());
        EXPECT_GT(Insert(index, slow.triangles[0], slow.tol), 0);
    }
}

/// Sizes are powers of two, so that distances change with them to the last bit.
TEST(FindBodyContacts, FindsThePairsThatASlowSearchFinds) {
    for (auto const &[seed, size] : Rows<unsigned, double>("1 1; 1 0x1p-100; 1 0x1p100; 2 1; 3 1; 4 1")) {
        SCOPED_TRACE(seed);
        SlowSearch slow(seed);
        double const tolerance = static_cast<double>(slow.tol) * size;
        std::vector<TriangleBody> bodies(3);
        for (Triangle const &triangle : slow.triangles) {
            BodyTriangle &placed =
                bodies[static_cast<std::size_t>(triangle.group)].emplace_back(Doubles(triangle.corners));
            for (MVector<double, 3> &p : placed)
                p = (p + MVector<double, 3>(0, 0, 1024)) * size;
        }
        BodyContacts const found = FindBodyContacts(bodies, tolerance);
        ASSERT_EQ(found.contacts.size(), slow.gaps.size()) << size;
        for (BodyContact const &contact : found.contacts) {
            std::multiset<double> const &gaps = slow.gaps[contact.bodies];
            EXPECT_EQ(contact.pairCount, gaps.size()) << size;
            EXPECT_DOUBLE_EQ(contact.smallestGap, *gaps.begin() * size);
            MVector<double, 3> const d = contact.nearest[0] - contact.nearest[1];
            EXPECT_NEAR(std::hypot(d[0], d[1], d[2]), contact.smallestGap, 1e-12 * size);
            std::set<int> used;
            for (ContactPatch const &patch : contact.patches) {
                EXPECT_LE(patch.smallestGap, tolerance);
                for (int const triangle : patch.triangles[0])
                    EXPECT_TRUE(used.insert(triangle).second) << "in two patches";
            }
        }
        EXPECT_FALSE(FindBodyContacts(bodies, tolerance, 3).isComplete);
    }
}

TEST(CTriangleSpatialIndex, LaysCellsAndReachesThemByItsRules) {
    float const box[] = {0, 0, 0, 10, 10, 10};
    CTriangleSpatialIndex const fine(box, 10, 0);   // 13 cells of 0.918... along each axis, from -0.968 to 10.968
    CTriangleSpatialIndex const coarse(box, 10, 4); // 3 cells of 4
    long low[3] = {};
    long high[3] = {};
    for (auto const &[isFine, x, tol, reached, lowest, highest] : Rows<int, float, float, int, long, long>(R"(
            1 5 0  1 6 6; 1 5 0.5  1 5 7; 1 99 0  0 0 0; 1 -99 0  0 0 0; 1 11.5 1  1 12 12; 1 11.5 0  0 0 0;
            1 -1.5 1  1 0 0; 1 -1.8 0  1 0 0; 1 -1.9 0  0 0 0; 1 5 1e9  1 0 12; 0 5 0  1 1 1;
            0 5 2.5  1 0 2; 1 nan 1  0 0 0)")) {
        float const p[] = {x, x, x};
        CTriangleSpatialIndex const &index = isFine != 0 ? fine : coarse;
        EXPECT_EQ(index.GetBoxIndexByTriangle(p, p, p, tol, low, high), reached) << x << ' ' << tol;
        if (reached != 0) {
            EXPECT_EQ(std::pair(low[2], high[2]), std::pair(lowest, highest)) << x << ' ' << tol;
        }
    }
    float const far[] = {5, 99, 5};
    low[0] = high[0] = low[1] = high[1] = -7;
    EXPECT_EQ(fine.GetBoxIndexByTriangle(far, far, far, 0, low, high), 0);
    EXPECT_EQ((std::array{low[0], high[0], low[1], high[1]}), (std::array{6L, 6L, -7L, -7L})) << "x is written, y not";
}

TEST(CTriangleSpatialIndex, AnswersBadBoxesAndTriangles) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    Triangle good{{{{1, 1, 1}, {2, 1, 1}, {1, 2, 1}}}};
    Comparison comparison;
    for (auto const &[low, high, divisions, minCell] : Rows<float, float, long, float>(R"(
            0 10 1000000000 0; 0 0 10 0; 10 0 10 0; nan 10 10 0; 0 inf 10 0; 0 10 -11 0; -3e38 3e38 2000000000 1e-30)")) {
        float const box[] = {low, low, low, high, high, high};
        CTriangleSpatialIndex index(box, divisions, minCell);
        EXPECT_EQ(Insert(index, good, 0.1f), 0) << low << ' ' << high << ' ' << divisions;
        index.FindTriWithinTol(1, &comparison);
        index.RemoveAll();
        EXPECT_TRUE(index.IsConsistent() && index.GetItemCount() == 0);
    }
    float const box[] = {0, 0, 0, 10, 10, 10};
    CTriangleSpatialIndex index(box, 10, 0);
    EXPECT_EQ(Insert(index, good, kNan) + Insert(index, good, kInfinity) + Insert(index, good, -50), 0);
    for (float const bad : {kNan, kInfinity, -kInfinity, 3e38f}) {
        Triangle triangle = good;
        triangle.corners[1][1] = bad;
        if (std::isfinite(bad))
            triangle.corners[0][1] = triangle.corners[2][1] = bad;
        EXPECT_EQ(Insert(index, triangle, 1), 0) << bad;
    }
    Triangle point{{{{5, 5, 5}, {5, 5, 5}, {5, 5, 5}}}, 1};
    EXPECT_EQ(Insert(index, point, 0), 1);
    EXPECT_EQ(Insert(index, good, 100), 13 * 13 * 13) << "a large tolerance reaches every cell";
    index.FindTriWithinTol(7, &comparison);
    EXPECT_EQ(comparison.reported.size(), 1u);
    EXPECT_TRUE(index.IsConsistent());
}

TEST(CTriangleSpatialIndex, TellsThePercentageOfCellsToTheProgressBar) {
    Comparison comparison;
    for (auto const &[divisions, calls] : Rows<long, int>("1 27; 3 100; 10 100; 30 100")) { // 3, 5, 13, 33 cells a side
        float const box[] = {0, 0, 0, 10, 10, 10};
        CTriangleSpatialIndex index(box, divisions, 0);
        Bar bar;
        zvi_interface::IProgressBar::SetInstance(&bar);
        index.FindTriWithinTol(1, &comparison);
        EXPECT_EQ(static_cast<int>(bar.texts.size()), calls) << divisions;
        EXPECT_EQ(bar.refreshed, calls);
        EXPECT_TRUE(bar.texts.back().starts_with(L"IDS_CAE_COMMON_CADIMPORT_PROGRESS_CONTACT : "));
    }
    EXPECT_EQ(zvi_interface::IProgressBar::GetInstance(), nullptr) << "a bar that has gone is no longer told";
    EXPECT_EQ(spatial::WithNumber(L"%d %% done", 37), L"37 % done");
    EXPECT_EQ(spatial::WithNumber(L"<%5d>", 37), L"<   37>");
    EXPECT_EQ(spatial::WithNumber(L"%x", 37), L"25");
    for (wchar_t const *const text : {L"%s", L"%d of %d", L"100%", L"%%d", L"%ld", L"%*d", L"none", L"%d%n", L""})
        EXPECT_EQ(spatial::WithNumber(text, 37), text);
}

TEST(CTriangleSpatialIndex, WritesItsTriangles) {
    zvi::test::TemporaryFolder const folder;
    float const box[] = {0, 0, 0, 10, 10, 10};
    CTriangleSpatialIndex index(box, 10, 0);
    Triangle triangle{{{{5, 5, 5}, {5.25f, 5, 5}, {5, 5.25f, -0.0f}}}};
    triangle.corners[2][2] = 5;
    Triangle hidden{triangle.corners, 9};
    Insert(index, triangle, 0);
    Insert(index, hidden, 0);
    Comparison comparison;
    index.WriteIndexedTriangle(folder.Path("triangles").c_str(), &comparison);
    std::ifstream file(folder.Native("triangles"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}),
              "Contact Search\n"
              "    facet normal               0             0             1\n"
              "        outer loop\n"
              "            vertex             5             5             5\n"
              "            vertex          5.25             5             5\n"
              "            vertex             5          5.25             5\n"
              "        endloop\n"
              "    endfacet\n"
              "end Contact Search\n");
    index.WriteIndexedTriangle(folder.Path("no folder/triangles").c_str(), &comparison);
    EXPECT_EQ(folder.Names().size(), 1u);
}

TEST_F(FailingMemoryTest, TrianglesAreFilledInAgain) {
    struct Work {
        std::unique_ptr<CTriangleSpatialIndex> index;
        std::array<std::size_t, 3> found{};
    };
    WorkInShortages<Work>(
        [](Work &work) {
            EXPECT_TRUE(!work.index || work.index->IsConsistent());
            float const box[] = {0, 0, 0, 9, 9, 9};
            work.index = std::make_unique<CTriangleSpatialIndex>(box, 7, 0.0f);
            std::array<Triangle, 4> triangles;
            for (int group = 0; Triangle & triangle : triangles) {
                triangle = {{{{1, 1, 1}, {8, 1, 1}, {1, 8, 2}}}, group++};
                if (group % 2 == 0)
                    triangle.corners[2] = {2, 2, 2};
                Insert(*work.index, triangle, 0.5f);
            }
            Comparison comparison;
            work.index->FindTriWithinTol(1, &comparison);
            TriangleBody const body = CubeAt({});
            work.found = {comparison.reported.size(), FindBodyContacts({body, body}, 1.0).contacts.size(),
                          static_cast<std::size_t>(work.index->GetItemCount())};
        },
        [](Work const &work) { return std::pair(work.found, work.index->IsConsistent()); });
}

} // namespace zvi::lib::test
