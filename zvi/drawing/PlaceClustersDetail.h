#pragma once

#include "zvi/drawing/PlaneDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// Places that have become one. A cluster never holds two places that are as far apart as the distance it is asked to
/// stay below.
class PlaceClusters {
public:
    explicit PlaceClusters(std::vector<DrawingPoint> places);

    int Count() const { return static_cast<int>(m_places.size()); }
    DrawingPoint Position(int place) const { return m_places[Index(place)]; }

    /// Adds a place that is a cluster by itself.
    int Add(DrawingPoint p);

    /// The place that stands for the cluster of `place`.
    int Root(int place) const {
        int const parent = m_parent[Index(place)];
        return parent == place ? place : RootFrom(place);
    }

    bool IsAlone(int place) const { return m_nextMember[Index(place)] == place; }
    /// Whether no two places have become one.
    bool AreAllAlone() const { return m_areAllAlone; }

    /// Lets Root() change nothing on its way from now on, until clusters are united again, so that several threads may
    /// ask for roots.
    void Settle();

    /// Makes room: nothing is asked or changed any more but Root(), Count() and Position().
    void ForgetMembers();

    /// Whether all places of the two clusters are nearer to one another than `distance`.
    bool Fit(int a, int b, double distance) const;
    /// The same for a cluster and a point.
    bool Fit(int a, DrawingPoint p, double distance) const;

    /// Makes one cluster of two. Nothing happens when they are one already.
    void Unite(int a, int b);

    /// Calls `look(place)` for each place of the cluster of `place`.
    template <typename Look>
    void ForEachMember(int place, Look look) const {
        int member = place;
        do {
            look(member);
            member = m_nextMember[Index(member)];
        } while (member != place);
    }

private:
    int RootFrom(int place) const;
    Box BoxOf(int place) const;

    std::vector<DrawingPoint> m_places;
    mutable std::vector<int> m_parent; ///< shortened by searches
    std::vector<int> m_nextMember;     ///< the members of a cluster form a ring
    std::vector<Box> m_boxes;          ///< of the members, at the root; none as long as all places are alone
    bool m_areAllAlone = true;
};

} // namespace zvi::lib::drawing
