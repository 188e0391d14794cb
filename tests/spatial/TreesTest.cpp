#include "tests/spatial/Trees.h"
#include "tests/FailingMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace zvi::lib::test {

namespace {

template <typename In>
struct PlainObject {
    std::uint64_t key = 0;
    int type = -1;
    Corners<In::kDimension> mbr;
};

template <std::size_t dimension>
double Distance(std::array<double, dimension> const &from, std::array<double, dimension> const &to) {
    double sum = 0.0;
    for (std::size_t a = 0; a < dimension; ++a)
        sum += (to[a] - from[a]) * (to[a] - from[a]);
    return std::sqrt(sum);
}

template <typename In>
struct PlainNode {
    static constexpr std::size_t kDimension = In::kDimension;
    static constexpr std::size_t kChildCount = 1 << kDimension;

    Corners<kDimension> region;
    PlainNode *parent = nullptr;
    std::vector<PlainNode> children = {}; ///< none or all
    std::vector<PlainObject<In> *> pool = {};
    int level = 0;

    double Mid(std::size_t axis) const { return (region.min[axis] + region.max[axis]) * 0.5; }

    void MakeChildren() {
        children.assign(kChildCount, {region, this, {}, {}, level + 1});
        for (std::size_t i = 0; i < kChildCount; ++i) {
            for (std::size_t a = 0; a < kDimension; ++a) {
                std::size_t const bit = In::kHoldsPoints ? kDimension - 1 - a : a;
                ((i >> bit) % 2 == 0 ? children[i].region.max[a] : children[i].region.min[a]) = Mid(a);
            }
        }
    }

    /// The first child that contains the box, the number of children for none; for a point the child of its halves,
    /// which need not contain it.
    std::size_t ChildFor(Corners<kDimension> const &mbr) const {
        std::size_t i = 0;
        for (std::size_t a = 0; In::kHoldsPoints && a < kDimension; ++a)
            i += mbr.min[a] >= Mid(a) ? std::size_t{1} << a : 0;
        while (!In::kHoldsPoints && i < children.size() && !mbr.IsWithin(children[i].region))
            ++i;
        return children.empty() ? kChildCount : i;
    }
};

/// A tree done step by step, with no care for speed: what the three trees must equal in nodes, pools and answers.
template <typename In>
class PlainTree {
public:
    static constexpr std::size_t kDimension = In::kDimension;

    using Node = PlainNode<In>;
    using Object = PlainObject<In>;
    using Box = Corners<kDimension>;

    /// Sizes of 100 along all axes; for points their cube.
    explicit PlainTree(int capacity) : m_capacity(static_cast<std::size_t>(capacity)) {
        m_root.region.min.fill(In::kHoldsPoints ? -kPointsReach : 0.0);
        m_root.region.max.fill(In::kHoldsPoints ? kPointsReach : 0.0);
    }

    Node const &Root() const { return m_root; }

    void Insert(Object *object) {
        if (!In::kHoldsPoints)
            GrowFor(object->mbr);
        Descend(m_root, object);
    }

    bool Delete(Object *object) { return Delete(m_root, object, false); }

    /// Objects of this region and those below it that meet the query and whose type is wanted.
    template <typename IsWanted>
    static void Query(Node const &node, Box const &query, double t, IsWanted isWanted, Keys &keys) {
        bool const isFixedRoot = In::kHoldsPoints && !node.parent;
        if (!isFixedRoot && !node.region.Meets(query, t))
            return;
        for (Object const *object : node.pool) {
            if (isWanted(object->type) && object->mbr.Meets(query, t))
                keys.push_back(object->key);
        }
        for (Node const &child : node.children)
            Query(child, query, t, isWanted, keys);
    }

private:
    void GrowFor(Box const &m) {
        Box &r = m_root.region;
        for (std::size_t a = 0; m_isFresh && a < kDimension; ++a) {
            r.min[a] = m.min[a] - 50.0;
            r.max[a] = m.max[a] + 50.0;
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
    }

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
        if (node.children.empty() && node.pool.size() >= m_capacity && node.level < In::kDeepestLevel)
            Split(node, object->mbr);
        std::size_t const child = node.ChildFor(object->mbr);
        if (child < Node::kChildCount)
            Descend(node.children[child], object);
        else
            node.pool.push_back(object);
    }

