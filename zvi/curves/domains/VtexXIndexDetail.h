#pragma once

#include "zvi/base/CellGrid.h"
#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"

namespace zvi::lib::curves {

/// Vertices in the order of x, equal x in the order of their numbers, for merging end points.
///
/// It answers like an ordered multimap from x to vertex that is scanned upwards from x - tolerance. The vertices lie in
/// square cells of ten tolerances, so that a lookup costs the same however many vertices share one x.
class VtexXIndex {
public:
    /// The first vertex, by x and then by number, with |dx| and |dy| both below `kVtexMergeTolerance`; -1 if there
    /// is none. A coordinate that is not finite meets nothing. `coordinates` are those of all vertices entered.
    int Find(DM_VTEX const &point, MArray<DM_VTEX> const &coordinates) const;

    /// Enters the vertex `vtex` at `point`. When memory fails, the index stays as it was.
    void Insert(DM_VTEX const &point, int vtex);

private:
    base::CellGrid m_grid;
};

} // namespace zvi::lib::curves
