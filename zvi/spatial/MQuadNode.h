#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MList.h"
#include "zvi/spatial/MQuadNodeInfo.h"
#include "zvi/spatial/MQuadObjPool.h"

class CDC;

namespace zvi::lib {

class MQuadTree;

/// A node of `MQuadTree`: a region, the objects that lie in it but in none of its children, and no child or four.
///
/// Children stand in this order everywhere: 0 low x low y, 1 high x low y, 2 low x high y, 3 high x high y. Mid lines
/// are (min + max) * 0.5. An object on a mid line goes to the high side, one that crosses it stays in the parent.
///
/// Nodes belong to their tree and use its settings. Copying is shallow, deliberately: the copy has the same children
/// and the same tree and a copy of the pool's array; whoever copies a node keeps one of the two alive at the end.
class ZVI_API MQuadNode {
public:
    /// Children of a node that is no leaf.
    static constexpr int kChildCount = 4;

    /// A leaf without a region, for `tree`; null gives the default settings.
    explicit MQuadNode(MQuadTree *tree = nullptr);
    /// Shares children and tree, see above.
    MQuadNode(MQuadNode const &other);
    /// Likewise.
    MQuadNode &operator=(MQuadNode const &other);
    /// Deletes the children, never an object.
    virtual ~MQuadNode();

    /// Region and parent become zero, and there are no children.
    void InitClassMembers();

    /// Entry at the root: makes the region of a fresh root from the object's rectangle, lets the region grow until it
    /// contains the rectangle, and puts the object into the deepest node that contains it. 0; -1 without a change of
    /// the pools for null, and when the rectangle is not finite or the region cannot grow to it, as that of a child
    /// never does.
    int Insert(MQuadObj *object);
    /// Puts an object whose rectangle lies in this region into the subtree: 0, or -1 for null.
    int Insert(MQuadObj *object, MQuadMBR2D const &mbr);
    /// Lets the region grow until it contains the rectangle, then inserts. 0, or -1 for null and when it cannot grow so
    /// far, as that of a child never does.
    int InsertWithMBR(MQuadObj *object, MQuadMBR2D const &mbr);

    /// Takes the object out of the subtree: 0, or -1 when its rectangle does not lie in the region or it is not found,
    /// which null never is.
    /// An object whose rectangle has changed is found by a search of all nodes.
    int Delete(MQuadObj *object);
    /// The same with the object's rectangle; a non-zero `anywhere` skips the test against this region.
    int Delete(MQuadObj *object, MQuadMBR2D const &mbr, int anywhere);

    /// The leaf whose region contains the point, null when this region does not.
    MQuadNode *FindNodeContainingPoint(MQuadPoint2D const &point);

    /// Appends the objects that meet the query (see `MQuadMBR2D::Intersect4QT`) to the list: this pool in its order,
    /// then the children. Gives their number.
    int GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, int strict);
    /// The same for objects whose type indexes a non-zero element of `types`.
    int GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, MArray<int> const &types, int strict);

    /// The four quadrants of the region, in the order of the children.
    void GetSplitRegion(MQuadMBR2D *const regions) const;
    /// Moves each object of this pool, from last to first, into the first child that contains it; nothing in a leaf.
    void Distribute();
    /// Removes four empty leaf children and goes on at the parent: 0, or -1 when there is nothing to remove.
    int Merge();

    /// Draws the regions of the leaves with a hollow brush, coordinates cut to whole numbers; nothing for null.
    void Draw(CDC *dc);

    /// The settings of the tree.
    MQuadNodeInfo const &GetQuadNodeInfo() const;

    /// First child whose region contains the argument, 4 when none does or there are no children.
    int GetChildNodeIndexContainingPoint(MQuadPoint2D const &point) const;

    /// The rectangle whose objects the node is for.
    MQuadMBR2D const &GetRegion() const { return m_region; }
    /// The node above, null for the root.
    MQuadNode *GetParent() const { return m_parent; }
    /// Child `index`, null in a leaf.
    MQuadNode *GetChild(int index) const { return m_children[index]; }
    /// Whether there are no children.
    bool IsLeaf() const { return !m_children[0]; }
    /// The objects that lie in the region but in none of the children.
    MQuadObjPool &GetPool() { return m_pool; }
    /// The same for reading.
    MQuadObjPool const &GetPool() const { return m_pool; }

private:
    friend struct spatial::Access<spatial::QuadSpace>;
    friend struct spatial::QuadSpace;

    MQuadNode(MQuadTree *tree, spatial::Stock<spatial::QuadSpace> *stock);

    MQuadMBR2D m_region;
    MQuadNode *m_parent = nullptr;
    /// Four in one block behind their family, or none.
    MQuadNode *m_children[kChildCount] = {};
    MQuadObjPool m_pool;
    MQuadTree *m_tree = nullptr;
};

} // namespace zvi::lib
