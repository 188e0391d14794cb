#pragma once

#include "zvi/base/Workers.h"
#include "zvi/drawing/PlaneDetail.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace zvi::lib::drawing {

/// Tells which of a fixed set of boxes meet a box: a tree of boxes, packed in the order of a space-filling curve
/// through their middles (Kamel and Faloutsos 1993, with Morton's curve).
class BoxIndex {
public:
    static constexpr int kNoGroup = -1;

    /// Boxes of one group, by number, can be passed over in a search; `groups` has that of each box, or is empty, which
    /// means that none has one.
    BoxIndex(std::vector<Box> const &boxes, base::Workers const &workers, std::vector<int> const &groups = {});

    /// Fills `out` with the indices of the boxes that meet `query` (touching counts), but for those of a group, in an
    /// order that depends on the boxes alone.
    void Find(Box const &query, std::vector<int> &out, int passedOver = kNoGroup) const;

    /// Calls `look(index)` for the boxes that are seen from `p` in a direction of length 1, the nearest first as far as
    /// the tree knows. It returns up to which distance a box is still worth a look.
    template <typename Look>
    void LookAlong(DrawingPoint p, DrawingPoint direction, Look look) const {
        double farthest = HUGE_VAL;
        if (!m_order.empty())
            VisitAlong(m_levels.size() - 2, 0, 1, {p, {1.0 / direction.x, 1.0 / direction.y}}, look, farthest);
    }

    /// Two nodes of a level, or one, and the boxes below them.
    struct NodePair {
        std::size_t level = 0, a = 0, b = 0;
    };

    /// Pairs of nodes below which are all boxes that meet, some tens of them.
    std::vector<NodePair> MeetingNodes() const {
        std::vector<NodePair> nodes;
        if (m_order.empty())
            return nodes;
        std::size_t const top = m_levels.size() - 2, level = top - std::min(top, kTaskLevels);
        Join({top, 0, 0}, level, [&](std::size_t a, std::size_t b) { nodes.push_back({level, a, b}); });
        return nodes;
    }

    /// Calls `look(number, number)` once for each two boxes below the nodes that meet, as Order() numbers them.
    template <typename Look>
    void ForEachMeeting(NodePair nodes, Look look) const {
        Join(nodes, 0, [&](std::size_t a, std::size_t b) {
            if (a != b)
                look(a, b);
        });
    }

    /// The indices in the order in which they are found.
    std::vector<int> const &Order() const { return m_order; }

private:
    static constexpr std::size_t kWidth = 8;      ///< boxes that a node holds
    static constexpr std::size_t kTaskLevels = 2; ///< below the root, of nodes that are looked at by themselves

    void AddLevels();
    void Visit(std::size_t level, std::size_t first, std::size_t count, Box const &query, int passedOver,
               std::vector<int> &out) const;

    /// Calls `look(number, number)` for the pairs of nodes of a level below two, or below one, whose boxes meet.
    template <typename Look>
    void Join(NodePair nodes, std::size_t last, Look const &look) const {
        auto const [level, a, b] = nodes;
        if (level == last) {
            look(a, b);
            return;
        }
        std::array<std::size_t, kWidth> below;
        std::size_t const count = ChildrenThatMeet(level, b, m_boxes[m_levels[level] + a], below);
        std::size_t const end = std::min((a + 1) * kWidth, m_levels[level] - m_levels[level - 1]);
        std::array<std::size_t, kWidth> met;
        Box const &boxOfB = m_boxes[m_levels[level] + b];
        for (std::size_t child = a * kWidth; child < end; ++child) {
            Box const &box = m_boxes[m_levels[level - 1] + child];
            if (!Meet(box, boxOfB))
                continue;
            std::size_t metCount = 0;
            for (std::size_t i = 0; i < count; ++i) {
                met[metCount] = below[i];
                metCount += Meet(box, m_boxes[m_levels[level - 1] + below[i]]) && (a != b || below[i] >= child) ? 1 : 0;
            }
            for (std::size_t i = 0; i < metCount; ++i)
                Join({level - 1, child, met[i]}, last, look);
        }
    }
    std::size_t ChildrenThatMeet(std::size_t level, std::size_t node, Box const &box,
                                 std::array<std::size_t, kWidth> &children) const {
        std::size_t count = 0;
        std::size_t const end = std::min((node + 1) * kWidth, m_levels[level] - m_levels[level - 1]);
        for (std::size_t child = node * kWidth; child < end; ++child) {
            children[count] = child;
            count += Meet(m_boxes[m_levels[level - 1] + child], box) ? 1 : 0;
        }
        return count;
    }

    struct Ray {
        DrawingPoint from;
        DrawingPoint perUnit; ///< inverse of the direction
    };

    /// Distances at which a ray enters what lies between two bounds of a coordinate, and leaves it.
    static std::pair<double, double> Between(double low, double high, double from, double perUnit) {
        if (std::isinf(perUnit))
            return low <= from && from <= high ? std::pair(-HUGE_VAL, HUGE_VAL) : std::pair(HUGE_VAL, -HUGE_VAL);
        double const first = (perUnit > 0.0 ? low : high) - from, last = (perUnit > 0.0 ? high : low) - from;
        return {first * perUnit, last * perUnit};
    }

    /// The distance at which a ray enters a box, 0 when it begins there; HUGE_VAL when it misses the box.
    static double EntryInto(Box const &box, Ray const &ray) {
        auto const [enterY, leaveY] = Between(box.minY, box.maxY, ray.from.y, ray.perUnit.y);
        if (!(leaveY >= 0.0))
            return HUGE_VAL;
        auto const [enterX, leaveX] = Between(box.minX, box.maxX, ray.from.x, ray.perUnit.x);
        double const enter = std::max({enterX, enterY, 0.0});
        return enter <= std::min(leaveX, leaveY) ? enter : HUGE_VAL;
    }

    template <typename Look>
    void VisitAlong(std::size_t level, std::size_t first, std::size_t count, Ray const &ray, Look &look,
                    double &farthest) const {
        std::array<std::pair<double, std::size_t>, kWidth> nodes; // where it is entered, number; the nearest first
        std::size_t found = 0;
        std::size_t const end = std::min(first + count, m_levels[level + 1] - m_levels[level]);
        for (std::size_t node = first; node < end; ++node) {
            double const entry = EntryInto(m_boxes[m_levels[level] + node], ray);
            if (entry == HUGE_VAL || entry > farthest)
                continue;
            std::size_t i = found++;
            for (; i > 0 && nodes[i - 1].first > entry; --i)
                nodes[i] = nodes[i - 1];
            nodes[i] = {entry, node};
        }
        for (std::size_t i = 0; i < found && nodes[i].first <= farthest; ++i) {
            if (level == 0)
                farthest = look(m_order[nodes[i].second]);
            else
                VisitAlong(level - 1, nodes[i].second * kWidth, kWidth, ray, look, farthest);
        }
    }

    std::vector<int> m_order;          ///< of the leaves, which box each is
    std::vector<Box> m_boxes;          ///< of the leaves, then of each level above them
    std::vector<int> m_groups;         ///< of each of these the group of all in it, kNoGroup where they have several
    std::vector<std::size_t> m_levels; ///< where each level begins in `m_boxes`, and the end
};

} // namespace zvi::lib::drawing
