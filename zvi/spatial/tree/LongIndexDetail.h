#pragma once

#include "zvi/spatial/tree/CodeDetail.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace zvi::lib::spatial {

/// A second order of a long pool: the codes of its first objects by place in space, as a binary tree of groups with a
/// code around each. An object that leaves the pool stays here until the next making; who asks tells the holes.
template <typename Space>
class LongIndex {
public:
    using Word = Code<Space::kDimension>;
    using Of = Lanes<Space::kDimension>;

    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    LongIndex(Word const *codes, std::size_t count) : m_codes(count), m_places(count) {
        std::vector<Entry> entries(count);
        for (std::size_t i = 0; i < count; ++i)
            entries[i] = {codes[i], static_cast<std::uint32_t>(i)};
        m_around.resize(2 * std::bit_ceil(GroupsOf(count)));
        m_found.reserve(count / kWorthwhileShare + 1);
        Make(entries, {0, 0, count});
        for (std::size_t i = 0; i < count; ++i) {
            m_codes[i] = entries[i].code;
            m_places[i] = entries[i].place;
        }
    }

    /// Objects from the first on that stand here.
    std::size_t Covered() const { return m_codes.size(); }

    /// The places, in ascending order, of what may meet the query; null when they are so many that one might as well
    /// look through the pool. They hold until the next call.
    std::vector<std::uint32_t> const *Meeting(Word query) {
        m_found.clear();
        if (!Collect({0, 0, Covered()}, query))
            return nullptr;
        std::sort(m_found.begin(), m_found.end());
        return &m_found;
    }

    /// The place with this code for which `isIt(place)`, `kNone` when there is none.
    template <typename IsIt>
    std::size_t Find(Word code, IsIt isIt) const {
        std::size_t const at = Search({0, 0, Covered()}, code, isIt);
        return at == kNone ? kNone : m_places[at];
    }

    /// The object at a place that has this code must be met by every query from now on.
    void Distrust(Word code, std::size_t place) {
        auto const isIt = [place](std::size_t other) { return other == place; };
        std::size_t const at = Search({0, 0, Covered()}, code, isIt);
        if (at == kNone)
            return;
        m_codes[at] = kUntrustedCode;
        for (Part part{0, 0, Covered()};; part = at < part.Middle() ? part.Low() : part.High()) {
            m_around[part.number] = kUntrustedCode;
            if (part.IsGroup())
                return;
        }
    }

    /// Whether each place stands here once, with its code, and within the codes around it. Holes are not looked at.
    template <typename Object>
    bool IsConsistent(Word const *codes, Object *const *objects) const {
        std::vector<bool> met(Covered());
        for (std::size_t i = 0; i < Covered(); ++i) {
            std::uint32_t const place = m_places[i];
            if (met[place] || (objects[place] && m_codes[i] != codes[place]))
                return false;
            met[place] = true;
            if (Search({0, 0, Covered()}, m_codes[i], [&](std::size_t other) { return other == place; }) != i)
                return false;
        }
        return true;
    }

private:
    struct Entry {
        Word code;
        std::uint32_t place;
    };

    static constexpr std::size_t kGroup = 32;
    /// Hits beyond the pool's length divided by this are found faster without the index.
    static constexpr std::size_t kWorthwhileShare = 16;

    static std::size_t GroupsOf(std::size_t count) { return (count + kGroup - 1) / kGroup; }

    /// A range of the codes: a node of the tree, whose children have the numbers behind twice its own.
    struct Part {
        std::size_t number;
        std::size_t first;
        std::size_t end;

        bool IsGroup() const { return end - first <= kGroup; }
        std::size_t Middle() const { return first + (GroupsOf(end - first) + 1) / 2 * kGroup; }
        Part Low() const { return {2 * number + 1, first, Middle()}; }
        Part High() const { return {2 * number + 2, Middle(), end}; }
    };

    /// The lane in which the codes differ most.
    static int WidestLane(Entry const *first, Entry const *last) {
        int widest = 0;
        Word widestSpread = 0;
        for (int lane = 0; lane < Of::kCount; ++lane) {
            auto const less = [lane](Entry const &l, Entry const &r) {
                return Of::At(l.code, lane) < Of::At(r.code, lane);
            };
            auto const [low, high] = std::minmax_element(first, last, less);
            Word const spread = Of::At(high->code, lane) - Of::At(low->code, lane);
            if (spread > widestSpread) {
                widestSpread = spread;
                widest = lane;
            }
        }
        return widest;
    }

    Word Make(std::vector<Entry> &entries, Part part) {
        Entry *const begin = entries.data();
        Word around = begin[part.first].code;
        if (part.IsGroup()) {
            for (std::size_t i = part.first; i < part.end; ++i)
                around = Of::Around(around, begin[i].code);
        } else {
            int const lane = WidestLane(begin + part.first, begin + part.end);
            // Codes that are the same in this lane are told apart by their places, so that the order is one.
            std::nth_element(begin + part.first, begin + part.Middle(), begin + part.end,
                             [lane](Entry const &l, Entry const &r) {
                                 Word const left = Of::At(l.code, lane);
                                 Word const right = Of::At(r.code, lane);
                                 return left != right ? left < right : l.place < r.place;
                             });
            around = Of::Around(Make(entries, part.Low()), Make(entries, part.High()));
        }
        return m_around[part.number] = around;
    }

    bool Collect(Part part, Word query) {
        if (!Of::MayMeet(m_around[part.number], query))
            return true;
        if (!part.IsGroup())
            return Collect(part.Low(), query) && Collect(part.High(), query);
        for (std::size_t i = part.first; i < part.end; ++i) {
            if (!Of::MayMeet(m_codes[i], query))
                continue;
            if (m_found.size() == m_found.capacity())
                return false;
            m_found.push_back(m_places[i]);
        }
        return true;
    }

    template <typename IsIt>
    std::size_t Search(Part part, Word code, IsIt isIt) const {
        // What holds the code meets it as a query meets a box that is not above it in any lane.
        if (!Of::MayMeet(m_around[part.number], code | Of::kGuards))
            return kNone;
        if (!part.IsGroup()) {
            std::size_t const low = Search(part.Low(), code, isIt);
            return low != kNone ? low : Search(part.High(), code, isIt);
        }
        for (std::size_t i = part.first; i < part.end; ++i) {
            if (m_codes[i] == code && isIt(m_places[i]))
                return i;
        }
        return kNone;
    }

    std::vector<Word> m_codes;
    std::vector<std::uint32_t> m_places;
    std::vector<Word> m_around;
    std::vector<std::uint32_t> m_found;
};

} // namespace zvi::lib::spatial
