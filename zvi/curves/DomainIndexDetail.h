#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"
#include "zvi/curves/GeomRecords.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zvi::lib::detail {

/// Boxes with a number each, found by a point. A box lies in the cells of a grid whose cells are larger than it is in
/// x and in y, so it is in four of them at most; every size of cells is a level of its own. A query looks at one
/// cell of each level.
class BoxGrid {
public:
    void Insert(T_REGION2D const &box, int number);
    /// Takes out what `Insert` put in.
    void Remove(T_REGION2D const &box, int number);
    /// Appends the numbers of the boxes that contain the point, border included.
    void Find(T_POINT2D const &p, std::vector<int> &numbers) const;

private:
    struct Entry {
        T_REGION2D box;
        double column;
        double row;
        int number;
        int level;
        int next; ///< next entry of the bucket, -1 at the end
    };
    struct Level {
        double perWidth;  ///< 1 / width of a cell
        double perHeight; ///< 1 / height of a cell
    };

    int LevelOf(T_REGION2D const &box);
    std::size_t BucketOf(int level, double column, double row) const;
    template <typename Visit>
    void VisitCells(int level, T_REGION2D const &box, Visit visit);
    void InsertInCell(Entry entry);
    void RemoveFromCell(Entry const &entry);
    void Grow();

    std::vector<Level> m_levels;
    std::map<std::pair<int, int>, int> m_levelOfSize;
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
        : m_domains(domains), m_coordinates(coordinates) {}

    /// The first domain, from `first` on, that has the point in its loop and in none of its holes; -1 for none. Domains
    /// that were appended since the last call are taken up.
    int FirstWith(DM_VTEX const &point, int first);

    /// Takes up the last hole of a domain.
    void AddLastHole(int domain);

private:
    /// The holes of one domain.
    struct Holes {
        std::vector<T_REGION2D> boxes;
        BoxGrid grid;          ///< used when there are many
        bool isCutOut = false; ///< whether the inside of a hole was taken out of the domain's box
    };

    void FindDomains(T_POINT2D const &point, int first);
    void TakeUpDomains();
    void TakeUpHole(int domain, int hole);
    bool CutOut(int domain, T_REGION2D const &box, DM_SURF_SUB const &hole);
    T_REGION2D BoxOf(MArray<int> const &loop) const;
    bool Contains(MArray<int> const &loop, T_POINT2D const &point);
    bool IsInHole(int domain, T_POINT2D const &point);

    MArray<DM_SURF> const &m_domains;
    MArray<DM_VTEX> const &m_coordinates;
    std::vector<T_REGION2D> m_boxes; ///< by domain, of those taken up
    BoxGrid m_loopGrid;              ///< boxes of the domains, or parts of them, by domain
    std::unordered_map<int, Holes> m_holesOf;
    std::vector<int> m_foundDomains;
    std::vector<int> m_foundHoles;
    MArray<T_POINT2D> m_polygon;
};

} // namespace zvi::lib::detail
