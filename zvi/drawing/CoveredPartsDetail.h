#pragma once

#include "zvi/drawing/CarriersDetail.h"
#include "zvi/drawing/PlanarMapDetail.h"
#include "zvi/drawing/ThinFacesDetail.h"

#include <cassert>
#include <span>
#include <vector>

namespace zvi::lib::drawing {

/// A place inside an edge, at the fraction `t` of its length.
struct Incidence {
    int edge = 0;
    int place = 0;
    double t = 0.0;
};

/// The places along a carrier, and what lies between each and the next one; round a circle, behind the last one too.
struct CarrierPlaces {
    std::vector<int> places;
    std::vector<int> edges; ///< the edge of the map from each place on, -1 where there is none

    /// The place of a number that may count on round a circle; there are places.
    int PlaceAt(std::size_t i) const {
        assert(!places.empty());
        return places[i % places.size()];
    }
};

/// A part of a curve of which earlier curves on its carrier have all, between two places of that. Round a circle the
/// first place may count as the one behind the last.
struct CoveredPart {
    Stretch curve; ///< all of it
    std::size_t carrier = 0;
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Cuts the edges of carriers at the places of these. Of each step from place to place the first edge that has it gets
/// it; what is left of the others is covered.
class CarrierCutter {
public:
    /// `incidences` are the places inside each edge, along it, and begin where `begins` says.
    CarrierCutter(Network const &network, Carriers const &carriers, std::vector<Incidence> const &incidences,
                  std::vector<std::size_t> const &begins);

    /// Whether each edge passes all places of its carrier between its ends, and their order is beyond doubt.
    bool Fits() const { return m_fits; }

    /// Adds the parts of an edge to the map; edges come in their order.
    void AddParts(int edge, PlanarMap &map);

    std::vector<CarrierPlaces> TakePlaces() { return std::move(m_carriers); }
    std::vector<CoveredPart> TakeCovered() { return std::move(m_covered); }

private:
    /// Some steps of a carrier; round a circle `end` counts on.
    struct Span {
        std::size_t begin = 0;
        std::size_t end = 0;
        bool isFree = false;
    };

    void OrderPlaces(std::size_t carrier);
    void CheckPassed(std::size_t carrier);
    std::size_t RankOf(std::size_t carrier, int place) const;
    Span SpanOf(std::size_t carrier, Carriers::Member const &member) const;
    std::span<Incidence const> InsideOf(int edge) const;
    std::size_t NextFree(std::size_t carrier, std::size_t step);
    /// Adds the runs of free and of taken steps between two places to `spans`, and takes them.
    void TakeSteps(std::size_t carrier, std::size_t begin, std::size_t end, std::vector<Span> &spans);

    Network const &m_network;
    Carriers const &m_all;
    std::vector<Incidence> const &m_incidences;
    std::vector<std::size_t> const &m_begins;
    bool m_fits = true;
    std::vector<CarrierPlaces> m_carriers;
    std::vector<std::vector<double>> m_positions; ///< of the places of each carrier
    std::vector<std::vector<bool>> m_areEnds;     ///< of each of them, whether an edge of the carrier ends there
    std::vector<std::vector<std::size_t>> m_free; ///< of each step a later one up to which none is free, or itself
    std::vector<CoveredPart> m_covered;
};

/// What counts of the covered parts, which have no edges inside them.
struct CoveredCounts {
    std::vector<int> passedPlaces; ///< inside some of them
    int cuts = 0;                  ///< all such places, of each part
};

/// Adds the covered parts to a map whose short edges have been contracted, as edges that take no part in it: what
/// covers a contracted edge is contracted, the rest dropped.
CoveredCounts AddCovered(PlanarMap &map, std::vector<CarrierPlaces> const &carriers,
                         std::vector<CoveredPart> const &parts, std::vector<DroppedEdge> &dropped);

} // namespace zvi::lib::drawing
