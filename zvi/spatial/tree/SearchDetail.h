#pragma once

#include "zvi/core/MArray.h"
#include "zvi/core/MList.h"
#include "zvi/spatial/tree/PrefetchDetail.h"
#include "zvi/spatial/tree/WayDetail.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zvi::lib::spatial {

/// A query under way. It goes ahead of itself: it first collects the pools to look through, then the objects to look
/// at, and asks for the memory of each when it comes to know it, so that it waits once for all of them.
template <typename Space>
class Search {
public:
    static constexpr int kDimension = Space::kDimension;

    using Object = typename Space::Object;
    using Node = typename Space::Node;
    using Box = Extent<kDimension>;

    /// For objects whose type indexes a non-zero element of `types`; null for all.
    Search(Box const &query, MList<Object *> &found, MArray<int> const *types, int strict)
        : m_list(found), m_types(types) {
        double const t = strict == 0 ? Space::PublicBox::kTouchTolerance : -Space::PublicBox::kLeastOverlap;
        for (int a = 0; a < kDimension; ++a) {
            m_bounds.min[a] = query.min[a] - t;
            m_bounds.max[a] = t + query.max[a];
        }
    }

    /// Appends the hits below the node to the list and gives their number.
    int In(Node &node) {
        if (!Misses(Access<Space>::RegionOf(node)))
            Walk(Way<Space>(node));
        LookThroughPools();
        LookAtObjects();
        return m_hits;
    }

private:
    using Word = Code<kDimension>;

    /// A pool to look through.
    struct Visit {
        Stock<Space> *stock;
        Box region;
    };

    /// An object to look at, or one that surely meets the query.
    struct Candidate {
        Object *const *object;
        bool surelyMeets;
    };

    static constexpr std::size_t kMostVisits = 32;
    static constexpr std::size_t kMostCandidates = 64;

    bool Misses(Box const &box) const {
        return (Below<kDimension>(box.max, m_bounds.min) | Below<kDimension>(m_bounds.max, box.min)) != 0;
    }

    /// A bit for each child whose region the query does not miss, without a look at the children.
    unsigned int ChildrenMet(Box const &region) const {
        Spot<kDimension> const mid = CentreOf(region);
        unsigned int const missesLow =
            Below<kDimension>(mid.at, m_bounds.min) | Below<kDimension>(m_bounds.max, region.min);
        unsigned int const missesHigh =
            Below<kDimension>(region.max, m_bounds.min) | Below<kDimension>(m_bounds.max, mid.at);
        return kPartsHigh[missesLow] & kPartsLow[missesHigh];
    }

    /// For a way whose region the query does not miss.
    void Walk(Way<Space> const &way) {
        if (!way.family || !way.family->bands.AreMissed(m_bounds))
            AddVisit(way);
        if (!way.family)
            return;
        for (unsigned int met = ChildrenMet(way.family->region); met != 0; met &= met - 1) {
            Way<Space> child = way;
            child.Enter(std::countr_zero(met));
            Walk(child);
        }
    }

    void AddVisit(Way<Space> const &way) {
        if (m_visitCount == kMostVisits)
            LookThroughPools();
        Stock<Space> &stock = way.ToStock();
        if (stock.End() == 0)
            return;
        m_visits[m_visitCount++] = {&stock, way.Region()};
        Prefetch(stock.Codes(), stock.End());
    }

    void LookThroughPools() {
        for (std::size_t i = 0; i < m_visitCount; ++i)
            LookThrough(m_visits[i]);
        m_visitCount = 0;
    }

    void LookThrough(Visit const &visit) {
        Stock<Space> &stock = *visit.stock;
        std::size_t first = 0;
        if (auto *const index = stock.IndexIfLong()) {
            auto const misses = [this](Box const &box) { return Misses(box); };
            if (std::vector<std::uint32_t> const *const places = index->Meeting(m_bounds, misses)) {
                for (std::uint32_t const place : *places)
                    AddCandidate(stock, place, stock.IsTrusted(place));
                first = index->Covered();
            }
        }
        Word const query = Frame<kDimension>(visit.region).EncodeQuery(m_bounds);
        std::size_t const end = stock.End();
        Word const *const codes = stock.Codes();
        for (std::size_t i = NextToMeet<kDimension>(codes, first, end, query); i < end;
             i = NextToMeet<kDimension>(codes, i + 1, end, query))
            AddCandidate(stock, i, Lanes<kDimension>::SurelyMeets(codes[i], query));
    }

    void AddCandidate(Stock<Space> const &stock, std::size_t place, bool surelyMeets) {
        if (m_candidateCount == kMostCandidates)
            LookAtObjects();
        Candidate &candidate = m_candidates[m_candidateCount++];
        candidate = {stock.Objects() + place, surelyMeets};
        Prefetch(candidate.object);
    }

    void LookAtObjects() {
        for (std::size_t i = 0; i < m_candidateCount; ++i) {
            if (!m_candidates[i].surelyMeets || m_types)
                Prefetch(*m_candidates[i].object);
        }
        for (std::size_t i = 0; i < m_candidateCount; ++i) {
            if (Object *const object = *m_candidates[i].object)
                Try(*object, m_candidates[i].surelyMeets);
        }
        m_candidateCount = 0;
    }

    /// Adds the object if it is wanted and meets the query.
    void Try(Object &object, bool surelyMeets) {
        if (!Wants(object) || (!surelyMeets && Misses(Access<Space>::CurrentBox(object))))
            return;
        m_list.AddTail(&object);
        ++m_hits;
    }

    /// A type beyond the array is not wanted.
    bool Wants(Object &object) const {
        if (!m_types)
            return true;
        int const type = object.GetType();
        return type >= 0 && static_cast<std::size_t>(type) < m_types->Size() &&
               (*m_types)[static_cast<std::size_t>(type)] != 0;
    }

    /// By a set of axes: a bit for each part that is low, or high, along all of them.
    using Parts = std::array<unsigned int, kPartCount<kDimension>>;
    static constexpr Parts PartsAlong(unsigned int side) {
        Parts parts{};
        for (unsigned int axes = 0; axes < parts.size(); ++axes) {
            for (unsigned int part = 0; part < parts.size(); ++part)
                parts[axes] |= ((part ^ side) & axes) == 0 ? 1U << part : 0U;
        }
        return parts;
    }
    static constexpr Parts kPartsLow = PartsAlong(0);
    static constexpr Parts kPartsHigh = PartsAlong(kAllAxes<kDimension>);

    MList<Object *> &m_list;
    MArray<int> const *m_types;
    /// What the boxes are compared with, worked out once.
    Box m_bounds;
    int m_hits = 0;
    std::size_t m_visitCount = 0;
    std::size_t m_candidateCount = 0;
    Visit m_visits[kMostVisits];
    Candidate m_candidates[kMostCandidates];
};

/// The leaf whose region contains the point, null when that of the node does not.
template <typename Space>
typename Space::Node *LeafContaining(typename Space::Node &node, Spot<Space::kDimension> const &point) {
    if (!Contains(Access<Space>::RegionOf(node), point))
        return nullptr;
    Way<Space> way(node);
    way.GoToward(BoxAt(point));
    return way.family ? nullptr : &way.ToNode();
}

} // namespace zvi::lib::spatial
