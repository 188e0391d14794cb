#include "apps/zvi/domains/output/FillClasses.h"

#include <algorithm>
#include <tuple>

namespace zvi::app {

namespace {

/// A stretch of a curve on the border of a domain.
struct Side {
    unsigned int curve = 0;
    double from = 0.0;
    double to = 0.0;
    std::size_t domain = 0;
};

void AddSides(std::vector<Side> &sides, std::vector<lib::DrawingPiece> const &loop, std::size_t domain) {
    for (lib::DrawingPiece const &piece : loop)
        sides.push_back({piece.curve, piece.from, piece.to, domain});
}

/// For each domain those that have a stretch of a curve on their border which overlaps one on its own.
std::vector<std::vector<std::size_t>> Neighbours(std::vector<lib::DrawingDomain> const &domains) {
    std::vector<Side> sides;
    for (std::size_t i = 0; i < domains.size(); ++i) {
        AddSides(sides, domains[i].outer, i);
        for (auto const &hole : domains[i].holes)
            AddSides(sides, hole, i);
    }
    std::sort(sides.begin(), sides.end(), [](Side const &a, Side const &b) {
        return std::tuple(a.curve, a.from, a.to, a.domain) < std::tuple(b.curve, b.from, b.to, b.domain);
    });
    std::vector<std::vector<std::size_t>> neighbours(domains.size());
    for (std::size_t i = 0; i < sides.size(); ++i) {
        // A stretch has two sides, so that few overlap one.
        for (std::size_t j = i + 1; j < sides.size() && sides[j].curve == sides[i].curve; ++j) {
            if (sides[j].from >= sides[i].to)
                break;
            neighbours[sides[i].domain].push_back(sides[j].domain);
            neighbours[sides[j].domain].push_back(sides[i].domain);
        }
    }
    return neighbours;
}

} // namespace

std::vector<std::size_t> FillClasses(std::vector<lib::DrawingDomain> const &domains) {
    std::vector<std::vector<std::size_t>> const neighbours = Neighbours(domains);
    std::vector<std::size_t> fills;
    for (std::size_t i = 0; i < domains.size(); ++i) {
        std::vector<bool> taken(std::max(kFills, neighbours[i].size() + 1), false);
        for (std::size_t const neighbour : neighbours[i]) {
            if (neighbour < i && fills[neighbour] < taken.size())
                taken[fills[neighbour]] = true;
        }
        std::size_t fill = i % kFills;
        while (taken[fill])
            fill = (fill + 1) % taken.size();
        fills.push_back(fill);
    }
    return fills;
}

} // namespace zvi::app
