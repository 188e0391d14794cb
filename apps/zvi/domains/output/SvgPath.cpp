#include "apps/zvi/domains/output/SvgPath.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/domains/output/Loops.h"

#include <cmath>
#include <numbers>

namespace zvi::app {

std::string SvgNumber(double value) {
    constexpr int kDigits = 12;
    return ShortNumber(value, kDigits);
}

std::string SvgPlace(lib::DrawingPoint const &p) {
    return Joined(SvgNumber(p.x), " ", SvgNumber(-p.y));
}

std::string SvgPathAlong(lib::DrawingPiece const &piece) {
    if (piece.type == lib::DrawingCurveType::kLine)
        return Joined("L", SvgPlace(piece.end));
    std::string const radii = Joined("A", SvgNumber(piece.radius), " ", SvgNumber(piece.radius));
    std::string const flags = piece.clockwise ? " 0 0 1 " : " 0 0 0 ";
    std::string const end = radii + flags + SvgPlace(PointOn(piece, 1.0));
    bool const overHalf = std::abs(SweepOf(piece)) > std::numbers::pi;
    return overHalf ? radii + flags + SvgPlace(PointOn(piece, 0.5)) + end : end;
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
