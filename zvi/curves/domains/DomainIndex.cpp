#include "zvi/curves/domains/DomainIndexDetail.h"

#include "zvi/curves/PointInPolygonDetail.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace zvi::lib::curves {

namespace {

/// Cells are at least 2 to this power wide, in drawing units; smaller boxes share a cell.
constexpr int kSmallestCell = -60;

constexpr std::size_t kFirstBucketCount = 64;

/// So many domains, the last ones, are asked one by one rather than through the grid.
constexpr std::size_t kFewDomains = 4;

/// A domain with more holes than this finds those about a point in a grid.
constexpr int kManyHoles = 8;

// A point is well inside an upright rectangle when it is farther from its sides than this margin, in drawing units: a
// fixed part, and parts in proportion to the rectangle and to its coordinates. The ray of the point test then crosses
// one side properly and stays clear of the others by more than any of that test's tolerances.
constexpr double kInsideMargin = 4e-6;
constexpr double kInsideMarginOfSize = 1e-6;
constexpr double kInsideMarginOfCoordinate = 1e-10;
/// Beyond this coordinate the fixed lengths of the point test get lost in rounding.
constexpr double kLargestCertain = 1e11;

std::size_t Index(int index) {
    return static_cast<std::size_t>(index);
}

bool Holds(T_REGION2D const &box, T_POINT2D const &p) {
    return !(p.x < box.MinX || p.x > box.MaxX || p.y < box.MinY || p.y > box.MaxY);
}

/// Exponent of the cell size for an extent: the second power of two above it, so that most boxes lie in one cell.
int CellExponent(double extent) {
    constexpr int kExponentBias = 1023;
    constexpr int kMantissaBits = 52;
    int const exponent = static_cast<int>(std::bit_cast<std::uint64_t>(extent) >> kMantissaBits) - kExponentBias;
    return extent > 0.0 ? std::max(exponent + 2, kSmallestCell) : kSmallestCell;
}

/// Like `std::floor` of the library, without a call.
double Floor(double value) {
    constexpr double kFirstWithoutFraction = 4503599627370496.0;
    if (!(std::abs(value) < kFirstWithoutFraction))
        return value;
    auto const cut = static_cast<double>(static_cast<std::int64_t>(value));
    return cut > value ? cut - 1.0 : cut;
}

std::uint32_t HashOf(std::size_t level, double column, double row) {
    // Adding 0.0 gives both zeros the same bits.
    std::uint64_t hash = std::bit_cast<std::uint64_t>(column + 0.0) * 0x9E3779B97F4A7C15u;
    hash = (hash ^ (hash >> 32) ^ std::bit_cast<std::uint64_t>(row + 0.0)) * 0xD6E8FEB86659FD93u;
    hash = (hash ^ (hash >> 32) ^ level) * 0x9E3779B97F4A7C15u;
    return static_cast<std::uint32_t>(hash >> 32);
}

double LargestOf(T_REGION2D const &box) {
    return std::max({std::abs(box.MinX), std::abs(box.MinY), std::abs(box.MaxX), std::abs(box.MaxY)});
}

} // namespace

// --- BoxGrid ---

void BoxGrid::Insert(T_REGION2D const &box, int number) {
    VisitCells(box, [&](std::uint32_t hash) { InsertInCell(box, number, hash); });
}

void BoxGrid::Remove(T_REGION2D const &box, int number) {
    VisitCells(box, [&](std::uint32_t hash) { RemoveFromCell(number, hash); });
}

template <typename Visit>
void BoxGrid::VisitCells(T_REGION2D const &box, Visit visit) {
    std::size_t const level = LevelOf(box);
    Level const &cells = m_levels[level];
    double const lastColumn = Floor(box.MaxX * cells.perWidth);
    double const lastRow = Floor(box.MaxY * cells.perHeight);
    for (double column = Floor(box.MinX * cells.perWidth);;) {
        for (double row = Floor(box.MinY * cells.perHeight);;) {
            visit(HashOf(level, column, row));
            if (row == lastRow)
                break;
            row = row + 1 < lastRow ? row + 1 : lastRow;
        }
        if (column == lastColumn)
            break;
        column = column + 1 < lastColumn ? column + 1 : lastColumn;
    }
}

void BoxGrid::Find(T_POINT2D const &p, std::vector<int> &numbers) const {
    if (m_entries.empty())
        return;
    for (std::size_t level = 0; level < m_levels.size(); ++level) {
        double const column = Floor(p.x * m_levels[level].perWidth);
        double const row = Floor(p.y * m_levels[level].perHeight);
        std::uint32_t const hash = HashOf(level, column, row);
        for (int at = m_buckets[hash & (m_buckets.size() - 1)]; at >= 0; at = m_entries[Index(at)].next) {
            Entry const &entry = m_entries[Index(at)];
            if (entry.hash == hash && Holds(entry.box, p))
                numbers.push_back(entry.number);
        }
    }
}

