#include "tests/drawing/DrawingFamilies.h"

#include "tests/drawing/DrawingCurves.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace zvi::lib::test {

namespace {

/// Tolerances are off the round numbers of a drawing by this factor, except 0 and the default, and have more decimals.
constexpr double kOffRound = 1.0473001;
constexpr double kTolerances[] = {0.0, 1e-9, 1e-6, 1e-4, 1e-2, 0.1, 1.0, 5.0};
constexpr int kAllDecimals = 7;

/// Draws curves whose numbers have a fixed count of decimals.
class Pen {
public:
    explicit Pen(std::uint64_t seed) : dice(seed) {
        m_decimals = dice.Whole(1, kAllDecimals);
        double const wide = kTolerances[static_cast<std::size_t>(dice.Whole(0, std::size(kTolerances) - 1))];
        double const tolerance = dice.Chance(0.4) ? 1e-4 : wide;
        drawing.options.joinTolerance = tolerance == 1e-4 ? tolerance : kOffRound * tolerance;
        drawing.areCountsSure = tolerance != 1e-4 || m_decimals < 4 || m_decimals == kAllDecimals;
    }

    /// For families whose point is the tolerance itself: one that is small against the drawing, and all decimals.
    double ClearTolerance() {
        m_decimals = kAllDecimals;
        drawing.areCountsSure = true;
        return drawing.options.joinTolerance = kOffRound * std::pow(10.0, dice.Whole(-7, -2));
    }

    double Number(double v) const {
        double const scale = std::pow(10.0, m_decimals);
        return m_decimals == kAllDecimals ? v : std::round(v * scale) / scale;
    }
    DrawingPoint At(double x, double y) const { return {Number(x), Number(y)}; }
    DrawingPoint Polar(DrawingPoint o, double r, double degrees) const {
        return At(o.x + r * std::cos(degrees * kPi / 180.0), o.y + r * std::sin(degrees * kPi / 180.0));
    }
    DrawingPoint Place(double reach) { return At(dice.Real(-reach, reach), dice.Real(-reach, reach)); }

    void Line(DrawingPoint a, DrawingPoint b) { Add(dice.Chance(0.5) ? LineOf(a, b) : LineOf(b, a)); }
    void Circle(DrawingPoint o, double r) { Add(CircleOf(o, Number(r))); }
    void Arc(DrawingPoint o, double r, double from, double to) { Add(ArcOf(o, Number(r), Number(from), Number(to))); }
    /// The arc from `a` to `b`, counter-clockwise, about the place near `o` that is as far from both.
    void ArcThrough(DrawingPoint o, DrawingPoint a, DrawingPoint b) {
        double const dx = b.x - a.x, dy = b.y - a.y, mx = 0.5 * (a.x + b.x), my = 0.5 * (a.y + b.y);
        double const off = ((o.x - mx) * -dy + (o.y - my) * dx) / (dx * dx + dy * dy);
        DrawingCurve c = CircleOf({mx - off * dy, my + off * dx}, 0.0);
        c.radius = 0.5 * (Distance(c.center, a) + Distance(c.center, b));
        c.type = DrawingCurveType::kArc;
        c.start = a;
        c.end = b;
        Add(c);
    }
    void Add(DrawingCurve c) {
        c.id = static_cast<unsigned int>(drawing.curves.size()) + 1;
        drawing.curves.push_back(c);
    }
    void Polygon(std::vector<DrawingPoint> const &corners) {
        for (std::size_t i = 0; i < corners.size(); ++i)
            Line(corners[i], corners[(i + 1) % corners.size()]);
    }

