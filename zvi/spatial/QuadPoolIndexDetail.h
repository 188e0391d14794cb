#pragma once

#include "zvi/core/MArray.h"
#include "zvi/spatial/MQuadMBR2D.h"
#include "zvi/spatial/QuadCodeDetail.h"

#include <cstdint>
#include <limits>

namespace zvi::lib {
class MQuadObj;
}

namespace zvi::lib::spatial {

/// Objects of a pool in the order in which they came, with their codes.
struct QuadPoolGroup {
    MArray<QuadCode> codes;
    MArray<MQuadObj *> objects;
    MArray<std::uint64_t> ranks;

    void Add(MQuadObj *object, QuadCode code, std::uint64_t rank);
    void RemoveAt(std::size_t place);
    /// Place of an object that is in the group.
    std::size_t PlaceOf(MQuadObj const *object) const;
};

/// A second, private order of the pool of an inner node. Its objects lie across the mid lines of the node, most of them
/// in a narrow strip along one line, and most queries miss both strips: one comparison with the box of a strip then
/// passes over all its objects. Objects that are wide across the line, or that are not trusted, stand in a group of
/// their own that every query looks through.
class QuadPoolIndex {
public:
    static constexpr int kGroupCount = 3;

    explicit QuadPoolIndex(MQuadMBR2D const &region);

    void Add(MQuadObj *object, MQuadMBR2D const &mbr, QuadCode code);
    void AddUntrusted(MQuadObj *object);
    /// Both are for trusted objects of the pool with their rectangles.
    void Remove(MQuadObj const *object, MQuadMBR2D const &mbr);
    /// The object stops being trusted.
    void Distrust(MQuadObj *object, MQuadMBR2D const &mbr);

    /// Whether the query misses all groups.
    template <typename Misses>
    bool IsMissed(Misses misses) const {
        return misses(m_boxes[0]) && misses(m_boxes[1]) && misses(m_boxes[2]);
    }

    /// Calls `visit(object, code)` in the order of the pool for the objects that may meet the query. `misses(box)` says
    /// whether the query misses a box.
    template <typename Misses, typename Visit>
    void Walk(QuadCode query, Misses misses, Visit visit) const;

private:
    enum Group { kAcrossVertical, kAcrossHorizontal, kOther };

    static constexpr std::uint64_t kNoRank = std::numeric_limits<std::uint64_t>::max();

    Group GroupOf(MQuadMBR2D const &mbr) const;

    MQuadMBR2D m_boxes[kGroupCount];
    QuadPoolGroup m_groups[kGroupCount];
    double m_midX;
    double m_midY;
    double m_narrowWidth;
    double m_narrowHeight;
    std::uint64_t m_nextRank = 0;
};

template <typename Misses, typename Visit>
void QuadPoolIndex::Walk(QuadCode query, Misses misses, Visit visit) const {
    std::size_t place[kGroupCount];
    std::uint64_t rank[kGroupCount];
    auto const advance = [&](int g) {
        QuadPoolGroup const &group = m_groups[g];
        std::size_t const count = group.codes.Size();
        place[g] = NextToMeet(group.codes.Data(), place[g], count, query);
        rank[g] = place[g] < count ? group.ranks[place[g]] : kNoRank;
    };
    for (int g = 0; g < kGroupCount; ++g) {
        place[g] = 0;
        rank[g] = kNoRank;
        if (!misses(m_boxes[g]))
            advance(g);
    }
    for (;;) {
        int first = rank[0] < rank[1] ? 0 : 1;
        first = rank[first] < rank[2] ? first : 2;
        if (rank[first] == kNoRank)
            return;
        visit(m_groups[first].objects[place[first]], m_groups[first].codes[place[first]]);
        ++place[first];
        advance(first);
    }
}

} // namespace zvi::lib::spatial
