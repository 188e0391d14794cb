#pragma once

#include "zvi/drawing/StretchIndexDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// Finds what is seen to the left where the boxes of stretches crowd. It looks at boxes of parts: a line has them in
/// equal steps; those of an arc become half as long from one to the next towards its leftmost and rightmost points, for
/// a look that begins at the leftmost point of something often meets what runs round it there.
class LeftIndex {
public:
    /// Boxes are grown by `grown`; `partsOfMean` tells into how many parts a line of mean extent is cut.
    LeftIndex(std::vector<Stretch> const &stretches, double partsOfMean, double grown, base::Workers const &workers);

    /// Calls `look(stretch)` to the left of `p` as BoxIndex::LookAlong does; a stretch may come several times.
    template <typename Look>
    void LookLeft(DrawingPoint p, Look look) const {
        m_index.LookAlong(p, {-1.0, 0.0}, [&](int box) { return look(m_owners[Index(box)]); });
    }

    /// Fills `out` with the stretches that come near `query`, some several times; some that do not are among them.
    void Find(Box const &query, std::vector<int> &out) const;

private:
    BoxIndex m_index;
    std::vector<int> m_owners; ///< of each box, the stretch
};

} // namespace zvi::lib::drawing
