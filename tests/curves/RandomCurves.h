#pragma once

#include "zvi/curves/DomainRecords.h"

#include <random>
#include <string>
#include <vector>

namespace zvi::lib::test {

/// One call to the domain maker: a straight curve of two points, or a polyline fed by `AddCurvedCurvOnce`.
struct InputCurve {
    unsigned int id = 0;
    std::vector<DM_VTEX> points;
    bool isMidPoints = false; ///< `points` go to `AddCurvMidPoint` instead
};

using CurveSet = std::vector<InputCurve>;

/// Kinds of random input. All of them are small, so that an error shows in a picture that can be drawn by hand.
enum class CurveKind {
    kGrid,    ///< a triangulated grid with jittered points, some edges left out: planar, with tails and bridges
    kLattice, ///< edges of an integer lattice: many equal x and horizontal edges
    kTangle,  ///< segments between random points: crossings uncut
    kSlivers, ///< a grid pressed flat, so that edges run along one another
    kNest,    ///< polygons within and beside one another, some joined by a bridge or in one vertex
    kCactus,  ///< loops strung together in single vertices and by tails
    kFan,     ///< spokes and rims about a few hubs
    kCount
};

std::string NameOf(CurveKind kind);

/// A random input of `kind`; `size` is roughly the number of points along a side. Some curves are refined with mid
/// points, repeated, turned round or shrunk to a point, and the order is shuffled.
CurveSet MakeRandomCurves(CurveKind kind, int size, std::mt19937 &random);

} // namespace zvi::lib::test
