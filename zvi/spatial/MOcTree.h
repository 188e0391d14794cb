#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MHashMap.h"
#include "zvi/core/MList.h"
#include "zvi/spatial/MOcNode.h"
#include "zvi/spatial/MOcNodeInfo.h"
#include "zvi/spatial/MOcObj.h"
#include "zvi/spatial/MOcObjPool.h"

#include <cstdint>

namespace zvi::lib {

/// An index of objects by their bounding boxes, under keys or as objects of the caller.
///
/// The tree has no fixed extent: its root region starts around the first object and grows as objects arrive, softly
/// while the root is a leaf with room and by doubling afterwards. An object stands in exactly one node, the deepest one
/// whose region wholly contains its box, so that a query never meets it twice. A leaf that is full splits unless
/// all its objects are clustered within a twentieth of its diagonal; there is no other limit of depth or number.
///
/// Objects made by the key overloads of `Insert` belong to the tree. Objects passed by pointer stay the caller's and
/// are not under a key; they may be destroyed before the tree, if the tree is not used afterwards except for `Clear`
/// and destruction. Boxes that are not finite are refused.
///
/// Copying is shallow, deliberately: the copy shares root and keys. Whoever copies a tree keeps exactly one of the
/// copies alive at the end and sees to it that the others are not destroyed. One thread per tree.
class ZVI_API MOcTree {
public:
    /// Bins of the key map at the start; a prime that holds 225,015 keys before the first rehash.
    static constexpr unsigned int kKeyBinCount = 100007;

    /// Default settings.
    MOcTree();
    /// Sizes along x and y that the first object's region is widened by, and node capacity. The size along z stays 100;
    /// this has no argument for it, deliberately.
    MOcTree(double sizeX, double sizeY, int capacity);
    /// Shares root, keys and objects, see above.
    MOcTree(MOcTree const &other) = default;
    /// Likewise; what this tree held is not freed.
    MOcTree &operator=(MOcTree const &other) = default;
    /// Deletes the nodes and the objects under keys.
    virtual ~MOcTree();

    /// 1; 0 when the key exists, the box is not finite, or the root region cannot grow to it, as one without a size
    /// or near the largest numbers. Then no object and no key has come, though the region may have grown.
    int Insert(std::uint64_t key, MOcMBR3D const &mbr);
    /// The same with the type of the object.
    int Insert(std::uint64_t key, int type, MOcMBR3D const &mbr);
    /// Inserts an object of the caller: 1; 0 for null and as above.
    int Insert(MOcObj *object);

    /// Removes the key and its object: 1; 0 when the key is absent, or when the object was not found where it should
    /// be because its box has been moved out of the root region (it goes all the same).
    int Delete(std::uint64_t key);
    /// Takes an object out of the tree without deleting it: 1, or 0 when it is not found.
    int Delete(MOcObj *object);

    /// 1 if the key is in use, else 0.
    int Exist(std::uint64_t key) const;

    /// The objects of the leaf that contains the point; null when the root region does not.
    MOcObjPool *FindNode(MOcPoint3D const &point) const;

    /// Appends all objects that meet the query (see `MOcMBR3D::Intersect8OT`) to the list and gives their number.
    /// The order is that of the nodes from the root down, children 0 to 7, each pool in its order.
    int GetIntersectObjList(MOcMBR3D const &query, MList<MOcObj *> &list, int strict) const;
    /// The same for objects whose type indexes a non-zero element of `types`.
    int GetIntersectObjList(MOcMBR3D const &query, MList<MOcObj *> &list, MArray<int> const &types, int strict) const;

    /// Deletes the objects under keys and all nodes; the settings stay.
    void Clear();

    /// What `SetDraw` set, 0 at first; the tree itself draws nothing.
    int IsDraw() const { return m_draw; }
    /// Remembers for the caller whether to draw.
    void SetDraw(int draw) { m_draw = draw; }

    /// The root, null before anything was inserted or tried to be, and after `Clear`.
    MOcNode const *GetRoot() const { return m_root; }
    /// The settings given at construction.
    MOcNodeInfo const &GetInfo() const { return m_info; }

    /// Whether the tree is as it says it is: each node has eight children or none, which know it and have the octants
    /// of its region; no object stands in two places; each object under a key is in a pool; and what the pools noted of
    /// objects that nobody can have changed is true of them. Time in proportion to nodes and objects. A tree with the
    /// same object twice, or with a key that was changed in its object, fails it.
    bool IsConsistent() const;

private:
    friend struct spatial::Access<spatial::OcSpace>;

    explicit MOcTree(MOcNodeInfo const &info);

    int CheckDuplicatedItem() const;

    MOcNode *m_root = nullptr;
    MOcNodeInfo m_info;
    MHashMap<std::uint64_t, MOcObj *> *m_objects;
    int m_draw = 0;
    spatial::Memory<spatial::OcSpace> *m_memory;
};

} // namespace zvi::lib