    /// Splits a leaf unless that is of no use for the box to come.
    void Split(Node &node, Box const &mbr) {
        node.MakeChildren();
        bool const isOfUse = IsScattered(node, mbr);
        std::size_t const before = node.pool.size();
        for (std::size_t i = before; isOfUse && i-- > 0;) {
            // Points leave from the first to the last, boxes from the last to the first.
            auto const at = node.pool.begin() + static_cast<std::ptrdiff_t>(In::kHoldsPoints ? 0 : i);
            std::size_t const child = node.ChildFor((*at)->mbr);
            if (child == Node::kChildCount)
                continue;
            if (In::kHoldsPoints)
                Descend(node.children[child], *at);
            else
                node.children[child].pool.push_back(*at);
            node.pool.erase(at);
        }
        if (!isOfUse || (node.ChildFor(mbr) == Node::kChildCount && node.pool.size() == before))
            node.children.clear();
    }

    static bool IsScattered(Node const &node, Box const &m) {
        std::size_t const own = node.ChildFor(m);
        double const near = Distance(node.region.min, node.region.max) / 20.0;
        return std::any_of(node.pool.begin(), node.pool.end(), [&](Object const *o) {
            bool const isElsewhere = node.pool.size() > 1 && node.ChildFor(o->mbr) != own;
            return isElsewhere || (own < Node::kChildCount && Distance(m.Middle(), o->mbr.Middle()) >= near);
        });
    }

    static bool Delete(Node &node, Object *object, bool anywhere) {
        if (!anywhere && !(In::kHoldsPoints ? object->mbr.Meets(node.region, 0) : object->mbr.IsWithin(node.region)))
            return false;
        std::size_t const likely = node.ChildFor(object->mbr);
        if (likely < Node::kChildCount && Delete(node.children[likely], object, false))
            return true;
        for (std::size_t i = 0; !In::kHoldsPoints && i < node.children.size(); ++i) {
            if (i != likely && Delete(node.children[i], object, true))
                return true;
        }
        auto const found = std::find(node.pool.rbegin(), node.pool.rend(), object);
        if (found == node.pool.rend())
            return false;
        node.pool.erase(std::next(found).base());
        // Points below a child without points of its own go with it.
        auto const isEmpty = [](Node const &n) { return (In::kHoldsPoints || n.children.empty()) && n.pool.empty(); };
        for (Node *at = node.children.empty() && node.pool.empty() ? node.parent : nullptr;
             at != nullptr && std::all_of(at->children.begin(), at->children.end(), isEmpty); at = at->parent)
            at->children.clear();
        return true;
    }

