#pragma once

#include "zvi/spatial/tree/CodeDetail.h"
#include "zvi/spatial/tree/ExtentDetail.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace zvi::lib::spatial {

/// A second order of a long pool: the boxes of its first objects by place in space, and the codes of these boxes, of
/// runs of them, of runs of runs, and so on, so that a query looks at few boxes. An object that leaves the pool stays
/// here until the next making; who asks tells the holes.
template <typename Space>
class LongIndex {
public:
    using Box = Extent<Space::kDimension>;

    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    /// Of one object at least. `boxAt(place)` is the box of a trusted object, and one that holds everything of any
    /// other.
    template <typename BoxAt>
    LongIndex(std::size_t count, BoxAt boxAt)
        : m_frame(Nothing<Space::kDimension>()), m_splits(std::bit_ceil(RunsOf(count))) {
        assert(count > 0);
        std::vector<Entry> entries(count);
        for (std::size_t i = 0; i < count; ++i)
            entries[i] = {boxAt(i), static_cast<std::uint32_t>(i)};
        m_found.reserve(count / kWorthwhileShare + 1);
        Sort(entries, {0, 0, count});
        m_boxes.reserve(count);
        m_places.reserve(count);
        Box around = Nothing<Space::kDimension>();
        for (Entry const &entry : entries) {
            m_boxes.push_back(entry.box);
            m_places.push_back(entry.place);
            if (IsFinite(entry.box))
                around = Around(around, entry.box);
        }
        m_frame = CodeFrame(around);
        MakeCodes();
    }

    /// Objects from the first on that stand here.
    std::size_t Covered() const { return m_places.size(); }

    /// The places, in ascending order, of what does not miss a query with these bounds: `misses(box)`. Null when they
    /// are so many that one might as well look through the pool. They hold until the next call.
    template <typename Misses>
    std::vector<std::uint32_t> const *Meeting(Box const &bounds, Misses const &misses) {
        m_found.clear();
        if (!Collect(m_codes.size() - 1, 0, m_frame.EncodeQuery(bounds), misses))
            return nullptr;
        std::sort(m_found.begin(), m_found.end());
        return &m_found;
    }

    /// The place with this box for which `isIt(place)`, `kNone` when there is none.
    template <typename IsIt>
    std::size_t Find(Box const &box, IsIt const &isIt) const {
        std::size_t const at = Search(All(), box, m_frame.Encode(box), isIt);
        return at == kNone ? kNone : m_places[at];
    }

    /// The object at a place, which has this box, must be met by every query from now on.
    void Distrust(Box const &box, std::size_t place) {
        std::size_t at = Search(All(), box, m_frame.Encode(box), [place](std::size_t other) { return other == place; });
        if (at == kNone)
            return;
        // It keeps its place, where only the walk of a query comes to it from now on.
        m_boxes[at] = Everything<Space::kDimension>();
        for (std::vector<Word> &codes : m_codes) {
            codes[at] = kUntrustedCode;
            at /= kRun;
        }
    }

    /// Whether each place stands here once, with the box that `boxAt(place)` says unless `isHole(place)`, and within
    /// the codes around it.
    template <typename BoxAt, typename IsHole>
    bool IsConsistent(BoxAt boxAt, IsHole isHole) const {
        std::vector<bool> met(Covered());
        for (std::size_t i = 0; i < Covered(); ++i) {
            std::uint32_t const place = m_places[i];
            if (met[place] || (!isHole(place) && !IsSame(m_boxes[i], boxAt(place))))
                return false;
            met[place] = true;
            bool const isTrusted = !IsSame(m_boxes[i], Everything<Space::kDimension>());
            if (isTrusted && Find(m_boxes[i], [&](std::size_t other) { return other == place; }) == kNone)
                return false;
            std::size_t at = i;
            for (std::vector<Word> const &codes : m_codes) {
                if (OfWord::Around(codes[at], m_frame.Encode(m_boxes[i])) != codes[at])
                    return false;
                at /= kRun;
            }
        }
        return true;
    }

private:
    /// Finer than that of the pools in the plane.
    using Word = std::uint64_t;
    using CodeFrame = Frame<Space::kDimension, Word>;
    using OfWord = Lanes<Space::kDimension, Word>;

    struct Entry {
        Box box;
        std::uint32_t place;
    };

    /// What halves a range of the entries: those of its low half are not above the value at that face, those of its
    /// high half not below.
    struct Split {
        double value;
        int face;
    };

    /// Entries of a run, and runs of a run of runs.
    static constexpr std::size_t kRun = 16;
    /// Hits beyond the pool's length divided by this are found faster without the index.
    static constexpr std::size_t kWorthwhileShare = 16;

