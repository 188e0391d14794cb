#pragma once

#include "zvi/math/free/TriangleDistance.h"
#include "zvi/spatial/FindBodyContacts.h"

#include <cstddef>

namespace zvi::lib::test {

/// A cube of edge 2 around the middle, two triangles a side.
inline TriangleBody CubeAt(MVector<double, 3> const &middle) {
    TriangleBody body;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        for (double const side : {-1.0, 1.0}) {
            auto const corner = [&](double u, double v) {
                MVector<double, 3> p;
                p[axis] = side;
                p[(axis + 1) % 3] = u;
                p[(axis + 2) % 3] = v;
                return middle + p;
            };
            body.push_back({corner(-1, -1), corner(1, -1), corner(1, 1)});
            body.push_back({corner(-1, -1), corner(1, 1), corner(-1, 1)});
        }
    }
    return body;
}

inline double DistanceOf(BodyTriangle const &t, BodyTriangle const &u) {
    return distance_triangles_3d(t[0].Data(), t[1].Data(), t[2].Data(), u[0].Data(), u[1].Data(), u[2].Data());
}

} // namespace zvi::lib::test
