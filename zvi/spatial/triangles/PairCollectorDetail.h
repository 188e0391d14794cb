#pragma once

#include "zvi/spatial/FindBodyContacts.h"
#include "zvi/spatial/ICompTri.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zvi::lib::spatial {

/// A triangle of a body, with its box.
struct PlacedTriangle {
    BodyTriangle const *corners;
    int body;
    int number; ///< in its body
    MVector<double, 3> low;
    MVector<double, 3> high;
};

/// Two triangles in contact, by their places in the list of all; the one of the earlier body first.
struct TrianglePair {
    std::uint32_t first;
    std::uint32_t second;
    double distance;
};

/// Raised by a search that comes to more pairs than are wanted.
struct TooManyPairs {};

/// Compares the triangles that a `CTriangleSpatialIndex` holds as pointers to `PlacedTriangle`, and keeps the pairs in
/// contact.
class PairCollector final : public ICompTri {
public:
    PairCollector(std::vector<PlacedTriangle> const &triangles, double tolerance, std::size_t mostPairs)
        : m_triangles(triangles), m_tolerance(tolerance), m_mostPairs(mostPairs) {}

    int Compare(void *item1, void *item2, float tol) override;
    void Report(void *item1, void *item2) override;
    int GetTriangle(void *item, float *a, float *b, float *c, float *normal) override;

    /// The pairs, each once, by their first and then their second triangle.
    std::vector<TrianglePair> const &Sorted();

private:
    /// A pair that was measured not long ago: it is met again in the next cells.
    struct Measured {
        TrianglePair pair{UINT32_MAX, UINT32_MAX, 0.0};
    };

    TrianglePair PairOf(void const *item1, void const *item2) const;
    double DistanceOf(TrianglePair pair);

    static constexpr std::size_t kRemembered = std::size_t{1} << 14;

    std::vector<PlacedTriangle> const &m_triangles;
    double m_tolerance;
    std::size_t m_mostPairs;
    std::vector<Measured> m_measured = std::vector<Measured>(kRemembered);
    std::vector<TrianglePair> m_pairs;
    std::size_t m_nextTidying = std::size_t{1} << 20; ///< number of pairs, repeats included, at which they go
};

/// Distance of two triangles with a nearest place on each.
double DistanceOf(BodyTriangle const &first, BodyTriangle const &second, MVector<double, 3> *onFirst = nullptr,
                  MVector<double, 3> *onSecond = nullptr);

} // namespace zvi::lib::spatial