    Node m_root;
    bool m_isFresh = true;
    std::size_t m_capacity;
};

/// Same regions to the last bit, same children, same pools in the same order; points lead there.
template <typename In>
bool IsSameStructure(typename In::Tree const &tree, typename In::Node const &node, PlainNode<In> const &expected) {
    using Point = typename In::Point;
    if (std::bit_cast<Corners<In::kDimension>>(node.GetRegion()) != expected.region ||
        In::IsLeaf(node) != expected.children.empty() ||
        node.GetPool().GetCount() != static_cast<int>(expected.pool.size()) ||
        node.GetChildNodeIndexContainingPoint(std::bit_cast<Point>(expected.region.max)) !=
            static_cast<int>(expected.ChildFor(Corners<In::kDimension>::At(expected.region.max))) ||
        (expected.children.empty() && tree.FindNode(std::bit_cast<Point>(expected.region.Middle())) != &node.GetPool()))
        return false;
    for (std::size_t i = 0; i < expected.pool.size(); ++i) {
        if (In::KeyOf(*node.GetPool().GetAt(static_cast<int>(i))) != expected.pool[i]->key)
            return false;
    }
    for (std::size_t i = 0; i < expected.children.size(); ++i) {
        int const number = static_cast<int>(i);
        typename In::Node const &child = *node.GetChild(number);
        auto const middle = std::bit_cast<Point>(expected.children[i].region.Middle());
        if (child.GetParent() != &node || node.GetChildNodeIndexContainingPoint(middle) != number ||
            !IsSameStructure<In>(tree, child, expected.children[i]))
            return false;
    }
    return true;
}

/// How the boxes of a run lie and how the tree is set up.
struct Workload {
    int capacity;
    double extent, size;
    double lattice = 0;        ///< corners fall on multiples of it; 0 for none
    double clusterRate = 0;    ///< share of the boxes that fall into one small cluster
    double clusterSize = 1e-3; ///< of the extent
    double nestedRate = 0;     ///< share of the boxes that lie around the middle of the first one
    bool movesObjects = false;
    std::uint64_t keyCount = 700;
    int halvings = 0; ///< times, at the most, that corners are moved half the way to the origin, many levels down
    bool isWithoutLoss = false; ///< z is x, so that points come to children that contain them, and none is deleted
};

/// Types of objects; a query says of those from 0 to 3 which it wants.
constexpr int kTypes[] = {-1, 0, 1, 2, 3, 4, 1000, (1 << 27) - 1, -(1 << 27)};
constexpr int kWantedTypes = 4;

/// A tree and its slow twin, led through the same steps.
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
            return m_run.isWithoutLoss || Delete(key);
        if constexpr (!In::kHoldsPoints) {
            if (dice == 6 && m_run.movesObjects)
                Move(key);
        }
        return Query();
    }

    /// That of points ends with it.
    void Clear() {
        if (In::kHoldsPoints)
            return;
        m_tree.Clear();
        m_plain = PlainTree<In>(m_run.capacity);
        m_objects.clear();
    }

    bool IsConsistent() const { return m_tree.IsConsistent(); }
    /// The order in which points are found tells their structure.
    bool IsSame() const {
        if constexpr (In::kHoldsPoints)
            return true;
        else
            return !m_tree.FindNode(std::bit_cast<typename In::Point>(m_plain.Root().region.max)) &&
                   (!m_tree.GetRoot() || IsSameStructure<In>(m_tree, *m_tree.GetRoot(), m_plain.Root()));
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
            double const hairs[] = {In::kTouch, -In::kTouch, In::kLeastOverlap, -In::kLeastOverlap};
            double const hair = hairs[m_random() % 4] * (m_random() % 2 == 0 ? 0.5 : 2.0);
            at = m_run.halvings > 0
                     ? std::ldexp(at, -static_cast<int>(m_random() % static_cast<unsigned int>(m_run.halvings)))
                     : at;
            for (double *value : {&at, &side}) {
                if (m_run.lattice > 0 && !clustered)
                    *value = std::round(*value / m_run.lattice) * m_run.lattice;
            }
            at += m_run.lattice > 0 && m_random() % 3 == 0 ? hair : 0.0;
            box.min[a] = nested ? -half : at;
            box.max[a] = nested ? half : at + side;
        }
        return box;
    }

    bool Insert(unsigned int key) {
        PlainObject<In> object{key, kTypes[m_random() % std::size(kTypes)], MakeBox()};
        if (In::kHoldsPoints)
            object.mbr.min.back() = m_run.isWithoutLoss ? object.mbr.min[0] : object.mbr.min.back();
        if (In::kHoldsPoints)
            object.mbr.max = object.mbr.min;
        auto const [at, isNew] = m_objects.try_emplace(key, object);
        if (isNew)
            m_plain.Insert(&at->second);
        return m_tree.Insert(key, object.type, BoxOf<In>(object.mbr)) == (isNew ? 1 : 0);
    }

    bool Delete(unsigned int key) {
        auto const found = m_objects.find(key);
        bool const isKnown = found != m_objects.end();
        bool const isDeleted = isKnown && m_plain.Delete(&found->second);
        if (isKnown && (isDeleted || !In::kHoldsPoints)) // a point that is not reached keeps its key
            m_objects.erase(found);
        return m_tree.Exist(key) == (isKnown ? 1 : 0) && m_tree.Delete(key) == (isDeleted ? 1 : 0);
    }

    /// Gives an object another box within the root region behind the tree's back. One that was moved out of its node's
    /// region before may be hidden from this search.
    void Move(unsigned int key) requires(!In::kHoldsPoints) {
        auto const found = m_objects.find(key);
        Box const mbr = MakeBox();
        if (found == m_objects.end() ||
            !mbr.IsWithin(std::bit_cast<Corners<In::kDimension>>(m_tree.GetRoot()->GetRegion())))
            return;
        MList<typename In::Object *> list;
        m_tree.GetIntersectObjList(BoxOf<In>(found->second.mbr), list, 0);
        for (typename In::Object *object : list) {
            if (In::KeyOf(*object) != key)
                continue;
            Give(*object, BoxOf<In>(mbr));
            found->second.mbr = mbr;
        }
    }

    void Give(typename In::Object &object, typename In::Box box) {
        auto const way = m_random() % 3;
        if (way == 0)
            return In::MoveByReference(object, box);
        typename In::Object other(object);
        other.SetMBR(box);
        if (way == 1)
            object = other;
        else
            object.SetMBR(box);
    }

    bool Query() {
        Box corners = MakeBox();
        corners.max[0] += Uniform(0, m_run.extent * 0.3);
        int const strict = static_cast<int>(m_random() % 2);
        double const t = strict == 0 ? In::kTouch : -In::kLeastOverlap;
        bool const isFiltered = !In::kHoldsPoints && m_random() % 2 == 0;
        MArray<int> wanted;
        for (int type = 0; type < kWantedTypes; ++type)
            wanted.PushBack(static_cast<int>(m_random() % 2));
        auto const isWanted = [&](int type) {
            return !isFiltered || (type >= 0 && type < kWantedTypes && wanted[static_cast<std::size_t>(type)] != 0);
        };
        Keys expected, keys;
        PlainTree<In>::Query(m_plain.Root(), corners, t, isWanted, expected);
        MList<typename In::Object *> list;
        auto const query = BoxOf<In>(corners);
        int const count = isFiltered ? m_tree.GetIntersectObjList(query, list, wanted, strict)
                                     : m_tree.GetIntersectObjList(query, list, strict);
        bool holds = true;
        for (typename In::Object *object : list) {
            keys.push_back(In::KeyOf(*object));
            holds = holds && In::HasType(*object, m_objects.at(keys.back()).type);
        }
        // A search of all objects finds no more, wherever that is promised.
        std::size_t all = 0;
        for (auto const &[key, object] : m_objects) {
            auto const box = BoxOf<In>(object.mbr);
            all += isWanted(object.type) && In::Meets(box, query, strict) ? 1 : 0;
            holds = holds && In::IsWithin(box, query) == object.mbr.IsWithin(corners) &&
                    In::Holds(box, corners.min) == Box::At(corners.min).IsWithin(object.mbr);
        }
        bool const isComplete = In::kHoldsPoints ? m_run.isWithoutLoss : !m_run.movesObjects;
        return holds && keys == expected && static_cast<std::size_t>(count) == keys.size() &&
               (!isComplete || all == keys.size());
    }

    Workload m_run;
    std::mt19937 m_random;
    typename In::Tree m_tree;
    PlainTree<In> m_plain;
    std::map<std::uint64_t, PlainObject<In>> m_objects;
};

