#include "apps/zvi/domains/output/FreeEnds.h"

#include "apps/zvi/domains/output/Loops.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cmath>

namespace zvi::app {

namespace {

using lib::DrawingPiece;
using lib::DrawingPoint;

/// An end of a dangling piece, and how many pieces pass or end there, the piece itself among them.
struct End {
    DrawingPoint at;
    int pieces = 0;
};

/// The box of an arc is that of points 10 degrees apart, which may fall short by this part of the radius.
constexpr double kShortOfArc = 0.004;

double DistanceTo(DrawingPiece const &line, DrawingPoint p) {
    double const dx = line.end.x - line.start.x;
    double const dy = line.end.y - line.start.y;
    double const square = dx * dx + dy * dy;
    double const along = square > 0.0 ? ((p.x - line.start.x) * dx + (p.y - line.start.y) * dy) / square : 0.0;
    double const t = std::clamp(along, 0.0, 1.0);
    return lib::Hypot(p.x - line.start.x - t * dx, p.y - line.start.y - t * dy);
}

bool Reaches(DrawingPiece const &piece, DrawingPoint p, double reach) {
    if (piece.type == lib::DrawingCurveType::kLine)
        return DistanceTo(piece, p) <= reach;
    double const away = lib::Hypot(p.x - piece.center.x, p.y - piece.center.y) - piece.radius;
    if (std::fabs(away) > reach)
        return false;
    DrawingPiece chord = piece;
    chord.end = p;
    chord.type = lib::DrawingCurveType::kArc;
    bool const isAtEnd = lib::Hypot(p.x - piece.start.x, p.y - piece.start.y) <= reach ||
                         lib::Hypot(p.x - piece.end.x, p.y - piece.end.y) <= reach;
    return isAtEnd || piece.type == lib::DrawingCurveType::kCircle ||
           std::fabs(SweepOf(chord)) <= std::fabs(SweepOf(piece));
}

/// Counts the piece at the ends that it reaches; `ends` go from left to right.
void CountAt(std::vector<End> &ends, DrawingPiece const &piece, double reach) {
    Box box;
    AddToBox(box, piece);
    double const margin = reach + kShortOfArc * piece.radius;
    auto it = std::lower_bound(ends.begin(), ends.end(), box.minX - margin,
                               [](End const &end, double x) { return end.at.x < x; });
    for (; it != ends.end() && it->at.x <= box.maxX + margin; ++it) {
        bool const isNear = it->at.y >= box.minY - margin && it->at.y <= box.maxY + margin;
        it->pieces += isNear && Reaches(piece, it->at, reach);
    }
}

} // namespace

std::vector<DrawingPoint> FreeEnds(lib::DrawingResult const &result, double reach) {
    std::vector<End> ends;
    for (lib::DrawingLeftover const &leftover : result.leftovers) {
        DrawingPiece const &piece = leftover.piece;
        if (leftover.reason == lib::LeftoverReason::kDangle && std::isfinite(piece.start.x + piece.end.x))
            ends.insert(ends.end(), {{piece.start, 0}, {piece.end, 0}});
    }
    std::sort(ends.begin(), ends.end(), [](End const &a, End const &b) { return a.at.x < b.at.x; });
    auto const count = [&](DrawingPiece const &piece) { CountAt(ends, piece, reach); };
    for (lib::DrawingDomain const &domain : result.domains) {
        std::for_each(domain.outer.begin(), domain.outer.end(), count);
        for (auto const &hole : domain.holes)
            std::for_each(hole.begin(), hole.end(), count);
    }
    for (lib::DrawingLeftover const &leftover : result.leftovers)
        count(leftover.piece);
    std::vector<DrawingPoint> free;
    for (End const &end : ends) {
        if (end.pieces == 1)
            free.push_back(end.at);
    }
    return free;
}

} // namespace zvi::app
