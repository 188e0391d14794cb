#include "zvi/spatial/MQuadTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <vector>

namespace zvi::lib::test {

namespace {

struct Object {
    unsigned int key = 0;
    int type = -1;
    MQuadMBR2D mbr;
};

double Length(double x, double y) {
    return std::sqrt(x * x + y * y);
}

struct Node {
    MQuadMBR2D region;
    Node *parent = nullptr;
    std::vector<Node> children; ///< none or four
    std::vector<Object *> pool;

    void MakeChildren() {
        double const x = (region.minX + region.maxX) * 0.5;
        double const y = (region.minY + region.maxY) * 0.5;
        children = std::vector<Node>(4);
        for (std::size_t i = 0; i < 4; ++i) {
            children[i].parent = this;
            children[i].region = {i % 2 == 0 ? region.minX : x, i < 2 ? region.minY : y, i % 2 == 0 ? x : region.maxX,
                                  i < 2 ? y : region.maxY};
        }
    }

    /// The first child that contains the rectangle, 4 for none.
    std::size_t ChildFor(MQuadMBR2D const &mbr) const {
        std::size_t i = 0;
        while (i < children.size() && mbr.IsContained4QT(children[i].region) == 0)
            ++i;
        return children.empty() ? 4 : i;
    }
};

/// A quadtree done step by step, with no care for speed: what `MQuadTree` must equal in nodes, pools and answers.
class PlainTree {
public:
    PlainTree(double width, double height, int capacity)
        : m_width(width), m_height(height), m_capacity(static_cast<std::size_t>(capacity)) {}

    Node const &Root() const { return m_root; }

    void Insert(Object *object) {
        MQuadMBR2D const m = object->mbr;
        MQuadMBR2D &r = m_root.region;
        if (r.minX == r.maxX && r.minY == r.maxY)
            r = {m.minX - m_width * 0.5, m.minY - m_height * 0.5, m.maxX + m_width * 0.5, m.maxY + m_height * 0.5};
        bool const doubles = !m_root.children.empty() || m_root.pool.size() >= m_capacity;
        while (m.IsContained4QT(r) == 0) {
            if (!doubles)
                Soften(m);
            for (MQuadPoint2D const &corner : {MQuadPoint2D{m.minX, m.minY}, MQuadPoint2D{m.maxX, m.maxY}}) {
                if (doubles && r.DoesContain4QT(corner) == 0)
                    DoubleToward(corner);
            }
        }
        Descend(m_root, object);
    }

    bool Delete(Object *object) { return Delete(m_root, object, false); }

    /// Objects of this region and those below it that meet the query and whose type is wanted.
    static void Query(Node const &node, MQuadMBR2D const &query, int strict, std::vector<int> const &wanted,
                      std::vector<unsigned int> &keys) {
        if (node.region.Intersect4QT(query, strict) == 0)
            return;
        for (Object const *object : node.pool) {
            if (wanted[static_cast<std::size_t>(object->type)] != 0 && object->mbr.Intersect4QT(query, strict) != 0)
                keys.push_back(object->key);
        }
        for (Node const &child : node.children)
            Query(child, query, strict, wanted, keys);
    }

private:
    void Soften(MQuadMBR2D const &m) {
        MQuadMBR2D &r = m_root.region;
        double const margin = (r.maxX - r.minX) * 0.25;
        auto const surplus = [&] { return (r.maxX - r.minX) - (r.maxY - r.minY); };
        if (r.DoesContain4QT({m.minX, m.minY}) == 0) {
            r.minX = r.minX > m.minX ? m.minX - margin : r.minX;
            r.minY = r.minY > m.minY ? m.minY - margin : r.minY;
            double const s = surplus();
            (s > 0 ? r.minY : r.minX) -= std::fabs(s);
        }
        if (r.DoesContain4QT({m.maxX, m.maxY}) == 0) {
            r.maxX = m.maxX >= r.maxX ? margin + m.maxX : r.maxX;
            r.maxY = m.maxY >= r.maxY ? margin + m.maxY : r.maxY;
            double const s = surplus();
            (s > 0 ? r.maxY : r.maxX) += std::fabs(s);
        }
    }

    void DoubleToward(MQuadPoint2D const &p) {
        MQuadMBR2D &r = m_root.region;
        bool const left = p.x < r.minX;
        bool const up = p.y >= r.maxY;
        double const w = r.maxX - r.minX;
        double const h = r.maxY - r.minY;
        (left ? r.minX : r.maxX) += left ? -w : w;
        (up ? r.maxY : r.minY) += up ? h : -h;
        std::vector<Node> former = std::move(m_root.children);
        m_root.MakeChildren();
        Node &heir = m_root.children[(left ? 1u : 0u) + (up ? 0u : 2u)];
        heir.children = std::move(former);
        for (Node &child : heir.children)
            child.parent = &heir;
        heir.pool.swap(m_root.pool);
    }

    void Descend(Node &node, Object *object) {
        if (node.children.empty() && node.pool.size() >= m_capacity)
            Split(node, object->mbr);
        std::size_t const q = node.ChildFor(object->mbr);
        if (q < 4)
            Descend(node.children[q], object);
        else
            node.pool.push_back(object);
    }

