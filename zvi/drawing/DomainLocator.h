#pragma once

#include "zvi/Export.h"
#include "zvi/drawing/DrawingRecords.h"

#include <memory>
#include <vector>

namespace zvi::lib {

/// Tells which domain of a drawing holds a point, for many points. The domains must not overlap, as those of
/// MakeDrawingDomains do not with `split` on and duplicates dropped; they are not needed any more once it is made.
///
/// Borders: a point belongs to the domain to the right of it, seen from just above. So of a rectangle the left side and
/// the lower one belong to it, the right and the upper one to what lies beyond them; each point belongs to one domain
/// at most, and points on the border between two domains to one of them. Off the borders it agrees with
/// MGeomFunc::IsPointInPolygon2 on domains of lines without holes. What is nearer to a border than rounding, sixteen
/// units in the last place of the largest coordinate, may be taken for a point on it.
///
/// Method: a grid of about as many cells as there are pieces, each with the pieces that run through it. A query looks
/// from the point to the left, through as many cells as it takes to meet a piece or to know what lies there: a few
/// pieces on average. Making it takes n log n.
class ZVI_API DomainLocator {
public:
    /// For these domains, which it copies what it needs of.
    explicit DomainLocator(std::vector<DrawingDomain> const &domains);
    /// Frees the index.
    ~DomainLocator();
    /// Takes over what `other` has, which holds nothing from then on.
    DomainLocator(DomainLocator &&other) noexcept;
    DomainLocator &operator=(DomainLocator &&other) noexcept;

    /// The index of the domain that holds the point, -1 for none. Coordinates that are not finite lie in none.
    int DomainAt(DrawingPoint p) const;

private:
    class Grid;
    std::unique_ptr<Grid const> m_grid;
};

} // namespace zvi::lib
