#include "zvi/curves/DomainIndexDetail.h"

#include "zvi/curves/PointInPolygonDetail.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace zvi::lib::detail {

namespace {

/// Cells are at least 2 to this power wide, in drawing units; smaller boxes share a cell.
constexpr int kSmallestCell = -60;

constexpr std::size_t kFirstBucketCount = 64;

/// Level of an entry that was taken out.
constexpr int kRemoved = -1;

/// So many domains are asked one by one rather than through the grid.
constexpr std::size_t kFewDomains = 8;

/// A domain with more holes than this finds those about a point in a grid.
constexpr std::size_t kManyHoles = 8;

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
    return extent > 0.0 ? std::max(std::ilogb(extent) + 2, kSmallestCell) : kSmallestCell;
}

double LargestOf(T_REGION2D const &box) {
    return std::max({std::abs(box.MinX), std::abs(box.MinY), std::abs(box.MaxX), std::abs(box.MaxY)});
}

} // namespace

// --- BoxGrid ---

void BoxGrid::Insert(T_REGION2D const &box, int number) {
    int const level = LevelOf(box);
    VisitCells(level, box, [&](double column, double row) { InsertInCell({box, column, row, number, level, -1}); });
}

void BoxGrid::Remove(T_REGION2D const &box, int number) {
    int const level = LevelOf(box);
    VisitCells(level, box, [&](double column, double row) { RemoveFromCell({box, column, row, number, level, -1}); });
}

template <typename Visit>
void BoxGrid::VisitCells(int level, T_REGION2D const &box, Visit visit) {
    auto const [perWidth, perHeight] = m_levels[Index(level)];
    double const lastColumn = std::floor(box.MaxX * perWidth);
    double const lastRow = std::floor(box.MaxY * perHeight);
    for (double column = std::floor(box.MinX * perWidth);;) {
        for (double row = std::floor(box.MinY * perHeight);;) {
            visit(column, row);
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
        double const column = std::floor(p.x * m_levels[level].perWidth);
        double const row = std::floor(p.y * m_levels[level].perHeight);
        int const wanted = static_cast<int>(level);
        for (int at = m_buckets[BucketOf(wanted, column, row)]; at >= 0; at = m_entries[Index(at)].next) {
            Entry const &entry = m_entries[Index(at)];
            if (entry.level == wanted && entry.column == column && entry.row == row && Holds(entry.box, p))
                numbers.push_back(entry.number);
        }
    }
}

int BoxGrid::LevelOf(T_REGION2D const &box) {
    int const width = CellExponent(box.MaxX - box.MinX);
    int const height = CellExponent(box.MaxY - box.MinY);
    auto const [at, isNew] = m_levelOfSize.try_emplace({width, height}, static_cast<int>(m_levels.size()));
    if (isNew)
        m_levels.push_back({std::ldexp(1.0, -width), std::ldexp(1.0, -height)});
    return at->second;
}

std::size_t BoxGrid::BucketOf(int level, double column, double row) const {
    // Adding 0.0 gives both zeros the same bits.
    std::uint64_t hash = std::bit_cast<std::uint64_t>(column + 0.0) * 0x9E3779B97F4A7C15u;
    hash = (hash ^ (hash >> 32) ^ std::bit_cast<std::uint64_t>(row + 0.0)) * 0xD6E8FEB86659FD93u;
    hash = (hash ^ (hash >> 32) ^ static_cast<std::uint64_t>(level)) * 0x9E3779B97F4A7C15u;
    return static_cast<std::size_t>(hash >> 32) & (m_buckets.size() - 1);
}

void BoxGrid::InsertInCell(Entry entry) {
    if (m_entries.size() >= m_buckets.size())
        Grow();
    int &head = m_buckets[BucketOf(entry.level, entry.column, entry.row)];
    entry.next = head;
    head = static_cast<int>(m_entries.size());
    m_entries.push_back(entry);
}

void BoxGrid::RemoveFromCell(Entry const &entry) {
    for (int *at = &m_buckets[BucketOf(entry.level, entry.column, entry.row)]; *at >= 0;) {
        Entry &candidate = m_entries[Index(*at)];
        bool const isWanted = candidate.number == entry.number && candidate.level == entry.level &&
                              candidate.column == entry.column && candidate.row == entry.row;
        if (isWanted) {
            candidate.level = kRemoved;
            *at = candidate.next;
            return;
        }
        at = &candidate.next;
    }
}

void BoxGrid::Grow() {
    m_buckets.assign(m_buckets.empty() ? kFirstBucketCount : 2 * m_buckets.size(), -1);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (m_entries[i].level == kRemoved)
            continue;
        int &head = m_buckets[BucketOf(m_entries[i].level, m_entries[i].column, m_entries[i].row)];
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
        if (isNew && Contains(m_domains[Index(domain)].Vtex, p) && !IsInHole(domain, p))
            return domain;
    }
    return -1;
}

