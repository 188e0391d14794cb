#pragma once

#include "zvi/spatial/MOcTree.h"
#include "zvi/spatial/MPntOcNode.h"
#include "zvi/spatial/MPntOcTree.h"
#include "zvi/spatial/MQuadTree.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace zvi::lib::test {

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
    /// Whether the gap along each axis is `t` at the most.
    bool Meets(Corners const &other, double t) const {
        bool isApart = false;
        for (std::size_t a = 0; a < dimension; ++a)
            isApart = isApart || other.min[a] - t > max[a] || min[a] > t + other.max[a];
        return !isApart;
    }
    std::array<double, dimension> Middle() const {
        std::array<double, dimension> middle;
        for (std::size_t a = 0; a < dimension; ++a)
            middle[a] = (min[a] + max[a]) * 0.5;
        return middle;
    }
    /// The box of one corner alone.
    static Corners At(std::array<double, dimension> const &corner) { return {corner, corner}; }

    bool operator==(Corners const &) const = default;
};

/// What the trees of boxes have in common.
template <std::size_t dimension, typename T, typename N, typename O, typename B, typename P>
struct Boxes {
    static constexpr std::size_t kDimension = dimension;
    static constexpr bool kHoldsPoints = false;
    static constexpr int kDeepestLevel = std::numeric_limits<int>::max();
    using Tree = T;
    using Node = N;
    using Object = O;
    using Box = B;
    using Point = P;
    using Coordinates = std::array<double, dimension>;
    static bool HasType(Object &object, int type) { return object.GetType() == type; }
};

/// The quadtree under the names that all trees have in tests.
struct Plane : Boxes<2, MQuadTree, MQuadNode, MQuadObj, MQuadMBR2D, MQuadPoint2D> {
    static constexpr int kCapacity = 128;
    static constexpr double kTouch = 1e-6, kLeastOverlap = 1e-9;
    using AnsweredBox = Box &;
    static bool Meets(Box const &a, Box const &b, int strict) { return a.Intersect4QT(b, strict) != 0; }
    static bool IsWithin(Box const &a, Box const &b) { return a.IsContained4QT(b) != 0; }
    static bool Holds(Box const &box, Coordinates const &p) { return box.DoesContain4QT(std::bit_cast<Point>(p)) != 0; }
    static std::uint64_t KeyOf(Object &object) { return object.GetKey(); }
    static bool IsLeaf(Node const &node) { return node.IsLeaf(); }
    static void MoveByReference(Object &object, Box const &box) { object.GetMBR() = box; }
};

/// The octree under the same names.
struct Space : Boxes<3, MOcTree, MOcNode, MOcObj, MOcMBR3D, MOcPoint3D> {
    static constexpr int kCapacity = 32;
    static constexpr double kTouch = 1e-3, kLeastOverlap = 1e-4;
    using AnsweredBox = Box;
    static bool Meets(Box const &a, Box const &b, int strict) { return a.Intersect8OT(b, strict) != 0; }
    static bool IsWithin(Box const &a, Box const &b) { return a.IsContained8OT(b) != 0; }
    static bool Holds(Box const &box, Coordinates const &p) { return box.DoesContain8OT(std::bit_cast<Point>(p)) != 0; }
    static std::uint64_t KeyOf(Object &object) { return object.GetItr(); }
    static bool IsLeaf(Node const &node) { return node.IsLeafNode(); }
    static void MoveByReference(Object &object, Box box) { object.SetMBR(box); }
};

/// What the cube of points reaches from the origin; no multiple of 0.5 but 0 is on a border.
inline constexpr double kPointsReach = 7.25;

/// The octree of points under the same names, as far as it has them.
struct Points {
    static constexpr std::size_t kDimension = 3;
    static constexpr bool kHoldsPoints = true;
    static constexpr int kDeepestLevel = MPntOcNode::kDeepestLevel;
    using Object = MPntOcData;
    using Box = Corners<3>;
    static constexpr double kTouch = 0.0, kLeastOverlap = 0.0;
    static std::uint64_t KeyOf(Object const &point) { return point.key; }
    static bool HasType(Object const &, int) { return true; }
    static bool Meets(Box const &a, Box const &b, int) { return a.Meets(b, 0); }
    static bool IsWithin(Box const &a, Box const &b) { return a.IsWithin(b); }
    static bool Holds(Box const &box, std::array<double, 3> const &p) { return Box::At(p).IsWithin(box); }

