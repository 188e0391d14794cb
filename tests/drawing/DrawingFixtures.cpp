#include "tests/drawing/DrawingFixtures.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

using namespace zvi::lib;

namespace drawing_fixtures {

namespace {

constexpr double kPi = 3.14159265358979323846;

/// Fractions of one curve closer than this are one.
constexpr double kSameFraction = 1e-9;

DrawingPoint OnCircle(DrawingCurve const &c, double degrees) {
    double const quarters = degrees / 90.0;
    if (quarters == std::floor(quarters)) {
        int const q = static_cast<int>(quarters) & 3;
        double const x[] = {1.0, 0.0, -1.0, 0.0}, y[] = {0.0, 1.0, 0.0, -1.0};
        return {c.center.x + c.radius * x[q], c.center.y + c.radius * y[q]};
    }
    double const a = degrees * kPi / 180.0;
    return {c.center.x + c.radius * std::cos(a), c.center.y + c.radius * std::sin(a)};
}

double Sweep(DrawingPiece const &p) {
    if (p.type == DrawingCurveType::kLine)
        return 0.0;
    double const full = p.clockwise ? -2.0 * kPi : 2.0 * kPi;
    if (p.type == DrawingCurveType::kCircle)
        return full;
    double const a = std::atan2(p.start.y - p.center.y, p.start.x - p.center.x);
    double const b = std::atan2(p.end.y - p.center.y, p.end.x - p.center.x);
    double sweep = p.clockwise ? a - b : b - a;
    if (sweep < -1e-9)
        sweep += 2.0 * kPi;
    return p.clockwise ? -sweep : sweep;
}

/// Signed area of a loop from its pieces: chords and circular segments.
double LoopArea(std::vector<DrawingPiece> const &loop) {
    double area = 0.0;
    DrawingPoint const o = loop[0].start;
    for (DrawingPiece const &p : loop) {
        double const s = Sweep(p);
        area += 0.5 * ((p.start.x - o.x) * (p.end.y - o.y) - (p.end.x - o.x) * (p.start.y - o.y));
        area += 0.5 * p.radius * p.radius * (s - std::sin(s));
    }
    return area;
}

bool IsClosed(std::vector<DrawingPiece> const &loop) {
    for (std::size_t i = 0; i < loop.size(); ++i) {
        DrawingPoint const a = loop[i].end, b = loop[(i + 1) % loop.size()].start;
        if (a.x != b.x || a.y != b.y)
            return false;
    }
    return !loop.empty();
}

struct Stretch {
    double from, to;
    int kind; ///< 0 border against the curve, 1 border along it, 2 leftover
};

class Check {
public:
    Check(std::vector<DrawingCurve> const &curves, DrawingResult const &result) {
        for (DrawingDomain const &d : result.domains)
            LookAt(d);
        for (DrawingLeftover const &left : result.leftovers)
            Add(left.piece, 2);
        for (DrawingCurve const &c : curves)
            LookAtCurve(c.id);
    }

    std::string Text() const { return wrong.str(); }

private:
    void Add(DrawingPiece const &p, int kind) {
        if (!(p.from <= p.to) || p.from < 0.0 || p.to > 1.0)
            wrong << "curve " << p.curve << " from " << p.from << " to " << p.to << "\n";
        stretches[p.curve].push_back({p.from, p.to, kind});
    }

    void LookAtLoop(std::vector<DrawingPiece> const &loop, double sign, double &area) {
        if (!IsClosed(loop)) {
            wrong << "open loop at curve " << (loop.empty() ? 0u : loop[0].curve) << "\n";
            return;
        }
        double const loopArea = LoopArea(loop);
        if (!(sign * loopArea > 0.0))
            wrong << "loop at curve " << loop[0].curve << " runs the wrong way, area " << loopArea << "\n";
        area += loopArea;
        for (DrawingPiece const &p : loop)
            Add(p, p.reversed ? 0 : 1);
    }

    void LookAt(DrawingDomain const &d) {
        double area = 0.0;
        LookAtLoop(d.outer, 1.0, area);
        double const outer = area;
        for (auto const &hole : d.holes)
            LookAtLoop(hole, -1.0, area);
        if (!(std::fabs(area - d.area) <= 1e-9 * outer))
            wrong << "area " << d.area << " of pieces " << area << "\n";
        if (!(d.area > 0.0))
            wrong << "area " << d.area << "\n";
    }

    /// The stretches of one side, one after another, and the leftovers must not overlap, and together cover the curve.
    void LookAtCurve(unsigned int id) {
        auto &own = stretches[id];
        std::vector<Stretch> all;
        for (int side = 0; side < 2; ++side) {
            std::vector<Stretch> line;
            for (Stretch const &s : own)
                if (s.kind == side || s.kind == 2)
                    line.push_back(s);
            std::sort(line.begin(), line.end(),
                      [](auto const &a, auto const &b) { return std::pair(a.from, a.to) < std::pair(b.from, b.to); });
            for (std::size_t i = 1; i < line.size(); ++i)
                if (line[i].from < line[i - 1].to - kSameFraction)
                    wrong << "curve " << id << " is used twice from " << line[i].from << " to " << line[i - 1].to
                          << "\n";
            all.insert(all.end(), line.begin(), line.end());
        }
        std::sort(all.begin(), all.end(), [](auto const &a, auto const &b) { return a.from < b.from; });
        double reached = 0.0;
        for (Stretch const &s : all) {
            if (s.from > reached + kSameFraction)
                wrong << "curve " << id << " is lost from " << reached << " to " << s.from << "\n";
            reached = std::max(reached, s.to);
        }
        if (reached < 1.0 - kSameFraction)
            wrong << "curve " << id << " is lost from " << reached << "\n";
    }

    std::map<unsigned int, std::vector<Stretch>> stretches;
    std::ostringstream wrong;
};

} // namespace

std::vector<DrawingCurve> Curves(std::string const &text) {
    std::vector<DrawingCurve> curves;
    std::istringstream items(text);
    for (std::string item; std::getline(items, item, ';');) {
        std::istringstream in(item);
        std::string kind;
        DrawingCurve c;
        if (!(in >> kind >> c.id))
            continue;
        if (kind == "line") {
            in >> c.start.x >> c.start.y >> c.end.x >> c.end.y;
        } else {
            double from = 0.0, to = 360.0;
            in >> c.center.x >> c.center.y >> c.radius;
            c.type = kind == "arc" ? DrawingCurveType::kArc : DrawingCurveType::kCircle;
            if (kind == "arc")
                in >> from >> to;
            c.start = OnCircle(c, from);
            c.end = OnCircle(c, to);
        }
        curves.push_back(c);
    }
    return curves;
}

std::size_t HoleCount(DrawingResult const &result) {
    std::size_t count = 0;
    for (DrawingDomain const &d : result.domains)
        count += d.holes.size();
    return count;
}

double TotalArea(DrawingResult const &result) {
    double area = 0.0;
    for (DrawingDomain const &d : result.domains)
        area += d.area;
    return area;
}

std::string WhatIsWrong(std::vector<DrawingCurve> const &curves, DrawingResult const &result) {
    return Check(curves, result).Text();
}

} // namespace drawing_fixtures
