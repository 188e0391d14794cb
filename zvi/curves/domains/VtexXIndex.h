#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"

#include <cstddef>
#include <cstdint>

namespace zvi::lib {

/// Ends of curves nearer than this in both x and y become one vertex; in drawing units, whatever the drawing's size.
inline constexpr double kVtexMergeTolerance = 0.0001;

/// Vertices in the order of x, equal x in the order of their numbers, for merging end points.
///
/// It answers like an ordered multimap from x to vertex that is scanned upwards from x - tolerance. The vertices lie in
/// square cells of ten tolerances in a hash table with open addressing, so that a lookup costs the same however many
/// vertices share one x.
class VtexXIndex {
public:
    /// The first vertex, by x and then by number, with |dx| and |dy| both below `kVtexMergeTolerance`; -1 if there
    /// is none. A coordinate that is not finite meets nothing. `coordinates` are those of all vertices entered.
    int Find(DM_VTEX const &point, zvi::MArray<DM_VTEX> const &coordinates) const;

    /// Enters the vertex `vtex` at `point`.
    void Insert(DM_VTEX const &point, int vtex);

private:
    struct Slot {
        std::uint32_t hash; ///< of the vertex's cell
        int vtex;           ///< -1 for none
    };

    /// The better of `best` and the vertices of one cell; -1 stands for none.
    int BestInCell(DM_VTEX const &point, zvi::MArray<DM_VTEX> const &coordinates, std::uint32_t hash, int best) const;
    void Grow();
    void Place(Slot slot);

    zvi::MArray<Slot> m_slots; ///< the size is a power of two; at most half of them are taken
    std::size_t m_count = 0;
};

} // namespace zvi::lib
