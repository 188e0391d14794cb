#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"

#include <memory>

namespace zvi::lib {

namespace base {
class CellGrid;
}

/// Ends of curves nearer than this in both x and y become one vertex; in drawing units, whatever the drawing's size.
inline constexpr double kVtexMergeTolerance = 0.0001;

/// Vertices in the order of x, equal x in the order of their numbers, for merging end points.
///
/// It answers like an ordered multimap from x to vertex that is scanned upwards from x - tolerance. The vertices lie in
/// square cells of ten tolerances, so that a lookup costs the same however many vertices share one x.
class VtexXIndex {
public:
    VtexXIndex();
    VtexXIndex(VtexXIndex const &other);
    VtexXIndex &operator=(VtexXIndex const &other);
    ~VtexXIndex();

    /// The first vertex, by x and then by number, with |dx| and |dy| both below `kVtexMergeTolerance`; -1 if there
    /// is none. A coordinate that is not finite meets nothing. `coordinates` are those of all vertices entered.
    int Find(DM_VTEX const &point, zvi::MArray<DM_VTEX> const &coordinates) const;

    /// Enters the vertex `vtex` at `point`.
    void Insert(DM_VTEX const &point, int vtex);

private:
    std::unique_ptr<base::CellGrid> m_cells; ///< null until a vertex was entered
};

} // namespace zvi::lib
