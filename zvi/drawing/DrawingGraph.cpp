#include "zvi/drawing/DrawingGraphDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// An edge that has not been given to any block yet.
constexpr int kOpenEdge = -3;

void MarkDangles(Network const &network, Spokes const &spokes, std::vector<int> &blockOfEdge) {
    std::vector<int> degree(network.places.size());
    std::vector<int> pending;
    for (std::size_t p = 0; p < degree.size(); ++p) {
        degree[p] = spokes.Degree(static_cast<int>(p));
        if (degree[p] == 1)
            pending.push_back(static_cast<int>(p));
    }
    while (!pending.empty()) {
        int const place = pending.back();
        pending.pop_back();
        for (int const *h = spokes.Begin(place); h != spokes.End(place); ++h) {
            int &block = blockOfEdge[At(EdgeOfHalf(*h))];
            if (block != kOpenEdge)
                continue;
            block = kDangleEdge;
            int const far = OriginOf(network, TwinOf(*h));
            if (--degree[At(far)] == 1)
                pending.push_back(far);
        }
    }
}

/// One depth-first search from each place, that closes a block whenever a subtree does not reach above its root.
class BlockSearch {
public:
    BlockSearch(Network const &someNetwork, Spokes const &someSpokes, Blocks &someBlocks)
        : network(someNetwork), spokes(someSpokes), blocks(someBlocks), found(network.places.size(), 0),
          low(network.places.size(), 0) {}

    void Run() {
        for (std::size_t e = 0; e < network.edges.size(); ++e)
            if (blocks.blockOfEdge[e] == kOpenEdge && network.edges[e].IsLoop())
                Close({static_cast<int>(e)});
        for (std::size_t p = 0; p < network.places.size(); ++p)
            if (found[p] == 0)
                SearchFrom(static_cast<int>(p));
    }

private:
    struct Step {
        int place;
        int viaEdge;
        int const *next;
    };

    void Close(std::vector<int> edges) {
        std::sort(edges.begin(), edges.end());
        bool const isBridge = edges.size() == 1 && !network.edges[At(edges[0])].IsLoop();
        int const number = isBridge ? kBridgeEdge : static_cast<int>(blocks.edges.size());
        for (int const e : edges)
            blocks.blockOfEdge[At(e)] = number;
        if (!isBridge)
            blocks.edges.push_back(std::move(edges));
    }

    void Enter(int place, int viaEdge) {
        found[At(place)] = low[At(place)] = ++clock;
        path.push_back({place, viaEdge, spokes.Begin(place)});
    }

    void Follow(int halfEdge) {
        int const edge = EdgeOfHalf(halfEdge);
        int const place = path.back().place;
        if (blocks.blockOfEdge[At(edge)] != kOpenEdge || edge == path.back().viaEdge)
            return;
        int const far = OriginOf(network, TwinOf(halfEdge));
        if (found[At(far)] == 0) {
            open.push_back(edge);
            Enter(far, edge);
        } else if (found[At(far)] < found[At(place)]) {
            open.push_back(edge);
            low[At(place)] = std::min(low[At(place)], found[At(far)]);
        }
    }

    void Leave() {
        Step const done = path.back();
        path.pop_back();
        if (path.empty())
            return;
        int const parent = path.back().place;
        low[At(parent)] = std::min(low[At(parent)], low[At(done.place)]);
        if (low[At(done.place)] < found[At(parent)])
            return;
        auto const begin = std::find(open.rbegin(), open.rend(), done.viaEdge).base() - 1;
        Close(std::vector<int>(begin, open.end()));
        open.erase(begin, open.end());
    }

    void SearchFrom(int place) {
        Enter(place, -1);
        while (!path.empty()) {
            Step &step = path.back();
            if (step.next == spokes.End(step.place))
                Leave();
            else
                Follow(*step.next++);
        }
    }

    Network const &network;
    Spokes const &spokes;
    Blocks &blocks;
    std::vector<int> found; ///< when the search met each place, from 1
    std::vector<int> low;   ///< the earliest place that the subtree reaches
    std::vector<Step> path;
    std::vector<int> open; ///< edges met and not yet in a block
    int clock = 0;
};

} // namespace

Spokes MakeSpokes(Network const &network, std::vector<int> const *use) {
    Spokes spokes;
    spokes.begins.assign(network.places.size() + 1, 0);
    auto const isUsed = [&](std::size_t e) { return use == nullptr || (*use)[e] >= 0; };
    for (std::size_t e = 0; e < network.edges.size(); ++e) {
        if (!isUsed(e))
            continue;
        ++spokes.begins[At(network.edges[e].startPlace) + 1];
        ++spokes.begins[At(network.edges[e].endPlace) + 1];
    }
    for (std::size_t p = 0; p < network.places.size(); ++p)
        spokes.begins[p + 1] += spokes.begins[p];
    spokes.halfEdges.resize(At(spokes.begins.back()));
    std::vector<int> next(spokes.begins.begin(), spokes.begins.end() - 1);
    for (std::size_t e = 0; e < network.edges.size(); ++e) {
        if (!isUsed(e))
            continue;
        int const half = 2 * static_cast<int>(e);
        spokes.halfEdges[At(next[At(network.edges[e].startPlace)]++)] = half;
        spokes.halfEdges[At(next[At(network.edges[e].endPlace)]++)] = half + 1;
    }
    return spokes;
}

Blocks FindBlocks(Network const &network, Spokes const &spokes) {
    Blocks blocks;
    blocks.blockOfEdge.assign(network.edges.size(), kOpenEdge);
    MarkDangles(network, spokes, blocks.blockOfEdge);
    BlockSearch(network, spokes, blocks).Run();
    return blocks;
}

} // namespace zvi::lib::drawing
