#include "zvi/spatial/MOcTree.h"
#include "zvi/spatial/MQuadTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <random>
#include <vector>

namespace zvi::lib::test {

namespace {

/// Corners of a box as numbers along the axes.
template <std::size_t dimension>
struct Corners {
    std::array<double, dimension> min{}, max{};

    bool IsWithin(Corners const &outer) const {
        bool isWithin = true;
        for (std::size_t a = 0; a < dimension; ++a)
            isWithin = isWithin && min[a] >= outer.min[a] && max[a] < outer.max[a];
        return isWithin;
    }
    /// The box of one corner alone.
    static Corners At(std::array<double, dimension> const &corner) { return {corner, corner}; }

    bool operator==(Corners const &) const = default;
};

struct Plane {
    static constexpr std::size_t kDimension = 2;
    using Tree = MQuadTree;
    using Node = MQuadNode;
    using Object = MQuadObj;
    using Box = MQuadMBR2D;
    static Box BoxOf(Corners<2> const &c) { return {c.min[0], c.min[1], c.max[0], c.max[1]}; }
    static Corners<2> CornersOf(Box const &b) { return {{b.minX, b.minY}, {b.maxX, b.maxY}}; }
    static bool Meets(Box const &a, Box const &b, int strict) { return a.Intersect4QT(b, strict) != 0; }
    static std::uint64_t KeyOf(Object &object) { return object.GetKey(); }
    static void Move(Object &object, Box box, bool byReference) {
        if (byReference)
            object.GetMBR() = box;
        else
            object.SetMBR(box);
    }
    static bool IsLeaf(Node const &node) { return node.IsLeaf(); }
};

struct Space {
    static constexpr std::size_t kDimension = 3;
    using Tree = MOcTree;
    using Node = MOcNode;
    using Object = MOcObj;
    using Box = MOcMBR3D;
    static Box BoxOf(Corners<3> const &c) { return {c.min[0], c.min[1], c.min[2], c.max[0], c.max[1], c.max[2]}; }
    static Corners<3> CornersOf(Box const &b) { return {{b.minX, b.minY, b.minZ}, {b.maxX, b.maxY, b.maxZ}}; }
    static bool Meets(Box const &a, Box const &b, int strict) { return a.Intersect8OT(b, strict) != 0; }
    static std::uint64_t KeyOf(Object &object) { return object.GetItr(); }
    static void Move(Object &object, Box box, bool) { object.SetMBR(box); }
    static bool IsLeaf(Node const &node) { return node.IsLeafNode(); }
};

template <typename In>
struct PlainObject {
    std::uint64_t key = 0;
    int type = -1;
    Corners<In::kDimension> mbr;
};

template <std::size_t dimension>
double Length(std::array<double, dimension> const &v) {
    double sum = 0.0;
    for (double const x : v)
        sum += x * x;
    return std::sqrt(sum);
}

template <typename In>
struct PlainNode {
    static constexpr std::size_t kChildCount = 1 << In::kDimension;

    Corners<In::kDimension> region;
    PlainNode *parent = nullptr;
    std::vector<PlainNode> children; ///< none or all
    std::vector<PlainObject<In> *> pool;

    void MakeChildren() {
        children = std::vector<PlainNode>(kChildCount);
        for (std::size_t i = 0; i < kChildCount; ++i) {
            children[i].parent = this;
            children[i].region = region;
            for (std::size_t a = 0; a < In::kDimension; ++a) {
                double const mid = (region.min[a] + region.max[a]) * 0.5;
                ((i >> a) % 2 == 0 ? children[i].region.max[a] : children[i].region.min[a]) = mid;
            }
        }
    }

    /// The first child that contains the box, the number of children for none.
    std::size_t ChildFor(Corners<In::kDimension> const &mbr) const {
        std::size_t i = 0;
        while (i < children.size() && !mbr.IsWithin(children[i].region))
            ++i;
        return children.empty() ? kChildCount : i;
    }
};

/// A tree done step by step, with no care for speed: what `MQuadTree` and `MOcTree` must equal in nodes, pools and
/// answers.
template <typename In>
class PlainTree {
public:
    static constexpr std::size_t kDimension = In::kDimension;

    using Node = PlainNode<In>;
    using Object = PlainObject<In>;
    using Box = Corners<kDimension>;

