#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MHashMap.h"
#include "zvi/core/MList.h"
#include "zvi/spatial/MQuadNode.h"
#include "zvi/spatial/MQuadNodeInfo.h"
#include "zvi/spatial/MQuadObj.h"
#include "zvi/spatial/MQuadObjPool.h"

class CDC;

namespace zvi::lib {

/// An index of objects by their bounding rectangles, under keys or as objects of the caller.
///
/// The tree has no fixed extent: its root region starts around the first object and grows as objects arrive, softly
/// while the root is a leaf with room and by doubling afterwards. An object stands in exactly one node, the deepest one
/// whose region wholly contains its rectangle, so that a query never meets it twice. A leaf that is full splits unless
/// all its objects are clustered within a twentieth of its diagonal; there is no other limit of depth or number.
///
/// Objects made by the key overloads of `Insert` belong to the tree. Objects passed by pointer stay the caller's and
/// are not under a key; they may be destroyed before the tree, if the tree is not used afterwards except for `Clear`
/// and destruction. Rectangles that are not finite are refused.
///
/// Copying is shallow, deliberately: the copy shares root and keys. Whoever copies a tree keeps exactly one of the
/// copies alive at the end and sees to it that the others are not destroyed. One thread per tree.
class ZVI_API MQuadTree {
public:
    /// Bins of the key map at the start; a prime that holds 225,015 keys before the first rehash.
    static constexpr unsigned int kKeyBinCount = 100007;

    /// Default settings.
    MQuadTree();
    /// Width and height that the first object's region is widened by, and node capacity.
    MQuadTree(double width, double height, int capacity);
    /// Shares root, keys and objects, see above.
    MQuadTree(MQuadTree const &other) = default;
    /// Likewise; what this tree held is not freed.
    MQuadTree &operator=(MQuadTree const &other) = default;
    /// Deletes the nodes and the objects under keys.
    virtual ~MQuadTree();

    /// 1; 0 when the key exists, the rectangle is not finite, or the root region cannot grow to it, as one without a
    /// size or near the largest numbers. Then no object and no key has come, though the region may have grown.
    int Insert(unsigned int key, MQuadMBR2D const &mbr);
    /// The same with the type of the object.
    int Insert(unsigned int key, int type, MQuadMBR2D const &mbr);
    /// Inserts an object of the caller: 1; 0 for null and as above.
    int Insert(MQuadObj *object);

    /// Removes the key and its object: 1; 0 when the key is absent, or when the object was not found where it should
    /// be because its rectangle has been moved out of the root region (it goes all the same).
    int Delete(unsigned int key);
    /// Takes an object out of the tree without deleting it: 1, or 0 when it is not found.
    int Delete(MQuadObj *object);

    /// 1 if the key is in use, else 0.
    int Exist(unsigned int key) const;

    /// The objects of the leaf that contains the point; null when the root region does not.
    MQuadObjPool *FindNode(MQuadPoint2D const &point) const;

    /// Appends all objects that meet the query (see `MQuadMBR2D::Intersect4QT`) to the list and gives their number.
    /// The order is that of the nodes from the root down, children 0 to 3, each pool in its order.
    int GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, int strict) const;
    /// The same for objects whose type indexes a non-zero element of `types`.
    int GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, MArray<int> const &types,
                            int strict) const;

    /// Deletes the objects under keys and all nodes; the settings stay.
    void Clear();

    /// Draws the leaves, see `MQuadNode::Draw`; nothing without a root.
    void Draw(CDC *dc) const;

    /// The root, null before anything was inserted or tried to be, and after `Clear`.
    MQuadNode const *GetRoot() const { return m_root; }
    /// The settings given at construction.
    MQuadNodeInfo const &GetInfo() const { return m_info; }

    /// Whether the tree is as it says it is: each node has four children or none, which know it and have the quadrants
    /// of its region; no object stands in two places; each object under a key is in a pool; and what the pools noted of
    /// objects that nobody can have changed is true of them. Time in proportion to nodes and objects. A tree with the
    /// same object twice, or with a key that was changed in its object, fails it.
    bool IsConsistent() const;

private:
    friend struct spatial::Access<spatial::QuadSpace>;

    explicit MQuadTree(MQuadNodeInfo const &info);

    int CheckDuplicatedItem() const;

    MQuadNode *m_root = nullptr;
    MQuadNodeInfo m_info;
    MHashMap<unsigned int, MQuadObj *> *m_objects;
    spatial::Memory<spatial::QuadSpace> *m_memory;
};

} // namespace zvi::lib
