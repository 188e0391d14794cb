#pragma once

#include "zvi/spatial/MQuadMBR2D.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace zvi::lib::spatial {

/// A rectangle in four bytes, coarse and never too small, so that a query looks through the rectangles of a pool
/// without touching the objects. Each byte is a place from 1 to 127 between the edges of the node's region: minX, minY,
/// and the complements of maxX and maxY. A query is met only if each byte is not above that of the query's code, which
/// one subtraction tells for all four: the top bit of each byte guards it.
using QuadCode = std::uint32_t;

/// The code of an object whose rectangle may change unseen: it meets every query. No rectangle has it.
inline constexpr QuadCode kUntrustedCode = 0;

/// Status of an object in use. Only such objects have a code of their own.
inline constexpr std::uint32_t kLiveStatus = 1;

/// Measures rectangles in 126ths of a region. Places are monotone in the coordinate, whatever the region, so that a
/// comparison of places never contradicts one of coordinates.
class QuadFrame {
public:
    explicit QuadFrame(MQuadMBR2D const &region)
        : m_minX(region.minX), m_minY(region.minY), m_scaleX(kSteps / (region.maxX - region.minX)),
          m_scaleY(kSteps / (region.maxY - region.minY)) {
        if (!IsScale(m_scaleX)) [[unlikely]]
            m_minX = m_scaleX = 0.0;
        if (!IsScale(m_scaleY)) [[unlikely]]
            m_minY = m_scaleY = 0.0;
    }

    QuadCode Encode(MQuadMBR2D const &mbr) const {
        return Pack(LowPlace(mbr.minX, m_minX, m_scaleX), LowPlace(mbr.minY, m_minY, m_scaleY),
                    kComplement - HighPlace(mbr.maxX, m_minX, m_scaleX),
                    kComplement - HighPlace(mbr.maxY, m_minY, m_scaleY));
    }

    /// The code to compare with, guard bits set, for a query with these bounds.
    QuadCode EncodeQuery(MQuadMBR2D const &bounds) const {
        return kGuards | Pack(HighPlace(bounds.maxX, m_minX, m_scaleX), HighPlace(bounds.maxY, m_minY, m_scaleY),
                              kComplement - LowPlace(bounds.minX, m_minX, m_scaleX),
                              kComplement - LowPlace(bounds.minY, m_minY, m_scaleY));
    }

    static bool MayMeet(QuadCode code, QuadCode query) { return ((query - code) & kGuards) == kGuards; }

    /// Whether the rectangle of the code meets the query without doubt: no place of the two is the same. The object
    /// itself need not be looked at then.
    static bool SurelyMeets(QuadCode code, QuadCode query) {
        return code != kUntrustedCode && MayMeet(code, query - kOnes);
    }

    static constexpr QuadCode kGuards = 0x80808080;

private:
    static constexpr QuadCode kOnes = 0x01010101;
    static constexpr double kSteps = 126.0;
    static constexpr QuadCode kComplement = 128;

    /// A region without a width, or wider than the largest number, has one place for all coordinates.
    static bool IsScale(double scale) { return scale > 0.0 && scale <= std::numeric_limits<double>::max(); }

    /// What is not a number is taken as lowest here, as highest below: it passes nothing over.
    static QuadCode LowPlace(double value, double min, double scale) {
        double const steps = (value - min) * scale;
        double const floor = steps > 0.0 ? steps : 0.0;
        return 1 + static_cast<QuadCode>(floor < kSteps ? floor : kSteps);
    }

    static QuadCode HighPlace(double value, double min, double scale) {
        double const steps = (value - min) * scale;
        double const ceiling = steps < kSteps ? steps : kSteps;
        return 1 + static_cast<QuadCode>(ceiling > 0.0 ? ceiling : 0.0);
    }

    static QuadCode Pack(QuadCode b0, QuadCode b1, QuadCode b2, QuadCode b3) {
        return b0 | b1 << 8 | b2 << 16 | b3 << 24;
    }

    double m_minX;
    double m_minY;
    double m_scaleX;
    double m_scaleY;
};

/// Place of the first code from `first` on that may meet the query; `count` when there is none.
inline std::size_t NextToMeet(QuadCode const *codes, std::size_t first, std::size_t count, QuadCode query) {
#if defined(__GNUC__)
    // Eight codes at a time.
    using Lanes = QuadCode __attribute__((vector_size(16)));
    using Halves = std::uint64_t __attribute__((vector_size(16)));
    constexpr QuadCode kGuards = QuadFrame::kGuards;
    Lanes const guards = {kGuards, kGuards, kGuards, kGuards};
    Lanes const queries = {query, query, query, query};
    for (; first + 8 <= count; first += 8) {
        Lanes low;
        Lanes high;
        std::memcpy(&low, codes + first, sizeof low);
        std::memcpy(&high, codes + first + 4, sizeof high);
        auto const meets = (((queries - low) & guards) == guards) | (((queries - high) & guards) == guards);
        Halves halves;
        std::memcpy(&halves, &meets, sizeof halves);
        if ((halves[0] | halves[1]) != 0)
            break;
    }
#endif
    while (first < count && !QuadFrame::MayMeet(codes[first], query))
        ++first;
    return first;
}

} // namespace zvi::lib::spatial