    static std::size_t RunsOf(std::size_t count) { return (count + kRun - 1) / kRun; }

    /// A range of the entries: a node of a binary tree, whose children have the numbers behind twice its own.
    struct Part {
        std::size_t number;
        std::size_t first;
        std::size_t end;

        bool IsRun() const { return end - first <= kRun; }
        /// The low half is as large as all its descendants are full.
        std::size_t Middle() const { return first + std::bit_ceil(RunsOf(end - first)) / 2 * kRun; }
        Part Low() const { return {2 * number + 1, first, Middle()}; }
        Part High() const { return {2 * number + 2, Middle(), end}; }
    };

    Part All() const { return {0, 0, Covered()}; }

    /// A face of a box: the lower ones first.
    static double Face(Box const &box, int face) {
        return face < Space::kDimension ? box.min[face] : box.max[face - Space::kDimension];
    }

    /// The face whose place differs most.
    static int WidestFace(std::vector<Entry> const &entries, Part const &part) {
        int widest = 0;
        double widestSpread = -1.0;
        for (int face = 0; face < 2 * Space::kDimension; ++face) {
            double low = Face(entries[part.first].box, face);
            double high = low;
            for (std::size_t i = part.first; i < part.end; ++i) {
                low = std::min(low, Face(entries[i].box, face));
                high = std::max(high, Face(entries[i].box, face));
            }
            if (high - low > widestSpread) {
                widestSpread = high - low;
                widest = face;
            }
        }
        return widest;
    }

    void Sort(std::vector<Entry> &entries, Part const &part) {
        if (part.IsRun())
            return;
        int const face = WidestFace(entries, part);
        auto const at = [&](std::size_t i) { return entries.begin() + static_cast<std::ptrdiff_t>(i); };
        // Faces at the same place are told apart by the places in the pool, so that the order is one.
        std::nth_element(at(part.first), at(part.Middle()), at(part.end), [face](Entry const &l, Entry const &r) {
            double const left = Face(l.box, face);
            double const right = Face(r.box, face);
            return left != right ? left < right : l.place < r.place;
        });
        m_splits[part.number] = {Face(entries[part.Middle()].box, face), face};
        Sort(entries, part.Low());
        Sort(entries, part.High());
    }

    void MakeCodes() {
        std::vector<Word> &lowest = m_codes.emplace_back();
        lowest.reserve(m_boxes.size());
        for (Box const &box : m_boxes)
            lowest.push_back(m_frame.Encode(box));
        while (m_codes.back().size() > kRun) {
            std::vector<Word> above(RunsOf(m_codes.back().size()), OfWord::InEach(OfWord::kLastPlace));
            for (std::size_t i = 0; i < m_codes.back().size(); ++i)
                above[i / kRun] = OfWord::Around(above[i / kRun], m_codes.back()[i]);
            m_codes.push_back(std::move(above));
        }
    }

    /// Notes the places from `first` on to the end of the run, or of the runs below it; false when they are too many.
    template <typename Misses>
    bool Collect(std::size_t level, std::size_t first, Word query, Misses const &misses) {
        std::vector<Word> const &codes = m_codes[level];
        std::size_t const end = std::min(first + kRun, codes.size());
        for (std::size_t i = first; i < end; ++i) {
            if (!OfWord::MayMeet(codes[i], query) || (level == 0 && misses(m_boxes[i])))
                continue;
            if (level == 0 ? m_found.size() == m_found.capacity() : !Collect(level - 1, i * kRun, query, misses))
                return false;
            if (level == 0)
                m_found.push_back(m_places[i]);
        }
        return true;
    }

    template <typename IsIt>
    std::size_t Search(Part const &part, Box const &box, Word code, IsIt const &isIt) const {
        if (!part.IsRun()) {
            Split const &split = m_splits[part.number];
            double const value = Face(box, split.face);
            std::size_t const low = value <= split.value ? Search(part.Low(), box, code, isIt) : kNone;
            return low == kNone && value >= split.value ? Search(part.High(), box, code, isIt) : low;
        }
        for (std::size_t i = part.first; i < part.end; ++i) {
            if (m_codes[0][i] == code && IsSame(m_boxes[i], box) && isIt(m_places[i]))
                return i;
        }
        return kNone;
    }

    CodeFrame m_frame;
    std::vector<Box> m_boxes;
    std::vector<std::uint32_t> m_places;
    /// Of the boxes, and on each further level of the runs of the level before, up to one run.
    std::vector<std::vector<Word>> m_codes;
    std::vector<Split> m_splits;
    std::vector<std::uint32_t> m_found;
};

} // namespace zvi::lib::spatial
