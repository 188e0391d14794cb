// The small operations on loops.

#include "zvi/base/Index.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/curves/PointInPolygonDetail.h"
#include "zvi/curves/domains/DomainRulesDetail.h"
#include "zvi/curves/domains/VertexStarsDetail.h"

namespace zvi::lib {

using base::Index;

namespace {

/// The polygon of a loop: its vertices without the repeated last one.
zvi::MArray<T_POINT2D> PolygonOf(zvi::MArray<int> const &loop, zvi::MArray<DM_VTEX> const &coordinates) {
    std::size_t count = loop.Size();
    if (count > 1 && loop[0] == loop[count - 1])
        --count;
    zvi::MArray<T_POINT2D> polygon;
    polygon.Reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        DM_VTEX const &vtex = coordinates[Index(loop[i])];
        polygon.PushBack({vtex.x, vtex.y});
    }
    return polygon;
}

} // namespace

void MDomainMaker::Util_GetConnectedVtexIdx(int vtex, zvi::MArray<int> &out) {
    for (int const edge : VtexEdges[Index(vtex)])
        out.PushBack(curves::FarEnd(EdgeVtex[Index(edge)], vtex));
}

void MDomainMaker::Util_GetInnerVtexIdx(zvi::MArray<int> &loop, zvi::MArray<int> &out) {
    zvi::MHashMap<int, int> onLoop;
    for (int const vtex : loop)
        onLoop.SetAt(vtex, 1);
    zvi::MArray<T_POINT2D> const vertices = PolygonOf(loop, VtexCoord);
    curves::PointInPolygon const polygon(vertices);
    int const count = static_cast<int>(VtexCoord.Size());
    for (int vtex = 0; vtex < count; ++vtex) {
        if (DeadVtex.Lookup(vtex) || onLoop.Lookup(vtex))
            continue;
        if (polygon.Contains({VtexCoord[Index(vtex)].x, VtexCoord[Index(vtex)].y}, 1) != 0)
            out.PushBack(vtex);
    }
}

void MDomainMaker::Util_FillCurvDirArrayInSurf(DM_SURF &surf) {
    surf.CurvDir.Clear();
    std::size_t const count = surf.Curv.Size();
    if (count == 0)
        return;
    auto const edge = [&](std::size_t index) -> std::pair<int, int> const & {
        return EdgeVtex[Index(surf.Curv[index])];
    };
    auto const joins = [](std::pair<int, int> const &ends, int vtex) {
        return ends.first == vtex || ends.second == vtex;
    };
    if (count == 1) {
        surf.CurvDir.PushBack(edge(0).first == surf.Vtex[0] ? 0 : 1);
        return;
    }
    std::pair<int, int> const turned{edge(1).second, edge(1).first};
    if (count == 2 && (edge(0) == edge(1) || edge(0) == turned)) {
        surf.CurvDir.PushBack(0);
        surf.CurvDir.PushBack(edge(0).first == edge(1).first ? 1 : 0);
        return;
    }
    surf.CurvDir.Reserve(count);
    for (std::size_t i = 0; i + 1 < count; ++i)
        surf.CurvDir.PushBack(joins(edge(i + 1), edge(i).first) ? 1 : 0);
    surf.CurvDir.PushBack(joins(edge(count - 2), edge(count - 1).first) ? 0 : 1);
}

void MDomainMaker::Util_FillVtexArrayInSurf(DM_SURF &surf) {
    if (surf.CurvDir.Size() != surf.Curv.Size())
        Util_FillCurvDirArrayInSurf(surf);
    std::size_t const count = surf.Curv.Size();
    if (surf.CurvDir.Size() != count)
        return;
    surf.Vtex.Clear();
    surf.Vtex.Reserve(count + 1);
    auto const start = [&](std::size_t index) {
        auto const &[first, second] = EdgeVtex[Index(surf.Curv[index])];
        return surf.CurvDir[index] == 0 ? first : second;
    };
    auto const end = [&](std::size_t index) { return curves::FarEnd(EdgeVtex[Index(surf.Curv[index])], start(index)); };
    if (count == 2) {
        surf.Vtex = {start(0), end(0), start(0)};
        return;
    }
    for (std::size_t i = 0; i < count; ++i)
        surf.Vtex.PushBack(start(i));
    if (count > 0)
        surf.Vtex.PushBack(end(count - 1));
}

int MDomainMaker::Util_IsPointInSurf(double x, double y, DM_SURF_SUB &loop) {
    zvi::MArray<T_POINT2D> const vertices = PolygonOf(loop.Vtex, VtexCoord);
    return curves::PointInPolygon(vertices).Contains({x, y}, 1);
}

int MDomainMaker::Util_IsPointInSurf(double x, double y, DM_SURF &surf) {
    DM_SURF_SUB &outer = surf;
    if (Util_IsPointInSurf(x, y, outer) == 0)
        return 0;
    for (DM_SURF_SUB &hole : surf.Holes) {
        if (Util_IsPointInSurf(x, y, hole) == 1)
            return 0;
    }
    return 1;
}

double MDomainMaker::Util_CalcAngle(double dx, double dy) {
    return curves::DirectionAngle(dx, dy);
}

} // namespace zvi::lib
