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
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace zvi::lib::test {

namespace {

constexpr float kBox[] = {0, 0, 0, 10, 10, 10};

struct Triangle {
    std::array<float, 9> corners; ///< one behind the other
    int group = 0;
};

/// Takes everything for a contact.
class Comparison final : public ICompTri {
public:
    std::vector<std::pair<void *, void *>> reported;

    int Compare(void *item1, void *item2, float) override {
        EXPECT_NE(static_cast<Triangle *>(item1)->group, static_cast<Triangle *>(item2)->group);
        return 1;
    }
    void Report(void *item1, void *item2) override { reported.emplace_back(item1, item2); }
    int GetTriangle(void *item, float *a, float *b, float *c, float *normal) override {
        for (std::size_t i = 0; i < 9; ++i)
            std::array{a, b, c}[i / 3][i % 3] = static_cast<Triangle *>(item)->corners[i];
        normal[2] = 1;
        return static_cast<Triangle *>(item)->group != 9 ? 1 : 0;
    }
};

int Insert(CTriangleSpatialIndex &index, Triangle &triangle, float tol) {
    float const *const corners = triangle.corners.data();
    return index.Insert(corners, corners + 3, corners + 6, triangle.group, tol, &triangle);
}

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
    spatial::Cube const cube(1);
    int touching = 0;
    for (int i = 0; i < 2000; ++i) {
        std::array<spatial::FloatPoint, 3> corners;
        BodyTriangle triangle;
        spatial::FloatPoint const begin = {place(random), place(random), place(random)};
        bool isInside = true;
        for (std::size_t at = 0; at < 9; ++at) {
            float &p = corners[at / 3][at % 3];
            p = begin[at % 3] + (i % 3 == 0 ? 0.2f : 1.0f) * place(random);
            triangle[at / 3][at % 3] = double(p);
            isInside = isInside && std::abs(p) < 1;
        }
        double distance = 9;
        for (BodyTriangle const &side : CubeAt({}))
            distance = std::min(distance, DistanceOf(triangle, side));
        bool const touches = spatial::TouchesCube(corners, cube);
        EXPECT_EQ(touches, distance == 0 || isInside) << "triangle " << i << " at " << distance;
        EXPECT_EQ(touches, spatial::IsNotSeparated(corners, cube)) << "triangle " << i;
        touching += touches ? 1 : 0;
    }
    EXPECT_GT(touching, 300);
}

TEST(CTriangleSpatialIndex, LaysCellsAndReachesThemByItsRules) {
    CTriangleSpatialIndex const fine(kBox, 10, 0);   // 13 cells of 0.918... along each axis, from -0.968 to 10.968
    CTriangleSpatialIndex const coarse(kBox, 10, 4); // 3 cells of 4
    for (auto const &[isFine, x, tol, reached, lowest, highest] : Rows<int, float, float, int, long, long>(R"(
            1 5 0  1 6 6; 1 5 0.5  1 5 7; 1 99 0  0 -7 -7; 1 -99 0  0 -7 -7; 1 11.5 1  1 12 12; 1 11.5 0  0 -7 -7;
            1 -1.5 1  1 0 0; 1 -1.8 0  1 0 0; 1 -1.9 0  0 -7 -7; 1 5 1e9  1 0 12; 0 5 0  1 1 1;
            0 5 2.5  1 0 2; 1 nan 1  0 -7 -7)")) {
        float const p[] = {5, x, x};
        std::array<long, 3> low = {-7, -7, -7}, high = low;
        CTriangleSpatialIndex const &index = isFine != 0 ? fine : coarse;
        EXPECT_EQ(index.GetBoxIndexByTriangle(p, p, p, tol, low.data(), high.data()), reached) << x << ' ' << tol;
        EXPECT_EQ(std::pair(low[2], high[2]), std::pair(lowest, highest)) << x << ' ' << tol;
        EXPECT_TRUE(low[0] >= 0 && high[0] >= 0) << "the axes before the one that failed are written";
    }
}

TEST(CTriangleSpatialIndex, AnswersBadBoxesAndTriangles) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    Triangle good{{1, 1, 1, 2, 1, 1, 1, 2, 1}}, point{{5, 5, 5, 5, 5, 5, 5, 5, 5}, 1};
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
    CTriangleSpatialIndex index(kBox, 10, 0);
    EXPECT_EQ(Insert(index, good, kNan) + Insert(index, good, kInfinity) + Insert(index, good, -50), 0);
    for (float const bad : {kNan, kInfinity, -kInfinity, 3e38f}) {
        Triangle triangle = good;
        for (std::size_t const at : {4U, 1U, 7U})
            triangle.corners[at] = at == 4 || std::isfinite(bad) ? bad : 1;
        EXPECT_EQ(Insert(index, triangle, 1), 0) << bad;
    }
    EXPECT_EQ(Insert(index, point, 0), 1);
    EXPECT_EQ(Insert(index, good, 100), 13 * 13 * 13) << "a large tolerance reaches every cell";
    EXPECT_EQ(index.GetItemCount(), 13 * 13 * 13 + 1);
    index.FindTriWithinTol(7, &comparison);
    EXPECT_EQ(comparison.reported, (std::vector<std::pair<void *, void *>>{{&good, &point}})) << "the later one first";
    EXPECT_TRUE(index.IsConsistent());
    index.RemoveAll();
    EXPECT_TRUE(index.IsConsistent() && index.GetItemCount() == 0);
    EXPECT_EQ(Insert(index, point, 0), 1);
}

TEST(CTriangleSpatialIndex, TellsThePercentageOfCellsToTheProgressBar) {
    Comparison comparison;
    for (auto const &[divisions, calls] : Rows<long, int>("1 27; 3 100; 10 100; 30 100")) { // 3, 5, 13, 33 cells a side
        CTriangleSpatialIndex index(kBox, divisions, 0);
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
    CTriangleSpatialIndex index(kBox, 10, 0);
    Triangle triangle{{5, 5, 5, 5.25f, 5, 5, 5, 5.25f, 5}}, hidden{triangle.corners, 9};
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
    using Work = std::pair<std::unique_ptr<CTriangleSpatialIndex>, std::size_t>;
    WorkInShortages<Work>(
        [](Work &work) {
            auto &[index, found] = work;
            EXPECT_TRUE(!index || index->IsConsistent());
            index = std::make_unique<CTriangleSpatialIndex>(kBox, 7, 0.0f);
            Triangle triangles[] = {{{1, 1, 1, 8, 1, 1, 1, 8, 2}, 0}, {{1, 1, 1, 8, 1, 1, 2, 2, 2}, 1}};
            for (Triangle &triangle : triangles)
                Insert(*index, triangle, 0.5f);
            Comparison comparison;
            index->FindTriWithinTol(1, &comparison);
            TriangleBody const body = CubeAt({});
            found = comparison.reported.size() + FindBodyContacts({body, body}, 1.0).contacts.size();
        },
        [](Work const &work) { return work.first->IsConsistent() ? work.second : 0; });
}

} // namespace zvi::lib::test
