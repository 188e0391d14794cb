#include "apps/zvi/domains/output/Loops.h"

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace zvi::app {

namespace {

using lib::DrawingCurveType;
using lib::DrawingPiece;
using lib::DrawingPoint;

constexpr double kTurn = 2.0 * std::numbers::pi;

double AngleAt(DrawingPiece const &piece, DrawingPoint const &p) {
    return lib::Atan2(p.y - piece.center.y, p.x - piece.center.x);
}

/// Chords of at most so many degrees, above 0.
int ChordCount(DrawingPiece const &piece, double degrees) {
    assert(degrees > 0.0);
    double const turned = std::abs(SweepOf(piece)) * 360.0 / kTurn;
    return std::max(1, static_cast<int>(std::ceil(turned / degrees)));
}

} // namespace

void Box::Add(DrawingPoint const &p) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y))
        return;
    minX = empty ? p.x : std::min(minX, p.x);
    minY = empty ? p.y : std::min(minY, p.y);
    maxX = empty ? p.x : std::max(maxX, p.x);
    maxY = empty ? p.y : std::max(maxY, p.y);
    empty = false;
}

double Box::Diagonal() const {
    return lib::Hypot(Width(), Height());
}

double SweepOf(DrawingPiece const &piece) {
    if (piece.type == DrawingCurveType::kLine)
        return 0.0;
    double const direction = piece.clockwise ? -1.0 : 1.0;
    if (piece.type == DrawingCurveType::kCircle)
        return direction * kTurn;
    double const turned = direction * (AngleAt(piece, piece.end) - AngleAt(piece, piece.start));
    return direction * (turned > 0.0 ? turned : turned + kTurn);
}

bool IsFinite(DrawingPiece const &piece) {
    double const sum = piece.start.x + piece.start.y + piece.end.x + piece.end.y;
    return std::isfinite(sum) && std::isfinite(piece.center.x + piece.center.y + piece.radius);
}

double LengthOf(DrawingPiece const &piece) {
    if (piece.type == DrawingCurveType::kLine)
        return lib::Hypot(piece.end.x - piece.start.x, piece.end.y - piece.start.y);
    return piece.radius * std::abs(SweepOf(piece));
}

DrawingPoint PointOn(DrawingPiece const &piece, double part) {
    assert(part >= 0.0 && part <= 1.0);
    if (piece.type == DrawingCurveType::kLine)
        return {piece.start.x + part * (piece.end.x - piece.start.x),
                piece.start.y + part * (piece.end.y - piece.start.y)};
    if (piece.type == DrawingCurveType::kArc && (part == 0.0 || part == 1.0))
        return part == 0.0 ? piece.start : piece.end;
    double const from = piece.type == DrawingCurveType::kCircle ? 0.0 : AngleAt(piece, piece.start);
    double const angle = from + part * SweepOf(piece);
    return {piece.center.x + piece.radius * lib::Cos(angle), piece.center.y + piece.radius * lib::Sin(angle)};
}

void AddToBox(Box &box, DrawingPiece const &piece) {
    constexpr double kStepDegrees = 10.0;
    int const count = ChordCount(piece, kStepDegrees);
    for (int i = 0; i <= count; ++i)
        box.Add(PointOn(piece, double(i) / count));
}

std::vector<DrawingPoint> PolygonOf(std::vector<DrawingPiece> const &loop, double degrees) {
    std::vector<DrawingPoint> corners;
    for (DrawingPiece const &piece : loop) {
        int const count = ChordCount(piece, degrees);
        for (int i = 0; i < count; ++i)
            corners.push_back(PointOn(piece, double(i) / count));
    }
    return corners;
}

} // namespace zvi::app
