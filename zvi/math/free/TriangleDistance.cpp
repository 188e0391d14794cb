#include "zvi/math/free/TriangleDistance.h"

#include "zvi/core/MVector.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

// Where two triangles are nearest, a corner of one and any place of the other are nearest, or an edge of each between
// its ends, unless an edge pierces the other triangle (C. Ericson, Real-Time Collision Detection, 5.1.10). Each of
// these is tried, and every distance that is taken is one between two real places: rounding can hide a candidate near
// the border of its case, never make a distance too small, and the neighbouring case gives the same there.

namespace zvi::lib {

namespace {

using Point = MVector<double, 3>;
using Corners = std::array<Point, 3>;

double Dot(Point const &p, Point const &q) {
    return p[0] * q[0] + p[1] * q[1] + p[2] * q[2];
}

Point Cross(Point const &p, Point const &q) {
    return {p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2], p[0] * q[1] - p[1] * q[0]};
}

/// A triangle with what is asked of it again and again.
struct Face {
    Corners corners;
    Corners edges;                   ///< from each corner to the next
    std::array<double, 3> lengths{}; ///< squared, of the edges
    Point normal;                    ///< twice the area long
    double normalLength = 0.0;       ///< squared

    explicit Face(Corners const &given) : corners(given) {
        for (std::size_t i = 0; i < 3; ++i) {
            edges[i] = corners[(i + 1) % 3] - corners[i];
            lengths[i] = Dot(edges[i], edges[i]);
        }
        normal = Cross(edges[0], edges[1]);
        normalLength = Dot(normal, normal);
    }

    double Height(Point const &p) const { return Dot(normal, p - corners[0]); }

    /// Whether the foot of the point lies inside, border included; never for a triangle without area.
    bool HoldsFoot(Point const &p) const {
        if (!(normalLength > 0.0))
            return false;
        for (std::size_t i = 0; i < 3; ++i) {
            if (Dot(Cross(edges[i], p - corners[i]), normal) < 0.0)
                return false;
        }
        return true;
    }
};

/// The nearest places met so far.
struct Nearest {
    double squared = std::numeric_limits<double>::infinity();
    Point onFirst;
    Point onSecond;

    /// `isSwapped`: `p` is on the second triangle.
    void Take(Point const &p, Point const &q, bool isSwapped) {
        Point const d = p - q;
        double const candidate = Dot(d, d);
        if (!(candidate < squared))
            return;
        squared = candidate;
        onFirst = isSwapped ? q : p;
        onSecond = isSwapped ? p : q;
    }
};

/// The corners of `one` against all of `other`.
void TakeCorners(Face const &one, Face const &other, bool isSwapped, Nearest &nearest) {
    for (Point const &p : one.corners) {
        for (std::size_t i = 0; i < 3; ++i) {
            double const along = Dot(p - other.corners[i], other.edges[i]);
            double const part = along > 0.0 ? std::min(along / other.lengths[i], 1.0) : 0.0;
            nearest.Take(p, other.corners[i] + other.edges[i] * part, isSwapped);
        }
        if (other.HoldsFoot(p))
            nearest.Take(p, p - other.normal * (other.Height(p) / other.normalLength), isSwapped);
    }
}

/// Two edges between their ends: with u and v along them and w between their begins, the places where the lines are
/// nearest solve s (u.u) - t (u.v) = -w.u, s (u.v) - t (v.v) = -w.v.
void TakeEdges(Face const &first, Face const &second, Nearest &nearest) {
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            Point const w = first.corners[i] - second.corners[j];
            double const uv = Dot(first.edges[i], second.edges[j]);
            double const wu = Dot(w, first.edges[i]);
            double const wv = Dot(w, second.edges[j]);
            double const determinant = first.lengths[i] * second.lengths[j] - uv * uv;
            double const s = uv * wv - second.lengths[j] * wu;
            double const t = first.lengths[i] * wv - uv * wu;
            bool const isBetween = s > 0.0 && s < determinant && t > 0.0 && t < determinant;
            if (isBetween)
                nearest.Take(first.corners[i] + first.edges[i] * (s / determinant),
                             second.corners[j] + second.edges[j] * (t / determinant), false);
        }
    }
}

/// Whether an edge of `one` pierces `other`, and where.
bool Pierces(Face const &one, Face const &other, Point &where) {
    std::array<double, 3> heights{};
    for (std::size_t i = 0; i < 3; ++i)
        heights[i] = other.Height(one.corners[i]);
    for (std::size_t i = 0; i < 3; ++i) {
        double const begin = heights[i];
        double const end = heights[(i + 1) % 3];
        if (!((begin < 0.0 && end > 0.0) || (begin > 0.0 && end < 0.0)))
            continue;
        where = one.corners[i] + one.edges[i] * (begin / (begin - end));
        if (other.HoldsFoot(where))
            return true;
    }
    return false;
}

Nearest NearestOf(Face const &first, Face const &second) {
    Nearest nearest;
    TakeCorners(first, second, false, nearest);
    TakeCorners(second, first, true, nearest);
    TakeEdges(first, second, nearest);
    Point where;
    if (nearest.squared > 0.0 && (Pierces(first, second, where) || Pierces(second, first, where)))
        nearest = {0.0, where, where};
    return nearest;
}

} // namespace

double distance_triangles_3d(double const *a, double const *b, double const *c, double const *d, double const *e,
                             double const *f, double *onFirst, double *onSecond) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    bool isFinite = true;
    for (double const *const corner : {a, b, c, d, e, f})
        isFinite = isFinite && std::isfinite(corner[0]) && std::isfinite(corner[1]) && std::isfinite(corner[2]);
    Nearest nearest{kNan, {kNan, kNan, kNan}, {kNan, kNan, kNan}};
    if (isFinite)
        nearest = NearestOf(Face({Point::FromArray(a), Point::FromArray(b), Point::FromArray(c)}),
                            Face({Point::FromArray(d), Point::FromArray(e), Point::FromArray(f)}));
    if (onFirst)
        std::copy_n(nearest.onFirst.Data(), 3, onFirst);
    if (onSecond)
        std::copy_n(nearest.onSecond.Data(), 3, onSecond);
    return std::sqrt(nearest.squared);
}

} // namespace zvi::lib
