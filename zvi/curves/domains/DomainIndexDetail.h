#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"
#include "zvi/curves/GeomRecords.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace zvi::lib::curves {

/// Boxes with a number each, found by a point. A box lies in the cells of a grid whose cells are larger than it is in
/// x and in y, so it is in four of them at most; every size of cells is a level of its own. A query looks at one
/// cell of each level.
class BoxGrid {
public:
    void Insert(T_REGION2D const &box, int number);
    /// Takes out what `Insert` put in; no other box has the number.
    void Remove(T_REGION2D const &box, int number);
    /// Appends the numbers of the boxes that contain the point, border included.
    void Find(T_POINT2D const &p, std::vector<int> &numbers) const;

private:
    struct Entry {
        T_REGION2D box;
        std::uint32_t hash; ///< of the cell
        int number;         ///< -1 for an entry that was taken out
        int next;           ///< next entry of the bucket, -1 at the end
    };
    struct Level {
        int width;        ///< exponent of a cell's width
        int height;       ///< exponent of a cell's height
        double perWidth;  ///< 1 / width of a cell
        double perHeight; ///< 1 / height of a cell
    };

    std::size_t LevelOf(T_REGION2D const &box);
    template <typename Visit>
    void VisitCells(T_REGION2D const &box, Visit visit);
    int &BucketOf(std::uint32_t hash) { return m_buckets[hash & (m_buckets.size() - 1)]; }
    void InsertInCell(T_REGION2D const &box, int number, std::uint32_t hash);
    void RemoveFromCell(int number, std::uint32_t hash);
    void Grow();

    std::vector<Level> m_levels;
    std::vector<Entry> m_entries;
    std::vector<int> m_buckets; ///< first entry of each bucket; the size is a power of two
};

/// Finds the first of the finished domains that holds a point, without asking every one of them.
///
/// Only domains whose box holds the point are asked, in their order, by the exact test of loops and holes. An upright
/// rectangular hole also takes a part out of its domain's box: well inside such a hole the test is sure to find the
/// point in it. So squares within squares do not ask one another all the way down.
class DomainIndex {
public:
    DomainIndex(MArray<DM_SURF> const &domains, MArray<DM_VTEX> const &coordinates)
        : m_surfs(domains), m_coordinates(coordinates) {}

    /// The first domain, from `first` on, that has the point in its loop and in none of its holes; -1 for none. Domains
    /// that were appended since the last call are taken up.
    int FirstWith(DM_VTEX const &point, int first);

    /// Takes up the last hole of a domain.
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
