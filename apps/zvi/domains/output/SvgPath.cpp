#include "apps/zvi/domains/output/SvgPath.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/domains/output/Loops.h"

#include <cmath>
#include <numbers>

namespace zvi::app {

namespace {

/// The longer side of a drawing in its picture, in pixels.
constexpr double kDrawingPixels = 940.0;

} // namespace

std::string SvgFrame::Place(lib::DrawingPoint const &p) const {
    return Joined(SvgNumber(X(p.x)), " ", SvgNumber(Y(p.y)));
}

std::string SvgFrame::PathAlong(lib::DrawingPiece const &piece) const {
    if (piece.type == lib::DrawingCurveType::kLine)
        return Joined("L", Place(piece.end));
    std::string const radius = SvgNumber(piece.radius * scale);
    std::string const arc = Joined("A", radius, " ", radius, piece.clockwise ? " 0 0 1 " : " 0 0 0 ");
    bool const overHalf = std::abs(SweepOf(piece)) > std::numbers::pi;
    return Joined(overHalf ? Joined(arc, Place(PointOn(piece, 0.5))) : "", arc, Place(PointOn(piece, 1.0)));
}

double SvgScale(double longerSide) {
    return longerSide > 0.0 && std::isfinite(kDrawingPixels / longerSide) ? kDrawingPixels / longerSide : 1.0;
}

std::string SvgNumber(double value) {
    constexpr int kDigits = 9;
    return ShortNumber(value, kDigits);
}

std::string SvgEscaped(std::string const &text) {
    std::string escaped;
    for (char const c : text) {
        switch (c) {
        case '<':
            escaped += "&lt;";
            break;
        case '&':
            escaped += "&amp;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

} // namespace zvi::app
