#pragma once

#include "zvi/drawing/CarriersDetail.h"
#include "zvi/drawing/CurveFamiliesDetail.h"
#include "zvi/drawing/NetworkDetail.h"
#include "zvi/drawing/StretchIndexDetail.h"

#include <utility>
#include <vector>

namespace zvi::lib::drawing {

/// Pairs of edges, each once, that come nearer to one another than a reach elsewhere than at a shared end; some that
/// do not are among them. Where the boxes of the edges crowd, they are found anew each time and not held, for there
/// may be very many. Edges of one carrier are no pairs.
class CandidatePairs {
public:
    /// `findsCarriers` tells whether carriers are looked for.
    CandidatePairs(Network const &network, double reach, bool findsCarriers, base::Workers const &workers);

    /// The carriers whose edges are no pairs.
    Carriers const &OneCarrier() const { return m_carriers; }

    /// Into how many parts the pairs are cut, by the first edge, the lower number, and then in an order that depends on
    /// the boxes of the edges alone.
    std::size_t PartCount() const;

    /// Calls `look(EdgePair)` for each pair of a part.
    template <typename Look>
    void ForEachIn(std::size_t part, Look look) const {
        auto const [begin, end] = RangeOf(part);
        for (std::size_t i = begin; i < end && !m_index.IsCrowded(); ++i)
            look(m_pairs[i]);
        Partners partners;
        for (std::size_t edge = begin; edge < end && m_index.IsCrowded(); ++edge) {
            FindPartners(static_cast<int>(edge), partners);
            for (int const other : partners.edges)
                look(EdgePair{static_cast<int>(edge), other});
        }
    }

    /// Calls `look(EdgePair)` for each pair.
    template <typename Look>
    void ForEach(Look look) const {
        for (std::size_t part = 0; part < PartCount(); ++part)
            ForEachIn(part, look);
    }

    /// The pairs of connectors with what they may meet. The connectors are the edges from `first` on, shorter than the
    /// reach; each begins at a place of an edge, or inside one, which `owners` names.
    std::vector<EdgePair> OfConnectors(int first, std::vector<int> const &owners);

private:
    /// The edges found last, and room for finding them.
    struct Partners {
        std::vector<int> edges;
        StretchIndex::Search search;
    };

    void FindAll(base::Workers const &workers);
    void FindPartners(int edge, Partners &partners) const;
    /// Of the pairs, or of their first edges where they are not held; the part is below PartCount().
    std::pair<std::size_t, std::size_t> RangeOf(std::size_t part) const;
    /// The edges that a connector from a place of the edge `owner`, or from inside it, may meet; `box` lies round it.
    void FindNeighbours(NetworkEdge const &connector, int owner, Box const &box);
    void FindPairedWith(int owner);
    /// Adds the edges that are no pair with `owner` because they lie on its carrier.
    void AddOnCarrierOf(int owner);
    /// The lower ones by number, then the higher ones by rank.
    void SortPartnersOf(int owner);
    /// Adds the edges that are no pair with `owner` because they only end where it ends.
    void AddEndingWith(int owner);

    Network const &m_network;
    double m_reach;
    int m_edgeCount; ///< without connectors
    Carriers m_carriers;
    CurveFamilies m_families; ///< where boxes crowd
    StretchIndex m_index;
    std::vector<EdgePair> m_pairs;     ///< all, where boxes do not crowd
    std::vector<std::size_t> m_begins; ///< of each edge, where those of which it is the first begin, and the end
    /// By the second edge: the first edges of its pairs, and where those of each begin.
    std::vector<int> m_firsts;
    std::vector<std::size_t> m_firstBegins;
    std::vector<int> m_ends;              ///< the edges by the places where they end
    std::vector<std::size_t> m_endBegins; ///< where those of each place begin
    std::vector<int> m_partners;          ///< of the connector looked at last
    StretchIndex::Search m_search;
    base::Workers m_workers;
};

} // namespace zvi::lib::drawing