std::size_t BoxGrid::LevelOf(T_REGION2D const &box) {
    int const width = CellExponent(box.MaxX - box.MinX);
    int const height = CellExponent(box.MaxY - box.MinY);
    for (std::size_t level = m_levels.size(); level-- > 0;) {
        if (m_levels[level].width == width && m_levels[level].height == height)
            return level;
    }
    m_levels.push_back({width, height, std::ldexp(1.0, -width), std::ldexp(1.0, -height)});
    return m_levels.size() - 1;
}

void BoxGrid::InsertInCell(T_REGION2D const &box, int number, std::uint32_t hash) {
    if (m_entries.size() >= m_buckets.size())
        Grow();
    int &head = BucketOf(hash);
    m_entries.push_back({box, hash, number, head});
    head = static_cast<int>(m_entries.size()) - 1;
}

void BoxGrid::RemoveFromCell(int number, std::uint32_t hash) {
    for (int *at = &BucketOf(hash); *at >= 0; at = &m_entries[Index(*at)].next) {
        Entry &entry = m_entries[Index(*at)];
        if (entry.number == number && entry.hash == hash) {
            entry.number = -1;
            *at = entry.next;
            return;
        }
    }
}

void BoxGrid::Grow() {
    m_buckets.assign(m_buckets.empty() ? kFirstBucketCount : 2 * m_buckets.size(), -1);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (m_entries[i].number < 0)
            continue;
        int &head = BucketOf(m_entries[i].hash);
        m_entries[i].next = head;
        head = static_cast<int>(i);
    }
}

// --- DomainIndex ---

int DomainIndex::FirstWith(DM_VTEX const &point, int first) {
    TakeUpDomains();
    T_POINT2D const p{point.x, point.y};
    FindDomains(p, first);
    int previous = -1;
    for (int const domain : m_foundDomains) {
        bool const isNew = domain != previous;
        previous = domain;
        if (isNew && Contains(m_surfs[Index(domain)].Vtex, p) && !IsInHole(domain, p))
            return domain;
    }
    return -1;
}

/// Lists the domains, from `first` on, whose boxes hold the point, in their order.
void DomainIndex::FindDomains(T_POINT2D const &point, int first) {
    m_foundDomains.clear();
    if (Index(first) < m_inGrid) {
        m_loopGrid.Find(point, m_foundDomains);
        std::erase_if(m_foundDomains, [first](int domain) { return domain < first; });
        std::sort(m_foundDomains.begin(), m_foundDomains.end());
    }
    for (std::size_t i = std::max(Index(first), m_inGrid); i < m_domains.size(); ++i) {
        if (Holds(m_domains[i].box, point) && !IsCutOut(m_domains[i], point))
            m_foundDomains.push_back(static_cast<int>(i));
    }
}

bool DomainIndex::IsCutOut(Domain const &domain, T_POINT2D const &point) const {
    if (domain.cut < 0)
        return false;
    T_REGION2D const &cut = m_cuts[Index(domain.cut)];
    return point.x > cut.MinX && point.x < cut.MaxX && point.y > cut.MinY && point.y < cut.MaxY;
}

void DomainIndex::AddLastHole(int domain) {
    TakeUpHole(domain, static_cast<int>(m_surfs[Index(domain)].Holes.Size()) - 1);
}

void DomainIndex::TakeUpDomains() {
    while (m_domains.size() < m_surfs.Size()) {
        int const domain = static_cast<int>(m_domains.size());
        m_domains.push_back({BoxOf(m_surfs[Index(domain)].Vtex), -1, 0, -1});
        for (std::size_t hole = 0; hole < m_surfs[Index(domain)].Holes.Size(); ++hole)
            TakeUpHole(domain, static_cast<int>(hole));
    }
    for (; m_inGrid + kFewDomains < m_domains.size(); ++m_inGrid)
        InsertInGrid(static_cast<int>(m_inGrid));
}

void DomainIndex::TakeUpHole(int domain, int hole) {
    DM_SURF_SUB const &loop = m_surfs[Index(domain)].Holes[Index(hole)];
    T_REGION2D const box = BoxOf(loop.Vtex);
    Domain &owner = m_domains[Index(domain)];
    m_holes.push_back({box, hole, owner.firstHole});
    owner.firstHole = static_cast<int>(m_holes.size()) - 1;
    ++owner.holeCount;
    if (owner.holeCount > kManyHoles) {
        BoxGrid &grid = m_holeGrids[domain];
        bool const isFirstTime = owner.holeCount == kManyHoles + 1;
        for (int at = owner.firstHole; at >= 0; at = isFirstTime ? m_holes[Index(at)].next : -1)
            grid.Insert(m_holes[Index(at)].box, m_holes[Index(at)].index);
    }
    if (owner.cut >= 0 || !CutOut(box, loop))
        return;
    bool const isInGrid = Index(domain) < m_inGrid;
    if (isInGrid)
        m_loopGrid.Remove(owner.box, domain);
    owner.cut = static_cast<int>(m_cuts.size()) - 1;
    if (isInGrid)
        InsertInGrid(domain);
}

