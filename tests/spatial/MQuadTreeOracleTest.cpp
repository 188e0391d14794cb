#include "zvi/spatial/MQuadTree.h"

#include "tests/spatial/QuadTreeOracle.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <vector>

using zvi::lib::MQuadMBR2D;
using zvi::lib::MQuadNode;
using zvi::lib::MQuadObj;
using zvi::lib::MQuadTree;

namespace {

using quadtree_oracle::Node;
using quadtree_oracle::Object;

bool SameRegion(MQuadMBR2D const &a, MQuadMBR2D const &b) {
    return a.minX == b.minX && a.minY == b.minY && a.maxX == b.maxX && a.maxY == b.maxY;
}

/// Same regions to the last bit, same children, same pools in the same order.
bool SameStructure(MQuadNode const *node, Node const *expected) {
    if ((node == nullptr) != (expected == nullptr))
        return false;
    if (node == nullptr)
        return true;
    if (!SameRegion(node->GetRegion(), expected->region) || node->IsLeaf() != expected->IsLeaf() ||
        node->GetPool().GetCount() != static_cast<int>(expected->pool.size()))
        return false;
    for (std::size_t i = 0; i < expected->pool.size(); ++i) {
        if (node->GetPool().GetAt(static_cast<int>(i))->GetKey() != expected->pool[i]->key)
            return false;
    }
    for (int i = 0; !node->IsLeaf() && i < 4; ++i) {
        if (node->GetChild(i)->GetParent() != node ||
            !SameStructure(node->GetChild(i), expected->children[static_cast<std::size_t>(i)].get()))
            return false;
    }
    return true;
}

/// How the rectangles of a run lie and how the tree is set up.
struct Workload {
    unsigned int seed;
    int capacity;
    double extent;
    double size;
    double lattice;     ///< corners fall on multiples of it; 0 for none
    double clusterRate; ///< share of the rectangles that fall into one small cluster
    bool movesObjects;
    int steps;
    double clusterSize = 1e-3; ///< of the extent
};

constexpr int kTypeCount = 4;

class Pair {
public:
    explicit Pair(Workload const &run)
        : m_run(run), m_random(run.seed), m_tree(100, 100, run.capacity), m_oracle(100, 100, run.capacity) {}

    bool Step() {
        auto const key = static_cast<unsigned int>(m_random() % 700);
        switch (m_random() % 8) {
        case 0:
        case 1:
        case 2:
        case 3:
            return Insert(key);
        case 4:
        case 5:
            return Delete(key);
        case 6:
            return !m_run.movesObjects || Move(key);
        default:
            return Query();
        }
    }

