#include "zvi/spatial/FindBodyContacts.h"

#include "zvi/base/DisjointSets.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/free/Triangle.h"
#include "zvi/spatial/CTriangleSpatialIndex.h"
#include "zvi/spatial/triangles/PairCollectorDetail.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <span>
#include <utility>

namespace zvi::lib {

namespace {

using Point = MVector<double, 3>;
using spatial::PlacedTriangle;
using spatial::TrianglePair;

bool IsFinite(BodyTriangle const &triangle) {
    return std::all_of(triangle.begin(), triangle.end(), [](Point const &p) {
        return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
    });
}

/// The smallest box of boxes.
struct Extent {
    Point low{kInfinity, kInfinity, kInfinity};
    Point high{-kInfinity, -kInfinity, -kInfinity};

    static constexpr double kInfinity = std::numeric_limits<double>::infinity();

    void Add(Point const &p) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], p[axis]);
            high[axis] = std::max(high[axis], p[axis]);
        }
    }
    /// The longest side; halved coordinates cannot overflow.
    double HalfLength() const {
        Point const half = high * 0.5 - low * 0.5;
        return std::max({half[0], half[1], half[2]});
    }
};

std::vector<PlacedTriangle> AllOf(std::vector<TriangleBody> const &bodies) {
    std::vector<PlacedTriangle> all;
    for (std::size_t body = 0; body < bodies.size(); ++body) {
        for (std::size_t number = 0; number < bodies[body].size(); ++number) {
            BodyTriangle const &triangle = bodies[body][number];
            if (!IsFinite(triangle))
                continue;
            Extent extent;
            for (Point const &corner : triangle)
                extent.Add(corner);
            all.push_back({&triangle, static_cast<int>(body), static_cast<int>(number), extent.low, extent.high});
        }
    }
    return all;
}

/// Brings all coordinates into a cube of edge 1 around the origin, where `float` is at its best.
class Frame {
public:
    explicit Frame(std::vector<PlacedTriangle> const &triangles) {
        Extent extent;
        for (PlacedTriangle const &triangle : triangles) {
            extent.Add(triangle.low);
            extent.Add(triangle.high);
        }
        m_center = extent.low * 0.5 + extent.high * 0.5;
        double const half = extent.HalfLength();
        m_scale = half > 0.0 && std::isfinite(half) ? std::ldexp(0.5, -std::ilogb(half) - 1) : 1.0;
    }

    double Scaled(double length) const { return length * m_scale; }

    std::array<float, 3> Placed(Point const &p) const {
        std::array<float, 3> placed{};
        for (std::size_t axis = 0; axis < 3; ++axis)
            placed[axis] = static_cast<float>((p[axis] - m_center[axis]) * m_scale);
        return placed;
    }

private:
    Point m_center;
    double m_scale = 1.0;
};

/// What rounding to `float` may move a corner by in the frame, cells included.
constexpr double kFloatRounding = 1e-6;

/// A cell's edge as a multiple of the mean length of a triangle's box.
constexpr double kTrianglesPerCell = 3.0;

/// Cells along the longest axis for a number of triangles: about two cells for each triangle, were they strewn evenly.
long DivisionsFor(std::size_t count) {
    return std::clamp(std::lround(Pow(2.0 * static_cast<double>(count), 1.0 / 3.0)), 1L, 400L);
}

void Search(std::vector<PlacedTriangle> &triangles, double tolerance, spatial::PairCollector &collector) {
    Frame const frame(triangles);
    double meanLength = 0.0;
    for (PlacedTriangle const &triangle : triangles) {
        Extent const extent{triangle.low, triangle.high};
        meanLength += frame.Scaled(2.0 * extent.HalfLength()) / static_cast<double>(triangles.size());
    }
    // A tolerance beyond the frame reaches everything anyway.
    double const reach = std::min(frame.Scaled(tolerance), 4.0);
    auto const grown = static_cast<float>(reach / 2 + kFloatRounding);
    auto const leastCell = static_cast<float>(std::max(kTrianglesPerCell * meanLength, 2.0 * reach));
    float const edge = 0.5f + grown;
    float const box[] = {-edge, -edge, -edge, edge, edge, edge};
    CTriangleSpatialIndex index(box, DivisionsFor(triangles.size()), leastCell);
    for (PlacedTriangle &triangle : triangles) {
        BodyTriangle const &corners = *triangle.corners;
        index.Insert(frame.Placed(corners[0]).data(), frame.Placed(corners[1]).data(), frame.Placed(corners[2]).data(),
                     triangle.body, grown, &triangle);
    }
    index.FindTriWithinTol(static_cast<float>(reach), &collector);
}

/// Puts the triangles of one contact together to patches.
class PatchMaker {
public:
    PatchMaker(std::vector<PlacedTriangle> const &all, std::span<TrianglePair const> pairs)
        : m_all(all), m_pairs(pairs), m_used(UsedBy(pairs)), m_sets(m_used.size()) {
        for (TrianglePair const &pair : pairs)
            m_sets.Unite(PlaceOf(pair.first), PlaceOf(pair.second));
        UniteNeighbours();
    }

