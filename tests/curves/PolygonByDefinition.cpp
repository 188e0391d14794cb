#include "tests/curves/PolygonByDefinition.h"

#include "zvi/math/small/MMatrixLib.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib::test {

namespace {

double DistanceToSegment(T_POINT2D const &a, T_POINT2D const &b, T_POINT2D const &p) {
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    double const squared = dx * dx + dy * dy;
    double t = squared > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / squared : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return std::hypot((p.x - a.x) - t * dx, (p.y - a.y) - t * dy);
}

/// Below, on or above the line: -1, 0, 1.
int SideOf(double height, double line) {
    return std::fabs(height - line) <= 1e-10 ? 0 : height >= line ? 1 : -1;
}

int Crossings(T_LINE2D const &line, Polygon const &polygon) {
    double m[3][3];
    MMatrixLib::RotateM2D(-MMatrixLib::CalcAngleDegLineAndAxisX(line.x1, line.y1, line.x2, line.y2), line.x1, line.y1,
                          m);
    std::size_t const n = polygon.Size();
    auto const side = [&](std::size_t i) {
        return SideOf(polygon[i % n].x * m[0][1] + polygon[i % n].y * m[1][1] + m[2][1], line.y1);
    };
    int count = 0;
    for (std::size_t i = 0; i < n; ++i) {
        T_POINT2D const &start = polygon[i], &end = polygon[(i + 1) % n];
        int const code = MGeomFunc::GetTopologyOfTwoLines(line, {start.x, start.y, end.x, end.y});
        if (code == 9)
            ++count;
        if (code != 7 && code != 10 && code != 12)
            continue;
        int const before = side(i + n - 1), after = side(i + 1);
        // A vertex that only touches the line counts twice; to an edge along it, what lies on it belongs above.
        bool const touches = before > 0 ? after >= 0 : before < 0 && after < 0;
        count += touches ? 2 : 1;
    }
    return count;
}

} // namespace

double DistanceToBorder(T_POINT2D const &p, Polygon const &polygon) {
    double nearest = HUGE_VAL;
    for (std::size_t i = 0; i < polygon.Size(); ++i)
        nearest = std::min(nearest, DistanceToSegment(polygon[i], polygon[(i + 1) % polygon.Size()], p));
    return nearest;
}

int ContainsByDefinition(T_POINT2D const &p, Polygon const &polygon, int closed) {
    T_REGION2D box;
    if (polygon.Size() < 3 || MGeomFunc::GetMBR(polygon, box) == 0 || MGeomFunc::IsPointInRegion2(p, box, closed) == 0)
        return 0;
    if (DistanceToBorder(p, polygon) <= 1e-10)
        return closed != 0 ? 1 : 0;
    return Crossings({p.x, p.y, box.MinX - 1.0, p.y}, polygon) % 2;
}

} // namespace zvi::lib::test
