// Input and results of the domain maker.

#include "zvi/curves/MDomainMaker.h"

#include "zvi/base/Index.h"
#include "zvi/curves/domains/CurvIdIndexDetail.h"
#include "zvi/curves/domains/DomainRulesDetail.h"
#include "zvi/curves/domains/VtexXIndexDetail.h"

#include <algorithm>

namespace zvi::lib {

using base::Index;

namespace {

/// Room for this many edges is made at a vertex's first one: a plane mesh has six of them about a vertex.
constexpr std::size_t kUsualEdges = 6;

void MakeRoomForEnds(zvi::MArray<int> &edges, std::size_t count) {
    edges.Reserve(edges.Empty() ? kUsualEdges : count);
}

bool IsLoopConsistent(DM_SURF_SUB const &loop, std::size_t vtexCount) {
    auto const isKnown = [=](int vtex) { return vtex >= 0 && Index(vtex) < vtexCount; };
    return loop.Vtex.Size() == loop.Curv.Size() + 1 && std::all_of(loop.Vtex.begin(), loop.Vtex.end(), isKnown) &&
           (loop.CurvDir.Empty() || loop.CurvDir.Size() == loop.Curv.Size());
}

} // namespace

MDomainMaker::MDomainMaker()
    : XIndex(std::make_unique<curves::VtexXIndex>()), m_idIndex(std::make_unique<curves::CurvIdIndex>()) {}

MDomainMaker::MDomainMaker(MDomainMaker const &other)
    : SpareMap(other.SpareMap), DeadVtex(other.DeadVtex), XIndex(std::make_unique<curves::VtexXIndex>(*other.XIndex)),
      VtexTag(other.VtexTag), VtexCoord(other.VtexCoord), CurvId(other.CurvId), EdgeVtex(other.EdgeVtex),
      VtexEdges(other.VtexEdges), ResultSurf(other.ResultSurf),
      m_idIndex(std::make_unique<curves::CurvIdIndex>(*other.m_idIndex)) {}

MDomainMaker &MDomainMaker::operator=(MDomainMaker const &other) {
    MDomainMaker copy(other);
    Swap(copy);
    return *this;
}

MDomainMaker::~MDomainMaker() = default;

void MDomainMaker::Swap(MDomainMaker &other) {
    SpareMap.Swap(other.SpareMap);
    DeadVtex.Swap(other.DeadVtex);
    XIndex.swap(other.XIndex);
    VtexTag.Swap(other.VtexTag);
    VtexCoord.Swap(other.VtexCoord);
    CurvId.Swap(other.CurvId);
    EdgeVtex.Swap(other.EdgeVtex);
    VtexEdges.Swap(other.VtexEdges);
    ResultSurf.Swap(other.ResultSurf);
    m_idIndex.swap(other.m_idIndex);
}

// All memory is taken before the curve is entered, here and below.
void MDomainMaker::AddCurv(unsigned int id, DM_VTEX p1, DM_VTEX p2) {
    int const first = FindOrAddVtex(p1);
    int const second = FindOrAddVtex(p2);
    CurvId.Reserve(1);
    EdgeVtex.Reserve(1);
    MakeRoomForEnds(VtexEdges[Index(first)], first == second ? 2 : 1);
    MakeRoomForEnds(VtexEdges[Index(second)], 1);

    int const edge = static_cast<int>(EdgeVtex.Size());
    CurvId.PushBack(id);
    EdgeVtex.PushBack({first, second});
    VtexEdges[Index(first)].PushBack(edge);
    VtexEdges[Index(second)].PushBack(edge);
}

/// The vertex of an end point: a merged one, or a new one.
int MDomainMaker::FindOrAddVtex(DM_VTEX const &point) {
    int const found = XIndex->Find(point, VtexCoord);
    if (found >= 0)
        return found;
    int const added = static_cast<int>(VtexCoord.Size());
    VtexTag.Reserve(1);
    VtexCoord.Reserve(1);
    VtexEdges.Reserve(1);
    XIndex->Insert(point, added);
    VtexTag.PushBack(0);
    VtexCoord.PushBack(point);
    VtexEdges.Resize(VtexCoord.Size());
    return added;
}

void MDomainMaker::AddCurvMidPoint(unsigned int id, zvi::MArray<DM_VTEX> &pts) {
    int const oldEdge = m_idIndex->FindFirst(CurvId, id);
    if (oldEdge < 0 || pts.Empty())
        return;

    std::size_t const firstNew = VtexCoord.Size();
    CurvId.Reserve(pts.Size());
    EdgeVtex.Reserve(pts.Size());
    VtexTag.Reserve(pts.Size());
    VtexCoord.Reserve(pts.Size());
    VtexEdges.Resize(firstNew + pts.Size());
    for (DM_VTEX const &point : pts) {
        VtexTag.PushBack(0);
        VtexCoord.PushBack(point);
    }
    for (std::size_t vtex = firstNew; vtex < VtexCoord.Size(); ++vtex)
        VtexEdges[vtex].Reserve(2);

    int const endVtex = EdgeVtex[Index(oldEdge)].second;
    int edge = oldEdge;
    for (std::size_t vtex = firstNew; vtex < VtexCoord.Size(); ++vtex) {
        EdgeVtex[Index(edge)].second = static_cast<int>(vtex);
        VtexEdges[vtex].PushBack(edge);
        edge = static_cast<int>(EdgeVtex.Size());
        CurvId.PushBack(id);
        EdgeVtex.PushBack({static_cast<int>(vtex), endVtex});
        VtexEdges[vtex].PushBack(edge);
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
    zvi::MArray<DM_VTEX> inner;
    inner.Reserve(count - 2);
    for (std::size_t i = 1; i + 1 < count; ++i)
        inner.PushBack(pts[i]);
    AddCurv(id, pts[0], pts[count - 1]);
    try {
        AddCurvMidPoint(id, inner);
    } catch (...) {
        std::size_t const last = EdgeVtex.Size() - 1;
        for (int const vtex : {EdgeVtex[last].first, EdgeVtex[last].second})
            VtexEdges[Index(vtex)].Resize(VtexEdges[Index(vtex)].Size() - 1);
        EdgeVtex.Resize(last);
        CurvId.Resize(last);
        m_idIndex->Forget();
        throw;
    }
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

bool MDomainMaker::IsConsistent() const {
    std::size_t const vtexCount = VtexCoord.Size();
    if (VtexTag.Size() != vtexCount || VtexEdges.Size() != vtexCount || CurvId.Size() != EdgeVtex.Size())
        return false;
    // How often each edge stands in the list of its first end and of its second.
    zvi::MArray<std::pair<int, int>> found(EdgeVtex.Size());
    for (std::size_t vtex = 0; vtex < vtexCount; ++vtex) {
        if (DeadVtex.Lookup(static_cast<int>(vtex)) && !VtexEdges[vtex].Empty())
            return false;
        for (int const edge : VtexEdges[vtex]) {
            if (edge < 0 || Index(edge) >= EdgeVtex.Size())
                return false;
            auto const &[first, second] = EdgeVtex[Index(edge)];
            if (first != static_cast<int>(vtex) && second != static_cast<int>(vtex))
                return false;
            found[Index(edge)].first += first == static_cast<int>(vtex) ? 1 : 0;
            found[Index(edge)].second += second == static_cast<int>(vtex) ? 1 : 0;
        }
    }
    for (std::size_t edge = 0; edge < EdgeVtex.Size(); ++edge) {
        auto const &[first, second] = EdgeVtex[edge];
        int const whole = first == second ? 2 : 1;
        bool const isInPlace = first >= 0 && second >= 0 && Index(first) < vtexCount && Index(second) < vtexCount;
        if (!isInPlace || found[edge].first != found[edge].second ||
            (found[edge].first != 0 && found[edge].first != whole))
            return false;
    }
    return std::all_of(ResultSurf.begin(), ResultSurf.end(), [=](DM_SURF const &surf) {
        return IsLoopConsistent(surf, vtexCount) &&
               std::all_of(surf.Holes.begin(), surf.Holes.end(),
                           [=](DM_SURF_SUB const &hole) { return IsLoopConsistent(hole, vtexCount); });
    });
}

} // namespace zvi::lib