    std::vector<ContactPatch> Patches() {
        std::vector<ContactPatch> patches;
        std::vector<int> patchOf(m_used.size(), -1);
        for (std::size_t i = 0; i < m_used.size(); ++i) {
            int &patch = patchOf[base::Index(m_sets.Find(static_cast<int>(i)))];
            if (patch < 0) {
                patch = static_cast<int>(patches.size());
                patches.emplace_back().smallestGap = std::numeric_limits<double>::infinity();
            }
            AddTo(patches[base::Index(patch)], m_all[m_used[i]]);
        }
        for (TrianglePair const &pair : m_pairs) {
            ContactPatch &patch = patches[base::Index(patchOf[base::Index(m_sets.Find(PlaceOf(pair.first)))])];
            patch.smallestGap = std::min(patch.smallestGap, pair.distance);
        }
        return patches;
    }

private:
    static std::vector<std::uint32_t> UsedBy(std::span<TrianglePair const> pairs) {
        std::vector<std::uint32_t> used;
        for (TrianglePair const &pair : pairs)
            used.insert(used.end(), {pair.first, pair.second});
        std::sort(used.begin(), used.end());
        used.erase(std::unique(used.begin(), used.end()), used.end());
        return used;
    }

    int PlaceOf(std::uint32_t triangle) const {
        return static_cast<int>(std::lower_bound(m_used.begin(), m_used.end(), triangle) - m_used.begin());
    }

    /// Triangles of one body with a common corner.
    void UniteNeighbours() {
        std::map<std::array<double, 4>, int> firstAt;
        for (std::size_t i = 0; i < m_used.size(); ++i) {
            PlacedTriangle const &triangle = m_all[m_used[i]];
            for (Point const &p : *triangle.corners) {
                auto const [place, isNew] =
                    firstAt.try_emplace({static_cast<double>(triangle.body), p[0], p[1], p[2]}, static_cast<int>(i));
                if (!isNew)
                    m_sets.Unite(place->second, static_cast<int>(i));
            }
        }
    }

    void AddTo(ContactPatch &patch, PlacedTriangle const &triangle) const {
        std::size_t const side = triangle.body == m_all[m_pairs.front().first].body ? 0 : 1;
        BodyTriangle const &corners = *triangle.corners;
        patch.triangles[side].push_back(triangle.number);
        patch.areas[side] += triangle_area_3d(corners[0].Data(), corners[1].Data(), corners[2].Data());
    }

    std::vector<PlacedTriangle> const &m_all;
    std::span<TrianglePair const> m_pairs;
    std::vector<std::uint32_t> m_used; ///< the triangles of the contact, ascending
    base::DisjointSets m_sets;         ///< of places in `m_used`
};

BodyContact ContactOf(std::vector<PlacedTriangle> const &all, std::span<TrianglePair const> pairs) {
    TrianglePair const &nearest =
        *std::min_element(pairs.begin(), pairs.end(),
                          [](TrianglePair const &p, TrianglePair const &q) { return p.distance < q.distance; });
    BodyContact contact;
    contact.bodies = {all[nearest.first].body, all[nearest.second].body};
    contact.pairCount = pairs.size();
    contact.smallestGap = spatial::DistanceOf(*all[nearest.first].corners, *all[nearest.second].corners,
                                              &contact.nearest[0], &contact.nearest[1]);
    contact.patches = PatchMaker(all, pairs).Patches();
    return contact;
}

} // namespace

BodyContacts FindBodyContacts(std::vector<TriangleBody> const &bodies, double tolerance, std::size_t mostPairs) {
    std::vector<PlacedTriangle> all = AllOf(bodies);
    spatial::PairCollector collector(all, tolerance, mostPairs);
    if (all.empty() || !(tolerance >= 0.0))
        return {};
    try {
        Search(all, tolerance, collector);
    } catch (spatial::TooManyPairs) {
        return {{}, false};
    }
    std::vector<TrianglePair> pairs = collector.Sorted();
    if (pairs.size() > mostPairs)
        return {{}, false};
    auto const bodiesOf = [&all](TrianglePair const &pair) {
        return std::pair(all[pair.first].body, all[pair.second].body);
    };
    std::stable_sort(pairs.begin(), pairs.end(),
                     [&](TrianglePair const &p, TrianglePair const &q) { return bodiesOf(p) < bodiesOf(q); });
    BodyContacts result;
    for (auto begin = pairs.begin(); begin != pairs.end();) {
        auto const end = std::find_if(begin, pairs.end(),
                                      [&](TrianglePair const &pair) { return bodiesOf(pair) != bodiesOf(*begin); });
        result.contacts.push_back(ContactOf(all, {begin, end}));
        begin = end;
    }
    return result;
}

} // namespace zvi::lib
