#include "zvi/curves/PreparedPolygon.h"

#include "zvi/base/Buckets.h"
#include "zvi/base/Index.h"
#include "zvi/curves/PointInPolygonDetail.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

namespace zvi::lib {

namespace {

/// How many strips, or groups of them, make a group of the next level.
constexpr std::size_t kFan = 32;

/// Equal strips hold each edge about so many times in all, or fewer. They will do as long as one holds no more edges
/// than this on average.
constexpr double kEntriesOfEdge = 4.0, kFewEdges = 24.0;

/// Levels that are enough for as many edges as there are numbers.
constexpr std::size_t kMostLevels = 8;

} // namespace

/// The edges by equal strips of height that they come near. Where those hold many edges, for the polygon is jagged:
/// the edges by strips of height between their ends, and by groups of neighbouring strips: an edge is held by the
/// largest groups that it passes from below to above. Those stand from left to right as long as they do not cross. What
/// ends in a strip, or is too flat, is held apart.
class PreparedPolygon::Strips {
public:
    explicit Strips(MArray<T_POINT2D> const &polygon)
        : m_vertices(polygon.Data(), polygon.Data() + polygon.Size()), m_test(m_vertices.data(), m_vertices.size()) {
        m_isUsed =
            m_vertices.size() > 2 && std::isfinite(m_test.Reach()) &&
            std::all_of(m_vertices.begin(), m_vertices.end(), [](T_POINT2D const &v) { return std::isfinite(v.y); });
        if (!m_isUsed)
            return;
        DivideEqually();
        if (kEntriesOfEdge * static_cast<double>(m_vertices.size()) > kFewEdges * m_steps)
            DivideAtEnds();
        Distribute();
        OrderPassing();
    }

    int Contains(T_POINT2D const &p, int closed) const {
        if (!m_isUsed || !std::isfinite(p.y))
            return m_test.Contains(p, closed);
        std::array<curves::PointInPolygon::EdgeList, 2 * kMostLevels> lists;
        std::size_t count = 0;
        if (m_bounds.empty() || (p.y >= m_bounds.front() && p.y < m_bounds.back())) {
            std::size_t index = StripOf(p.y);
            for (std::size_t const begin : m_levels) {
                std::size_t const node = begin + index;
                if (std::span<int const> const passing = EdgesOf(ListOf(node, true)); !passing.empty())
                    lists[count++] = {passing, m_isOrdered[node]};
                if (std::span<int const> const others = EdgesOf(ListOf(node, false)); !others.empty())
                    lists[count++] = {others, false};
                index /= kFan;
            }
        }
        return m_test.ContainsAmong(p, closed, std::span(lists).first(count));
    }

private:
    using Entries = std::vector<std::pair<std::size_t, int>>; // list, edge

    /// Each node has a list of edges that pass it, and one of others.
    static std::size_t ListOf(std::size_t node, bool isPassing) { return 2 * node + (isPassing ? 0 : 1); }
    std::span<int const> EdgesOf(std::size_t list) const {
        return {m_edges.begin() + m_begins[list], m_edges.begin() + m_begins[list + 1]};
    }

    /// The lower and the upper end of an edge.
    std::pair<double, double> RangeOf(std::size_t edge) const {
        assert(edge < m_vertices.size());
        return std::minmax({m_vertices[edge].y, m_vertices[edge + 1 == m_vertices.size() ? 0 : edge + 1].y});
    }

    /// Twice what the test asks for, so that rounding of a strip does not count.
    double Reach() const { return 2.0 * m_test.Reach(); }

    void DivideEqually() {
        double heights = 0.0;
        for (std::size_t edge = 0; edge < m_vertices.size(); ++edge)
            heights += RangeOf(edge).second - RangeOf(edge).first;
        double const height = m_test.Box().MaxY - m_test.Box().MinY, edges = static_cast<double>(m_vertices.size());
        m_low = m_test.Box().MinY;
        m_steps = heights > 0.0 ? std::max(1.0, std::floor((kEntriesOfEdge - 1.0) * edges * (height / heights))) : 1.0;
        m_stepsOfUnit = height > 0.0 ? m_steps / height : 0.0;
        m_levels = {0};
        m_nodes = static_cast<std::size_t>(m_steps);
    }

    /// Strips as high as the reach round the vertices, and others between them.
    void DivideAtEnds() {
        for (T_POINT2D const &v : m_vertices)
            for (double const y : {v.y - Reach(), v.y + Reach()})
                m_bounds.push_back(y);
        std::sort(m_bounds.begin(), m_bounds.end());
        m_bounds.erase(std::unique(m_bounds.begin(), m_bounds.end()), m_bounds.end());
        m_low = m_bounds.front();
        m_steps = static_cast<double>(m_bounds.size());
        m_stepsOfUnit = m_steps / (m_bounds.back() - m_low);
        m_firstOfStep.assign(m_bounds.size() + 1, 0);
        for (double const bound : m_bounds)
            ++m_firstOfStep[StepOf(bound) + 1];
        for (std::size_t i = 1; i < m_firstOfStep.size(); ++i)
            m_firstOfStep[i] += m_firstOfStep[i - 1];
        m_levels.clear();
        m_nodes = 0;
        for (std::size_t count = m_bounds.size() - 1;; count = (count + kFan - 1) / kFan) {
            m_levels.push_back(m_nodes);
            m_nodes += count;
            if (count <= kFan)
                break;
        }
    }

    std::size_t StepOf(double y) const {
        return static_cast<std::size_t>(std::clamp((y - m_low) * m_stepsOfUnit, 0.0, m_steps - 1.0));
    }

