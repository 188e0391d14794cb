#pragma once

#include "zvi/spatial/MQuadMBR2D.h"
#include "zvi/spatial/MQuadNode.h"

namespace zvi::lib::spatial {

/// One axis of a region.
class QuadrantAxis {
public:
    QuadrantAxis(double min, double max) : m_edges{min, (min + max) * 0.5, max} {}

    double Mid() const { return m_edges[1]; }

    /// 0 for the low half, 1 for the high half, the first that contains the range; 2 when neither does.
    unsigned int HalfOf(double min, double max) const {
        unsigned int const low =
            static_cast<unsigned int>(min >= m_edges[0]) & static_cast<unsigned int>(max < m_edges[1]);
        unsigned int const high =
            static_cast<unsigned int>(min >= m_edges[1]) & static_cast<unsigned int>(max < m_edges[2]);
        return (1 - low) << (1 - (low | high));
    }

    void Enter(unsigned int half) {
        double const min = m_edges[half];
        double const max = m_edges[half + 1];
        m_edges[0] = min;
        m_edges[1] = (min + max) * 0.5;
        m_edges[2] = max;
    }

private:
    double m_edges[3];
};

/// Goes down into quadrants of quadrants, without branches: where it goes next cannot be foretold.
class QuadrantFinder {
public:
    explicit QuadrantFinder(MQuadMBR2D const &region) : m_x(region.minX, region.maxX), m_y(region.minY, region.maxY) {}

    double MidX() const { return m_x.Mid(); }
    double MidY() const { return m_y.Mid(); }

    /// Goes to the first quadrant that contains the rectangle and gives its number; 4 when none does.
    int Enter(MQuadMBR2D const &mbr) {
        unsigned int const x = m_x.HalfOf(mbr.minX, mbr.maxX);
        unsigned int const y = m_y.HalfOf(mbr.minY, mbr.maxY);
        if (((x | y) & 2) != 0)
            return MQuadNode::kChildCount;
        m_x.Enter(x);
        m_y.Enter(y);
        return static_cast<int>(x + 2 * y);
    }

    /// Goes to a quadrant by its number.
    void Enter(unsigned int quadrant) {
        m_x.Enter(quadrant & 1);
        m_y.Enter(quadrant >> 1);
    }

private:
    QuadrantAxis m_x;
    QuadrantAxis m_y;
};

} // namespace zvi::lib::spatial
