#pragma once

#include "zvi/spatial/MOcTree.h"
#include "zvi/spatial/MQuadTree.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
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
    /// The box of one corner alone.
    static Corners At(std::array<double, dimension> const &corner) { return {corner, corner}; }

    bool operator==(Corners const &) const = default;
};

/// The quadtree under the names that both trees have in tests.
struct Plane {
    static constexpr std::size_t kDimension = 2;
    static constexpr int kCapacity = 128;
    static constexpr std::pair kTolerances{1e-6, 1e-9};
    using Tree = MQuadTree;
    using Node = MQuadNode;
    using Object = MQuadObj;
    using Box = MQuadMBR2D;
    using Point = MQuadPoint2D;
    using AnsweredBox = Box &;
    static bool Meets(Box const &a, Box const &b, int strict) { return a.Intersect4QT(b, strict) != 0; }
    static bool IsWithin(Box const &a, Box const &b) { return a.IsContained4QT(b) != 0; }
    static bool Holds(Box const &box, MQuadPoint2D const &point) { return box.DoesContain4QT(point) != 0; }
    static std::uint64_t KeyOf(Object &object) { return object.GetKey(); }
    static bool IsLeaf(Node const &node) { return node.IsLeaf(); }
    static void MoveByReference(Object &object, Box const &box) { object.GetMBR() = box; }
};

/// The octree under the same names.
struct Space {
    static constexpr std::size_t kDimension = 3;
    static constexpr int kCapacity = 32;
    static constexpr std::pair kTolerances{1e-3, 1e-4};
    using Tree = MOcTree;
    using Node = MOcNode;
    using Object = MOcObj;
    using Box = MOcMBR3D;
    using Point = MOcPoint3D;
    using AnsweredBox = Box;
    static bool Meets(Box const &a, Box const &b, int strict) { return a.Intersect8OT(b, strict) != 0; }
    static bool IsWithin(Box const &a, Box const &b) { return a.IsContained8OT(b) != 0; }
    static bool Holds(Box const &box, MOcPoint3D const &point) { return box.DoesContain8OT(point) != 0; }
    static std::uint64_t KeyOf(Object &object) { return object.GetItr(); }
    static bool IsLeaf(Node const &node) { return node.IsLeafNode(); }
    static void MoveByReference(Object &object, Box box) { object.SetMBR(box); }
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

} // namespace zvi::lib::test
