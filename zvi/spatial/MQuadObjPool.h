#pragma once

#include "zvi/Export.h"
#include "zvi/spatial/MQuadObj.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>

namespace zvi::lib {

namespace spatial {

class QuadMemory;
class QuadPoolIndex;
struct QuadCluster;

/// A rectangle in four bytes.
using QuadCode = std::uint32_t;

/// Two bands of the plane, one upright and one level: each object of the pool that is told of lies in one of them.
struct QuadBands {
    double minX; ///< left side of the upright band
    double maxX; ///< right side of the upright band
    double minY; ///< lower side of the level band
    double maxY; ///< upper side of the level band

    /// Holds nothing.
    static constexpr QuadBands Empty() { return {kInfinity, -kInfinity, kInfinity, -kInfinity}; }
    /// Holds the whole plane.
    static constexpr QuadBands Everything() { return {-kInfinity, kInfinity, -kInfinity, kInfinity}; }

private:
    static constexpr double kInfinity = std::numeric_limits<double>::infinity();
};

} // namespace spatial

/// The objects of one quadtree node, in the order in which they came. Owns the array, not the objects. A copy holds the
/// same objects.
class ZVI_API MQuadObjPool {
public:
    /// An empty pool.
    MQuadObjPool();
    /// The same objects, in the same order.
    MQuadObjPool(MQuadObjPool const &other);
    /// Likewise.
    MQuadObjPool &operator=(MQuadObjPool const &other);
    virtual ~MQuadObjPool();

    /// Number of objects.
    int GetCount() const { return static_cast<int>(m_count); }
    /// Whether there are none.
    bool IsEmpty() const { return m_count == 0; }
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

    explicit MQuadObjPool(spatial::QuadMemory *memory);

    MQuadObj **Objects() const { return reinterpret_cast<MQuadObj **>(m_codes + m_capacity); }

    void Append(MQuadObj *object, spatial::QuadCode code);
    void Reserve(std::size_t count);
    void MoveTo(std::uint32_t capacity);
    void ReleaseEntries();
    void KeepFrom(std::uint32_t first);
    void DropFirstUnlessLive();
    int FindTrusted(MQuadObj const *object, spatial::QuadCode code) const;
    void Distrust(std::size_t index);
    void Recode(MQuadMBR2D const &region);
    void AddToBands(spatial::QuadCode code, MQuadMBR2D const &mbr, MQuadMBR2D const &quartered);
    void BandsFor(MQuadMBR2D const &quartered);
    void IndexFor(MQuadMBR2D const &region);
    void DropIndex();
    void Swap(MQuadObjPool &other);

    /// Where all objects of an inner node lie; everything in a leaf.
    spatial::QuadBands m_bands = spatial::QuadBands::Everything();
    /// The begin of a block that holds the codes and, behind the last that has room, the objects. A code is the
    /// rectangle of its object in the frame of the node's region, coarsely; see QuadCodeDetail.h.
    spatial::QuadCode *m_codes = nullptr;
    std::uint32_t m_count = 0;
    /// A power of two, or 0 without a block.
    std::uint32_t m_capacity = 0;
    /// Exists in inner nodes with many objects.
    std::unique_ptr<spatial::QuadPoolIndex> m_index;
    /// Where the block comes from; null for the general allocator.
    spatial::QuadMemory *m_memory = nullptr;
    /// Exists in overfull leaves whose objects are all trusted and in one quadrant.
    std::unique_ptr<spatial::QuadCluster> m_cluster;
    bool m_hasUntrusted = false;
};

} // namespace zvi::lib
