#include "apps/zvi/domains/geometry/Flatten.h"

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace zvi::app {

namespace {

using lib::DrawingPoint;

/// Part of the allowed error that the sagitta of a chord may take; the rest covers corners that are set outside.
constexpr double kSagittaShare = 0.75;

/// A span whose sagitta is below this part of the allowed error is taken as straight.
constexpr double kStraightShare = 0.02;

/// Fewest chords of a span that is not straight: with them the corners stay within the error.
constexpr int kFewestChords = 4;

/// Area between a parabola and its chord over sagitta times chord; holds for short arcs of any smooth curve.
constexpr double kSegmentAreaFactor = 2.0 / 3.0;

/// Relative difference below which the axes of an ellipse count as equal and at right angles.
constexpr double kCircular = 1e-9;

/// Relative area below which an ellipse has collapsed.
constexpr double kCollapsed = 1e-12;

DrawingPoint operator+(DrawingPoint const &a, DrawingPoint const &b) {
    return {a.x + b.x, a.y + b.y};
}

DrawingPoint operator-(DrawingPoint const &a, DrawingPoint const &b) {
    return {a.x - b.x, a.y - b.y};
}

DrawingPoint operator*(double s, DrawingPoint const &a) {
    return {s * a.x, s * a.y};
}

double Dot(DrawingPoint const &a, DrawingPoint const &b) {
    return a.x * b.x + a.y * b.y;
}

double Length(DrawingPoint const &a) {
    return lib::Hypot(a.x, a.y);
}

/// The part of p - (a + b) / 2 at right angles to the chord from a to b; all of it when the chord has no length.
DrawingPoint Rise(DrawingPoint const &a, DrawingPoint const &b, DrawingPoint const &p) {
    DrawingPoint const chord = b - a;
    DrawingPoint const fromMiddle = p - 0.5 * (a + b);
    double const squared = Dot(chord, chord);
    return squared > 0.0 ? fromMiddle - (Dot(fromMiddle, chord) / squared) * chord : fromMiddle;
}

/// A span cut evenly into chords: their ends, and the rise of the curve over the middle of each.
struct Chords {
    std::vector<DrawingPoint> ends;
    std::vector<DrawingPoint> rises;
    double largestRise = 0.0;
};

Chords CutEvenly(PlaneCurve const &curve, double from, double to, int count) {
    // Beside the middle, a quarter and three quarters show a chord that crosses an S of the curve.
    Chords chords;
    auto const at = [&](double step) { return curve(from + (to - from) * step / count); };
    chords.ends.push_back(at(0));
    for (int i = 0; i < count; ++i) {
        DrawingPoint const start = chords.ends.back();
        DrawingPoint const end = at(i + 1);
        chords.ends.push_back(end);
        chords.rises.push_back(Rise(start, end, at(i + 0.5)));
        for (double const part : {0.25, 0.5, 0.75})
            chords.largestRise = std::max(chords.largestRise, Length(Rise(start, end, at(i + part))));
    }
    return chords;
}

/// The fewest even chords within the allowed sagitta, found by its falling with the square of their number.
Chords CutToError(PlaneCurve const &curve, double from, double to, double error) {
    Chords chords = CutEvenly(curve, from, to, 1);
    if (!(chords.largestRise > kStraightShare * error))
        return chords;
    double const allowed = kSagittaShare * error;
    int count = kFewestChords;
    for (chords = CutEvenly(curve, from, to, count); chords.largestRise > allowed && count < kMostChords;
         chords = CutEvenly(curve, from, to, count)) {
        double const needed = std::ceil(count * std::sqrt(chords.largestRise / allowed));
        count = static_cast<int>(std::clamp(needed, count + 1.0, double(kMostChords)));
    }
    return chords;
}

/// Moves the inner corners out so that the chords take back the area that lies between them and the curve. Each chord
/// spreads its area over its inner ends; a corner moved by d adds half the length of both its chords times d.
void KeepArea(Chords &chords) {
    std::size_t const count = chords.rises.size();
    std::vector<DrawingPoint> const onCurve = chords.ends;
    auto const length = [&onCurve](std::size_t chord) { return Length(onCurve[chord + 1] - onCurve[chord]); };
    for (std::size_t i = 1; i < count; ++i) {
        double const before = length(i - 1);
        double const after = length(i);
        if (!(before + after > 0.0))
            continue;
        double const shareBefore = i == 1 ? 1.0 : 0.5;
        double const shareAfter = i + 1 == count ? 1.0 : 0.5;
        DrawingPoint const area =
            kSegmentAreaFactor * (shareBefore * before * chords.rises[i - 1] + shareAfter * after * chords.rises[i]);
        chords.ends[i] = onCurve[i] + (2.0 / (before + after)) * area;
    }
}

} // namespace

void FlattenSpan(PlaneCurve const &curve, double from, double to, double error, std::vector<DrawingPoint> &points) {
    assert(!points.empty());
    Chords chords = CutToError(curve, from, to, error);
    KeepArea(chords);
    points.insert(points.end(), chords.ends.begin() + 1, chords.ends.end());
}

DrawingPoint EllipseArc::At(double t) const {
    return center + lib::Cos(t) * cosineAxis + lib::Sin(t) * sineAxis;
}

EllipseArc EllipseArc::WithPrincipalAxes() const {
    double const turn =
        0.5 * lib::Atan2(2.0 * Dot(cosineAxis, sineAxis), Dot(cosineAxis, cosineAxis) - Dot(sineAxis, sineAxis));
    EllipseArc turned = *this;
    turned.cosineAxis = lib::Cos(turn) * cosineAxis + lib::Sin(turn) * sineAxis;
    turned.sineAxis = lib::Cos(turn) * sineAxis - lib::Sin(turn) * cosineAxis;
    turned.from = from - turn;
    return turned;
}

bool IsCircular(EllipseArc const &arc) {
    double const a = Dot(arc.cosineAxis, arc.cosineAxis);
    double const b = Dot(arc.sineAxis, arc.sineAxis);
    double const allowed = kCircular * std::max(a, b);
    return std::abs(a - b) <= allowed && std::abs(Dot(arc.cosineAxis, arc.sineAxis)) <= allowed;
}

bool IsCollapsed(EllipseArc const &arc) {
    double const area = std::abs(arc.cosineAxis.x * arc.sineAxis.y - arc.cosineAxis.y * arc.sineAxis.x);
    double const a = Dot(arc.cosineAxis, arc.cosineAxis);
    double const b = Dot(arc.sineAxis, arc.sineAxis);
    bool const wellFormed = std::isfinite(arc.center.x) && std::isfinite(arc.center.y) && std::isfinite(a + b);
    return !wellFormed || !std::isfinite(arc.from + arc.sweep) || !(area > kCollapsed * std::max(a, b));
}

std::vector<DrawingPoint> FlattenEllipse(EllipseArc const &arc, double error) {
    constexpr double kQuarter = 0.5 * std::numbers::pi;
    assert(std::abs(arc.sweep) < 4.5 * kQuarter);
    // Spans shorter than this part of a quarter are left to their neighbour.
    constexpr double kShortest = 1e-9;
    EllipseArc along = arc.WithPrincipalAxes();
    along.from = std::fmod(along.from, 4.0 * kQuarter);
    PlaneCurve const curve = [&along](double t) { return along.At(t); };
    double const end = along.from + along.sweep;
    double const step = along.sweep < 0.0 ? -kQuarter : kQuarter;
    double next = step * (std::floor(along.from / step + kShortest) + 1.0);
    double from = along.from;
    std::vector<DrawingPoint> points{arc.At(arc.from)};
    for (; (end - next) / step > kShortest; next += step) {
        FlattenSpan(curve, from, next, error, points);
        from = next;
    }
    FlattenSpan(curve, from, end, error, points);
    bool const fullTurn = std::abs(std::abs(arc.sweep) - 4.0 * kQuarter) <= kShortest;
    points.back() = fullTurn ? points.front() : arc.At(arc.from + arc.sweep);
    return points;
}

double SweepBetween(double from, double to, double turn) {
    assert(turn > 0.0);
    // Angles are written with some 12 digits at best; less than this part of a turn is noise.
    constexpr double kSameDirection = 1e-12;
    // A full turn is often written with a few digits, and then a little more than one.
    constexpr double kWrittenTurn = 1e-6;
    if (to - from > turn && to - from <= (1.0 + kWrittenTurn) * turn)
        return turn;
    double const rest = std::fmod(to - from, turn);
    double const sweep = rest < 0.0 ? rest + turn : rest;
    return sweep <= kSameDirection * turn || sweep >= (1.0 - kSameDirection) * turn ? turn : sweep;
}

} // namespace zvi::app
