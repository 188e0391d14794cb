#pragma once

#include "zvi/Export.h"
#include "zvi/spatial/MQuadObj.h"

namespace zvi::lib {

namespace spatial {
template <typename Space>
class Memory;
template <typename Space>
struct Pools;
template <typename Space>
class Stock;
} // namespace spatial

/// The objects of one quadtree node, in the order in which they came. Owns the array, not the objects. A copy holds the
/// same objects.
class ZVI_API MQuadObjPool {
public:
    /// An empty pool.
    MQuadObjPool();
    /// The same objects, in the same order.
    MQuadObjPool(MQuadObjPool const &other);
    /// Likewise; the pool is as it was when memory cannot be had.
    MQuadObjPool &operator=(MQuadObjPool const &other);
    /// Frees the array, not the objects.
    virtual ~MQuadObjPool();

    /// Number of objects.
    int GetCount() const;
    /// Whether there are none.
    bool IsEmpty() const { return GetCount() == 0; }
    /// The object at `index`, null when there is none.
    MQuadObj *GetAt(int index) const;

    /// Appends the object. A first object whose status is not 1 leaves the pool before that. Nothing for null.
    void Add(MQuadObj *object);
    /// Removes the object at `index` and moves those behind it one place down; nothing when there is none.
    void RemoveAt(int index);
    /// Place of the object, searched from last to first; -1 when it is absent.
    int FindFromLast(MQuadObj const *object) const;

private:
    friend class MQuadNode;
    friend struct spatial::Access<spatial::QuadSpace>;
    friend struct spatial::Pools<spatial::QuadSpace>;

    MQuadObjPool(MQuadNode *node, spatial::Memory<spatial::QuadSpace> *memory,
                 spatial::Stock<spatial::QuadSpace> *stock);

    /// The array, with what is remembered of it.
    spatial::Stock<spatial::QuadSpace> *m_stock = nullptr;
    /// Where the array comes from; null for the general allocator.
    spatial::Memory<spatial::QuadSpace> *m_memory = nullptr;
    /// Whose objects these are, null for nobody's.
    MQuadNode *m_node = nullptr;
    /// Whether the stock goes with the pool; that of a child is part of its family.
    bool m_ownsStock = true;
};

} // namespace zvi::lib
