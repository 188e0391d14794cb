// Whatever allocation fails, the indexes of points and triangles stay consistent and can be used, and nothing leaks.

#include "tests/FailingMemory.h"

#include "zvi/spatial/CTriangleSpatialIndex.h"
#include "zvi/spatial/FindBodyContacts.h"
#include "zvi/spatial/MHHPointSpatialIndex.h"
#include "zvi/spatial/MHashPointSpatialIndex.h"
#include "zvi/spatial/MPntOcTree.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace zvi::lib::test {

namespace {

using Point = MVector<double, 3>;

class IndexMemoryTest : public testing::Test {
protected:
    void SetUp() override {
        if (!FailingMemory::IsPossible())
            GTEST_SKIP() << "a program cannot make the library's allocations fail on this host or in this build";
    }
};

Point PointOf(std::uint64_t key) {
    double const k = static_cast<double>(key);
    return key % 4 == 0 ? Point(k / 64, 1e-3 * k, k / 64) : Point(k / 40, k / 50, k / 40);
}

/// Every value is at the query's place.
class Everywhere final : public ICalcDist {
public:
    double CalcDist(std::uint64_t, std::uint64_t) const override { return 0; }
    double CalcDist(float const *, std::uint64_t) const override { return 0; }
    double CalcDist(double const *, std::uint64_t) const override { return 0; }
};

/// Says how many there are, and of a failure only that nothing is inconsistent.
template <typename Index>
struct HashWork {
    std::unique_ptr<Index> index;
    std::uint64_t found = 0;

    void Run() {
        if (index) {
            EXPECT_TRUE(index->IsConsistent());
        }
        index = std::make_unique<Index>();
        index->SetBoundaryAndDivision(Point(0, 0, 0).Data(), Point(5, 5, 5).Data(), 20);
        for (std::uint64_t key = 1; key < 40; ++key)
            index->Insert(PointOf(key).Data(), key);
        MList<std::uint64_t> list;
        index->FindWithinTol(PointOf(1).Data(), 1.0, list, std::make_unique<Everywhere>().get());
        index->Delete(PointOf(39).Data(), 39);
        found = list.GetCount() + index->FindNearest(PointOf(7).Data(), 1.0, std::make_unique<Everywhere>().get());
    }
};

class Touching final : public ICompTri {
public:
    int reported = 0;
    int Compare(void *, void *, float) override { return 1; }
    void Report(void *, void *) override { ++reported; }
    int GetTriangle(void *, float *, float *, float *, float *) override { return 0; }
};

} // namespace

TEST_F(IndexMemoryTest, PointsAreIndexedAgain) {
    auto const work = [](auto &subject) { subject.Run(); };
    auto const result = [](auto const &subject) { return subject.index->IsConsistent() ? subject.found : 0; };
    WorkInShortages<HashWork<MHashPointSpatialIndex>>(work, result);
    WorkInShortages<HashWork<MHHPointSpatialIndex>>(work, result);
}

TEST_F(IndexMemoryTest, TheOcTreeGoesOnWithWhatItHas) {
    auto const fill = [](MPntOcTree &tree) {
        for (std::uint64_t key = 0; key < 120; ++key) {
            tree.Insert(key, PointOf(key));
            if (key % 3 == 0)
                tree.Delete(key / 2);
        }
        MList<MPntOcData *> list;
        return tree.GetListInBox({-9, -9, -9}, {9, 9, 9}, list);
    };
    WorkInShortages<std::unique_ptr<MPntOcTree>>(
        [&fill](std::unique_ptr<MPntOcTree> &tree) {
            if (tree)
                fill(*tree);
            EXPECT_TRUE(!tree || tree->IsConsistent());
            tree = std::make_unique<MPntOcTree>(4.0, 3);
            fill(*tree);
        },
        [](std::unique_ptr<MPntOcTree> const &tree) {
            MList<MPntOcData *> list;
            tree->GetListInBox({-9, -9, -9}, {9, 9, 9}, list);
            std::string keys = tree->IsConsistent() ? "" : "inconsistent";
            for (MPntOcData const *point : list)
                keys += std::to_string(point->key) + " ";
            return keys;
        });
}

TEST_F(IndexMemoryTest, ContactsAreFoundAgain) {
    struct Work {
        std::unique_ptr<CTriangleSpatialIndex> index;
        int reported = 0;
        std::size_t contacts = 0;
    };
    WorkInShortages<Work>(
        [](Work &work) {
            EXPECT_TRUE(!work.index || work.index->IsConsistent());
            float const box[] = {0, 0, 0, 9, 9, 9};
            work.index = std::make_unique<CTriangleSpatialIndex>(box, 7, 0.0f);
            float const corners[][3] = {{1, 1, 1}, {8, 1, 1}, {1, 8, 2}, {2, 2, 2}};
            for (int group = 0; group < 4; ++group)
                work.index->Insert(corners[0], corners[1], corners[2 + group % 2], group, 0.5f, nullptr);
            Touching touching;
            work.index->FindTriWithinTol(1, &touching);
            work.reported = touching.reported;
            TriangleBody const body = {{Point(0, 0, 0), {1, 0, 0}, {0, 1, 0}}, {Point(5, 0, 0), {6, 0, 0}, {5, 1, 0}}};
            work.contacts = FindBodyContacts({body, body, body}, 1.0).contacts.size();
        },
        [](Work const &work) {
            return std::to_string(work.reported) + " " + std::to_string(work.contacts) + " " +
                   std::to_string(work.index->GetItemCount()) + (work.index->IsConsistent() ? "" : " inconsistent");
        });
}

} // namespace zvi::lib::test
