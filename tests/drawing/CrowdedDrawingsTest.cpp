#include "tests/drawing/DrawingCurves.h"
#include "tests/drawing/DrawingInvariants.h"
#include "zvi/drawing/MakeDrawingDomains.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace zvi::lib::test {

namespace {

constexpr int kCount = 1200; // enough that boxes crowd
constexpr double kSide = 1000.0;

DrawingPoint OnCircle(double radius, double share) {
    return {radius * std::cos(2.0 * kPi * share), radius * std::sin(2.0 * kPi * share)};
}

std::vector<DrawingCurve> Square(double side) {
    return {LineOf({0, 0}, {side, 0}), LineOf({side, 0}, {side, side}), LineOf({side, side}, {0, side}),
            LineOf({0, side}, {0, 0})};
}

std::vector<DrawingCurve> HatchedSquare() {
    std::vector<DrawingCurve> curves = Square(kSide);
    for (int i = 1; i <= kCount; ++i) {
        double const d = 2.0 * kSide * i / (kCount + 1.0), beyond = std::max(0.0, d - kSide);
        curves.push_back(LineOf({beyond, d - beyond}, {d - beyond, beyond}));
    }
    return curves;
}

/// Circles whose centres stand so far from one another as the step of their radii times `share`.
std::vector<DrawingCurve> ConcentricCircles(double share) {
    std::vector<DrawingCurve> curves;
    for (int i = 1; i <= kCount; ++i)
        curves.push_back(CircleOf({i % 2 == 0 ? 3.0 : 3.0 + share, 4}, i));
    return curves;
}

/// Wedges, every second one open, round a place at which `rise` of the chord bends their sides.
std::vector<DrawingCurve> Wedges(double rise) {
    std::vector<DrawingCurve> curves;
    for (int i = 0; i < kCount; ++i) {
        DrawingPoint const a = OnCircle(kSide, i / (kCount + 0.0)), b = OnCircle(kSide, (i + 0.5) / kCount);
        curves.push_back(rise == 0.0 ? LineOf({0, 0}, a) : ArcOver({0, 0}, a, rise));
        curves.push_back(LineOf(a, b));
        curves.push_back(rise == 0.0 ? LineOf(b, {0, 0}) : ArcOver(b, {0, 0}, -rise));
    }
    return curves;
}

/// Lines of whole numbers through the origin, in a circle that cuts them.
std::vector<DrawingCurve> LinesThroughOnePoint() {
    std::vector<DrawingCurve> curves{CircleOf({0, 0}, 900)};
    for (int i = 0; i < kCount / 2; ++i) {
        double const step = i;
        curves.push_back(LineOf({-1200, 2 * step}, {1200, -2 * step}));
        curves.push_back(LineOf({2 * step + 1, -1200}, {-2 * step - 1, 1200}));
    }
    return curves;
}

/// Curves of one line or of one circle, each of which reaches one step farther to both sides than the one before, and
/// what closes the last one.
std::vector<DrawingCurve> Overlapping(int count, bool onCircle) {
    std::vector<DrawingCurve> curves;
    for (int i = 1; i <= count; ++i) {
        double const turn = 144.0 * i / count;
        curves.push_back(onCircle ? ArcOf({0, 0}, kSide, -turn, turn)
                                  : LineOf({-3.0 * i, -4.0 * i}, {3.0 * i, 4.0 * i}));
        if (i % 2 == 0) {
            std::swap(curves.back().start, curves.back().end);
            curves.back().clockwise = onCircle;
        }
    }
    DrawingPoint const a = curves.back().start, b = curves.back().end;
    curves.push_back(onCircle ? LineOf(a, b) : ArcOver(a, b, 0.1));
    return curves;
}

} // namespace

TEST(CrowdedDrawings, OfCurvesThatOverlapEachKeepsWhatEarlierOnesLeave) {
    constexpr int kOverlapping = 400;
    for (bool const onCircle : {false, true}) {
        SCOPED_TRACE(onCircle ? "circle" : "line");
        DrawingResult const result = MakeDrawingDomains(Numbered(Overlapping(kOverlapping, onCircle)));
        ASSERT_EQ(result.domains.size(), 1u);
        EXPECT_EQ(result.counts.cut, kOverlapping * (kOverlapping - 1));
        ASSERT_EQ(result.leftovers.size(), kOverlapping - 1u);
        for (DrawingLeftover const &l : result.leftovers) {
            EXPECT_EQ(l.reason, LeftoverReason::kDuplicate);
            EXPECT_NEAR(l.piece.from, 0.5 / l.piece.curve, 1e-9);
            EXPECT_NEAR(l.piece.to, 1.0 - 0.5 / l.piece.curve, 1e-9);
        }
    }
}

TEST(CrowdedDrawings, FamiliesOfCurvesGiveTheDomainsOfTheirFormula) {
    double const wedge = 0.5 * kSide * kSide * std::sin(kPi / kCount);
    struct {
        char const *name;
        std::vector<DrawingCurve> curves;
        int domains;
        double area;
    } const rows[] = {{"hatched square", HatchedSquare(), kCount + 1, kSide * kSide},
                      {"concentric circles", ConcentricCircles(0.0), kCount, kPi * kCount * kCount},
                      {"nearly concentric circles", ConcentricCircles(0.4), kCount, kPi * kCount * kCount},
                      {"wedges at one vertex", Wedges(0.0), kCount, kCount * wedge},
                      {"bent wedges at one vertex", Wedges(1e-5), kCount, kCount * wedge},
                      {"lines through one point", LinesThroughOnePoint(), 2 * kCount, kPi * 900 * 900}};
    for (auto const &row : rows) {
        SCOPED_TRACE(row.name);
        DrawingResult const result = MakeDrawingDomains(Numbered(row.curves));
        EXPECT_EQ(static_cast<int>(result.domains.size()), row.domains);
        EXPECT_NEAR(TotalArea(result), row.area, 1e-9 * row.area);
    }
}

} // namespace zvi::lib::test
