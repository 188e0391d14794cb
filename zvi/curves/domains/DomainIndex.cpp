#include "zvi/curves/domains/DomainIndexDetail.h"

#include "zvi/base/Index.h"
#include "zvi/curves/PointInPolygonDetail.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace zvi::lib::curves {

using base::Index;

namespace {

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

double LargestOf(T_REGION2D const &box) {
    return std::max({std::abs(box.MinX), std::abs(box.MinY), std::abs(box.MaxX), std::abs(box.MaxY)});
}

} // namespace

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
    assert(Index(domain) < m_domains.size() &&
           Index(m_domains[Index(domain)].holeCount) + 1 == m_surfs[Index(domain)].Holes.Size());
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
    assert(Index(domain) < m_domains.size());
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
    assert(!loop.Empty());
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