    /// Sizes of 100 along all axes.
    explicit PlainTree(int capacity) : m_capacity(static_cast<std::size_t>(capacity)) {}

    Node const &Root() const { return m_root; }

    void Insert(Object *object) {
        Box const &m = object->mbr;
        Box &r = m_root.region;
        if (m_isFresh) {
            for (std::size_t a = 0; a < kDimension; ++a) {
                r.min[a] = m.min[a] - 50.0;
                r.max[a] = m.max[a] + 50.0;
            }
        }
        m_isFresh = false;
        bool const doubles = !m_root.children.empty() || m_root.pool.size() >= m_capacity;
        while (!m.IsWithin(r)) {
            if (!doubles)
                Soften(m);
            for (auto const &corner : {m.min, m.max}) {
                if (doubles && !Box::At(corner).IsWithin(r))
                    DoubleToward(corner);
            }
        }
        Descend(m_root, object);
    }

    bool Delete(Object *object) { return Delete(m_root, object, false); }

    /// Objects of this region and those below it that meet the query and whose type is wanted.
    static void Query(Node const &node, typename In::Box const &query, int strict, std::vector<int> const &wanted,
                      std::vector<std::uint64_t> &keys) {
        if (!In::Meets(In::BoxOf(node.region), query, strict))
            return;
        for (Object const *object : node.pool) {
            if (wanted[static_cast<std::size_t>(object->type)] != 0 && In::Meets(In::BoxOf(object->mbr), query, strict))
                keys.push_back(object->key);
        }
        for (Node const &child : node.children)
            Query(child, query, strict, wanted, keys);
    }

private:
    /// A face of the first axis is compared with each other one as it was before any of them moved.
    void Soften(Box const &m) {
        Box &r = m_root.region;
        double const margin = (r.max[0] - r.min[0]) * 0.25;
        auto const level = [&](std::array<double, kDimension> &faces, double outwards) {
            std::array<double, kDimension> side;
            for (std::size_t a = 0; a < kDimension; ++a)
                side[a] = r.max[a] - r.min[a];
            for (std::size_t a = 1; a < kDimension; ++a)
                faces[side[0] > side[a] ? a : 0] += outwards * std::fabs(side[0] - side[a]);
        };
        if (!Box::At(m.min).IsWithin(r)) {
            for (std::size_t a = 0; a < kDimension; ++a)
                r.min[a] = r.min[a] > m.min[a] ? m.min[a] - margin : r.min[a];
            level(r.min, -1.0);
        }
        if (!Box::At(m.max).IsWithin(r)) {
            for (std::size_t a = 0; a < kDimension; ++a)
                r.max[a] = m.max[a] >= r.max[a] ? margin + m.max[a] : r.max[a];
            level(r.max, 1.0);
        }
    }

    void DoubleToward(std::array<double, kDimension> const &p) {
        Box &r = m_root.region;
        std::size_t corner = 0;
        for (std::size_t a = 0; a < kDimension; ++a) {
            double const side = r.max[a] - r.min[a];
            bool const isDown = p[a] < (a == 0 ? r.min[a] : r.max[a]);
            (isDown ? r.min[a] : r.max[a]) += isDown ? -side : side;
            corner += isDown ? std::size_t{1} << a : 0;
        }
        std::vector<Node> former = std::move(m_root.children);
        m_root.MakeChildren();
        Node &heir = m_root.children[corner];
        heir.children = std::move(former);
        for (Node &child : heir.children)
            child.parent = &heir;
        heir.pool.swap(m_root.pool);
    }

    void Descend(Node &node, Object *object) {
        if (node.children.empty() && node.pool.size() >= m_capacity)
            Split(node, object->mbr);
        std::size_t const child = node.ChildFor(object->mbr);
        if (child < Node::kChildCount)
            Descend(node.children[child], object);
        else
            node.pool.push_back(object);
    }