template <typename In>
void LeadBothThrough(std::initializer_list<Workload> runs) {
    for (unsigned int seed = 1; Workload const &run : runs) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Pair<In> pair(run, seed++);
        // A look at everything costs as much as there is.
        int const pause = static_cast<int>(run.keyCount / 175);
        for (int step = 0; step < 1000 * pause; ++step) {
            ASSERT_TRUE(pair.Step()) << "step " << step;
            ASSERT_TRUE(step % pause != 0 || pair.IsConsistent()) << "step " << step;
            ASSERT_TRUE(step % (10 * pause) != 0 || pair.IsSame()) << "step " << step;
            if (step == 600 * pause)
                pair.Clear();
        }
    }
}

template <typename In>
class TreesTest : public testing::Test {};

/// A class that computes its box.
template <typename In>
struct Moving : In::Object {
    typename In::AnsweredBox GetMBR() override { return this->m_mbr = PointAt<In>(position); }
    double position = 5.0;
};

using Dimensions = testing::Types<Plane, Space>;

} // namespace

TYPED_TEST_SUITE(TreesTest, Dimensions);

TYPED_TEST(TreesTest, NodesPoolsAndOrderOfHitsAreThoseOfTheSlowTree) {
    LeadBothThrough<TypeParam>({
        {.capacity = 128, .extent = 500, .size = 5},
        {.capacity = 4, .extent = 500, .size = 5},
        {.capacity = 4, .extent = 500, .size = 200},
        {.capacity = 2, .extent = 64, .size = 8, .lattice = 4},
        {.capacity = 1, .extent = 64, .size = 8, .clusterRate = 0.2},
        {.capacity = 8, .extent = 1e4, .size = 30, .clusterRate = 0.7},
        {.capacity = 4, .extent = 300, .size = 20, .movesObjects = true},
        {.capacity = 3, .extent = 0.1, .size = 0.3},
        {.capacity = 6, .extent = 1e7, .size = 1e6, .lattice = 0.1, .clusterRate = 0.3, .movesObjects = true},
        {.capacity = 0, .extent = 50, .size = 9, .lattice = 1},
        {.capacity = 128, .extent = 2000, .size = 900, .clusterRate = 0.5},
        {.capacity = 16, .extent = 100, .size = 60},
        {.capacity = 5, .extent = 1000, .size = 0, .clusterRate = 0.95, .clusterSize = 0.02},
        {.capacity = 2, .extent = 1000, .size = 10, .clusterRate = 0.97, .clusterSize = 0.04},
        {.capacity = 9, .extent = 1000, .size = 30, .clusterRate = 0.9, .clusterSize = 0.03, .movesObjects = true},
        {.capacity = 1, .extent = 1000, .size = 3, .clusterRate = 0.95, .clusterSize = 0.05},
        {.capacity = 20, .extent = 1000, .size = 5, .nestedRate = 0.9, .movesObjects = true, .keyCount = 2500},
        {.capacity = 20, .extent = 1000, .size = 5, .nestedRate = 0.6, .keyCount = 2500},
        {.capacity = 1, .extent = 1000, .size = 0, .halvings = 30},
        {.capacity = 40, .extent = 1000, .size = 400, .clusterRate = 0.3, .clusterSize = 0.1, .movesObjects = true},
    });
}

