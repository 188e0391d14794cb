#pragma once

#include "zvi/Export.h"
#include "zvi/core/MVector.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zvi::lib {

/// Three corners of space.
using BodyTriangle = std::array<MVector<double, 3>, 3>;

/// A body: the triangles of its surface, in any order and direction, with gaps or without.
using TriangleBody = std::vector<BodyTriangle>;

/// A place where two bodies are in contact: triangles that hang together, by shared corners within a body and by
/// pairs in contact between the two.
struct ContactPatch {
    std::array<std::vector<int>, 2> triangles; ///< of the first and of the second body, by number, ascending
    std::array<double, 2> areas{};             ///< of those triangles, whole
    double smallestGap = 0.0;                  ///< smallest distance of its pairs
};

/// What two bodies have to do with each other.
struct BodyContact {
    std::array<int, 2> bodies{};               ///< their numbers, the smaller one first
    std::uint64_t pairCount = 0;               ///< pairs of triangles within the tolerance, each once
    double smallestGap = 0.0;                  ///< smallest distance among them, 0 where the bodies meet
    std::array<MVector<double, 3>, 2> nearest; ///< places on both that are so near to each other
    std::vector<ContactPatch> patches;         ///< by the first triangle of the first body
};

/// Contacts of several bodies.
struct BodyContacts {
    std::vector<BodyContact> contacts; ///< by the numbers of their bodies
    bool isComplete = true;            ///< false, and no contacts, when there are too many pairs
};

/// Finds the triangles of different bodies that are within `tolerance` of each other, exactly so far counts; the
/// distance is the true one of the triangles (`distance_triangles_3d`). Triangles with a coordinate that is not finite
/// are left out, others may be degenerate; a tolerance that is negative or no number finds nothing. The progress bar of
/// the process is told (see `CTriangleSpatialIndex`).
///
/// Time grows with the number of triangles and of pairs; bodies that are near each other everywhere, as measured by
/// the tolerance, have as many pairs as the product of their triangles. Memory grows with the number of pairs, which
/// may be `mostPairs`.
ZVI_API BodyContacts FindBodyContacts(std::vector<TriangleBody> const &bodies, double tolerance,
                                      std::size_t mostPairs = std::size_t{50'000'000});

} // namespace zvi::lib
