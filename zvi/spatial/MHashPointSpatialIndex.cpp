#include "zvi/spatial/MHashPointSpatialIndex.h"

#include "zvi/spatial/points/PointGridDetail.h"

namespace zvi::lib {

namespace spatial {

struct HashPointNode {
    std::uint64_t value;
    HashPointNode *next;
};
static_assert(sizeof(HashPointNode) == 16);

class HashPointGrid : public PointGrid<HashPointNode> {};

} // namespace spatial

namespace {

using spatial::HashPointGrid;
using spatial::HashPointNode;

constexpr auto kTakesAll = [](HashPointNode const &) { return true; };

template <typename Coordinate>
int FindWithin(HashPointGrid const *grid, Coordinate const *point, double tol, MList<std::uint64_t> &list,
               ICalcDist const *calc) {
    list.RemoveAll();
    if (!grid)
        return 0;
    double const limit = tol * tol;
    grid->Measure(grid->CellsAround(point, tol), point, *calc, kTakesAll, [&](std::uint64_t value, double distance) {
        if (limit >= distance)
            list.AddTail(value);
    });
    return static_cast<int>(list.GetCount());
}

} // namespace

MHashPointSpatialIndex::~MHashPointSpatialIndex() {
    delete m_grid;
}

IPointSpatialIndex *MHashPointSpatialIndex::GetInterface() {
    return this;
}

void MHashPointSpatialIndex::SetBoundaryAndDivision(double const *const minimum, double const *const maximum,
                                                    int division) {
    m_grid = HashPointGrid::Make<HashPointGrid>(minimum, maximum, division);
}

void MHashPointSpatialIndex::RemoveAll() {
    if (m_grid)
        m_grid->RemoveAll();
}

int MHashPointSpatialIndex::Insert(int i, int j, int k, std::uint64_t value) {
    return m_grid ? m_grid->Push(m_grid->Block().Number(i, j, k), [=] { return HashPointNode{value, nullptr}; }) : 0;
}

int MHashPointSpatialIndex::Insert(double const *const point, std::uint64_t value) {
    return m_grid ? m_grid->Push(m_grid->CellOf(point), [=] { return HashPointNode{value, nullptr}; }) : 0;
}

int MHashPointSpatialIndex::Delete(double const *const point, std::uint64_t value) {
    HashPointNode **link = m_grid ? m_grid->Chain(point) : nullptr;
    while (link && *link && (*link)->value != value)
        link = &(*link)->next;
    if (!link || !*link)
        return 0;
    m_grid->Remove(link);
    return 1;
}

void MHashPointSpatialIndex::GetBoxIndexByTriangle(float const *const a, float const *const b, float const *const c,
                                                   int *const low, int *const high) const {
    spatial::CopyCellsOfTriangle(m_grid, {a, b, c}, low, high);
}

std::uint64_t MHashPointSpatialIndex::FindNearest(double const *const point, double tol, ICalcDist const *calc) const {
    return m_grid ? m_grid->Nearest(m_grid->CellsAround(point, tol), point, *calc, kTakesAll, tol * tol) : 0;
}

int MHashPointSpatialIndex::FindWithinTol(float const *const point, double tol, MList<std::uint64_t> &list,
                                          ICalcDist const *calc) const {
    return FindWithin(m_grid, point, tol, list, calc);
}

int MHashPointSpatialIndex::FindWithinTol(double const *const point, double tol, MList<std::uint64_t> &list,
                                          ICalcDist const *calc) const {
    return FindWithin(m_grid, point, tol, list, calc);
}

int MHashPointSpatialIndex::ExistDuplicate(double const *const point, double tol, ICalcDist const *calc) const {
    if (!m_grid)
        return 0;
    double const limit = tol * tol;
    int exists = 0;
    m_grid->Walk(m_grid->CellsAround(point, tol), [&](HashPointNode const &node) {
        exists = limit >= calc->CalcDist(point, node.value) ? 1 : 0;
        return exists != 0;
    });
    return exists;
}

bool MHashPointSpatialIndex::IsConsistent() const {
    return !m_grid || m_grid->IsConsistent();
}

} // namespace zvi::lib
