#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"

#include <cstdint>

namespace zvi::lib {

/// Ends of curves nearer than this in both x and y become one vertex; in drawing units, whatever the drawing's size.
inline constexpr double kVtexMergeTolerance = 0.0001;

/// Vertices in the order of x, equal x in the order of insertion, for merging end points.
///
/// It answers like an ordered multimap from x to vertex that is scanned upwards from x - tolerance. The vertices lie in
/// square cells of four tolerances, so that a lookup costs the same however many vertices share one x.
class VtexXIndex {
public:
    /// The first vertex, by x and then by insertion, with |dx| and |dy| both below `kVtexMergeTolerance`; -1 if there
    /// is none. A coordinate that is not a number meets nothing.
    int Find(DM_VTEX const &point) const;

    /// Enters the vertex `vtex` at `point`.
    void Insert(DM_VTEX const &point, int vtex);

private:
    struct Entry {
        DM_VTEX point;
        int vtex;
        int next; ///< next entry of the same bucket, -1 at the end
    };

    std::uint32_t BucketOf(double cellX, double cellY) const;
    void Grow();
    /// The better of `best` and the entries of one cell, by x and then by insertion; -1 stands for none.
    int BestInCell(DM_VTEX const &point, double cellX, double cellY, int best) const;

    zvi::MArray<Entry> m_entries; ///< in the order of insertion
    zvi::MArray<int> m_buckets;   ///< first entry of each bucket, -1 for none; the size is a power of two
};

} // namespace zvi::lib
