#include "zvi/spatial/triangles/PairCollectorDetail.h"

#include "zvi/base/HashMix.h"
#include "zvi/math/free/TriangleDistance.h"

#include <algorithm>
#include <utility>

namespace zvi::lib::spatial {

namespace {

/// Squared distance of the boxes: no triangles in them are nearer.
double BoxGap(PlacedTriangle const &first, PlacedTriangle const &second) {
    double sum = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        double const gap = std::max({first.low[axis] - second.high[axis], second.low[axis] - first.high[axis], 0.0});
        sum += gap * gap;
    }
    return sum;
}

bool IsBefore(TrianglePair const &p, TrianglePair const &q) {
    return std::pair(p.first, p.second) < std::pair(q.first, q.second);
}

bool IsSame(TrianglePair const &p, TrianglePair const &q) {
    return p.first == q.first && p.second == q.second;
}

} // namespace

double DistanceOf(BodyTriangle const &first, BodyTriangle const &second, MVector<double, 3> *onFirst,
                  MVector<double, 3> *onSecond) {
    return distance_triangles_3d(first[0].Data(), first[1].Data(), first[2].Data(), second[0].Data(), second[1].Data(),
                                 second[2].Data(), onFirst ? onFirst->Data() : nullptr,
                                 onSecond ? onSecond->Data() : nullptr);
}

TrianglePair PairCollector::PairOf(void const *item1, void const *item2) const {
    auto first = static_cast<PlacedTriangle const *>(item1) - m_triangles.data();
    auto second = static_cast<PlacedTriangle const *>(item2) - m_triangles.data();
    if (second < first)
        std::swap(first, second); // bodies come one behind the other
    return {static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(second), 0.0};
}

double PairCollector::DistanceOf(TrianglePair pair) {
    std::uint32_t const hash = base::HighHalf(base::Mix(base::Mix(0, pair.first), pair.second));
    TrianglePair &known = m_measured[hash % kRemembered].pair;
    if (!IsSame(known, pair)) {
        pair.distance = spatial::DistanceOf(*m_triangles[pair.first].corners, *m_triangles[pair.second].corners);
        known = pair;
    }
    return known.distance;
}

int PairCollector::Compare(void *item1, void *item2, float) {
    /// Part by which a box may seem farther away than it is.
    constexpr double kRounding = 1e-12;
    TrianglePair const pair = PairOf(item1, item2);
    double const gap = BoxGap(m_triangles[pair.first], m_triangles[pair.second]);
    if (gap * (1.0 - kRounding) > m_tolerance * m_tolerance)
        return 0;
    return DistanceOf(pair) <= m_tolerance ? 1 : 0;
}

void PairCollector::Report(void *item1, void *item2) {
    TrianglePair pair = PairOf(item1, item2);
    pair.distance = DistanceOf(pair);
    m_pairs.push_back(pair);
    if (m_pairs.size() < m_nextTidying)
        return;
    Sorted();
    if (m_pairs.size() > m_mostPairs)
        throw TooManyPairs();
    m_nextTidying = std::max(m_nextTidying, 2 * m_pairs.size());
}

int PairCollector::GetTriangle(void *, float *, float *, float *, float *) {
    return 0;
}

std::vector<TrianglePair> const &PairCollector::Sorted() {
    std::sort(m_pairs.begin(), m_pairs.end(), IsBefore);
    m_pairs.erase(std::unique(m_pairs.begin(), m_pairs.end(), IsSame), m_pairs.end());
    return m_pairs;
}

} // namespace zvi::lib::spatial
