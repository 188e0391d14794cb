#pragma once

#include "zvi/Export.h"
#include "zvi/core/MFixedSizeMemMgr.h"
#include "zvi/core/MHashMap.h"
#include "zvi/core/MList.h"
#include "zvi/core/MVector.h"
#include "zvi/spatial/MPntOcData.h"

#include <cstdint>

namespace zvi::lib {

class MPntOcNode;

/// Points of space under 64-bit keys, found by box, in an octree over a cube that never changes.
///
/// A point outside the cube is taken like any other, found by key, and not deleted. Points come to the nodes by
/// another rule than the one by which the nodes lie (see `MPntOcNode`), deliberately: a point whose halves of x and z
/// differ in some node on its way may be missed by searches and refuse its deletion. A merge of nodes may drop points
/// from the search that stay under their keys.
///
/// When memory runs short `Insert` raises `std::bad_alloc` or `MStatusError` and the point is not in, and a search
/// keeps what it has found in its list. One thread per tree.
class ZVI_API MPntOcTree {
public:
    /// Bins of the key map at the start; a prime that holds 225,015 keys before the first rehash.
    static constexpr unsigned int kKeyBinCount = 100007;

    /// A cube around the origin that reaches `halfSize` along each axis; `capacity` points fill a leaf, two at least.
    MPntOcTree(double halfSize, long capacity);
    /// The same around another centre.
    MPntOcTree(MVector<double, 3> const &center, double halfSize, long capacity);
    /// Frees nodes and points.
    virtual ~MPntOcTree();
    MPntOcTree(MPntOcTree const &) = delete;
    MPntOcTree &operator=(MPntOcTree const &) = delete;

    /// 1; 0 when the key is there already, whose position stays, and after `Clear`.
    int Insert(std::uint64_t key, MVector<double, 3> const &position);

    /// 1; 0 when the key is absent, and when its point was not reached: then it stays.
    int Delete(std::uint64_t key);

    /// 1 if the key is there, else 0.
    int Exist(std::uint64_t key) const;

    /// Ends the tree: all points and nodes go, and from then on its operations give 0 and find nothing.
    void Clear();

    /// Appends the points in the box from `low` to `high`, borders included, and gives their number. They come in the
    /// order of the nodes, children 0 to 7, in each as they came. They belong to the tree.
    long GetListInBox(MVector<double, 3> const &low, MVector<double, 3> const &high, MList<MPntOcData *> &list) const;

    /// The same for the cube that reaches `distance` from the point along each axis, corners included: no true distance
    /// is taken, and the list is not sorted.
    long GetListNearestPnt(MVector<double, 3> const &point, double distance, MList<MPntOcData *> &list) const;

    /// A flag that applications keep here; it changes nothing. 0 at first.
    int IsDraw() const { return m_isDraw; }
    /// Sets the flag.
    void SetDraw(int isDraw) { m_isDraw = isDraw; }

    /// Whether nodes and keys are as they say they are, and every point in a node is the one of its key, in no other
    /// node. Not conversely: a key may have lost its point in a merge.
    bool IsConsistent() const;

private:
    static bool TakesOut(MPntOcNode const &node, MHashMap<std::uint64_t, MPntOcData *> &records);

    MPntOcNode *m_root = nullptr;
    MHashMap<std::uint64_t, MPntOcData *> m_data;
    MFixedSizeMemMgr m_records; ///< where the records come from
    int m_isDraw = 0;
};

} // namespace zvi::lib
