#include "zvi/curves/PreparedPolygon.h"

#include "zvi/base/Buckets.h"
#include "zvi/base/Index.h"
#include "zvi/curves/PointInPolygonDetail.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

namespace zvi::lib {

namespace {

/// Strips hold each edge about so many times in all, or fewer.
constexpr double kEntriesOfEdge = 4.0;

} // namespace

/// The edges by the strips of height that they come near.
class PreparedPolygon::Strips {
public:
    explicit Strips(MArray<T_POINT2D> const &polygon)
        : m_vertices(polygon.Data(), polygon.Data() + polygon.Size()), m_test(m_vertices.data(), m_vertices.size()) {
        T_REGION2D const &box = m_test.Box();
        double const height = box.MaxY - box.MinY;
        m_low = box.MinY;
        m_isUsed =
            m_vertices.size() > 2 && height > 0.0 && std::isfinite(m_test.Reach()) &&
            std::all_of(m_vertices.begin(), m_vertices.end(), [](T_POINT2D const &v) { return std::isfinite(v.y); });
        if (m_isUsed)
            Distribute(height);
    }

    int Contains(T_POINT2D const &p, int closed) const {
        if (!m_isUsed || !std::isfinite(p.y))
            return m_test.Contains(p, closed);
        std::size_t const strip = StripOf(p.y);
        return m_test.ContainsAmong(p, closed,
                                    std::span(m_edges).subspan(m_begins[strip], m_begins[strip + 1] - m_begins[strip]));
    }

private:
    /// The lower and the upper end of an edge.
    std::pair<double, double> RangeOf(std::size_t edge) const {
        double const a = m_vertices[edge].y, b = m_vertices[edge + 1 == m_vertices.size() ? 0 : edge + 1].y;
        return {std::min(a, b), std::max(a, b)};
    }

    std::size_t StripOf(double y) const {
        return static_cast<std::size_t>(std::clamp((y - m_low) * m_stripsOfUnit, 0.0, m_count - 1.0));
    }

    void Distribute(double height) {
        double heights = 0.0;
        for (std::size_t edge = 0; edge < m_vertices.size(); ++edge)
            heights += RangeOf(edge).second - RangeOf(edge).first;
        double const edges = static_cast<double>(m_vertices.size());
        m_count = std::max(1.0, std::floor((kEntriesOfEdge - 1.0) * edges * (height / heights)));
        m_stripsOfUnit = m_count / height;
        std::vector<std::pair<std::size_t, int>> entries; // strip, edge
        for (std::size_t edge = 0; edge < m_vertices.size(); ++edge) {
            auto const [low, high] = RangeOf(edge);
            for (std::size_t s = StripOf(low - Reach()), last = StripOf(high + Reach()); s <= last; ++s)
                entries.emplace_back(s, static_cast<int>(edge));
        }
        m_begins.assign(static_cast<std::size_t>(m_count) + 1, 0);
        m_edges.resize(entries.size());
        base::SortIntoBuckets(
            entries.size(), std::span(m_begins), [&](std::size_t i) { return entries[i].first; },
            [&](std::size_t place, std::size_t i) { m_edges[place] = entries[i].second; });
    }

    /// Twice what the test asks for, so that rounding of a strip does not count.
    double Reach() const { return 2.0 * m_test.Reach(); }

    std::vector<T_POINT2D> m_vertices;
    curves::PointInPolygon m_test;
    bool m_isUsed = false;
    double m_low = 0.0;
    double m_count = 1.0;
    double m_stripsOfUnit = 0.0;
    std::vector<std::size_t> m_begins; ///< of each strip, in `m_edges`, and the end
    std::vector<int> m_edges;
};

PreparedPolygon::PreparedPolygon(MArray<T_POINT2D> const &polygon) : m_strips(std::make_unique<Strips>(polygon)) {}
PreparedPolygon::~PreparedPolygon() = default;
PreparedPolygon::PreparedPolygon(PreparedPolygon &&other) noexcept = default;
PreparedPolygon &PreparedPolygon::operator=(PreparedPolygon &&other) noexcept = default;

int PreparedPolygon::IsPointInPolygon2(T_POINT2D const &p, int closed) const {
    return m_strips ? m_strips->Contains(p, closed) : 0;
}

} // namespace zvi::lib