    Dice dice;
    Drawing drawing;

private:
    int m_decimals;
};

void CirclesTouchingInside(Pen &p) {
    DrawingPoint const o = p.Place(10.0);
    double const r = p.Number(p.dice.Real(1.0, 30.0)), s = p.Number(r * p.dice.Real(0.1, 0.98));
    p.Circle(o, r);
    p.Circle(p.Polar(o, r - s, p.dice.Real(0.0, 360.0)), s);
}

void CirclesTouchingOutside(Pen &p) {
    DrawingPoint o = p.Place(10.0);
    double r = p.Number(p.dice.Real(1.0, 10.0));
    p.Circle(o, r);
    for (int i = p.dice.Whole(1, 4); i > 0; --i) {
        double const s = p.Number(p.dice.Real(0.5, 10.0));
        o = p.Polar(o, r + s, p.dice.Real(0.0, 360.0));
        p.Circle(o, r = s);
    }
}

void CirclesNestedInOneDirection(Pen &p) {
    double const turn = p.dice.Chance(0.2) ? 90.0 * p.dice.Whole(0, 3) : p.dice.Real(0.0, 360.0);
    double const whole = p.dice.Real(2.0, 10.0);
    DrawingPoint const o = p.Place(5.0);
    double r = whole;
    for (int i = p.dice.Whole(2, 5); i > 0; --i, r *= p.dice.Real(0.5, 0.97))
        p.Circle(p.Polar(o, whole - r, turn), r);
}

void CircleInAStrip(Pen &p) {
    double const turn = p.dice.Chance(0.3) ? 90.0 * p.dice.Whole(0, 3) : p.dice.Real(0.0, 360.0);
    DrawingPoint const o = p.Place(5.0);
    double const r = p.Number(p.dice.Real(0.5, 3.0)), half = r * p.dice.Real(1.2, 4.0);
    auto const at = [&](double x, double y) {
        return p.Polar(o, std::hypot(x, y), turn + std::atan2(y, x) * 180.0 / kPi);
    };
    for (int i = p.dice.Whole(1, 3); i > 0; --i)
        p.Circle(i == 1 ? o : at(p.dice.Real(-half, half), 0.0), r);
    p.Polygon({at(-half, -r), at(half, -r), at(half, r), at(-half, r)});
}

void HatchedCircle(Pen &p) {
    DrawingPoint const o = p.Place(5.0);
    double const r = p.Number(p.dice.Real(1.0, 5.0)), turn = p.dice.Chance(0.5) ? 45.0 : p.dice.Real(0.0, 180.0);
    p.Circle(o, r);
    for (double off = -r, step = r * p.dice.Real(0.1, 0.6); off <= r; off += step) {
        double const half = std::acos(std::clamp(off / r, -1.0, 1.0)) * 180.0 / kPi;
        p.Line(p.Polar(o, r, turn + half), p.Polar(o, r, turn - half));
    }
}

void HatchedRectangle(Pen &p) {
    double const w = p.Number(p.dice.Real(1.0, 6.0)), h = p.Number(p.dice.Real(1.0, 6.0));
    DrawingPoint const o = p.Place(5.0);
    auto const at = [&](double x, double y) { return p.At(o.x + x, o.y + y); };
    p.Polygon({at(0, 0), at(w, 0), at(w, h), at(0, h)});
    for (double off = p.dice.Chance(0.5) ? 0.0 : -h, step = p.dice.Real(0.2, 1.0); off <= w; off += step)
        p.Line(at(std::max(off, 0.0), std::max(-off, 0.0)), at(std::min(off + h, w), std::min(h, w - off)));
}

void LinesThroughOnePoint(Pen &p) {
    DrawingPoint const o = p.Place(5.0), middle = p.At(o.x + p.dice.Real(-1.0, 1.0), o.y);
    double const r = p.dice.Real(2.0, 4.0);
    for (int i = p.dice.Whole(2, 7); i > 0; --i) {
        double const turn = p.dice.Real(0.0, 360.0);
        p.Line(p.Polar(middle, r * p.dice.Real(0.5, 1.6), turn), p.Polar(middle, -r * p.dice.Real(0.5, 1.6), turn));
    }
    if (p.dice.Chance(0.7))
        p.Circle(o, r);
    if (p.dice.Chance(0.4))
        p.Circle(p.Polar(middle, r, 10.0), r);
}

void OverlappingLines(Pen &p) {
    DrawingPoint const o = p.Place(5.0);
    double const turn = p.dice.Chance(0.3) ? 0.0 : p.dice.Real(0.0, 180.0);
    for (int row = p.dice.Whole(1, 3); row > 0; --row) {
        DrawingPoint const base = p.Polar(o, row * p.dice.Real(0.0, 2.0), turn + 90.0);
        for (int i = p.dice.Whole(1, 4); i > 0; --i)
            p.Line(p.Polar(base, p.dice.Real(-4.0, 4.0), turn), p.Polar(base, p.dice.Real(-4.0, 4.0), turn));
    }
    for (int i = p.dice.Whole(1, 3); i > 0; --i)
        p.Line(p.Polar(o, 5.0, turn + p.dice.Real(20.0, 160.0)), p.Polar(o, -5.0, turn + p.dice.Real(20.0, 160.0)));
    p.Circle(o, p.dice.Real(1.0, 4.0));
}

void ConcentricArcs(Pen &p) {
    DrawingPoint const o = p.Place(5.0);
    std::vector<double> turns, radii;
    for (int i = p.dice.Whole(2, 4); i > 0; --i)
        turns.push_back(p.Number(p.dice.Real(0.0, 360.0)));
    for (int i = p.dice.Whole(1, 3); i > 0; --i)
        radii.push_back(p.Number(p.dice.Real(1.0, 5.0)));
    auto const any = [&](auto const &list) {
        return list[static_cast<std::size_t>(p.dice.Whole(0, static_cast<int>(list.size()) - 1))];
    };
    for (int i = p.dice.Whole(2, 8); i > 0; --i)
        p.Arc(o, any(radii), any(turns), p.dice.Chance(0.7) ? any(turns) : p.dice.Real(0.0, 360.0));
    for (int i = p.dice.Whole(1, 4); i > 0; --i) {
        double const turn = any(turns);
        p.Line(p.Polar(o, any(radii), turn), p.Polar(o, any(radii), turn));
    }
}

void RoundedRectangles(Pen &p) {
    DrawingPoint const o = p.Place(5.0);
    for (int i = p.dice.Whole(1, 3); i > 0; --i) {
        double const w = p.Number(p.dice.Real(1.0, 5.0)), h = p.Number(p.dice.Real(1.0, 5.0));
        double const r = p.dice.Chance(0.3) ? h : p.Number(p.dice.Real(0.1, 1.0)) * std::min(w, h);
        auto const at = [&](double x, double y) { return p.At(o.x + x, o.y + y); };
        double const x = w - r, y = h - r;
        p.Line(at(-x, -h), at(x, -h));
        p.Line(at(w, -y), at(w, y));
        p.Line(at(x, h), at(-x, h));
        p.Line(at(-w, y), at(-w, -y));
        p.Arc(at(-x, -y), r, 180.0, 270.0);
        p.Arc(at(x, -y), r, 270.0, 360.0);
        p.Arc(at(x, y), r, 0.0, 90.0);
        p.Arc(at(-x, y), r, 90.0, 180.0);
    }
}

void Fillets(Pen &p) {
    DrawingPoint const o = p.Place(5.0);
    double const turn = p.dice.Real(0.0, 360.0), half = p.dice.Real(5.0, 85.0), r = p.Number(p.dice.Real(0.2, 2.0));
    double const reach = r / std::tan(half * kPi / 180.0), far = reach * p.dice.Real(1.5, 4.0);
    DrawingPoint const a = p.Polar(o, reach, turn + half), b = p.Polar(o, reach, turn - half);
    DrawingPoint const c = p.Polar(o, std::hypot(r, reach), turn);
    p.Line(p.dice.Chance(0.3) ? o : a, p.Polar(o, far, turn + half));
    p.Line(p.dice.Chance(0.3) ? o : b, p.Polar(o, far, turn - half));
    p.dice.Chance(0.4) ? p.Circle(c, r) : p.ArcThrough(c, a, b);
    p.Line(p.Polar(o, far, turn - half), p.Polar(o, far, turn + half));
}

void Slivers(Pen &p) {
    DrawingPoint const o = p.Place(5.0);
    double turn = p.dice.Real(0.0, 360.0);
    DrawingPoint last = p.Polar(o, 5.0, turn);
    for (int i = p.dice.Whole(1, 6); i > 0; --i) {
        turn += std::pow(10.0, p.dice.Real(-6.0, 1.0));
        DrawingPoint const next = p.Polar(o, 5.0 * p.dice.Real(0.9, 1.0), turn);
        p.Line(o, last);
        p.Line(last, next);
        p.Line(next, o);
        last = next;
    }
}

void BulgesOverChords(Pen &p) {
    DrawingPoint const a = p.Place(5.0), b = p.Place(5.0);
    for (int i = p.dice.Whole(1, 4); i > 0; --i) {
        double const rise = std::pow(10.0, p.dice.Real(-4.0, -0.5));
        p.Add(ArcOver(a, b, p.dice.Chance(0.5) ? rise : -rise));
    }
    p.Line(a, b);
    if (p.dice.Chance(0.5))
        p.Line(p.Place(5.0), p.At(0.5 * (a.x + b.x), 0.5 * (a.y + b.y)));
}

void WallsThatStopShort(Pen &p) {
    double const tolerance = p.ClearTolerance();
    double const w = p.dice.Real(5.0, 10.0), h = p.dice.Real(2.0, 5.0);
    p.Polygon({{0.0, 0.0}, {w, 0.0}, {w, h}, {0.0, h}});
    p.drawing.domains = 1;
    auto const miss = [&](bool &closes) {
        closes = p.dice.Chance(0.7);
        double const by = tolerance * (closes ? p.dice.Real(0.1, 0.95) : p.dice.Real(1.05, 10.0));
        bool const isBeyond = p.dice.Chance(0.3);
        closes = closes || isBeyond;
        return isBeyond ? -by : by;
    };
    for (int i = 1, n = p.dice.Whole(1, 6); i <= n; ++i) {
        bool lower = true, upper = true;
        double const x = w * i / (n + 1), y = miss(lower), top = h - miss(upper);
        p.Line({x, y}, {x + p.dice.Real(-0.3, 0.3) * w / n, top});
        p.drawing.domains += lower && upper;
    }
    p.drawing.area = w * h;
}

void PolygonsWithGaps(Pen &p) {
    double const tolerance = p.ClearTolerance(), r = p.dice.Real(2.0, 6.0);
    int const n = p.dice.Whole(3, 12);
    DrawingPoint const o = p.Place(10.0);
    p.drawing.domains = 1;
    p.drawing.area = 0.5 * n * r * r * std::sin(2.0 * kPi / n);
    auto const off = [&](double degrees) {
        return p.Polar(p.Polar(o, r, degrees), tolerance * p.dice.Real(0.0, 0.48), p.dice.Real(0.0, 360.0));
    };
    for (int i = 0; i < n; ++i)
        p.Line(off(360.0 * i / n), off(360.0 * (i + 1) / n));
}

void CirclesOfShortChords(Pen &p) {
    double const tolerance = p.ClearTolerance(), r = tolerance * p.dice.Real(5.0, 12.0);
    int const n = static_cast<int>(2.0 * kPi * r / (tolerance * p.dice.Real(0.1, 0.9)));
    DrawingPoint const o = p.Place(0.1);
    for (int i = 0; i < n; ++i)
        p.Line(p.Polar(o, r, 360.0 * i / n), p.Polar(o, r, 360.0 * (i + 1) / n));
    p.drawing.domains = 1;
    p.drawing.area = kPi * r * r;
}

void ChainsOfShortLines(Pen &p) {
    double const tolerance = p.ClearTolerance(), step = tolerance * p.dice.Real(0.2, 2.0);
    DrawingPoint const o = p.Place(1.0);
    std::vector<DrawingPoint> corners{o};
    double turn = p.dice.Real(0.0, 360.0), bend = p.dice.Real(-30.0, 30.0);
    for (int i = p.dice.Whole(4, 25); i > 0; --i, turn += bend + p.dice.Real(-40.0, 40.0))
        corners.push_back(p.Polar(corners.back(), step * p.dice.Real(0.3, 1.0), turn));
    p.Polygon(corners);
    if (p.dice.Chance(0.5))
        p.Circle(o, step * p.dice.Real(0.5, 10.0));
    if (p.dice.Chance(0.5))
        p.Line(p.Polar(o, 20.0 * step, 0.0), p.Polar(o, -20.0 * step, p.dice.Real(0.0, 90.0)));
}

void ThinWalls(Pen &p) {
    double const thick = std::max(1e-6, p.drawing.options.joinTolerance) * std::pow(10.0, p.dice.Real(-1.0, 1.0));
    for (int i = p.dice.Whole(2, 5); i > 0; --i) {
        DrawingPoint const a = p.Place(4.0), b = p.dice.Chance(0.3) ? p.At(a.x, p.dice.Real(-4.0, 4.0)) : p.Place(4.0);
        double const length = Distance(a, b), nx = thick * (a.y - b.y) / length, ny = thick * (b.x - a.x) / length;
        p.Line(a, b);
        p.Line(p.At(a.x + nx, a.y + ny), p.At(b.x + nx, b.y + ny));
        if (p.dice.Chance(0.5))
            p.Line(b, p.At(b.x + nx, b.y + ny));
    }
    p.Polygon({p.At(-3.0, -3.0), p.At(3.0, -3.0), p.At(3.0, 3.0), p.At(-3.0, 3.0)});
}

void NeighbouringPlates(Pen &p) {
    double const turn = p.dice.Chance(0.3) ? 0.0 : p.dice.Real(0.0, 360.0);
    auto const at = [&](double x, double y) {
        return p.Polar({0.0, 0.0}, std::hypot(x, y), turn + std::atan2(y, x) * 180.0 / kPi);
    };
    for (int i = p.dice.Whole(2, 6); i > 0; --i) {
        double const x = p.dice.Whole(0, 4), y = p.dice.Whole(0, 3), w = p.dice.Whole(1, 3), h = p.dice.Whole(1, 3);
        p.Polygon({at(x, y), at(x + w, y), at(x + w, y + h), at(x, y + h)});
        if (p.dice.Chance(0.4))
            p.Circle(at(x + 0.5, y + 0.5), 0.5);
    }
}

/// On the lattice shared ends, overlaps, tangents and crossings in one point are common; noise shakes them.
void Soup(Pen &p, bool isLattice, int kinds) {
    constexpr double kNoises[] = {0.0, 0.0, 1e-13, 1e-9, 1e-6};
    double const noise = kNoises[p.dice.Whole(0, 4)];
    auto const number = [&](double low, double high) {
        double const v = p.dice.Real(low, high);
        return isLattice ? std::round(v) + noise * p.dice.Real(-1.0, 1.0) : v;
    };
    for (int i = p.dice.Whole(3, p.dice.Chance(0.1) ? 30 : 12); i > 0; --i) {
        DrawingPoint const o = p.At(number(0.0, 8.0), number(0.0, 8.0));
        double const r = number(1.0, 3.0), quarter = isLattice ? 90.0 : 60.0;
        int const kind = p.dice.Whole(0, kinds - 1);
        if (kind == 0)
            p.Line(o, p.At(number(0.0, 8.0), number(0.0, 8.0)));
        else if (kind == 1)
            p.Circle(o, r);
        else
            p.Arc(o, r, quarter * number(0.0, 4.0), quarter * number(0.0, 4.0));
    }
}

void SoupsOfLines(Pen &p) {
    Soup(p, p.dice.Chance(0.5), 1);
}
void Soups(Pen &p) {
    Soup(p, false, 3);
}
void SoupsOnALattice(Pen &p) {
    Soup(p, true, 3);
}

struct Family {
    char const *name;
    void (*draw)(Pen &);
};

constexpr Family kFamilies[] = {
    {"circles touching inside", CirclesTouchingInside},
    {"circles touching outside", CirclesTouchingOutside},
    {"circles nested in one direction", CirclesNestedInOneDirection},
    {"circle in a strip", CircleInAStrip},
    {"hatched circle", HatchedCircle},
    {"hatched rectangle", HatchedRectangle},
    {"lines through one point", LinesThroughOnePoint},
    {"overlapping lines", OverlappingLines},
    {"concentric arcs", ConcentricArcs},
    {"rounded rectangles", RoundedRectangles},
    {"fillets", Fillets},
    {"slivers", Slivers},
    {"bulges over chords", BulgesOverChords},
    {"walls that stop short", WallsThatStopShort},
    {"polygons with gaps", PolygonsWithGaps},
    {"circles of short chords", CirclesOfShortChords},
    {"chains of short lines", ChainsOfShortLines},
    {"thin walls", ThinWalls},
    {"neighbouring plates", NeighbouringPlates},
    {"soups of lines", SoupsOfLines},
    {"soups", Soups},
    {"soups on a lattice", SoupsOnALattice},
};

/// Some drawings stand far from the origin, are huge or tiny, or run with other options.
void Vary(Pen &p) {
    Drawing &d = p.drawing;
    double const tolerance = d.options.joinTolerance;
    if (p.dice.Chance(0.03))
        d.options.split = false;
    if (p.dice.Chance(0.05))
        d.options.keepDuplicates = true;
    Motion motion;
    if (p.dice.Chance(0.05))
        motion.scale = std::ldexp(1.0, p.dice.Whole(-40, 40));
    else if (p.dice.Chance(0.05))
        motion.shift = tolerance >= 1e-4 && p.dice.Chance(0.3) ? DrawingPoint{1e9, -1e9} : DrawingPoint{-1e6, 1e6};
    d.curves = Moved(std::move(d.curves), motion);
    d.options.joinTolerance *= motion.scale;
    if (d.area > 0.0)
        d.area *= motion.scale * motion.scale;
    if (!d.options.split || d.options.keepDuplicates || tolerance < 1e-6 * std::fabs(motion.shift.x)) {
        d.areCountsSure = false;
        d.domains = -1;
        d.area = -1.0;
    }
}

} // namespace

int FamilyCount() {
    return static_cast<int>(std::size(kFamilies));
}

char const *FamilyName(int family) {
    return kFamilies[family].name;
}

Drawing DrawFamily(int family, std::uint64_t seed) {
    Pen pen(seed);
    kFamilies[family].draw(pen);
    Vary(pen);
    return pen.drawing;
}

} // namespace zvi::lib::test
