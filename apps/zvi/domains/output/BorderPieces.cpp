#include "apps/zvi/domains/output/BorderPieces.h"

#include "apps/zvi/domains/output/Loops.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace zvi::app {

namespace {

using lib::DrawingCurveType;
using lib::DrawingPiece;
using lib::DrawingPoint;

/// A place on a curve: the fraction of its length, and where that is.
struct Break {
    double at = 0.0;
    DrawingPoint point;
    bool operator<(Break const &other) const { return at < other.at; }
};

DrawingPiece Forward(DrawingPiece piece) {
    if (!std::exchange(piece.reversed, false))
        return piece;
    std::swap(piece.start, piece.end);
    piece.clockwise = piece.type != DrawingCurveType::kLine && !piece.clockwise;
    return piece;
}

std::vector<DrawingPiece> AllPieces(std::vector<lib::DrawingDomain> const &domains) {
    std::vector<DrawingPiece> pieces;
    auto const add = [&pieces](std::vector<DrawingPiece> const &loop) {
        for (DrawingPiece const &piece : loop)
            pieces.push_back(Forward(piece));
    };
    for (lib::DrawingDomain const &domain : domains) {
        add(domain.outer);
        std::for_each(domain.holes.begin(), domain.holes.end(), add);
    }
    std::sort(pieces.begin(), pieces.end(), [](DrawingPiece const &a, DrawingPiece const &b) {
        return std::tuple(a.curve, a.from, a.to) < std::tuple(b.curve, b.from, b.to);
    });
    return pieces;
}

/// Cuts the pieces of one curve, which overlap where they have a domain on either side, at each other's ends.
void CutAtEnds(std::vector<DrawingPiece> const &pieces, std::vector<DrawingPiece> &cut) {
    std::vector<Break> breaks;
    for (DrawingPiece const &piece : pieces) {
        breaks.push_back({piece.from, PointOn(piece, 0.0)});
        breaks.push_back({piece.to, PointOn(piece, 1.0)});
    }
    std::stable_sort(breaks.begin(), breaks.end());
    breaks.erase(std::unique(breaks.begin(), breaks.end(), [](Break const &a, Break const &b) { return a.at == b.at; }),
                 breaks.end());
    double done = breaks.front().at;
    for (DrawingPiece const &piece : pieces) {
        for (auto next = std::upper_bound(breaks.begin(), breaks.end(), Break{std::max(done, piece.from), {}});
             next != breaks.end() && next->at <= piece.to; ++next) {
            Break const &last = *(next - 1);
            DrawingPiece part = piece;
            part.from = last.at;
            part.to = next->at;
            part.start = last.point;
            part.end = next->point;
            bool const isWhole = part.from == piece.from && part.to == piece.to;
            part.type = piece.type == DrawingCurveType::kCircle && !isWhole ? DrawingCurveType::kArc : piece.type;
            cut.push_back(part);
            done = next->at;
        }
    }
}

} // namespace

std::vector<DrawingPiece> BorderPieces(std::vector<lib::DrawingDomain> const &domains) {
    std::vector<DrawingPiece> const all = AllPieces(domains);
    std::vector<DrawingPiece> cut;
    for (auto first = all.begin(); first != all.end();) {
        auto const last =
            std::find_if(first, all.end(), [first](DrawingPiece const &p) { return p.curve != first->curve; });
        CutAtEnds({first, last}, cut);
        first = last;
    }
    return cut;
}

} // namespace zvi::app