    class Tree : public MPntOcTree {
    public:
        using MPntOcTree::Insert;
        Tree(double, double, int capacity) : MPntOcTree(kPointsReach, capacity) {}
        int Insert(std::uint64_t key, int, Box const &at) { return Insert(key, PointOf(at.min)); }
        int GetIntersectObjList(Box const &box, MList<Object *> &list, auto const &...) const {
            return static_cast<int>(GetListInBox(PointOf(box.min), PointOf(box.max), list));
        }

    private:
        static MVector<double, 3> PointOf(std::array<double, 3> const &p) { return {p[0], p[1], p[2]}; }
    };
};

template <typename In>
typename In::Box BoxOf(Corners<In::kDimension> const &corners) {
    return std::bit_cast<typename In::Box>(corners);
}

/// The point with these first coordinates.
template <typename In>
typename In::Box PointAt(double x, double y = 0.0) {
    return BoxOf<In>(Corners<In::kDimension>::At({x, y}));
}

using Keys = std::vector<std::uint64_t>;

template <typename In>
Keys HitsOf(typename In::Tree const &tree, typename In::Box const &query, int strict = 0) {
    MList<typename In::Object *> list;
    tree.GetIntersectObjList(query, list, strict);
    Keys keys;
    for (typename In::Object *object : list)
        keys.push_back(In::KeyOf(*object));
    return keys;
}

/// A tree with objects of its own and, unless they are points, of others, which outlive it.
template <typename In>
struct Forest {
    std::unique_ptr<typename In::Tree> tree;
    std::vector<typename In::Object> objects = std::vector<typename In::Object>(40);

    static typename In::Box Between(double low, double high) {
        Corners<In::kDimension> corners;
        for (std::size_t a = 0; a < In::kDimension; ++a)
            corners.min[a] = low / static_cast<double>(a + 1);
        corners.max.fill(high);
        return BoxOf<In>(corners);
    }

    void Work() {
        if (tree && In::kHoldsPoints)
            Fill(); // the end of such a tree is for good
        if (tree)
            tree->Clear();
        if (!tree || In::kHoldsPoints)
            tree = std::make_unique<typename In::Tree>(10.0, 10.0, 4);
        Fill();
    }

    Keys Hits() const {
        Keys keys = HitsOf<In>(*tree, Between(-4, 30));
        keys.push_back(tree->IsConsistent() ? 1 : 0);
        return keys;
    }

private:
    /// Grows softly and by doubling, splits, is overfull by clusters, shrinks again; one pool is long.
    void Fill() {
        for (unsigned int i = 0; i < 60; ++i)
            tree->Insert(i, -1, Between(i * i % 53, i * i % 53 + 0.1 * i));
        for (std::size_t i = 0; i < objects.size(); ++i)
            InsertOwn(i, Between(static_cast<double>(i), static_cast<double>(i) + (i < 20 ? 0.0 : 300.0)));
        for (unsigned int i = In::kHoldsPoints ? 600 : 100; i < 709; ++i)
            tree->Insert(i, -1, Between(i < 700 ? -0.01 * i : 2, 50 + 0.01 * i));
        HitsOf<In>(*tree, Between(-6.95, -6.5));
        for (unsigned int i = 0; i < 660; i += 3)
            tree->Delete(i);
        for (std::size_t i = 0; i < objects.size(); i += 2)
            DeleteOwn(i, Between(3, 4));
    }

    void InsertOwn(std::size_t i, typename In::Box box) requires(!In::kHoldsPoints) {
        objects[i].SetMBR(box);
        tree->Insert(&objects[i]);
    }
    void DeleteOwn(std::size_t i, typename In::Box movedTo) requires(!In::kHoldsPoints) {
        if (i % 3 == 0)
            objects[i].SetMBR(movedTo);
        tree->Delete(&objects[i]);
    }
    void InsertOwn(...) {}
    void DeleteOwn(...) {}
};

} // namespace zvi::lib::test
