#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MList.h"
#include "zvi/spatial/MQuadNodeInfo.h"
#include "zvi/spatial/MQuadObjPool.h"

class CDC;

namespace zvi::lib {

class MQuadTree;

namespace spatial {

struct QuadFamily;

/// A cache line, so that a descent reads one line of each inner node.
struct alignas(64) QuadNodeAlignment {};

} // namespace spatial

/// A node of `MQuadTree`: a region, the objects that lie in it but in none of its children, and no child or four.
///
/// Children stand in this order everywhere: 0 low x low y, 1 high x low y, 2 low x high y, 3 high x high y. Mid lines
/// are (min + max) * 0.5. An object on a mid line goes to the high side, one that crosses it stays in the parent.
///
/// Nodes belong to their tree and use its settings. Copying is shallow, deliberately: the copy has the same children
/// and the same tree and a copy of the pool's array; whoever copies a node keeps one of the two alive at the end.
class ZVI_API MQuadNode : private spatial::QuadNodeAlignment {
public:
    /// Children of a node that is no leaf.
    static constexpr int kChildCount = 4;

    /// A leaf without a region, for `tree`; null gives the default settings.
    explicit MQuadNode(MQuadTree *tree = nullptr);
    /// Shares children and tree, see above.
    MQuadNode(MQuadNode const &other) = default;
    /// Likewise.
    MQuadNode &operator=(MQuadNode const &other) = default;
    /// Deletes the children, never an object.
    virtual ~MQuadNode();

    /// Region and parent become zero, and there are no children.
    void InitClassMembers();

    /// Entry at the root: makes the region of a fresh root from the object's rectangle, lets the region grow until it
    /// contains the rectangle, and puts the object into the deepest node that contains it. 0; -1 without a change of
    /// the pools for null, and when the rectangle is not finite or the region cannot grow to it.
    int Insert(MQuadObj *object);
    /// Puts an object whose rectangle lies in this region into the subtree: 0, or -1 for null.
    int Insert(MQuadObj *object, MQuadMBR2D const &mbr);
    /// Lets the region grow until it contains the rectangle, then inserts. 0, or -1 for null and when it cannot grow so
    /// far.
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
    friend class MQuadObj;
    friend class MQuadTree;

    struct Hits;
    struct Way;

    bool IsConsistent() const;
    bool IsChildConsistent(int index, MQuadMBR2D const &quadrant) const;

    void DeleteChild();
    bool ExtendRegion(MQuadMBR2D const &mbr);
    bool IsAllSameQuad(MQuadMBR2D const *regions, int &index) const;
    bool CanSplit(MQuadMBR2D const &mbr, MQuadMBR2D const *regions);
    void Split(MQuadMBR2D const *regions);
    void Extend(MQuadMBR2D const &mbr);
    void Extend(MQuadPoint2D const &point);
    void ExtendQuadTreeRegion(MQuadPoint2D const &point, int &corner);
    int GetChildNodeIndexContainingMBR(MQuadMBR2D const &mbr) const;
    static int GetChildNodeIndexContainingMBR(MQuadMBR2D const &mbr, MQuadMBR2D const *regions);

    bool HasRoom() const;
    bool CanDouble() const;
    bool GrowFromRoot(MQuadMBR2D const &mbr);
    bool GrowToContain(MQuadMBR2D const &mbr);
    void Place(MQuadObj *object, bool isTrusted);
    void Descend(MQuadObj *object, MQuadMBR2D const &mbr, bool isTrusted);
    MQuadNode *DescendToward(MQuadMBR2D const &mbr);
    MQuadNode *SplitFor(MQuadMBR2D const &mbr);
    bool IsMemberFarFrom(MQuadMBR2D const &mbr) const;
    void MakeChildren(MQuadMBR2D const *regions);
    void AdoptChildren(MQuadNode *first, MQuadMBR2D const &quartered);
    void SetChildren(MQuadNode *first);
    void SetQuartered(MQuadMBR2D const *quartered);
    spatial::QuadFamily *Family() const;
    MQuadMBR2D const &QuarteredRegion() const { return m_quartered ? *m_quartered : m_region; }
    int DeleteSearching(MQuadObj *object, MQuadMBR2D const &mbr);
    void RemoveFromPool(int index);
    static void CollectHits(Way way, Hits &hits);
    void AddHitsOfPool(Hits &hits) const;

    void NoteCluster(int quadrant, MQuadMBR2D const &mbr);
    bool StartWatching(MQuadObj *object);
    MQuadNode *FindWatched(MQuadObj const *object, int &index);
    MQuadNode *FindAnywhere(MQuadObj const *object, int &index);
    void Purge(MQuadObj const *object);
    static bool StartWatchingAt(MQuadNode &node, MQuadObj *object, MQuadMBR2D const &mbr);
    void StopWatching(MQuadObj *object);
    void StopWatchingAll();

    /// The region whose quadrants the children's regions are to the last bit, so that one comparison with each mid line
    /// selects a child: null when it is this region. Doubling can move the region of a node by a rounding.
    MQuadMBR2D const *m_quartered = nullptr;
    MQuadMBR2D m_region;
    MQuadNode *m_parent = nullptr;
    /// Four in one block behind their `QuadFamily`, or none. `SetChildren` sets them.
    MQuadNode *m_children[kChildCount] = {};
    MQuadObjPool m_pool;
    MQuadTree *m_tree = nullptr;
};

} // namespace zvi::lib
