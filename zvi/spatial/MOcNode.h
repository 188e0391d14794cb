#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MList.h"
#include "zvi/spatial/MOcNodeInfo.h"
#include "zvi/spatial/MOcObjPool.h"

namespace zvi::lib {

class MOcTree;

/// A node of `MOcTree`: a region, the objects that lie in it but in none of its children, and no child or eight.
///
/// Bits of the number of a child tell its half along each axis, everywhere: bit 0 is set in the high half along x, bit
/// 1 along y, bit 2 along z. Mid planes are at (min + max) * 0.5. An object on a mid plane goes to the high side, one
/// that crosses it stays in the parent.
///
/// Nodes belong to their tree and use its settings. Copying is shallow, deliberately: the copy has the same children
/// and the same tree and a copy of the pool's array; whoever copies a node keeps one of the two alive at the end.
class ZVI_API MOcNode {
public:
    /// Children of a node that is no leaf.
    static constexpr int kChildCount = 8;

    /// A leaf without a region, for `tree`; null gives the default settings.
    explicit MOcNode(MOcTree *tree = nullptr);
    /// Shares children and tree, see above.
    MOcNode(MOcNode const &other);
    /// Likewise.
    MOcNode &operator=(MOcNode const &other);
    /// Deletes the children, never an object.
    virtual ~MOcNode();

    /// Region and parent become zero, and there are no children.
    void InitClassMembers();

    /// Entry at the root: the first object goes to `FirstInsert`; for all others it lets the region grow until it
    /// contains the box, and puts the object into the deepest node that contains it. 0; -1 without a change of
    /// the pools for null, and when the box is not finite or the region cannot grow to it, as that of a child
    /// never does.
    int Insert(MOcObj *object);
    /// Makes the region from the object's box, widened by the initial size, and puts the object into this pool; the
    /// node is a used root from then on. 0, or -1 without a change for null, in a child, and when the box is not
    /// finite.
    int FirstInsert(MOcObj *object);
    /// Puts an object whose box lies in this region into the subtree: 0, or -1 for null.
    int Insert(MOcObj *object, MOcMBR3D const &mbr);
    /// Lets the region grow until it contains the box, then inserts. 0, or -1 for null and when it cannot grow so
    /// far, as that of a child never does.
    int InsertWithMBR(MOcObj *object, MOcMBR3D const &mbr);

    /// Takes the object out of the subtree: 0, or -1 when its box does not lie in the region or it is not found,
    /// which null never is.
    /// An object whose box has changed is found by a search of all nodes.
    int Delete(MOcObj *object);
    /// The same with the object's box; a non-zero `anywhere` skips the test against this region.
    int Delete(MOcObj *object, MOcMBR3D const &mbr, int anywhere);

    /// The leaf whose region contains the point, null when this region does not.
    MOcNode *FindNodeContainingPoint(MOcPoint3D const &point);

    /// Appends the objects that meet the query (see `MOcMBR3D::Intersect8OT`) to the list: this pool in its order,
    /// then the children. Gives their number.
    int GetIntersectObjList(MOcMBR3D const &query, MList<MOcObj *> &list, int strict);
    /// The same for objects whose type indexes a non-zero element of `types`.
    int GetIntersectObjList(MOcMBR3D const &query, MList<MOcObj *> &list, MArray<int> const &types, int strict);

    /// The eight octants of the region, in the order of the children.
    void GetSplitRegion(MOcMBR3D *const regions) const;
    /// Moves each object of this pool, from last to first, into the first child that contains it; nothing in a leaf.
    void Distribute();
    /// Removes eight empty leaf children and goes on at the parent: 0, or -1 when there is nothing to remove.
    int Merge();

    /// The settings of the tree.
    MOcNodeInfo const &GetOcNodeInfo() const;

    /// First child whose region contains the argument, 8 when none does or there are no children.
    int GetChildNodeIndexContainingPoint(MOcPoint3D const &point) const;

    /// The box whose objects the node is for.
    MOcMBR3D const &GetRegion() const { return m_region; }
    /// The node above, null for the root.
    MOcNode *GetParent() const { return m_parent; }
    /// Child `index`, null in a leaf.
    MOcNode *GetChild(int index) const { return m_children[index]; }
    /// Whether there are no children.
    bool IsLeafNode() const { return !m_children[0]; }
    /// The objects that lie in the region but in none of the children.
    MOcObjPool &GetPool() { return m_pool; }
    /// The same for reading.
    MOcObjPool const &GetPool() const { return m_pool; }

private:
    friend struct spatial::Access<spatial::OcSpace>;
    friend struct spatial::OcSpace;

    MOcNode(MOcTree *tree, spatial::Stock<spatial::OcSpace> *stock);

    MOcMBR3D m_region;
    MOcNode *m_parent = nullptr;
    /// Eight in one block behind their family, or none.
    MOcNode *m_children[kChildCount] = {};
    MOcObjPool m_pool;
    MOcTree *m_tree = nullptr;
    /// Whether no object has come yet.
    int m_firstInsert = 1;
};

} // namespace zvi::lib