    /// The strip of a height; of strips between ends, one from the first bound on.
    std::size_t StripOf(double y) const {
        assert(m_bounds.empty() || y >= m_bounds.front());
        std::size_t const step = StepOf(y);
        if (m_bounds.empty())
            return step;
        auto const begin = m_bounds.begin() + m_firstOfStep[step], end = m_bounds.begin() + m_firstOfStep[step + 1];
        return static_cast<std::size_t>(std::upper_bound(begin, end, y) - m_bounds.begin()) - 1;
    }

    /// Adds an edge to the largest groups between two heights that are bounds.
    void Add(int edge, double low, double high, bool isPassing, Entries &entries) const {
        std::size_t begin = StripOf(low), end = StripOf(high);
        for (std::size_t level = 0; begin < end; ++level, begin /= kFan, end /= kFan) {
            bool const isTop = level + 1 == m_levels.size();
            for (; begin < end && (isTop || begin % kFan != 0); ++begin)
                entries.emplace_back(ListOf(m_levels[level] + begin, isPassing), edge);
            for (; begin < end && end % kFan != 0; --end)
                entries.emplace_back(ListOf(m_levels[level] + end - 1, isPassing), edge);
        }
    }

    void Distribute() {
        Entries entries;
        for (std::size_t i = 0; i < m_vertices.size(); ++i) {
            auto const [low, high] = RangeOf(i);
            int const edge = static_cast<int>(i);
            if (m_bounds.empty()) {
                for (std::size_t s = StripOf(low - Reach()), last = StripOf(high + Reach()); s <= last; ++s)
                    entries.emplace_back(ListOf(s, false), edge);
            } else if (low + Reach() < high - Reach() && m_test.IsSteep(i)) {
                Add(edge, low - Reach(), low + Reach(), false, entries);
                Add(edge, low + Reach(), high - Reach(), true, entries);
                Add(edge, high - Reach(), high + Reach(), false, entries);
            } else {
                Add(edge, low - Reach(), high + Reach(), false, entries);
            }
        }
        m_begins.assign(2 * m_nodes + 1, 0);
        m_edges.resize(entries.size());
        base::SortIntoBuckets(
            entries.size(), std::span(m_begins), [&](std::size_t i) { return entries[i].first; },
            [&](std::size_t place, std::size_t i) { m_edges[place] = entries[i].second; });
    }

    double XAt(int edge, double y) const {
        T_POINT2D const &a = m_vertices[base::Index(edge)];
        T_POINT2D const &b = m_vertices[base::Index(edge) + 1 == m_vertices.size() ? 0 : base::Index(edge) + 1];
        return a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y));
    }

    /// Orders what passes each group from left to right, and finds out where edges cross, so that there is no order.
    void OrderPassing() {
        m_isOrdered.assign(m_nodes, true);
        if (m_bounds.empty())
            return;
        std::vector<std::pair<double, int>> order;
        std::size_t width = 1;
        for (std::size_t level = 0; level < m_levels.size(); ++level, width *= kFan) {
            std::size_t const end = level + 1 < m_levels.size() ? m_levels[level + 1] : m_nodes;
            for (std::size_t node = m_levels[level]; node < end; ++node) {
                auto const begin = m_edges.begin() + m_begins[ListOf(node, true)];
                std::span const edges(begin, m_edges.begin() + m_begins[ListOf(node, true) + 1]);
                std::size_t const first = (node - m_levels[level]) * width;
                double const low = m_bounds[first], high = m_bounds[std::min(first + width, m_bounds.size() - 1)];
                order.clear();
                for (int const edge : edges)
                    order.emplace_back(XAt(edge, low), edge);
                std::sort(order.begin(), order.end());
                double farthest = -HUGE_VAL;
                for (std::size_t i = 0; i < order.size(); ++i) {
                    edges[i] = order[i].second;
                    double const x = XAt(edges[i], high);
                    m_isOrdered[node] = m_isOrdered[node] && x >= farthest - m_test.Slack();
                    farthest = std::max(farthest, x);
                }
            }
        }
    }

    std::vector<T_POINT2D> m_vertices;
    curves::PointInPolygon m_test;
    bool m_isUsed = false;
    double m_low = 0.0;
    double m_steps = 1.0; ///< equal steps of height: the strips, or what leads to them
    double m_stepsOfUnit = 0.0;
    std::vector<double> m_bounds;      ///< of strips between ends; empty when strips are equal
    std::vector<int> m_firstOfStep;    ///< of each step the first bound in it, and the end
    std::vector<std::size_t> m_levels; ///< the first node of each level: strips, then groups of them
    std::size_t m_nodes = 0;
    std::vector<int> m_begins; ///< of each list, in `m_edges`, and the end
    std::vector<int> m_edges;
    std::vector<bool> m_isOrdered; ///< of each node, whether those that pass it do not cross there
};

PreparedPolygon::PreparedPolygon(MArray<T_POINT2D> const &polygon) : m_strips(std::make_unique<Strips>(polygon)) {}
PreparedPolygon::~PreparedPolygon() = default;
PreparedPolygon::PreparedPolygon(PreparedPolygon &&other) noexcept = default;
PreparedPolygon &PreparedPolygon::operator=(PreparedPolygon &&other) noexcept = default;

int PreparedPolygon::IsPointInPolygon2(T_POINT2D const &p, int closed) const {
    return m_strips ? m_strips->Contains(p, closed) : 0;
}

} // namespace zvi::lib
