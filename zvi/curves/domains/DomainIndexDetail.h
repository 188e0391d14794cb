#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"
#include "zvi/curves/GeomRecords.h"
#include "zvi/curves/domains/BoxGridDetail.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace zvi::lib::curves {

/// Finds the first of the finished domains that holds a point, without asking every one of them.
///
/// Only domains whose box holds the point are asked, in their order, by the exact test of loops and holes. An upright
/// rectangular hole also takes a part out of its domain's box: well inside such a hole the test is sure to find the
/// point in it. So squares within squares do not ask one another all the way down.
class DomainIndex {
public:
    DomainIndex(MArray<DM_SURF> const &domains, MArray<DM_VTEX> const &coordinates)
        : m_surfs(domains), m_coordinates(coordinates) {}

    /// The first domain, from `first` (0 or more) on, that has the point in its loop and in none of its holes; -1 for
    /// none. Domains that were appended since the last call are taken up.
    int FirstWith(DM_VTEX const &point, int first);

    /// Takes up the last hole of a domain that was taken up before it had that hole.
    void AddLastHole(int domain);

private:
    struct Domain {
        T_REGION2D box;
        int firstHole; ///< -1 for none
        int holeCount;
        int cut; ///< the part that was taken out of the box; -1 for none
    };
    struct Hole {
        T_REGION2D box;
        int index; ///< among the holes of its domain
        int next;  ///< next hole of the domain; -1 at the end
    };

    void FindDomains(T_POINT2D const &point, int first);
    bool IsCutOut(Domain const &domain, T_POINT2D const &point) const;
    void TakeUpDomains();
    void TakeUpHole(int domain, int hole);
    bool CutOut(T_REGION2D const &box, DM_SURF_SUB const &hole);
    void InsertInGrid(int domain);
    T_REGION2D BoxOf(MArray<int> const &loop) const;
    bool Contains(MArray<int> const &loop, T_POINT2D const &point);
    bool IsInHole(int domain, T_POINT2D const &point);

    MArray<DM_SURF> const &m_surfs;
    MArray<DM_VTEX> const &m_coordinates;
    std::vector<Domain> m_domains; ///< those taken up
    std::vector<Hole> m_holes;     ///< of all domains
    std::vector<T_REGION2D> m_cuts;
    BoxGrid m_loopGrid;       ///< boxes of the domains, or what is left of them, by domain
    std::size_t m_inGrid = 0; ///< so many domains are in it; the last few are not, as they may yet be cut
    std::unordered_map<int, BoxGrid> m_holeGrids; ///< by domain with many holes
    std::vector<int> m_foundDomains;
    std::vector<int> m_foundHoles;
    MArray<T_POINT2D> m_polygon;
};

} // namespace zvi::lib::curves
