#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MList.h"
#include "zvi/core/MVector.h"
#include "zvi/spatial/MPntOcData.h"

#include <cstdint>

namespace zvi::lib {

namespace spatial {
class PointCluster;
}

/// A cube of an `MPntOcTree` with its points, or with eight children and none. Nodes own their children, not the
/// points.
///
/// Points come to a child by `GetPntOcIdx`, which takes the half of x as the lowest bit and that of z as the highest;
/// the cubes of the children lie the other way round, x highest. A point whose halves of x and z differ therefore
/// stands in a child whose cube does not hold it: `Delete` does not reach it, and `GetListInBox` only where the cube
/// of the child meets the query. That is deliberate.
class ZVI_API MPntOcNode {
public:
    /// Levels under the root at which a node no longer splits but keeps what it gets. Points that are handed to cubes
    /// that do not hold them would be handed on for ever.
    static constexpr int kDeepestLevel = 64;
    /// Fewest points that a leaf has room for; a smaller capacity is taken as this one.
    static constexpr int kLeastCapacity = 2;

    /// A leaf without points; the cube reaches `halfSize` from its centre.
    MPntOcNode(MVector<double, 3> const &center, double halfSize, long capacity);
    /// Destroys the children.
    virtual ~MPntOcNode();
    MPntOcNode(MPntOcNode const &) = delete;
    MPntOcNode &operator=(MPntOcNode const &) = delete;

    /// Takes a point, wherever it lies: 1. A full leaf splits unless all its points are children of one kind with the
    /// new one and nearer to it than a twentieth of the cube's diagonal; then, and at the deepest level, it grows.
    /// When memory runs short `std::bad_alloc` is raised and the point is not in.
    int Insert(MPntOcData *data);

    /// Takes a point out: 1; 0 when it is not found, or lies outside a cube on the way. A leaf that thereby becomes
    /// empty lets its parent merge. What it takes grows with the number of points in the leaf.
    int Delete(MPntOcData const *data);

    /// Appends the points within the box, borders included, to the list and gives their number: children in their
    /// order, points of a leaf as they came. The node's own cube is not asked.
    long GetListInBox(MVector<double, 3> const &low, MVector<double, 3> const &high, MList<MPntOcData *> &list) const;

    /// The child that a point goes to: 1 for x at or above the centre, plus 2 for y, plus 4 for z.
    int GetPntOcIdx(MVector<double, 3> const &point) const {
        return (point[0] >= m_center[0] ? 1 : 0) + (point[1] >= m_center[1] ? 2 : 0) +
               (point[2] >= m_center[2] ? 4 : 0);
    }

    /// 1 if the node has no children, else 0.
    int IsLeafNode() const { return m_children[0] ? 0 : 1; }

    /// Whether the subtree is as it says it is: children lie where they should and know their parent, inner nodes
    /// hold no points, and what is kept beside the points agrees with them.
    bool IsConsistent() const;

protected:
    /// Makes eight children, x by the highest bit, and hands them the points. Nothing changes when memory runs short.
    void Split();
    /// Removes the children if none of the eight holds a point itself, and goes on with the parent; what is below a
    /// child without points of its own goes with it. 1 if anything was removed, else 0.
    int Merge();
    /// 1 if a split would separate something, or some point is not nearer to the new one than a twentieth of the
    /// diagonal; else 0.
    int CanSplit(MVector<double, 3> const &point);
    /// 1 if all points go to one child, whose number `index` receives; with fewer than two points 1 and no number.
    int IsAllSameChild(int &index) const;
    /// Destroys the children with all below them.
    void DeleteChild();

private:
    friend class MPntOcTree;

    struct BoxQuery;

    MPntOcNode(MPntOcNode *parent, int index);
    void TellParents();
    void Append(MPntOcData *data);
    void RemoveAt(std::size_t place);
    void DropCluster() noexcept;
    MVector<double, 3> CenterOfChild(int index) const;
    bool IsOutside(MVector<double, 3> const &point) const;
    void ListInBox(BoxQuery &query) const;
    void ListLeaf(BoxQuery &query) const;
    unsigned ChildrenIn(BoxQuery const &query) const;

    std::int32_t m_capacity;
    std::int16_t m_level = 0;    ///< under the root
    std::uint8_t m_index = 0;    ///< which child of its parent
    std::uint8_t m_occupied = 0; ///< a bit for each child below which there is a point
    double m_halfSize;
    MVector<double, 3> m_center;
    MPntOcNode *m_parent = nullptr;
    MPntOcNode *m_children[8] = {}; ///< neighbours in one piece of memory
    MArray<MPntOcData *> m_points;
    /// Of the points, so that a search need not go to each of them.
    MArray<MVector<double, 3>> m_positions;
    /// Of a leaf with more points than it has room for: what they have in common. Null when that is not known.
    spatial::PointCluster *m_cluster = nullptr;
};

} // namespace zvi::lib