/// Lists the domains, from `first` on, whose boxes hold the point; when few are left, without the grid.
void DomainIndex::FindDomains(T_POINT2D const &point, int first) {
    m_foundDomains.clear();
    if (m_boxes.size() - Index(first) <= kFewDomains) {
        for (std::size_t i = Index(first); i < m_boxes.size(); ++i) {
            if (Holds(m_boxes[i], point))
                m_foundDomains.push_back(static_cast<int>(i));
        }
        return;
    }
    m_loopGrid.Find(point, m_foundDomains);
    std::erase_if(m_foundDomains, [first](int domain) { return domain < first; });
    std::sort(m_foundDomains.begin(), m_foundDomains.end());
}

void DomainIndex::AddLastHole(int domain) {
    TakeUpHole(domain, static_cast<int>(m_domains[Index(domain)].Holes.Size()) - 1);
}

void DomainIndex::TakeUpDomains() {
    while (m_boxes.size() < m_domains.Size()) {
        int const domain = static_cast<int>(m_boxes.size());
        m_boxes.push_back(BoxOf(m_domains[Index(domain)].Vtex));
        m_loopGrid.Insert(m_boxes.back(), domain);
        for (std::size_t hole = 0; hole < m_domains[Index(domain)].Holes.Size(); ++hole)
            TakeUpHole(domain, static_cast<int>(hole));
    }
}

void DomainIndex::TakeUpHole(int domain, int hole) {
    DM_SURF_SUB const &loop = m_domains[Index(domain)].Holes[Index(hole)];
    T_REGION2D const box = BoxOf(loop.Vtex);
    Holes &holes = m_holesOf[domain];
    holes.boxes.push_back(box);
    if (holes.boxes.size() > kManyHoles) {
        bool const isFirstTime = holes.boxes.size() == kManyHoles + 1;
        for (std::size_t i = isFirstTime ? 0 : holes.boxes.size() - 1; i < holes.boxes.size(); ++i)
            holes.grid.Insert(holes.boxes[i], static_cast<int>(i));
    }
    if (!holes.isCutOut)
        holes.isCutOut = CutOut(domain, box, loop);
}

/// Replaces the box of the domain by the four boxes about the inside of a hole; false for one that is not an upright
/// rectangle.
bool DomainIndex::CutOut(int domain, T_REGION2D const &box, DM_SURF_SUB const &hole) {
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
    T_REGION2D const whole = m_boxes[Index(domain)];
    T_REGION2D const parts[] = {{whole.MinX, whole.MinY, inside.MinX, whole.MaxY},
                                {inside.MaxX, whole.MinY, whole.MaxX, whole.MaxY},
                                {inside.MinX, whole.MinY, inside.MaxX, inside.MinY},
                                {inside.MinX, inside.MaxY, inside.MaxX, whole.MaxY}};
    m_loopGrid.Remove(whole, domain);
    for (T_REGION2D const &part : parts) {
        if (part.MinX <= part.MaxX && part.MinY <= part.MaxY)
            m_loopGrid.Insert(part, domain);
    }
    return true;
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
    auto const found = m_holesOf.find(domain);
    if (found == m_holesOf.end())
        return false;
    Holes const &holes = found->second;
    m_foundHoles.clear();
    if (holes.boxes.size() > kManyHoles) {
        holes.grid.Find(point, m_foundHoles);
    } else {
        for (std::size_t i = 0; i < holes.boxes.size(); ++i) {
            if (Holds(holes.boxes[i], point))
                m_foundHoles.push_back(static_cast<int>(i));
        }
    }
    for (int const hole : m_foundHoles) {
        if (Contains(m_domains[Index(domain)].Holes[Index(hole)].Vtex, point))
            return true;
    }
    return false;
}

} // namespace zvi::lib::detail
