#include "zvi/drawing/BoxIndexDetail.h"

#include <algorithm>
#include <numeric>

namespace zvi::lib::drawing {

namespace {

constexpr std::size_t kFanOut = 8;

bool Meet(Box const &a, Box const &b) {
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

void Widen(Box &a, Box const &b) {
    a.minX = std::min(a.minX, b.minX);
    a.minY = std::min(a.minY, b.minY);
    a.maxX = std::max(a.maxX, b.maxX);
    a.maxY = std::max(a.maxY, b.maxY);
}

} // namespace

BoxIndex::BoxIndex(std::vector<Box> someBoxes) : boxes(std::move(someBoxes)), order(boxes.size()) {
    std::iota(order.begin(), order.end(), 0);
    auto const at = [this](int i) -> Box const & { return boxes[static_cast<std::size_t>(i)]; };
    auto const byX = [&](int a, int b) {
        double const u = at(a).minX + at(a).maxX, v = at(b).minX + at(b).maxX;
        return u < v || (u == v && a < b);
    };
    auto const byY = [&](int a, int b) {
        double const u = at(a).minY + at(a).maxY, v = at(b).minY + at(b).maxY;
        return u < v || (u == v && a < b);
    };
    std::size_t const n = order.size();
    std::sort(order.begin(), order.end(), byX);
    auto const slices = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(n) / kFanOut)));
    std::size_t const slice = std::max(kFanOut, kFanOut * slices);
    for (std::size_t i = 0; i < n; i += slice)
        std::sort(order.begin() + static_cast<std::ptrdiff_t>(i),
                  order.begin() + static_cast<std::ptrdiff_t>(std::min(n, i + slice)), byY);
    for (std::size_t i = 0; i < n; i += kFanOut) {
        Node node{at(order[i]), static_cast<int>(i), static_cast<int>(std::min(kFanOut, n - i)), true};
        for (int k = 1; k < node.count; ++k)
            Widen(node.box, at(order[i + static_cast<std::size_t>(k)]));
        nodes.push_back(node);
    }
    std::size_t begin = 0;
    while (nodes.size() - begin > 1) {
        std::size_t const end = nodes.size();
        for (std::size_t i = begin; i < end; i += kFanOut) {
            Node node{nodes[i].box, static_cast<int>(i), static_cast<int>(std::min(kFanOut, end - i)), false};
            for (int k = 1; k < node.count; ++k)
                Widen(node.box, nodes[i + static_cast<std::size_t>(k)].box);
            nodes.push_back(node);
        }
        begin = end;
    }
}

void BoxIndex::Find(Box const &query, std::vector<int> &out) const {
    out.clear();
    if (nodes.empty())
        return;
    std::vector<int> pending{static_cast<int>(nodes.size()) - 1};
    while (!pending.empty()) {
        Node const &node = nodes[static_cast<std::size_t>(pending.back())];
        pending.pop_back();
        if (!Meet(node.box, query))
            continue;
        for (int k = 0; k < node.count; ++k) {
            if (!node.isLeaf) {
                pending.push_back(node.first + k);
            } else {
                int const item = order[static_cast<std::size_t>(node.first + k)];
                if (Meet(boxes[static_cast<std::size_t>(item)], query))
                    out.push_back(item);
            }
        }
    }
}

} // namespace zvi::lib::drawing