TEST(MPntOcTree, PointsComeInTheOrderOfTheSlowTree) {
    LeadBothThrough<Points>({
        {.capacity = 2, .extent = 9, .size = 3},
        {.capacity = 3, .extent = 10, .size = 4, .lattice = 0.5},
        {.capacity = 4, .extent = 9, .size = 3, .clusterRate = 0.9, .clusterSize = 0.05, .keyCount = 1400},
        {.capacity = 5, .extent = 7, .size = 1, .halvings = 20},
        {.capacity = 3, .extent = 7, .size = 4, .isWithoutLoss = true},
        {.capacity = 30, .extent = 7, .size = 5, .clusterRate = 0.3, .clusterSize = 1e-3},
    });
}

TYPED_TEST(TreesTest, ObjectsMoveComputeTheirBoxesAndGoInAnyOrder) {
    using Object = typename TypeParam::Object;
    auto tree = std::make_unique<typename TypeParam::Tree>(100, 100, 2);
    Moving<TypeParam> moving;
    auto first = std::make_unique<Object>();
    Object second;
    for (Object *object : {static_cast<Object *>(&moving), first.get(), &second})
        EXPECT_EQ(tree->Insert(object), 1);
    first.reset();
    tree->Clear();
    EXPECT_EQ(tree->GetRoot(), nullptr);
    TypeParam::MoveByReference(second, PointAt<TypeParam>(20));
    EXPECT_EQ(second.GetMBR().minX, 20);
    EXPECT_EQ(tree->Insert(&second) + tree->Insert(&moving) + tree->Insert(1U, PointAt<TypeParam>(5)), 3);
    moving.position = 8.0;
    EXPECT_EQ(HitsOf<TypeParam>(*tree, PointAt<TypeParam>(8)).size(), 1U);
    EXPECT_EQ(tree->Delete(&moving), 1);
    EXPECT_EQ(HitsOf<TypeParam>(*tree, PointAt<TypeParam>(5)), Keys{1});
    MList<Object *> list;
    tree->GetIntersectObjList(PointAt<TypeParam>(5), list, 0);
    TypeParam::MoveByReference(*list.GetHead()->element, PointAt<TypeParam>(1e9));
    EXPECT_EQ(tree->Delete(1U) + tree->Exist(1U), 0) << "it goes though it is not found in the region";
    EXPECT_TRUE(HitsOf<TypeParam>(*tree, PointAt<TypeParam>(1e9)).empty());
    tree.reset();
    TypeParam::MoveByReference(second, PointAt<TypeParam>(2));
    second = moving;
}

