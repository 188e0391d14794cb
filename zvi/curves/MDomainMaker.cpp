// Input and results of the domain maker.

#include "zvi/curves/MDomainMaker.h"

#include "zvi/base/Index.h"

namespace zvi::lib {

using base::Index;

namespace {

/// Room for this many edges is made at a vertex's first one: a plane mesh has six of them about a vertex.
constexpr std::size_t kUsualEdges = 6;

} // namespace

MDomainMaker::MDomainMaker() = default;
MDomainMaker::MDomainMaker(MDomainMaker const &other) = default;
MDomainMaker &MDomainMaker::operator=(MDomainMaker const &other) = default;
MDomainMaker::~MDomainMaker() = default;

void MDomainMaker::AddCurv(unsigned int id, DM_VTEX p1, DM_VTEX p2) {
    int const edge = static_cast<int>(EdgeVtex.Size());
    CurvId.PushBack(id);
    EdgeVtex.PushBack({0, 0});
    int const first = FindOrAddVtex(p1);
    AttachEdge(first, edge);
    EdgeVtex[Index(edge)].first = first;
    int const second = FindOrAddVtex(p2);
    AttachEdge(second, edge);
    EdgeVtex[Index(edge)].second = second;
}

int MDomainMaker::FindOrAddVtex(DM_VTEX const &point) {
    int const found = XIndex.Find(point, VtexCoord);
    if (found >= 0)
        return found;
    int const added = static_cast<int>(VtexCoord.Size());
    VtexTag.PushBack(0);
    VtexCoord.PushBack(point);
    XIndex.Insert(point, added);
    return added;
}

void MDomainMaker::AttachEdge(int vtex, int edge) {
    if (VtexEdges.Size() <= Index(vtex))
        VtexEdges.Resize(Index(vtex) + 1);
    zvi::MArray<int> &edges = VtexEdges[Index(vtex)];
    if (edges.Empty())
        edges.Reserve(kUsualEdges);
    edges.PushBack(edge);
}

void MDomainMaker::AddCurvMidPoint(unsigned int id, zvi::MArray<DM_VTEX> &pts) {
    int const oldEdge = IdIndex.FindFirst(CurvId, id);
    if (oldEdge < 0 || pts.Empty())
        return;

    int const endVtex = EdgeVtex[Index(oldEdge)].second;
    int edge = oldEdge;
    for (DM_VTEX const &point : pts) {
        int const vtex = static_cast<int>(VtexCoord.Size());
        VtexTag.PushBack(0);
        VtexCoord.PushBack(point);
        EdgeVtex[Index(edge)].second = vtex;
        AttachEdge(vtex, edge);
        edge = static_cast<int>(EdgeVtex.Size());
        CurvId.PushBack(id);
        EdgeVtex.PushBack({vtex, endVtex});
        AttachEdge(vtex, edge);
    }

    // An edge whose ends are one vertex stands there twice; its second entry is the one of its second end.
    zvi::MArray<int> &endEdges = VtexEdges[Index(endVtex)];
    for (std::size_t i = endEdges.Size(); i-- > 0;) {
        if (endEdges[i] == oldEdge) {
            endEdges[i] = edge;
            break;
        }
    }
}

void MDomainMaker::AddCurvedCurvOnce(unsigned int id, zvi::MArray<DM_VTEX> &pts) {
    std::size_t const count = pts.Size();
    if (count < 3)
        return;
    AddCurv(id, pts[0], pts[count - 1]);
    zvi::MArray<DM_VTEX> inner;
    inner.Reserve(count - 2);
    for (std::size_t i = 1; i + 1 < count; ++i)
        inner.PushBack(pts[i]);
    AddCurvMidPoint(id, inner);
}

int MDomainMaker::FarVtex(int edge, int vtex) const {
    auto const &[first, second] = EdgeVtex[Index(edge)];
    return first == vtex ? second : first;
}

void MDomainMaker::GetResultSurf(zvi::MArray<DM_SURF> &out) {
    out = ResultSurf;
}

zvi::MArray<DM_SURF> &MDomainMaker::GetResultSurf() {
    return ResultSurf;
}

void MDomainMaker::GetResultVtexCoord(zvi::MArray<DM_VTEX> &out) {
    out = VtexCoord;
}

} // namespace zvi::lib
