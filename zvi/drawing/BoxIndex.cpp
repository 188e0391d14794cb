#include "zvi/drawing/BoxIndexDetail.h"

#include "zvi/base/KeySort.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <functional>
#include <tuple>

namespace zvi::lib::drawing {

namespace {

/// Steps along each axis in which middles are told apart.
constexpr double kSteps = 65535.0;

Box Around(Box const &a, Box const &b) {
    return {std::min(a.minX, b.minX), std::min(a.minY, b.minY), std::max(a.maxX, b.maxX), std::max(a.maxY, b.maxY)};
}

/// The bits of a 16-bit number, one at every second place.
std::uint32_t Spread(std::uint32_t v) {
    v = (v | (v << 8)) & 0x00FF00FFu;
    v = (v | (v << 4)) & 0x0F0F0F0Fu;
    v = (v | (v << 2)) & 0x33333333u;
    return (v | (v << 1)) & 0x55555555u;
}

/// Where the middle of a box lies along Morton's curve through the box of all.
std::uint32_t KeyOf(Box const &box, Box const &all) {
    auto const step = [](double low, double high, double min, double max) {
        double const share = max > min ? (0.5 * low + 0.5 * high - min) / (max - min) : 0.0;
        // Boxes without end have no middle; any place will do for them.
        return static_cast<std::uint32_t>((share > 0.0 ? std::min(share, 1.0) : 0.0) * kSteps);
    };
    return Spread(step(box.minX, box.maxX, all.minX, all.maxX)) |
           (Spread(step(box.minY, box.maxY, all.minY, all.maxY)) << 1);
}

/// The box of each group, by number.
std::vector<Box> AroundGroups(std::vector<Box> const &boxes, std::vector<int> const &groups) {
    std::vector<Box> around;
    std::vector<bool> isKnown;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i] == BoxIndex::kNoGroup)
            continue;
        std::size_t const group = Index(groups[i]);
        if (around.size() <= group) {
            around.resize(group + 1);
            isKnown.resize(group + 1, false);
        }
        around[group] = isKnown[group] ? Around(around[group], boxes[i]) : boxes[i];
        isKnown[group] = true;
    }
    return around;
}

/// The boxes along the curve.
std::vector<int> OrderOf(std::vector<Box> const &boxes, Box const &all) {
    std::vector<base::Keyed> keys(boxes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i)
        keys[i] = {KeyOf(boxes[i], all), i};
    base::SortByKeys(keys);
    std::vector<int> order;
    order.reserve(keys.size());
    for (base::Keyed const &keyed : keys)
        order.push_back(static_cast<int>(keyed.of));
    return order;
}

/// The groups along the curve, and the boxes of each along it.
std::vector<int> OrderOf(std::vector<Box> const &boxes, Box const &all, std::vector<int> const &groups,
                         base::Workers const &workers) {
    std::vector<Box> const around = AroundGroups(boxes, groups);
    using Key = std::tuple<std::uint32_t, int, std::uint32_t, int>; // of the group, then of the box
    std::vector<Key> keys(boxes.size());
    workers.ForEach(boxes.size(), [&](std::size_t i) {
        std::uint32_t const key = KeyOf(boxes[i], all);
        int const group = groups[i];
        keys[i] = {group == BoxIndex::kNoGroup ? key : KeyOf(around[Index(group)], all), group, key,
                   static_cast<int>(i)};
    });
    workers.Sort(keys, std::less<Key>());
    std::vector<int> order;
    order.reserve(keys.size());
    for (Key const &key : keys)
        order.push_back(std::get<3>(key));
    return order;
}

} // namespace

BoxIndex::BoxIndex(std::vector<Box> const &boxes, base::Workers const &workers, std::vector<int> const &groups) {
    assert(groups.empty() || groups.size() == boxes.size());
    Box all = boxes.empty() ? Box{} : boxes.front();
    for (Box const &box : boxes)
        all = Around(all, box);
    m_order = groups.empty() ? OrderOf(boxes, all) : OrderOf(boxes, all, groups, workers);
    m_boxes.reserve(boxes.size() + boxes.size() / (kWidth - 1) + kWidth);
    m_boxes.resize(boxes.size());
    m_groups.resize(groups.size());
    workers.ForEach(boxes.size(), [&](std::size_t i) {
        m_boxes[i] = boxes[Index(m_order[i])];
        if (!groups.empty())
            m_groups[i] = groups[Index(m_order[i])];
    });
    AddLevels();
}

void BoxIndex::AddLevels() {
    m_levels = {0, m_boxes.size()};
    while (m_levels.back() - m_levels[m_levels.size() - 2] > 1) {
        std::size_t const begin = m_levels[m_levels.size() - 2], end = m_levels.back();
        for (std::size_t i = begin; i < end; i += kWidth) {
            std::size_t const next = std::min(i + kWidth, end);
            Box box = m_boxes[i];
            for (std::size_t k = i + 1; k < next; ++k)
                box = Around(box, m_boxes[k]);
            m_boxes.push_back(box);
            // A group stands together, so the first and the last one tell.
            if (!m_groups.empty())
                m_groups.push_back(m_groups[i] == m_groups[next - 1] ? m_groups[i] : kNoGroup);
        }
        m_levels.push_back(m_boxes.size());
    }
}

void BoxIndex::Visit(std::size_t level, std::size_t first, std::size_t count, Box const &query, int passedOver,
                     std::vector<int> &out) const {
    std::size_t const end = std::min(first + count, m_levels[level + 1] - m_levels[level]);
    for (std::size_t node = first; node < end; ++node) {
        std::size_t const at = m_levels[level] + node;
        if (!Meet(m_boxes[at], query) || (passedOver != kNoGroup && m_groups[at] == passedOver))
            continue;
        if (level == 0)
            out.push_back(m_order[node]);
        else
            Visit(level - 1, node * kWidth, kWidth, query, passedOver, out);
    }
}

void BoxIndex::Find(Box const &query, std::vector<int> &out, int passedOver) const {
    out.clear();
    if (!m_order.empty())
        Visit(m_levels.size() - 2, 0, 1, query, m_groups.empty() ? kNoGroup : passedOver, out);
}

} // namespace zvi::lib::drawing
