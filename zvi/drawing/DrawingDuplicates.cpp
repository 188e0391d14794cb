#include "zvi/drawing/DrawingDuplicatesDetail.h"

#include <algorithm>
#include <array>
#include <map>

namespace zvi::lib::drawing {

namespace {

/// Where an edge lies beside the others between its two places: the rise over the chord from the lower place to the
/// higher one, or, for a loop, the centre.
std::array<double, 2> LieOf(Edge const &e) {
    if (e.IsLoop())
        return {e.center.x, e.center.y};
    return {e.startPlace < e.endPlace ? SagittaOf(e) : -SagittaOf(e), 0.0};
}

/// Finds, for each edge of a bundle in order, the first kept edge that lies within the snap distance.
class Bundle {
public:
    void Clear() { kept.clear(); }

    int OriginalOf(std::array<double, 2> lie, double snap) const {
        int original = -1;
        for (auto it = kept.upper_bound(lie[0] - snap); it != kept.end() && it->first < lie[0] + snap; ++it)
            if (std::hypot(it->first - lie[0], it->second.second - lie[1]) < snap &&
                (original < 0 || it->second.first < original))
                original = it->second.first;
        return original;
    }

    void Keep(int edge, std::array<double, 2> lie) { kept.emplace(lie[0], std::pair(edge, lie[1])); }

private:
    std::multimap<double, std::pair<int, double>> kept;
};

std::pair<int, int> PlacesOf(Edge const &e) {
    return std::minmax(e.startPlace, e.endPlace);
}

/// The edges by their lower place, then by their higher one, then as they come.
std::vector<int> OrderByPlaces(Network const &network) {
    std::vector<Edge> const &edges = network.edges;
    std::vector<std::size_t> begins(network.places.size() + 1, 0);
    for (Edge const &e : edges)
        ++begins[At(PlacesOf(e).first) + 1];
    for (std::size_t p = 0; p < network.places.size(); ++p)
        begins[p + 1] += begins[p];
    std::vector<int> order(edges.size());
    std::vector<std::size_t> next(begins.begin(), begins.end() - 1);
    for (std::size_t i = 0; i < edges.size(); ++i)
        order[next[At(PlacesOf(edges[i]).first)]++] = static_cast<int>(i);
    auto const higher = [&](int i) { return PlacesOf(edges[At(i)]).second; };
    for (std::size_t p = 0; p < network.places.size(); ++p)
        std::sort(order.begin() + static_cast<std::ptrdiff_t>(begins[p]),
                  order.begin() + static_cast<std::ptrdiff_t>(begins[p + 1]), [&](int a, int b) {
                      int const u = higher(a), v = higher(b);
                      return u != v ? u < v : a < b;
                  });
    return order;
}

/// For each edge the earlier one that covers it, or -1.
std::vector<int> FindOriginals(Network const &network) {
    std::vector<Edge> const &edges = network.edges;
    std::vector<int> const order = OrderByPlaces(network);
    auto const at = [&](std::size_t k) -> Edge const & { return edges[At(order[k])]; };
    // With no snap distance at all (every coordinate 0) equal edges must still count as near.
    double const snap = std::max(network.snap, 1e-300);
    std::vector<int> originals(edges.size(), -1);
    Bundle bundle;
    for (std::size_t i = 0, j = 0; i < order.size(); i = j) {
        for (j = i + 1; j < order.size() && PlacesOf(at(j)) == PlacesOf(at(i));)
            ++j;
        if (j - i < 2)
            continue;
        bundle.Clear();
        for (std::size_t k = i; k < j; ++k) {
            auto const lie = LieOf(at(k));
            int const original = bundle.OriginalOf(lie, snap);
            originals[At(order[k])] = original;
            if (original < 0)
                bundle.Keep(order[k], lie);
        }
    }
    return originals;
}

} // namespace

void DropDuplicates(Network &network, std::vector<DrawingCurve> const &curves, std::vector<KeptDuplicate> *kept) {
    std::vector<int> const originals = FindOriginals(network);
    std::vector<int> newIndex(originals.size(), -1);
    std::size_t remaining = 0;
    for (std::size_t i = 0; i < originals.size(); ++i) {
        Edge const &e = network.edges[i];
        if (originals[i] < 0) {
            newIndex[i] = static_cast<int>(remaining);
            if (remaining < i)
                network.edges[remaining] = e;
            ++remaining;
        } else if (kept != nullptr) {
            kept->push_back({e, newIndex[At(originals[i])]});
        } else {
            ++network.counts.duplicates;
            network.leftovers.push_back({PieceOf(e, curves, false), LeftoverReason::kDuplicate});
        }
    }
    network.edges.resize(remaining);
}

} // namespace zvi::lib::drawing
