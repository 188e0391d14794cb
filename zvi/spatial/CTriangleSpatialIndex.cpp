#include "zvi/spatial/CTriangleSpatialIndex.h"

#include "zvi/core/Utf8.h"
#include "zvi/core/WideFormat.h"
#include "zvi/host/Paths.h"
#include "zvi/spatial/triangles/ContactProgressDetail.h"
#include "zvi/spatial/triangles/TriangleGridDetail.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

namespace zvi::lib {

namespace {

using spatial::TriangleNode;

/// The chain of a cell in one piece of memory, for the pairs in it.
void CopyChain(TriangleNode const *chain, std::vector<TriangleNode> &nodes) {
    nodes.clear();
    for (TriangleNode const *node = chain; node; node = node->next)
        nodes.push_back(*node);
}

void ComparePairs(std::vector<TriangleNode> const &nodes, float tol, ICompTri &comp) {
    for (auto first = nodes.begin(); first != nodes.end(); ++first) {
        for (auto second = first + 1; second != nodes.end(); ++second) {
            if (first->group != second->group && comp.Compare(first->item, second->item, tol) != 0)
                comp.Report(first->item, second->item);
        }
    }
}

std::string LineOf(char const *begin, float const *values) {
    return begin + Utf8Of(FormatWide(L"%13g %13g %13g", static_cast<double>(values[0]), static_cast<double>(values[1]),
                                     static_cast<double>(values[2])));
}

/// Each line is flushed, so that the file tells how far one got.
void WriteFacet(std::ostream &file, float const (&points)[4][3]) {
    file << LineOf("    facet normal   ", points[3]) << std::endl;
    file << "        outer loop" << std::endl;
    for (int i = 0; i < 3; ++i)
        file << LineOf("            vertex ", points[i]) << std::endl;
    file << "        endloop" << std::endl;
    file << "    endfacet" << std::endl;
}

} // namespace

CTriangleSpatialIndex::CTriangleSpatialIndex(float const *box, long divisions, float minCell)
    : m_grid(spatial::TriangleGrid::Make(box, divisions, minCell)) {}

CTriangleSpatialIndex::~CTriangleSpatialIndex() {
    delete m_grid;
}

int CTriangleSpatialIndex::Insert(float const *a, float const *b, float const *c, int group, float tol, void *item) {
    return m_grid ? m_grid->Insert({a, b, c}, tol, {item, group, false, nullptr}) : 0;
}

int CTriangleSpatialIndex::GetBoxIndexByTriangle(float const *a, float const *b, float const *c, float tol, long *low,
                                                 long *high) const {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        int lowest = 0;
        int highest = 0;
        if (!m_grid || !m_grid->Reach(axis, {a, b, c}, tol, lowest, highest))
            return 0;
        low[axis] = lowest;
        high[axis] = highest;
    }
    return 1;
}

void CTriangleSpatialIndex::FindTriWithinTol(float tol, ICompTri *comp) {
    if (!m_grid)
        return;
    spatial::ContactProgress progress(m_grid->CellCount());
    std::vector<TriangleNode> nodes;
    for (std::uint32_t cell = 0; cell < m_grid->CellCount(); ++cell) {
        progress.Reach(cell);
        TriangleNode const *const chain = m_grid->Chain(cell);
        if (!chain || !chain->isMixed)
            continue;
        CopyChain(chain, nodes);
        ComparePairs(nodes, tol, *comp);
    }
}

void CTriangleSpatialIndex::WriteIndexedTriangle(wchar_t const *path, ICompTri *comp) const {
    std::ofstream file(host::NativePath(path));
    if (!file)
        return;
    file << "Contact Search" << std::endl;
    for (std::uint32_t cell = 0; m_grid && cell < m_grid->CellCount(); ++cell) {
        for (TriangleNode const *node = m_grid->Chain(cell); node; node = node->next) {
            float points[4][3] = {};
            if (comp->GetTriangle(node->item, points[0], points[1], points[2], points[3]) != 0)
                WriteFacet(file, points);
        }
    }
    file << "end Contact Search" << std::endl;
}

void CTriangleSpatialIndex::RemoveAll() {
    if (m_grid)
        m_grid->RemoveAll();
}

std::int32_t CTriangleSpatialIndex::GetItemCount() const {
    return m_grid ? m_grid->ItemCount() : 0;
}

bool CTriangleSpatialIndex::IsConsistent() const {
    return !m_grid || m_grid->IsConsistent();
}

} // namespace zvi::lib
