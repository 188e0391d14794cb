#pragma once

#include "zvi/spatial/tree/ExtentDetail.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace zvi::lib::spatial {

/// A second order of a long pool: the boxes of its first objects by place in space, as a binary tree of groups with a
/// box around each. An object that leaves the pool stays here until the next making; who asks tells the holes.
template <typename Space>
class LongIndex {
public:
    using Box = Extent<Space::kDimension>;

    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    /// `boxAt(place)` is the box of a trusted object, and one that holds everything of any other.
    template <typename BoxAt>
    LongIndex(std::size_t count, BoxAt boxAt) : m_entries(count), m_nodes(2 * std::bit_ceil(GroupsOf(count))) {
        for (std::size_t i = 0; i < count; ++i)
            m_entries[i] = {boxAt(i), static_cast<std::uint32_t>(i)};
        m_found.reserve(count / kWorthwhileShare + 1);
        Make(All());
    }

    /// Objects from the first on that stand here.
    std::size_t Covered() const { return m_entries.size(); }

    /// The places, in ascending order, of what does not miss a query: `misses(box)`. Null when they are so many that
    /// one might as well look through the pool. They hold until the next call.
    template <typename Misses>
    std::vector<std::uint32_t> const *Meeting(Misses misses) {
        m_found.clear();
        if (!Collect(All(), misses))
            return nullptr;
        std::sort(m_found.begin(), m_found.end());
        return &m_found;
    }

    /// The place with this box for which `isIt(place)`, `kNone` when there is none.
    template <typename IsIt>
    std::size_t Find(Box const &box, IsIt isIt) const {
        std::size_t const at = Search(All(), box, isIt);
        return at == kNone ? kNone : m_entries[at].place;
    }

    /// The object at a place, which has this box, must be met by every query from now on.
    void Distrust(Box const &box, std::size_t place) {
        std::size_t const at = Search(All(), box, [place](std::size_t other) { return other == place; });
        if (at == kNone)
            return;
        // It keeps its place, where only the walk of a query comes to it from now on.
        m_entries[at].box = Everything<Space::kDimension>();
        for (Part part = All();; part = at < part.Middle() ? part.Low() : part.High()) {
            m_nodes[part.number].around = Everything<Space::kDimension>();
            if (part.IsGroup())
                return;
        }
    }

    /// Whether each place stands here once, with the box that `boxAt(place)` says unless `isHole(place)`, and within
    /// the boxes around it.
    template <typename BoxAt, typename IsHole>
    bool IsConsistent(BoxAt boxAt, IsHole isHole) const {
        std::vector<bool> met(Covered());
        for (Entry const &entry : m_entries) {
            if (met[entry.place] || (!isHole(entry.place) && !IsSame(entry.box, boxAt(entry.place))))
                return false;
            met[entry.place] = true;
            bool const isTrusted = !IsSame(entry.box, Everything<Space::kDimension>());
            if (isTrusted && Find(entry.box, [&](std::size_t other) { return other == entry.place; }) == kNone)
                return false;
        }
        return true;
    }

private:
    struct Entry {
        Box box;
        std::uint32_t place;
    };

    /// What is known of a range of the entries. Those of its low half are not above the value at that face, those of
    /// its high half not below.
    struct Node {
        Box around;
        double value;
        int face;
    };

    static constexpr std::size_t kGroup = 16;
    /// Hits beyond the pool's length divided by this are found faster without the index.
    static constexpr std::size_t kWorthwhileShare = 16;

    static std::size_t GroupsOf(std::size_t count) { return (count + kGroup - 1) / kGroup; }

    /// A range of the entries: a node of the tree, whose children have the numbers behind twice its own.
    struct Part {
        std::size_t number;
        std::size_t first;
        std::size_t end;

        bool IsGroup() const { return end - first <= kGroup; }
        std::size_t Middle() const { return first + (GroupsOf(end - first) + 1) / 2 * kGroup; }
        Part Low() const { return {2 * number + 1, first, Middle()}; }
        Part High() const { return {2 * number + 2, Middle(), end}; }
    };

    Part All() const { return {0, 0, Covered()}; }

    /// A face of a box: the lower ones first.
    static double Face(Box const &box, int face) {
        return face < Space::kDimension ? box.min[face] : box.max[face - Space::kDimension];
    }

    /// The face whose place differs most.
    int WidestFace(Part const &part) const {
        int widest = 0;
        double widestSpread = -1.0;
        for (int face = 0; face < 2 * Space::kDimension; ++face) {
            double low = Face(m_entries[part.first].box, face);
            double high = low;
            for (std::size_t i = part.first; i < part.end; ++i) {
                low = std::min(low, Face(m_entries[i].box, face));
                high = std::max(high, Face(m_entries[i].box, face));
            }
            if (high - low > widestSpread) {
                widestSpread = high - low;
                widest = face;
            }
        }
        return widest;
    }

    Box Make(Part part) {
        Node &node = m_nodes[part.number];
        if (part.IsGroup()) {
            node.around = m_entries[part.first].box;
            for (std::size_t i = part.first; i < part.end; ++i)
                node.around = Around(node.around, m_entries[i].box);
        } else {
            int const face = WidestFace(part);
            auto const at = [this](std::size_t i) { return m_entries.begin() + static_cast<std::ptrdiff_t>(i); };
            // Faces at the same place are told apart by the places in the pool, so that the order is one.
            std::nth_element(at(part.first), at(part.Middle()), at(part.end), [face](Entry const &l, Entry const &r) {
                double const left = Face(l.box, face);
                double const right = Face(r.box, face);
                return left != right ? left < right : l.place < r.place;
            });
            node.face = face;
            node.value = Face(m_entries[part.Middle()].box, face);
            Box const low = Make(part.Low());
            node.around = Around(low, Make(part.High()));
        }
        return node.around;
    }

    template <typename Misses>
    bool Collect(Part part, Misses const &misses) {
        if (misses(m_nodes[part.number].around))
            return true;
        if (!part.IsGroup())
            return Collect(part.Low(), misses) && Collect(part.High(), misses);
        for (std::size_t i = part.first; i < part.end; ++i) {
            if (misses(m_entries[i].box))
                continue;
            if (m_found.size() == m_found.capacity())
                return false;
            m_found.push_back(m_entries[i].place);
        }
        return true;
    }

    template <typename IsIt>
    std::size_t Search(Part part, Box const &box, IsIt isIt) const {
        if (!part.IsGroup()) {
            Node const &node = m_nodes[part.number];
            double const value = Face(box, node.face);
            std::size_t const low = value <= node.value ? Search(part.Low(), box, isIt) : kNone;
            return low == kNone && value >= node.value ? Search(part.High(), box, isIt) : low;
        }
        for (std::size_t i = part.first; i < part.end; ++i) {
            if (IsSame(m_entries[i].box, box) && isIt(m_entries[i].place))
                return i;
        }
        return kNone;
    }

    std::vector<Entry> m_entries;
    std::vector<Node> m_nodes;
    std::vector<std::uint32_t> m_found;
};

} // namespace zvi::lib::spatial
