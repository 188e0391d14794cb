#pragma once

#include "zvi/core/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/spatial/MQuadObj.h"

#include <cstdint>
#include <memory>

namespace zvi::lib {

class QuadPoolIndex;
struct QuadCluster;

/// A rectangle in four bytes.
using QuadCode = std::uint32_t;

/// The objects of one quadtree node, in the order in which they came. Owns the array, not the objects. A copy holds the
/// same objects.
class ZVI_API MQuadObjPool {
public:
    MQuadObjPool();
    MQuadObjPool(MQuadObjPool const &other);
    MQuadObjPool &operator=(MQuadObjPool const &other);
    virtual ~MQuadObjPool();

    int GetCount() const { return static_cast<int>(m_objects.Size()); }
    bool IsEmpty() const { return m_objects.Empty(); }
    /// The object at `index`, null when there is none.
    MQuadObj *GetAt(int index) const;

    /// Appends the object. A first object whose status is not 1 leaves the pool before that.
    void Add(MQuadObj *object);
    /// Removes the object at `index` and moves those behind it one place down; nothing when there is none.
    void RemoveAt(int index);
    /// Place of the object, searched from last to first; -1 when it is absent.
    int FindFromLast(MQuadObj const *object) const;

private:
    friend class MQuadNode;
    friend class MQuadObj;

    void Append(MQuadObj *object, QuadCode code);
    void Reserve(std::size_t count);
    void DropFirstUnlessLive();
    int FindTrusted(MQuadObj const *object, QuadCode code) const;
    void Distrust(std::size_t index);
    void Recode(MQuadMBR2D const &region);
    void IndexFor(MQuadMBR2D const &region);
    void DropIndex();
    void Swap(MQuadObjPool &other);

    MArray<MQuadObj *> m_objects;
    /// The rectangles of the objects in the frame of the node's region, coarsely; see QuadCodeDetail.h.
    MArray<QuadCode> m_codes;
    /// Exists in inner nodes with many objects.
    std::unique_ptr<QuadPoolIndex> m_index;
    /// Exists in overfull leaves whose objects are all trusted and in one quadrant.
    std::unique_ptr<QuadCluster> m_cluster;
    bool m_hasUntrusted = false;
};

} // namespace zvi::lib
