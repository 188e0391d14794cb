#include "apps/zvi/domains/output/LabelPoint.h"

#include "apps/zvi/domains/output/Loops.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <queue>
#include <vector>

namespace zvi::app {

namespace {

using lib::DrawingPoint;
using Polygon = std::vector<DrawingPoint>;

/// Arcs become chords of this many degrees for the search.
constexpr double kArcStep = 6.0;

/// The search ends when no square can beat the best place by more than this part of the domain's size.
constexpr double kPrecision = 0.01;

/// Most squares that are looked at; thin and winding domains would go on for long to gain little.
constexpr int kMostSquares = 2000;

/// The longer side of the domain's box is covered by at most this many squares to begin with.
constexpr double kMostFirstSquares = 16.0;

/// The centre of gravity is taken when its free circle has at least this part of the largest one's radius: of the many
/// equal places in a long rectangle it is the one that looks right.
constexpr double kMiddleShare = 0.9;

double SquaredDistance(DrawingPoint const &p, DrawingPoint const &a, DrawingPoint const &b) {
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    double const squared = dx * dx + dy * dy;
    double const along = squared > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / squared : 0.0;
    double const t = std::clamp(along, 0.0, 1.0);
    double const ex = p.x - (a.x + t * dx);
    double const ey = p.y - (a.y + t * dy);
    return ex * ex + ey * ey;
}

/// Distance from p to the border, negative outside.
double SignedDistance(std::vector<Polygon> const &polygons, DrawingPoint const &p) {
    bool inside = false;
    double least = std::numeric_limits<double>::infinity();
    for (Polygon const &polygon : polygons) {
        for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
            DrawingPoint const &a = polygon[i];
            DrawingPoint const &b = polygon[j];
            if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
                inside = !inside;
            least = std::min(least, SquaredDistance(p, a, b));
        }
    }
    return inside ? std::sqrt(least) : -std::sqrt(least);
}

/// A square of half side `half`; no place in it is farther from the border than `reach`.
struct Square {
    DrawingPoint center;
    double half = 0.0;
    double distance = 0.0;
    double reach = 0.0;

    Square(std::vector<Polygon> const &polygons, DrawingPoint const &at, double halfSide)
        : center(at), half(halfSide), distance(SignedDistance(polygons, at)),
          reach(distance + halfSide * std::numbers::sqrt2) {}
    bool operator<(Square const &other) const { return reach < other.reach; }
};

std::vector<Polygon> PolygonsOf(lib::DrawingDomain const &domain) {
    std::vector<Polygon> polygons{PolygonOf(domain.outer, kArcStep)};
    for (auto const &hole : domain.holes)
        polygons.push_back(PolygonOf(hole, kArcStep));
    std::erase_if(polygons, [](Polygon const &polygon) { return polygon.empty(); });
    return polygons;
}

std::priority_queue<Square> FirstSquares(std::vector<Polygon> const &polygons, Box const &box) {
    double const longer = std::max(box.Width(), box.Height());
    double const side = std::max(std::min(box.Width(), box.Height()), longer / kMostFirstSquares);
    std::priority_queue<Square> squares;
    for (double x = box.minX; x < box.maxX; x += side) {
        for (double y = box.minY; y < box.maxY; y += side)
            squares.emplace(polygons, DrawingPoint{x + side / 2.0, y + side / 2.0}, side / 2.0);
    }
    return squares;
}

/// The best place that the squares lead to, to within `precision`.
LabelPoint Search(std::vector<Polygon> const &polygons, Box const &box, double precision) {
    LabelPoint best{polygons.front().front(), 0.0};
    std::priority_queue<Square> squares = FirstSquares(polygons, box);
    for (int looked = 0; !squares.empty() && looked < kMostSquares; ++looked) {
        Square const square = squares.top();
        squares.pop();
        if (square.distance > best.radius)
            best = {square.center, square.distance};
        if (square.reach - best.radius <= precision)
            break;
        double const half = square.half / 2.0;
        for (double const dx : {-half, half}) {
            for (double const dy : {-half, half})
                squares.emplace(polygons, DrawingPoint{square.center.x + dx, square.center.y + dy}, half);
        }
    }
    return best;
}

/// Centre of gravity of the polygons together, seen from a corner so that far-off drawings lose nothing.
DrawingPoint Centroid(std::vector<Polygon> const &polygons) {
    DrawingPoint const origin = polygons.front().front();
    double area = 0.0;
    DrawingPoint moment;
    for (Polygon const &polygon : polygons) {
        for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
            DrawingPoint const a{polygon[j].x - origin.x, polygon[j].y - origin.y};
            DrawingPoint const b{polygon[i].x - origin.x, polygon[i].y - origin.y};
            double const cross = a.x * b.y - a.y * b.x;
            area += cross;
            moment.x += cross * (a.x + b.x);
            moment.y += cross * (a.y + b.y);
        }
    }
    return {origin.x + moment.x / (3.0 * area), origin.y + moment.y / (3.0 * area)};
}

} // namespace

LabelPoint FindLabelPoint(lib::DrawingDomain const &domain) {
    std::vector<Polygon> const polygons = PolygonsOf(domain);
    if (polygons.empty())
        return {};
    Box box;
    for (DrawingPoint const &corner : polygons.front())
        box.Add(corner);
    double const precision = kPrecision * std::max(box.Width(), box.Height());
    bool const resolved = box.minX + precision > box.minX && box.minY + precision > box.minY;
    if (!(precision > 0.0) || !std::isfinite(precision) || !resolved)
        return {polygons.front().front(), 0.0};
    LabelPoint const best = Search(polygons, box, precision);
    DrawingPoint const middle = Centroid(polygons);
    double const around = SignedDistance(polygons, middle);
    return around >= kMiddleShare * best.radius && around > 0.0 ? LabelPoint{middle, around} : best;
}

} // namespace zvi::app
