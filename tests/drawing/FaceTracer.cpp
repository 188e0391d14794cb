#include "tests/drawing/FaceTracer.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <set>

using namespace zvi::lib;

namespace drawing_fixtures {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kPointsPerArc = 48;

double SweepOf(DrawingCurve const &c) {
    double const a = std::atan2(c.start.y - c.center.y, c.start.x - c.center.x);
    double const b = std::atan2(c.end.y - c.center.y, c.end.x - c.center.x);
    double sweep = b - a;
    if (c.clockwise && sweep > 0.0)
        sweep -= 2.0 * kPi;
    if (!c.clockwise && sweep < 0.0)
        sweep += 2.0 * kPi;
    return c.type == DrawingCurveType::kCircle ? 2.0 * kPi : sweep;
}

DrawingPoint StartOf(DrawingCurve const &c) {
    return c.type == DrawingCurveType::kCircle ? DrawingPoint{c.center.x + c.radius, c.center.y} : c.start;
}
DrawingPoint EndOf(DrawingCurve const &c) {
    return c.type == DrawingCurveType::kCircle ? StartOf(c) : c.end;
}

DrawingPoint PointAt(DrawingCurve const &c, double t) {
    if (t == 0.0 || t == 1.0)
        return t == 0.0 ? StartOf(c) : EndOf(c);
    if (c.type == DrawingCurveType::kLine)
        return {c.start.x + t * (c.end.x - c.start.x), c.start.y + t * (c.end.y - c.start.y)};
    DrawingPoint const s = StartOf(c);
    double const a = std::atan2(s.y - c.center.y, s.x - c.center.x) + t * SweepOf(c);
    return {c.center.x + c.radius * std::cos(a), c.center.y + c.radius * std::sin(a)};
}

/// A side of a curve: even along it, odd against it.
class Tracer {
public:
    explicit Tracer(std::vector<DrawingCurve> const &someCurves) : curves(someCurves) {
        for (std::size_t i = 0; i < curves.size(); ++i) {
            vertexOf.push_back(VertexAt(StartOf(curves[i])));
            vertexOf.push_back(VertexAt(EndOf(curves[i])));
        }
    }

    std::vector<TracedFace> Faces() {
        SortSpokes();
        WalkAll();
        Nest();
        std::vector<TracedFace> faces;
        for (std::size_t w = 0; w < walks.size(); ++w)
            if (areas[w] > 0.0)
                faces.push_back(FaceOf(static_cast<int>(w)));
        std::sort(faces.begin(), faces.end(), [](auto const &a, auto const &b) { return a.area < b.area; });
        return faces;
    }

private:
    int VertexAt(DrawingPoint p) {
        return vertices.emplace(std::pair(p.x, p.y), static_cast<int>(vertices.size())).first->second;
    }

    DrawingPoint Along(int side, double t) const {
        return PointAt(curves[static_cast<std::size_t>(side / 2)], side % 2 == 0 ? t : 1.0 - t);
    }

    void SortSpokes() {
        spokes.resize(vertices.size());
        for (int side = 0; side < static_cast<int>(vertexOf.size()); ++side)
            spokes[static_cast<std::size_t>(vertexOf[static_cast<std::size_t>(side)])].push_back(side);
        auto const angle = [this](int side) {
            DrawingPoint const a = Along(side, 0.0), b = Along(side, 1e-3);
            return std::atan2(b.y - a.y, b.x - a.x);
        };
        for (auto &fan : spokes)
            std::sort(fan.begin(), fan.end(), [&](int a, int b) { return angle(a) < angle(b); });
    }

    void WalkAll() {
        walkOf.assign(vertexOf.size(), -1);
        for (std::size_t s = 0; s < vertexOf.size(); ++s)
            if (walkOf[s] < 0)
                WalkFrom(static_cast<int>(s));
    }

