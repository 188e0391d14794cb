#include "apps/zvi/domains/geometry/BulgeArc.h"

#include "zvi/math/elementary/Elementary.h"

#include <cassert>
#include <cmath>

namespace zvi::app {

bool IsStraightBulge(double bulge) {
    return std::abs(bulge) < kStraightBulge;
}

BulgeArc ArcOfBulge(Point3 const &start, Point3 const &end, double bulge) {
    assert(!IsStraightBulge(bulge) && (start.x != end.x || start.y != end.y));
    double const off = (1.0 / bulge - bulge) / 4.0;
    BulgeArc arc;
    arc.center = {(start.x + end.x) / 2.0 - (end.y - start.y) * off, (start.y + end.y) / 2.0 + (end.x - start.x) * off,
                  start.z};
    arc.radius = lib::Hypot(start.x - arc.center.x, start.y - arc.center.y);
    arc.from = lib::Atan2(start.y - arc.center.y, start.x - arc.center.x);
    arc.sweep = 4.0 * lib::Atan(bulge);
    return arc;
}

} // namespace zvi::app
