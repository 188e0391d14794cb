#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/curves/GeomRecords.h"

#include <memory>

namespace zvi::lib {

/// A polygon prepared for many point tests. The answers are those of MGeomFunc::IsPointInPolygon2, border, deliberate
/// oddities and polygons that cross themselves included; only the time differs. For n vertices of a polygon that does
/// not cross itself a test takes a few steps, or log^2 n of them when it is jagged. Where edges cross, and at heights
/// of very flat edges, a test looks at more edges, and at all of them where coordinates exceed 1e12. Making it takes n
/// log^2 n; memory is about 50 bytes a vertex, and some 400 of a jagged polygon. The polygon does not repeat its first
/// vertex. Fewer than three vertices hold nothing.
class ZVI_API PreparedPolygon {
public:
    /// Keeps a copy of the vertices.
    explicit PreparedPolygon(MArray<T_POINT2D> const &polygon);
    /// Frees the copy of the polygon and its index.
    ~PreparedPolygon();
    /// Takes over what `other` has, which holds nothing from then on.
    PreparedPolygon(PreparedPolygon &&other) noexcept;
    PreparedPolygon &operator=(PreparedPolygon &&other) noexcept;

    /// 1 if the point is inside; a point within 1e-10 of an edge is when `closed` is nonzero.
    int IsPointInPolygon2(T_POINT2D const &p, int closed) const;
    /// `IsPointInPolygon2` with `closed` 0.
    int IsPointInPolygon(T_POINT2D const &p) const { return IsPointInPolygon2(p, 0); }

private:
    class Strips;
    std::unique_ptr<Strips const> m_strips;
};

} // namespace zvi::lib