    void WalkFrom(int first) {
        std::vector<int> walk;
        for (int side = first; walkOf[static_cast<std::size_t>(side)] < 0;) {
            walkOf[static_cast<std::size_t>(side)] = static_cast<int>(walks.size());
            walk.push_back(side);
            int const back = side ^ 1;
            auto const &fan = spokes[static_cast<std::size_t>(vertexOf[static_cast<std::size_t>(back)])];
            auto const at = std::find(fan.begin(), fan.end(), back);
            side = at == fan.begin() ? fan.back() : at[-1];
        }
        double area = 0.0, size = 0.0;
        DrawingPoint const o = Along(first, 0.0);
        for (int const side : walk) {
            DrawingCurve const &c = curves[static_cast<std::size_t>(side / 2)];
            DrawingPoint const a = StartOf(c), b = EndOf(c);
            double const s = c.type == DrawingCurveType::kLine ? 0.0 : SweepOf(c);
            double const chord = (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
            area += (side % 2 == 0 ? 0.5 : -0.5) * (chord + c.radius * c.radius * (s - std::sin(s)));
            size += std::fabs(chord) + c.radius * c.radius * std::fabs(s);
        }
        walks.push_back(std::move(walk));
        areas.push_back(std::fabs(area) < 1e-10 * size ? 0.0 : area);
    }

    /// Whether a leftward ray from `p` crosses the walk an odd number of times.
    bool Contains(int walk, DrawingPoint p) const {
        bool inside = false;
        for (int const side : walks[static_cast<std::size_t>(walk)]) {
            int const steps =
                curves[static_cast<std::size_t>(side / 2)].type == DrawingCurveType::kLine ? 1 : kPointsPerArc;
            DrawingPoint a = Along(side, 0.0);
            for (int i = 1; i <= steps; ++i) {
                DrawingPoint const b = Along(side, static_cast<double>(i) / steps);
                if ((a.y > p.y) != (b.y > p.y) && p.x > a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x))
                    inside = !inside;
                a = b;
            }
        }
        return inside;
    }

    /// For each walk around a connected part the smallest walk of another part around it.
    void Nest() {
        part.resize(vertices.size());
        std::iota(part.begin(), part.end(), 0);
        for (std::size_t s = 0; s < vertexOf.size(); s += 2)
            part[static_cast<std::size_t>(Part(vertexOf[s]))] = Part(vertexOf[s + 1]);
        around.assign(walks.size(), -1);
        for (std::size_t w = 0; w < walks.size(); ++w) {
            if (areas[w] > 0.0)
                continue;
            DrawingPoint const p = Along(walks[w][0], 0.41421356);
            for (std::size_t v = 0; v < walks.size(); ++v) {
                bool const candidate = areas[v] > 0.0 && PartOfWalk(v) != PartOfWalk(w) &&
                                       (around[w] < 0 || areas[v] < areas[static_cast<std::size_t>(around[w])]);
                if (candidate && Contains(static_cast<int>(v), p))
                    around[w] = static_cast<int>(v);
            }
        }
    }

    int Part(int v) {
        while (part[static_cast<std::size_t>(v)] != v)
            v = part[static_cast<std::size_t>(v)];
        return v;
    }
    int PartOfWalk(std::size_t w) { return Part(vertexOf[static_cast<std::size_t>(walks[w][0])]); }

    /// A border without the curves that have the face on both sides is made of simple loops that meet in single ends,
    /// so their number is curves - ends + parts; one of them is the outer one.
    TracedFace FaceOf(int walk) const {
        TracedFace face{areas[static_cast<std::size_t>(walk)], 0};
        std::vector<int> border;
        auto const isHere = [&](int side) {
            int const w = walkOf[static_cast<std::size_t>(side)];
            return w == walk || around[static_cast<std::size_t>(w)] == walk;
        };
        for (std::size_t w = 0; w < walks.size(); ++w)
            if (around[w] == walk)
                face.area += areas[w];
        for (int side = 0; side < static_cast<int>(vertexOf.size()); ++side)
            if (isHere(side) && !isHere(side ^ 1))
                border.push_back(side);
        std::map<int, int> link;
        auto const root = [&](int v) {
            while (link[v] != v)
                v = link[v];
            return v;
        };
        for (int const side : border)
            for (int const v : {vertexOf[static_cast<std::size_t>(side)], vertexOf[static_cast<std::size_t>(side ^ 1)]})
                link.emplace(v, v);
        int parts = static_cast<int>(link.size());
        for (int const side : border) {
            int const a = root(vertexOf[static_cast<std::size_t>(side)]);
            int const b = root(vertexOf[static_cast<std::size_t>(side ^ 1)]);
            if (a != b) {
                link[a] = b;
                --parts;
            }
        }
        face.holes = static_cast<int>(border.size()) - static_cast<int>(link.size()) + parts - 1;
        return face;
    }

    std::vector<DrawingCurve> const &curves;
    std::map<std::pair<double, double>, int> vertices;
    std::vector<int> vertexOf; ///< where each side begins
    std::vector<std::vector<int>> spokes;
    std::vector<int> walkOf;
    std::vector<std::vector<int>> walks;
    std::vector<double> areas;
    std::vector<int> part;
    std::vector<int> around;
};

} // namespace

std::vector<TracedFace> TraceFaces(std::vector<DrawingCurve> const &curves) {
    return Tracer(curves).Faces();
}

} // namespace drawing_fixtures