/// Notes the inside of a hole, so that its domain keeps only the box's parts about it; false for a hole that is not an
/// upright rectangle.
bool DomainIndex::CutOut(T_REGION2D const &box, DM_SURF_SUB const &hole) {
    double const size = LargestOf(box);
    if (hole.Vtex.Size() != 5 || hole.Vtex[0] != hole.Vtex[4] || !(size < kLargestCertain))
        return false;
    auto const corner = [&](std::size_t i) -> DM_VTEX const & { return m_coordinates[Index(hole.Vtex[i])]; };
    bool const startsLevel = corner(0).y == corner(1).y && corner(1).x == corner(2).x && corner(2).y == corner(3).y &&
                             corner(3).x == corner(0).x;
    bool const startsUpright = corner(0).x == corner(1).x && corner(1).y == corner(2).y && corner(2).x == corner(3).x &&
                               corner(3).y == corner(0).y;
    double const margin = kInsideMargin + kInsideMarginOfSize * (box.MaxX - box.MinX + box.MaxY - box.MinY) +
                          kInsideMarginOfCoordinate * size;
    T_REGION2D const inside{box.MinX + margin, box.MinY + margin, box.MaxX - margin, box.MaxY - margin};
    if (!(startsLevel || startsUpright) || !(inside.MinX < inside.MaxX) || !(inside.MinY < inside.MaxY))
        return false;
    m_cuts.push_back(inside);
    return true;
}

/// Enters the box of a domain; one with a cut as the four boxes about it.
void DomainIndex::InsertInGrid(int domain) {
    T_REGION2D const &whole = m_domains[Index(domain)].box;
    if (m_domains[Index(domain)].cut < 0) {
        m_loopGrid.Insert(whole, domain);
        return;
    }
    T_REGION2D const &inside = m_cuts[Index(m_domains[Index(domain)].cut)];
    T_REGION2D const parts[] = {{whole.MinX, whole.MinY, inside.MinX, whole.MaxY},
                                {inside.MaxX, whole.MinY, whole.MaxX, whole.MaxY},
                                {inside.MinX, whole.MinY, inside.MaxX, inside.MinY},
                                {inside.MinX, inside.MaxY, inside.MaxX, whole.MaxY}};
    for (T_REGION2D const &part : parts) {
        if (part.MinX <= part.MaxX && part.MinY <= part.MaxY)
            m_loopGrid.Insert(part, domain);
    }
}

T_REGION2D DomainIndex::BoxOf(MArray<int> const &loop) const {
    DM_VTEX const &first = m_coordinates[Index(loop[0])];
    T_REGION2D box{first.x, first.y, first.x, first.y};
    for (int const vtex : loop) {
        DM_VTEX const &at = m_coordinates[Index(vtex)];
        box = {std::min(box.MinX, at.x), std::min(box.MinY, at.y), std::max(box.MaxX, at.x), std::max(box.MaxY, at.y)};
    }
    return box;
}

bool DomainIndex::Contains(MArray<int> const &loop, T_POINT2D const &point) {
    std::size_t const count = loop.Size() - (loop.Size() > 1 && loop[0] == loop[loop.Size() - 1] ? 1 : 0);
    m_polygon.Clear();
    for (std::size_t i = 0; i < count; ++i)
        m_polygon.PushBack({m_coordinates[Index(loop[i])].x, m_coordinates[Index(loop[i])].y});
    return curves::PointInPolygon(m_polygon).Contains(point, 1) != 0;
}

bool DomainIndex::IsInHole(int domain, T_POINT2D const &point) {
    Domain const &owner = m_domains[Index(domain)];
    m_foundHoles.clear();
    if (owner.holeCount > kManyHoles) {
        m_holeGrids[domain].Find(point, m_foundHoles);
    } else {
        for (int at = owner.firstHole; at >= 0; at = m_holes[Index(at)].next) {
            if (Holds(m_holes[Index(at)].box, point))
                m_foundHoles.push_back(m_holes[Index(at)].index);
        }
    }
    for (int const hole : m_foundHoles) {
        if (Contains(m_surfs[Index(domain)].Holes[Index(hole)].Vtex, point))
            return true;
    }
    return false;
}

} // namespace zvi::lib::curves