    /// Splits a leaf unless that is of no use for the box to come.
    static void Split(Node &node, Box const &mbr) {
        node.MakeChildren();
        bool isOfUse = IsScattered(node, mbr);
        bool const moves = node.ChildFor(mbr) < Node::kChildCount;
        std::size_t const before = node.pool.size();
        for (std::size_t i = before; isOfUse && i-- > 0;) {
            std::size_t const child = node.ChildFor(node.pool[i]->mbr);
            if (child < Node::kChildCount) {
                node.children[child].pool.push_back(node.pool[i]);
                node.pool.erase(node.pool.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        isOfUse = isOfUse && (moves || node.pool.size() < before);
        if (!isOfUse)
            node.children.clear();
    }

    static bool IsScattered(Node const &node, Box const &m) {
        std::size_t const own = node.ChildFor(m);
        std::size_t const first = node.pool.size() > 1 ? node.ChildFor(node.pool[0]->mbr) : own;
        auto const apart = [](auto const &from, auto const &to) {
            std::array<double, kDimension> vector;
            std::transform(from.begin(), from.end(), to.begin(), vector.begin(),
                           [](double f, double t) { return t - f; });
            return vector;
        };
        auto const centre = [](Box const &box) {
            std::array<double, kDimension> middle;
            std::transform(box.min.begin(), box.min.end(), box.max.begin(), middle.begin(),
                           [](double low, double high) { return (low + high) * 0.5; });
            return middle;
        };
        double const near = Length(apart(node.region.min, node.region.max)) / 20.0;
        auto const isElsewhere = [&](Object const *o) { return node.ChildFor(o->mbr) != first; };
        auto const isFar = [&](Object const *o) { return Length(apart(centre(m), centre(o->mbr))) >= near; };
        if (own != first || (node.pool.size() > 1 && std::any_of(node.pool.begin(), node.pool.end(), isElsewhere)))
            return true;
        return own < Node::kChildCount && std::any_of(node.pool.begin(), node.pool.end(), isFar);
    }

    static bool Delete(Node &node, Object *object, bool anywhere) {
        if (!anywhere && !object->mbr.IsWithin(node.region))
            return false;
        std::size_t const likely = node.ChildFor(object->mbr);
        if (likely < Node::kChildCount && Delete(node.children[likely], object, false))
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
    bool m_isFresh = true;
    std::size_t m_capacity;
};

/// Same regions to the last bit, same children, same pools in the same order.
template <typename In>
bool IsSameStructure(typename In::Node const &node, PlainNode<In> const &expected) {
    if (In::CornersOf(node.GetRegion()) != expected.region || In::IsLeaf(node) != expected.children.empty() ||
        node.GetPool().GetCount() != static_cast<int>(expected.pool.size()))
        return false;
    for (std::size_t i = 0; i < expected.pool.size(); ++i) {
        if (In::KeyOf(*node.GetPool().GetAt(static_cast<int>(i))) != expected.pool[i]->key)
            return false;
    }
    for (std::size_t i = 0; i < expected.children.size(); ++i) {
        typename In::Node const &child = *node.GetChild(static_cast<int>(i));
        if (child.GetParent() != &node || !IsSameStructure<In>(child, expected.children[i]))
            return false;
    }
    return true;
}

/// How the boxes of a run lie and how the tree is set up.
struct Workload {
    int capacity;
    double extent, size;
    double lattice = 0;     ///< corners fall on multiples of it; 0 for none
    double clusterRate = 0; ///< share of the boxes that fall into one small cluster
    double clusterSize = 0; ///< of the extent
    double nestedRate = 0;  ///< share of the boxes that lie around the middle of the first one
    bool movesObjects = false;
    std::uint64_t keyCount = 700;
};

constexpr std::size_t kTypeCount = 4;

/// Both trees, led through the same steps.
template <typename In>
class Pair {
public:
    Pair(Workload const &run, unsigned int seed)
        : m_run(run), m_random(seed), m_tree(100, 100, run.capacity), m_plain(run.capacity) {}

    bool Step() {
        auto const key = static_cast<unsigned int>(m_random() % m_run.keyCount);
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
    bool IsSame() const {
        return m_tree.GetRoot() == nullptr || IsSameStructure<In>(*m_tree.GetRoot(), m_plain.Root());
    }

private:
    using Box = Corners<In::kDimension>;

    double Uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_random); }

    Box MakeBox() {
        Box box;
        bool const clustered = Uniform(0, 1) < m_run.clusterRate;
        bool const nested = Uniform(0, 1) < m_run.nestedRate;
        double const half = Uniform(0, m_run.extent);
        for (std::size_t a = 0; a < In::kDimension; ++a) {
            double const extent = clustered ? m_run.extent * m_run.clusterSize : m_run.extent;
            double at = (clustered ? m_run.extent * 0.3 : 0.0) + Uniform(-extent, extent);
            double side = m_random() % 4 == 0 ? 0.0 : Uniform(0, m_run.size);
            for (double *value : {&at, &side}) {
                if (m_run.lattice > 0 && !clustered)
                    *value = std::round(*value / m_run.lattice) * m_run.lattice;
            }
            box.min[a] = nested ? -half : at;
            box.max[a] = nested ? half : at + side;
        }
        return box;
    }

    bool Insert(unsigned int key) {
        PlainObject<In> const object{key, static_cast<int>(m_random() % kTypeCount), MakeBox()};
        auto const [at, isNew] = m_objects.try_emplace(key, object);
        if (isNew)
            m_plain.Insert(&at->second);
        return m_tree.Insert(key, object.type, In::BoxOf(object.mbr)) == (isNew ? 1 : 0);
    }

    bool Delete(unsigned int key) {
        auto const found = m_objects.find(key);
        bool const isDeleted = found != m_objects.end() && m_plain.Delete(&found->second);
        m_objects.erase(key);
        return m_tree.Delete(key) == (isDeleted ? 1 : 0);
    }

    /// Gives an object another box within the root region behind the tree's back. One that was moved out of its node's
    /// region before may be hidden from this search.
    void Move(unsigned int key) {
        auto const found = m_objects.find(key);
        Box const mbr = MakeBox();
        if (found == m_objects.end() || !mbr.IsWithin(In::CornersOf(m_tree.GetRoot()->GetRegion())))
            return;
        MList<typename In::Object *> list;
        m_tree.GetIntersectObjList(In::BoxOf(found->second.mbr), list, 0);
        for (typename In::Object *object : list) {
            if (In::KeyOf(*object) != key)
                continue;
            In::Move(*object, In::BoxOf(mbr), m_random() % 2 == 0);
            found->second.mbr = mbr;
        }
    }

    bool Query() {
        Box corners = MakeBox();
        corners.max[0] += Uniform(0, m_run.extent * 0.3);
        typename In::Box const query = In::BoxOf(corners);
        int const strict = static_cast<int>(m_random() % 2);
        bool const isFiltered = m_random() % 2 == 0;
        std::vector<int> wanted(kTypeCount, 1);
        MArray<int> types;
        for (int &isWanted : wanted) {
            isWanted = isFiltered ? static_cast<int>(m_random() % 2) : 1;
            types.PushBack(isWanted);
        }
        std::vector<std::uint64_t> expected, keys;
        PlainTree<In>::Query(m_plain.Root(), query, strict, wanted, expected);
        MList<typename In::Object *> list;
        int const count = isFiltered ? m_tree.GetIntersectObjList(query, list, types, strict)
                                     : m_tree.GetIntersectObjList(query, list, strict);
        for (typename In::Object *object : list)
            keys.push_back(In::KeyOf(*object));
        return keys == expected && static_cast<std::size_t>(count) == keys.size();
    }

    Workload m_run;
    std::mt19937 m_random;
    typename In::Tree m_tree;
    PlainTree<In> m_plain;
    std::map<std::uint64_t, PlainObject<In>> m_objects;
};

template <typename In>
class TreeOracleTest : public testing::Test {};

using Dimensions = testing::Types<Plane, Space>;

} // namespace

TYPED_TEST_SUITE(TreeOracleTest, Dimensions);

TYPED_TEST(TreeOracleTest, NodesPoolsAndOrderOfHitsAreThoseOfTheSlowTree) {
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
        {.capacity = 20, .extent = 1000, .size = 5, .nestedRate = 0.9, .movesObjects = true, .keyCount = 2500},
        {.capacity = 40, .extent = 1000, .size = 400, .clusterRate = 0.3, .clusterSize = 0.1, .movesObjects = true},
    };
    for (unsigned int seed = 1; Workload const &run : runs) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Pair<TypeParam> pair(run, seed++);
        // A look at everything costs as much as there is.
        int const pause = static_cast<int>(run.keyCount / 175);
        for (int step = 0; step < 1000 * pause; ++step) {
            ASSERT_TRUE(pair.Step()) << "step " << step;
            ASSERT_TRUE(step % pause != 0 || pair.IsConsistent()) << "step " << step;
            ASSERT_TRUE(step % (10 * pause) != 0 || pair.IsSame()) << "step " << step;
        }
    }
}

} // namespace zvi::lib::test