    /// Splits a leaf unless that is of no use for the rectangle to come.
    static void Split(Node &node, MQuadMBR2D const &mbr) {
        node.MakeChildren();
        bool isOfUse = IsScattered(node, mbr);
        bool const moves = node.ChildFor(mbr) < 4;
        std::size_t const before = node.pool.size();
        for (std::size_t i = before; isOfUse && i-- > 0;) {
            std::size_t const q = node.ChildFor(node.pool[i]->mbr);
            if (q < 4) {
                node.children[q].pool.push_back(node.pool[i]);
                node.pool.erase(node.pool.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        isOfUse = isOfUse && (moves || node.pool.size() < before);
        if (!isOfUse)
            node.children.clear();
    }

    static bool IsScattered(Node const &node, MQuadMBR2D const &m) {
        std::size_t const own = node.ChildFor(m);
        std::size_t const first = node.pool.size() > 1 ? node.ChildFor(node.pool[0]->mbr) : own;
        double const near = Length(node.region.maxX - node.region.minX, node.region.maxY - node.region.minY) / 20.0;
        auto const isElsewhere = [&](Object const *o) { return node.ChildFor(o->mbr) != first; };
        auto const isFar = [&](Object const *o) {
            return Length((o->mbr.minX + o->mbr.maxX) * 0.5 - (m.minX + m.maxX) * 0.5,
                          (o->mbr.minY + o->mbr.maxY) * 0.5 - (m.minY + m.maxY) * 0.5) >= near;
        };
        if (own != first || (node.pool.size() > 1 && std::any_of(node.pool.begin(), node.pool.end(), isElsewhere)))
            return true;
        return own < 4 && std::any_of(node.pool.begin(), node.pool.end(), isFar);
    }

    static bool Delete(Node &node, Object *object, bool anywhere) {
        if (!anywhere && object->mbr.IsContained4QT(node.region) == 0)
            return false;
        std::size_t const likely = node.ChildFor(object->mbr);
        if (likely < 4 && Delete(node.children[likely], object, false))
            return true;
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            if (i != likely && Delete(node.children[i], object, true))
                return true;
        }
        auto const found = std::find(node.pool.rbegin(), node.pool.rend(), object);
        if (found == node.pool.rend())
            return false;
        node.pool.erase(std::next(found).base());
        auto const isEmpty = [](Node const &n) { return n.children.empty() && n.pool.empty(); };
        for (Node *at = isEmpty(node) ? node.parent : nullptr;
             at != nullptr && std::all_of(at->children.begin(), at->children.end(), isEmpty); at = at->parent)
            at->children.clear();
        return true;
    }

    Node m_root;
    double m_width;
    double m_height;
    std::size_t m_capacity;
};

/// Same regions to the last bit, same children, same pools in the same order.
bool IsSameStructure(MQuadNode const &node, Node const &expected) {
    MQuadMBR2D const &a = node.GetRegion();
    MQuadMBR2D const &b = expected.region;
    if (a.minX != b.minX || a.minY != b.minY || a.maxX != b.maxX || a.maxY != b.maxY ||
        node.IsLeaf() != expected.children.empty() ||
        node.GetPool().GetCount() != static_cast<int>(expected.pool.size()))
        return false;
    for (std::size_t i = 0; i < expected.pool.size(); ++i) {
        if (node.GetPool().GetAt(static_cast<int>(i))->GetKey() != expected.pool[i]->key)
            return false;
    }
    for (int i = 0; !node.IsLeaf() && i < 4; ++i) {
        MQuadNode const &child = *node.GetChild(i);
        if (child.GetParent() != &node || !IsSameStructure(child, expected.children[static_cast<std::size_t>(i)]))
            return false;
    }
    return true;
}

/// How the rectangles of a run lie and how the tree is set up.
struct Workload {
    int capacity;
    double extent, size;
    double lattice = 0;     ///< corners fall on multiples of it; 0 for none
    double clusterRate = 0; ///< share of the rectangles that fall into one small cluster
    double clusterSize = 0; ///< of the extent
    bool movesObjects = false;
};

constexpr std::size_t kTypeCount = 4;

/// Both trees, led through the same steps.
class Pair {
public:
    Pair(Workload const &run, unsigned int seed)
        : m_run(run), m_random(seed), m_tree(100, 100, run.capacity), m_plain(100, 100, run.capacity) {}

    bool Step() {
        auto const key = static_cast<unsigned int>(m_random() % 700);
        auto const dice = m_random() % 8;
        if (dice < 4)
            return Insert(key);
        if (dice < 6)
            return Delete(key);
        if (dice == 6 && m_run.movesObjects)
            Move(key);
        return Query();
    }

    bool IsConsistent() const { return m_tree.IsConsistent(); }
    bool IsSame() const { return m_tree.GetRoot() == nullptr || IsSameStructure(*m_tree.GetRoot(), m_plain.Root()); }

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
        for (double *value : {&x, &y, &w, &h}) {
            if (m_run.lattice > 0 && !clustered)
                *value = std::round(*value / m_run.lattice) * m_run.lattice;
        }
        return {x, y, x + w, y + h};
    }

    bool Insert(unsigned int key) {
        Object const object{key, static_cast<int>(m_random() % kTypeCount), Rectangle()};
        auto const [at, isNew] = m_objects.try_emplace(key, object);
        if (isNew)
            m_plain.Insert(&at->second);
        return m_tree.Insert(key, object.type, object.mbr) == (isNew ? 1 : 0);
    }

    bool Delete(unsigned int key) {
        auto const found = m_objects.find(key);
        bool const isDeleted = found != m_objects.end() && m_plain.Delete(&found->second);
        m_objects.erase(key);
        return m_tree.Delete(key) == (isDeleted ? 1 : 0);
    }

    /// Gives an object another rectangle within the root region behind the tree's back. One that was moved out of its
    /// node's region before may be hidden from this search.
    void Move(unsigned int key) {
        auto const found = m_objects.find(key);
        MQuadMBR2D mbr = Rectangle();
        if (found == m_objects.end() || mbr.IsContained4QT(m_tree.GetRoot()->GetRegion()) == 0)
            return;
        MList<MQuadObj *> list;
        m_tree.GetIntersectObjList(found->second.mbr, list, 0);
        for (MQuadObj *object : list) {
            if (object->GetKey() != key)
                continue;
            if (m_random() % 2 == 0)
                object->GetMBR() = mbr;
            else
                object->SetMBR(mbr);
            found->second.mbr = mbr;
        }
    }

    bool Query() {
        MQuadMBR2D query = Rectangle();
        query.maxX += Uniform(0, m_run.extent * 0.3);
        int const strict = static_cast<int>(m_random() % 2);
        bool const isFiltered = m_random() % 2 == 0;
        std::vector<int> wanted(kTypeCount, 1);
        MArray<int> types;
        for (int &isWanted : wanted) {
            isWanted = isFiltered ? static_cast<int>(m_random() % 2) : 1;
            types.PushBack(isWanted);
        }
        std::vector<unsigned int> expected, keys;
        PlainTree::Query(m_plain.Root(), query, strict, wanted, expected);
        MList<MQuadObj *> list;
        int const count = isFiltered ? m_tree.GetIntersectObjList(query, list, types, strict)
                                     : m_tree.GetIntersectObjList(query, list, strict);
        for (MQuadObj *object : list)
            keys.push_back(object->GetKey());
        return keys == expected && static_cast<std::size_t>(count) == keys.size();
    }

    Workload m_run;
    std::mt19937 m_random;
    MQuadTree m_tree;
    PlainTree m_plain;
    std::map<unsigned int, Object> m_objects;
};

} // namespace

TEST(MQuadTreeOracle, NodesPoolsAndOrderOfHitsAreThoseOfTheSlowTree) {
    Workload const runs[] = {
        {.capacity = 128, .extent = 500, .size = 5},
        {.capacity = 4, .extent = 500, .size = 5},
        {.capacity = 4, .extent = 500, .size = 200},
        {.capacity = 2, .extent = 64, .size = 8, .lattice = 4},
        {.capacity = 1, .extent = 64, .size = 8, .clusterRate = 0.2, .clusterSize = 1e-3},
        {.capacity = 8, .extent = 1e4, .size = 30, .clusterRate = 0.7, .clusterSize = 1e-3},
        {.capacity = 4, .extent = 300, .size = 20, .movesObjects = true},
        {.capacity = 3, .extent = 0.1, .size = 0.3},
        {.capacity = 6,
         .extent = 1e7,
         .size = 1e6,
         .lattice = 0.1,
         .clusterRate = 0.3,
         .clusterSize = 1e-3,
         .movesObjects = true},
        {.capacity = 0, .extent = 50, .size = 9, .lattice = 1},
        {.capacity = 128, .extent = 2000, .size = 900, .clusterRate = 0.5, .clusterSize = 1e-3},
        {.capacity = 16, .extent = 100, .size = 60},
        {.capacity = 5, .extent = 1000, .size = 0, .clusterRate = 0.95, .clusterSize = 0.02},
        {.capacity = 2, .extent = 1000, .size = 10, .clusterRate = 0.97, .clusterSize = 0.04},
        {.capacity = 9, .extent = 1000, .size = 30, .clusterRate = 0.9, .clusterSize = 0.03, .movesObjects = true},
        {.capacity = 1, .extent = 1000, .size = 3, .clusterRate = 0.95, .clusterSize = 0.05},
        {.capacity = 40, .extent = 1000, .size = 400, .clusterRate = 0.3, .clusterSize = 0.1, .movesObjects = true},
    };
    for (unsigned int seed = 1; Workload const &run : runs) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Pair pair(run, seed++);
        for (int step = 0; step < 4000; ++step) {
            ASSERT_TRUE(pair.Step() && pair.IsConsistent()) << "step " << step;
            ASSERT_TRUE(step % 10 != 0 || pair.IsSame()) << "step " << step;
        }
    }
}

} // namespace zvi::lib::test
