#include "apps/zvi/domains/input/CurveText.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/TextDecoding.h"
#include "apps/zvi/domains/geometry/Affine.h"
#include "apps/zvi/domains/geometry/Flatten.h"
#include "zvi/math/elementary/Elementary.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace zvi::app {

namespace {

using lib::DrawingCurve;
using lib::DrawingCurveType;
using lib::DrawingPoint;
using Numbers = std::vector<double>;

/// Three points are on one line when the middle one is off the chord by less than this part of the chord.
constexpr double kOnOneLine = 1e-12;

DrawingCurve Line(Numbers const &n, std::size_t) {
    DrawingCurve curve;
    curve.start = {n[0], n[1]};
    curve.end = {n[2], n[3]};
    return curve;
}

DrawingCurve Circle(Numbers const &n, std::size_t) {
    DrawingCurve curve;
    curve.type = DrawingCurveType::kCircle;
    curve.center = {n[0], n[1]};
    curve.radius = n[2];
    curve.start = curve.end = {n[0] + n[2], n[1]};
    return curve;
}

DrawingCurve Arc(Numbers const &n, std::size_t line) {
    constexpr double kTurn = 360.0;
    if (SweepBetween(n[3], n[4], kTurn) >= kTurn)
        return Circle(n, line);
    auto const at = [&n](double degrees) {
        Point3 const unit = UnitAtDegrees(degrees);
        return DrawingPoint{n[0] + n[2] * unit.x, n[1] + n[2] * unit.y};
    };
    DrawingCurve curve;
    curve.type = DrawingCurveType::kArc;
    curve.center = {n[0], n[1]};
    curve.radius = n[2];
    curve.start = at(n[3]);
    curve.end = at(n[4]);
    return curve;
}

/// The arc through three points that are on one line: the segment, provided that the middle one is between the ends.
DrawingCurve StraightArc(Numbers const &n, std::size_t line) {
    double const along = (n[2] - n[0]) * (n[4] - n[0]) + (n[3] - n[1]) * (n[5] - n[1]);
    double const chord = (n[4] - n[0]) * (n[4] - n[0]) + (n[5] - n[1]) * (n[5] - n[1]);
    if (chord == 0.0)
        throw InputError(line, "arc3 starts and ends at one point; write a circle instead");
    if (!(along >= 0.0 && along <= chord))
        throw InputError(line, "the points of arc3 are on one line with the middle point outside; no arc runs through "
                               "them, check the order of the points");
    return Line({n[0], n[1], n[4], n[5]}, line);
}

/// The centre of the circle through the origin, m and e is (|m|^2 (e.y, -e.x) - |e|^2 (m.y, -m.x)) / (2 m x e).
DrawingCurve ArcThrough(Numbers const &n, std::size_t line) {
    DrawingPoint const m{n[2] - n[0], n[3] - n[1]};
    DrawingPoint const e{n[4] - n[0], n[5] - n[1]};
    double const cross = m.x * e.y - m.y * e.x;
    double const squaredM = m.x * m.x + m.y * m.y;
    double const squaredE = e.x * e.x + e.y * e.y;
    if (!(std::abs(cross) > kOnOneLine * squaredE) || squaredM == 0.0)
        return StraightArc(n, line);
    DrawingCurve curve;
    curve.type = DrawingCurveType::kArc;
    curve.start = {n[0], n[1]};
    curve.end = {n[4], n[5]};
    curve.center = {n[0] + (squaredM * e.y - squaredE * m.y) / (2.0 * cross),
                    n[1] + (squaredE * m.x - squaredM * e.x) / (2.0 * cross)};
    curve.radius = lib::Hypot(n[0] - curve.center.x, n[1] - curve.center.y);
    curve.clockwise = cross < 0.0;
    return curve;
}

/// A kind of curve: its word, how its numbers are written, how many there are after the id, and what they make.
struct Kind {
    char const *word;
    char const *form;
    std::size_t count;
    DrawingCurve (*make)(Numbers const &, std::size_t);
};

constexpr Kind kKinds[] = {
    {"line", "line ID x1 y1 x2 y2", 4, Line},
    {"arc", "arc ID cx cy r startDeg endDeg", 5, Arc},
    {"arc3", "arc3 ID x1 y1 xm ym x2 y2", 6, ArcThrough},
    {"circle", "circle ID cx cy r", 3, Circle},
};

std::vector<std::string_view> Words(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r\v\f";
    std::vector<std::string_view> words;
    std::string_view rest = line.substr(0, line.find('#'));
    for (std::size_t start = rest.find_first_not_of(kBlanks); start != std::string_view::npos;
         start = rest.find_first_not_of(kBlanks)) {
        rest.remove_prefix(start);
        words.push_back(rest.substr(0, rest.find_first_of(kBlanks)));
        rest.remove_prefix(words.back().size());
    }
    return words;
}

Kind const &KindOf(std::string_view word, std::size_t line) {
    std::vector<std::string> known;
    for (Kind const &kind : kKinds) {
        if (word == kind.word)
            return kind;
        known.emplace_back(kind.word);
    }
    std::string const nearest = NearestName(word, known);
    std::string const advice =
        nearest.empty() ? "; a line starts with line, arc, arc3 or circle" : "; did you mean \"" + nearest + "\"?";
    throw InputError(line, "unknown curve " + Quoted(word) + advice);
}

unsigned int ParseId(std::string_view word, std::size_t line) {
    std::optional<long long> const id = ParseInteger(word);
    if (!id || *id < 1 || *id > std::numeric_limits<unsigned int>::max())
        throw InputError(line, "the id " + Quoted(word) + " is not an integer from 1 to 4294967295");
    return static_cast<unsigned int>(*id);
}

DrawingCurve ParseCurve(std::vector<std::string_view> const &words, std::size_t line) {
    Kind const &kind = KindOf(words[0], line);
    if (words.size() != kind.count + 2)
        throw InputError(line, std::to_string(words.size() - 1) + " values where " + std::to_string(kind.count + 1) +
                                   " belong; write: " + kind.form);
    unsigned int const id = ParseId(words[1], line);
    Numbers numbers;
    for (std::size_t i = 2; i < words.size(); ++i) {
        std::optional<double> const number = ParseNumber(words[i]);
        if (!number)
            throw InputError(line, Quoted(words[i]) + " is not a number; write: " + kind.form);
        numbers.push_back(*number);
    }
    DrawingCurve curve = kind.make(numbers, line);
    curve.id = id;
    return curve;
}

void AddCurve(DrawingInput &input, DrawingCurve const &curve, std::size_t line) {
    auto const [entry, isNew] = input.indexOfId.try_emplace(curve.id, input.curves.size());
    if (!isNew)
        throw InputError(line, "id " + std::to_string(curve.id) + " was used in line " +
                                   std::to_string(input.entities[entry->second].line) +
                                   " already; give each curve an id of its own");
    input.curves.push_back(curve);
    input.origins.push_back({0, static_cast<std::uint32_t>(input.entities.size())});
    input.entities.push_back({"", "", line});
}

} // namespace

DrawingInput ReadCurveText(std::string_view text) {
    text = WithoutUtf8Mark(text);
    DrawingInput input;
    input.layers = {DrawingLayer{}};
    for (std::size_t line = 1; !text.empty(); ++line) {
        std::size_t const end = text.find('\n');
        std::vector<std::string_view> const words = Words(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!words.empty())
            AddCurve(input, ParseCurve(words, line), line);
    }
    return input;
}

} // namespace zvi::app