    bool IsSameStructure() const { return SameStructure(m_tree.GetRoot(), m_oracle.Root()); }

private:
    double Uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_random); }

    MQuadMBR2D Rectangle() {
        bool const clustered = Uniform(0, 1) < m_run.clusterRate;
        double const extent = clustered ? m_run.extent * m_run.clusterSize : m_run.extent;
        double const shift = clustered ? m_run.extent * 0.3 : 0.0;
        double x = shift + Uniform(-extent, extent);
        double y = shift + Uniform(-extent, extent);
        double w = m_random() % 4 == 0 ? 0.0 : Uniform(0, m_run.size);
        double h = m_random() % 4 == 0 ? 0.0 : Uniform(0, m_run.size);
        if (m_run.lattice > 0 && !clustered) {
            for (double *value : {&x, &y, &w, &h})
                *value = std::round(*value / m_run.lattice) * m_run.lattice;
        }
        return {x, y, x + w, y + h};
    }

    bool Insert(unsigned int key) {
        MQuadMBR2D const mbr = Rectangle();
        int const type = static_cast<int>(m_random() % kTypeCount);
        if (m_objects.contains(key))
            return m_tree.Insert(key, type, mbr) == 0;
        if (m_tree.Insert(key, type, mbr) != 1)
            return false;
        auto &object = m_objects[key];
        object = std::make_unique<Object>(Object{key, type, mbr});
        m_oracle.Insert(object.get());
        return true;
    }

    bool Delete(unsigned int key) {
        auto const found = m_objects.find(key);
        if (found == m_objects.end())
            return m_tree.Delete(key) == 0;
        bool const deleted = m_oracle.Delete(found->second.get());
        m_objects.erase(found);
        return m_tree.Delete(key) == (deleted ? 1 : 0);
    }

    /// Gives an object another rectangle within the root region behind the tree's back.
    bool Move(unsigned int key) {
        auto const found = m_objects.find(key);
        if (found == m_objects.end())
            return true;
        MQuadMBR2D mbr = Rectangle();
        if (mbr.IsContained4QT(m_tree.GetRoot()->GetRegion()) == 0)
            return true;
        zvi::MList<MQuadObj *> list;
        m_tree.GetIntersectObjList(found->second->mbr, list, 0);
        for (MQuadObj *object : list) {
            if (object->GetKey() != key)
                continue;
            if (m_random() % 2 == 0)
                object->GetMBR() = mbr;
            else
                object->SetMBR(mbr);
            found->second->mbr = mbr;
            return true;
        }
        // An object moved out of its node's region may be hidden from queries, here as in the oracle.
        return m_run.movesObjects;
    }

    bool Query() {
        MQuadMBR2D query = Rectangle();
        query.maxX += Uniform(0, m_run.extent * 0.3);
        int const strict = static_cast<int>(m_random() % 2);
        std::vector<int> types;
        zvi::MArray<int> wanted;
        for (int i = 0; i < kTypeCount; ++i) {
            types.push_back(static_cast<int>(m_random() % 2));
            wanted.PushBack(types.back());
        }
        bool const filtered = m_random() % 2 == 0;
        std::vector<Object *> expected;
        m_oracle.Query(query, strict, filtered ? &types : nullptr, expected);
        zvi::MList<MQuadObj *> list;
        int const count = filtered ? m_tree.GetIntersectObjList(query, list, wanted, strict)
                                   : m_tree.GetIntersectObjList(query, list, strict);
        if (count != static_cast<int>(expected.size()) || list.GetCount() != expected.size())
            return false;
        std::size_t i = 0;
        for (MQuadObj *object : list) {
            if (object->GetKey() != expected[i++]->key)
                return false;
        }
        return true;
    }

    Workload m_run;
    std::mt19937 m_random;
    MQuadTree m_tree;
    quadtree_oracle::Tree m_oracle;
    std::map<unsigned int, std::unique_ptr<Object>> m_objects;
};

} // namespace

TEST(MQuadTreeOracle, NodesPoolsAndOrderOfHitsAreThoseOfTheSlowTree) {
    Workload const runs[] = {
        {1, 128, 500, 5, 0, 0, false, 4000},
        {2, 4, 500, 5, 0, 0, false, 4000},
        {3, 4, 500, 200, 0, 0, false, 3000},
        {4, 2, 64, 8, 4, 0, false, 4000},
        {5, 1, 64, 8, 0, 0.2, false, 3000},
        {6, 8, 1e4, 30, 0, 0.7, false, 4000},
        {7, 4, 300, 20, 0, 0, true, 3000},
        {8, 3, 0.1, 0.3, 0, 0, false, 3000},
        {9, 6, 1e7, 1e6, 0.1, 0.3, true, 3000},
        {10, 0, 50, 9, 1, 0, false, 2000},
        {11, 128, 2000, 900, 0, 0.5, false, 4000},
        {12, 16, 100, 60, 0, 0, false, 4000},
        {13, 5, 1000, 0, 0, 0.95, false, 4000, 0.02},
        {14, 2, 1000, 10, 0, 0.97, false, 4000, 0.04},
        {15, 9, 1000, 30, 0, 0.9, true, 4000, 0.03},
        {16, 1, 1000, 3, 0, 0.95, false, 3000, 0.05},
        {17, 40, 1000, 400, 0, 0.3, true, 4000, 0.1},
    };
    for (Workload const &run : runs) {
        SCOPED_TRACE(testing::Message() << "seed " << run.seed);
        Pair pair(run);
        for (int step = 0; step < run.steps; ++step) {
            ASSERT_TRUE(pair.Step()) << "step " << step;
            if (step % 10 == 0) {
                ASSERT_TRUE(pair.IsSameStructure()) << "step " << step;
            }
        }
    }
}
