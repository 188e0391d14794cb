#pragma once

#include "zvi/spatial/tree/ExtentDetail.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

namespace zvi::lib::spatial {

/// A box in one word, coarse and never too small, so that a query looks through the boxes of a pool without touching
/// the objects. The word has a lane for each face, lowest first: the lower faces, then the complements of the upper
/// ones, each as a place between the faces of the node's region. A query is met only if no lane is above that of the
/// query's code, which one subtraction tells for all: the top bit of each lane guards it.
template <int dimension>
using Code = std::conditional_t<dimension == 2, std::uint32_t, std::uint64_t>;

/// The code of an object whose box may change unseen: it meets every query. No box has it.
inline constexpr std::uint32_t kUntrustedCode = 0;

/// How codes are made up, and what two of them say of each other.
template <int dimension, typename Word = Code<dimension>>
struct Lanes {
    static constexpr int kCount = 2 * dimension;
    static constexpr int kBits = static_cast<int>(8 * sizeof(Word)) / kCount;
    /// The highest place; the lowest one is 1.
    static constexpr Word kLastPlace = (Word{1} << (kBits - 1)) - 1;

    static constexpr Word InEach(Word value) {
        Word all = 0;
        for (int lane = 0; lane < kCount; ++lane)
            all |= value << (lane * kBits);
        return all;
    }

    static constexpr Word kGuards = InEach(kLastPlace + 1);

    static bool MayMeet(Word code, Word query) { return ((query - code) & kGuards) == kGuards; }

    /// The code of the box around two boxes: the lower place of each lane.
    static constexpr Word Around(Word left, Word right) {
        Word const notLower = ((left | kGuards) - right) & kGuards;
        Word const takesRight = notLower - (notLower >> (kBits - 1));
        return (left & ~takesRight) | (right & takesRight);
    }

    /// Whether the box of the code meets the query without doubt: no place of the two is the same. The object itself
    /// need not be looked at then.
    static bool SurelyMeets(Word code, Word query) {
        return code != kUntrustedCode && MayMeet(code, query - InEach(1));
    }
};

/// Measures boxes in steps of a region. Places are monotone in the coordinate, whatever the region, so that a
/// comparison of places never contradicts one of coordinates.
template <int dimension, typename Word = Code<dimension>>
class Frame {
public:
    explicit Frame(Extent<dimension> const &region) {
        for (int a = 0; a < dimension; ++a) {
            m_min[a] = region.min[a];
            m_scale[a] = kSteps / (region.max[a] - region.min[a]);
            if (!IsScale(m_scale[a])) [[unlikely]]
                m_min[a] = m_scale[a] = 0.0;
        }
    }

    Word Encode(Extent<dimension> const &box) const {
        Word code = 0;
        for (int a = 0; a < dimension; ++a)
            code |= Low(box.min[a], a) << (a * kBits) | (kComplement - High(box.max[a], a))
                                                            << ((dimension + a) * kBits);
        return code;
    }

    /// The code to compare with, guard bits set, for a query with these bounds.
    Word EncodeQuery(Extent<dimension> const &bounds) const {
        Word code = OfWord::kGuards;
        for (int a = 0; a < dimension; ++a)
            code |= High(bounds.max[a], a) << (a * kBits) | (kComplement - Low(bounds.min[a], a))
                                                                << ((dimension + a) * kBits);
        return code;
    }

private:
    using OfWord = Lanes<dimension, Word>;

    static constexpr int kBits = OfWord::kBits;
    static constexpr Word kComplement = OfWord::kLastPlace + 1;
    static constexpr double kSteps = static_cast<double>(OfWord::kLastPlace - 1);

    /// A region without a side, or wider than the largest number, has one place for all coordinates.
    static bool IsScale(double scale) { return scale > 0.0 && scale <= std::numeric_limits<double>::max(); }

    /// What is not a number is taken as lowest here, as highest below: it passes nothing over.
    Word Low(double value, int a) const {
        double const steps = (value - m_min[a]) * m_scale[a];
        double const floor = steps > 0.0 ? steps : 0.0;
        return Word{1} + static_cast<std::uint32_t>(floor < kSteps ? floor : kSteps);
    }

    Word High(double value, int a) const {
        double const steps = (value - m_min[a]) * m_scale[a];
        double const ceiling = steps < kSteps ? steps : kSteps;
        return Word{1} + static_cast<std::uint32_t>(ceiling > 0.0 ? ceiling : 0.0);
    }

    double m_min[dimension];
    double m_scale[dimension];
};

/// Place of the first code from `first`, `count` at most, on that may meet the query; `count` when there is none.
template <int dimension>
std::size_t NextToMeet(Code<dimension> const *codes, std::size_t first, std::size_t count, Code<dimension> query) {
    assert(first <= count);
#if defined(__GNUC__)
    if constexpr (dimension == 2) {
        // Eight codes at a time.
        using Words = std::uint32_t __attribute__((vector_size(16)));
        using Halves = std::uint64_t __attribute__((vector_size(16)));
        constexpr std::uint32_t kGuards = Lanes<2>::kGuards;
        Words const guards = {kGuards, kGuards, kGuards, kGuards};
        Words const queries = {query, query, query, query};
        for (; first + 8 <= count; first += 8) {
            Words low;
            Words high;
            std::memcpy(&low, codes + first, sizeof low);
            std::memcpy(&high, codes + first + 4, sizeof high);
            auto const meets = (((queries - low) & guards) == guards) | (((queries - high) & guards) == guards);
            Halves halves;
            std::memcpy(&halves, &meets, sizeof halves);
            if ((halves[0] | halves[1]) != 0)
                break;
        }
    }
#endif
    while (first < count && !Lanes<dimension>::MayMeet(codes[first], query))
        ++first;
    return first;
}

} // namespace zvi::lib::spatial