TYPED_TEST(TreesTest, NullBadNumbersAndWhatNoRegionHoldsAreRefused) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    using Box = typename TypeParam::Box;
    typename TypeParam::Tree tree;
    EXPECT_EQ(tree.GetInfo().capacity, TypeParam::kCapacity);
    for (Box const &bad : {PointAt<TypeParam>(nan), PointAt<TypeParam>(0, std::numeric_limits<double>::infinity())})
        EXPECT_EQ(tree.Insert(1U, bad), 0);
    EXPECT_EQ(tree.Exist(1U) + tree.Delete(1U) + tree.Insert(nullptr) + tree.Delete(nullptr), 0);
    EXPECT_EQ(tree.Insert(1U, BoxOf<TypeParam>({{3, 0}, {-3, 0}})), 1) << "inside out";
    EXPECT_EQ(tree.Insert(2U, BoxOf<TypeParam>({{-1e300, 0}, {1e300, 0}})), 1);
    EXPECT_EQ(HitsOf<TypeParam>(tree, BoxOf<TypeParam>({{-5, -1}, {5, 1}})), (Keys{1, 2}));
    EXPECT_EQ(HitsOf<TypeParam>(tree, PointAt<TypeParam>(0)), Keys{2});
    EXPECT_EQ(HitsOf<TypeParam>(tree, PointAt<TypeParam>(nan, nan)), (Keys{1, 2}));
    EXPECT_TRUE(tree.IsConsistent());
    for (int const capacity : {0, 1, 128}) {
        typename TypeParam::Tree huge(100, 100, capacity), tiny(1e-200, 1e-200, capacity);
        for (unsigned int key = 0; key < 300; ++key) {
            huge.Insert(key, PointAt<TypeParam>(key % 2 == 0 ? 1e20 : -1e20, key % 3 == 0 ? 1e308 : -1e308));
            EXPECT_EQ(tiny.Insert(key, PointAt<TypeParam>(0)), 1);
        }
    }
    typename TypeParam::Node node;
    typename TypeParam::Object object;
    EXPECT_EQ(node.Insert(nullptr) + node.Insert(nullptr, Box()) + node.InsertWithMBR(nullptr, Box()), -3);
    EXPECT_EQ(node.Delete(nullptr) + node.Insert(&object), -1);
    node.Distribute();
    EXPECT_EQ(node.GetPool().GetCount(), 1) << "there is no child to take it";
}

TYPED_TEST(TreesTest, AnObjectInsertedTwiceIsInTwoPlaces) {
    typename TypeParam::Tree tree(100, 100, 2), other;
    typename TypeParam::Object object;
    EXPECT_EQ(tree.Insert(&object), 1);
    EXPECT_TRUE(tree.IsConsistent());
    EXPECT_EQ(tree.Insert(&object) + other.Insert(&object), 2);
    EXPECT_FALSE(tree.IsConsistent());
    EXPECT_EQ(HitsOf<TypeParam>(tree, PointAt<TypeParam>(0)), (Keys{0, 0}));
    for (int const isThere : {1, 1, 0})
        EXPECT_EQ(tree.Delete(&object), isThere);
    EXPECT_EQ(HitsOf<TypeParam>(other, PointAt<TypeParam>(0)), Keys{0});
}

TEST(MOcTree, AnEmptyRootIsToldByItsFlag) {
    // Sizes of 0 make the region a point, which no later object makes anew.
    MOcNode node;
    MOcObj first, second;
    first.SetItr(7);
    EXPECT_EQ(node.Insert(&first) + node.Insert(&second) + node.FirstInsert(nullptr), -1);
    EXPECT_EQ(node.GetPool().GetAt(0)->GetItr(), 7U);
    EXPECT_EQ(node.GetRegion().minX, -50);
    MOcTree flat(0, 0, 4);
    flat.SetDraw(flat.IsDraw() + 3);
    EXPECT_EQ(flat.IsDraw(), 3);
    EXPECT_EQ(flat.Insert(std::uint64_t{1} << 40, PointAt<Space>(0)), 1);
    EXPECT_EQ(flat.Insert(2U, BoxOf<Space>(Corners<3>::At({1, 1, 1}))), 1);
    EXPECT_EQ(flat.GetInfo().sizeZ, 100) << "there is no argument for it";
}

template <typename In>
class ShortageOfTrees : public FailingMemoryTest {};
using AllTrees = testing::Types<Plane, Space, Points>;
TYPED_TEST_SUITE(ShortageOfTrees, AllTrees);

TYPED_TEST(ShortageOfTrees, IsFilledAgain) {
    using Trees = Forest<TypeParam>;
    WorkInShortages<Trees>([](Trees &trees) { trees.Work(); }, [](Trees const &trees) { return trees.Hits(); });
}

} // namespace zvi::lib::test
