#include "apps/zvi/domains/geometry/Flatten.h"
#include "apps/zvi/domains/geometry/Spline.h"

#include "tests/Rows.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zvi::app::test {

namespace {

using lib::DrawingPoint;
constexpr double kPi = std::numbers::pi;

double PolygonArea(std::vector<DrawingPoint> const &points) {
    double doubled = 0.0;
    for (std::size_t i = 0, j = points.size() - 1; i < points.size(); j = i++)
        doubled += points[j].x * points[i].y - points[i].x * points[j].y;
    return doubled / 2.0;
}

double DistanceToChords(std::vector<DrawingPoint> const &points, DrawingPoint const &p) {
    double least = INFINITY;
    for (std::size_t i = 1; i < points.size(); ++i) {
        double const dx = points[i].x - points[i - 1].x;
        double const dy = points[i].y - points[i - 1].y;
        double const along = ((p.x - points[i - 1].x) * dx + (p.y - points[i - 1].y) * dy) / (dx * dx + dy * dy);
        double const t = std::clamp(along, 0.0, 1.0);
        least = std::min(least, std::hypot(p.x - points[i - 1].x - t * dx, p.y - points[i - 1].y - t * dy));
    }
    return least;
}

/// Largest distance of points of the arc from the chords, and of corners from a finely drawn arc.
double Deviation(EllipseArc const &arc, std::vector<DrawingPoint> const &points) {
    double largest = 0.0;
    std::vector<DrawingPoint> fine;
    for (int i = 0; i <= 20000; ++i)
        fine.push_back(arc.At(arc.from + arc.sweep * i / 20000));
    for (std::size_t i = 0; i < fine.size(); i += 7)
        largest = std::max(largest, DistanceToChords(points, fine[i]));
    for (DrawingPoint const &corner : points)
        largest = std::max(largest, DistanceToChords(fine, corner));
    return largest;
}

std::vector<DrawingPoint> FlattenFitted(Spline const &spline, double error) {
    std::optional<Spline> const fitted = WithControlPoints(spline);
    return fitted ? FlattenSpline(*fitted, {}, error, 1000000) : std::vector<DrawingPoint>();
}

} // namespace

TEST(Flatten, StaysWithinTheErrorAndKeepsTheAreaOfEllipses) {
    EllipseArc const ellipses[] = {
        {{0, 0}, {5, 0}, {0, 1}, 0.0, 2 * kPi},   {{100, -7}, {3, 4}, {-0.4, 0.3}, 1.0, 2 * kPi},
        {{0, 0}, {2, 0}, {1, 1}, 0.3, 2 * kPi},   {{0, 0}, {2, 0}, {1, 1}, 0.3, -2 * kPi},
        {{1, 1}, {4, 0}, {0, 2}, 100.0, 2 * kPi},
    };
    for (EllipseArc const &ellipse : ellipses) {
        double const area = kPi *
                            (ellipse.cosineAxis.x * ellipse.sineAxis.y - ellipse.cosineAxis.y * ellipse.sineAxis.x) *
                            (ellipse.sweep < 0 ? -1 : 1);
        for (double const error : {0.1, 1e-2, 1e-4}) {
            std::vector<DrawingPoint> const points = FlattenEllipse(ellipse, error);
            EXPECT_LE(Deviation(ellipse, points), error);
            // Inscribed chords would lose about two thirds of the error times the perimeter.
            EXPECT_NEAR(PolygonArea(points), area, 3.0 * error * error + 1e-9 * std::abs(area));
            EXPECT_EQ(points.front().x, points.back().x);
            EXPECT_EQ(points.front().y, points.back().y);
        }
    }
}

TEST(Flatten, KeepsTheEndsOfAxesAndOfTheArcOnTheCurve) {
    EllipseArc const arc{{10, 20}, {5, 0}, {0, 1}, -0.5, 4.0};
    std::vector<DrawingPoint> const points = FlattenEllipse(arc, 0.01);
    EXPECT_EQ(points.front().x, arc.At(-0.5).x);
    EXPECT_EQ(points.back().y, arc.At(3.5).y);
    for (DrawingPoint const &end : {DrawingPoint{15, 20}, DrawingPoint{10, 21}, DrawingPoint{5, 20}}) {
        bool const met = std::any_of(points.begin(), points.end(), [&end](DrawingPoint const &p) {
            return std::hypot(p.x - end.x, p.y - end.y) < 1e-12;
        });
        EXPECT_TRUE(met) << end.x << "," << end.y;
    }
}

TEST(Flatten, NeedsNoMoreChordsThanTheErrorAsksFor) {
    // A circle of radius 1 needs pi / sqrt(2 e) chords for a sagitta of e; three quarters of the error are used.
    EllipseArc const circle{{0, 0}, {1, 0}, {0, 1}, 0.0, 2 * kPi};
    for (double const error : {1e-2, 1e-4, 1e-6}) {
        double const least = kPi / std::sqrt(2 * 0.75 * error);
        EXPECT_LT(static_cast<double>(FlattenEllipse(circle, error).size()), 1.1 * least + 8.0);
    }
    std::vector<DrawingPoint> points{{0, 0}};
    FlattenSpan([](double t) { return DrawingPoint{t, 2 * t}; }, 0.0, 1.0, 1e-9, points);
    EXPECT_EQ(points.size(), 2u);
    FlattenSpan([](double t) { return DrawingPoint{1 + t, 2 + std::sin(1e3 * t)}; }, 0.0, 1.0, 0.0, points);
    EXPECT_LE(points.size(), 2u + kMostChords);
}

TEST(Flatten, SweepsBetweenDirections) {
    for (auto const &[from, to, sweep] : lib::test::Rows<3>(
             "0 90 90; 350 10 20; 10 350 340; 0 360 360; 30 30 360; -720 90 90; 0 1e-12 360; 0 359.99999999999 360;"
             "90 0 270; 0 1e-6 1e-6; 90 450.0001 360; -180 180.0000003 360; 0 360.01 0.01"))
        EXPECT_NEAR(SweepBetween(from, to, 360.0), sweep, 1e-9) << from << " to " << to;
}

TEST(Flatten, DrawsARationalQuarterCircle) {
    Spline quarter;
    quarter.degree = 2;
    quarter.knots = {0, 0, 0, 1, 1, 1};
    quarter.controls = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    quarter.weights = {1, std::numbers::sqrt2 / 2, 1};
    std::vector<DrawingPoint> points = FlattenFitted(quarter, 1e-4);
    for (DrawingPoint const &p : points)
        EXPECT_NEAR(std::hypot(p.x, p.y), 1.0, 1e-4);
    points.push_back({0, 0});
    EXPECT_NEAR(PolygonArea(points), kPi / 4, 1e-7);
}

TEST(Flatten, GivesTheSameCornersToSplinesThatShareAStretch) {
    // Two stretches, and the first one alone, the other way round and over other knots.
    Spline both;
    both.knots = {0, 0, 0, 0, 1, 1, 1, 2, 2, 2, 2};
    both.controls = {{0.1, 0.2, 0}, {1.3, 2.7, 0}, {2.9, -1.1, 0}, {4.7, 0.3, 0}, {5, 1, 0}, {7, 9, 0}, {8, 8, 0}};
    Spline first;
    first.knots = {-7, -7, -7, -7, 0.3, 0.3, 0.3, 0.3};
    first.controls.assign(both.controls.rend() - 4, both.controls.rend());
    std::vector<DrawingPoint> const points = FlattenFitted(both, 1e-5);
    std::vector<DrawingPoint> const back = FlattenFitted(first, 1e-5);
    ASSERT_GT(back.size(), 50u);
    for (std::size_t i = 0; i < back.size(); ++i) {
        EXPECT_EQ(points[i].x, back[back.size() - 1 - i].x) << i;
        EXPECT_EQ(points[i].y, back[back.size() - 1 - i].y) << i;
    }
}

TEST(Flatten, FitsASplineThroughPoints) {
    // The natural cubic spline through (0,0), (1,1), (2,0), its parameter s the length of the chords of sqrt(2): on the
    // first half y = (3 s / h - (s / h)^3) / 2 and x = s / h.
    Spline hill;
    hill.fitPoints = {{0, 0, 0}, {1, 1, 0}, {1, 1, 0}, {2, 0, 0}};
    for (DrawingPoint const &p : FlattenFitted(hill, 1e-6)) {
        double const x = p.x <= 1 ? p.x : 2 - p.x;
        EXPECT_NEAR(p.y, (3 * x - x * x * x) / 2, 1e-6);
    }
    // Two points with tangents make the cubic of Hermite; it leaves and arrives along them.
    Spline bow;
    bow.fitPoints = {{0, 0, 0}, {1, 0, 0}};
    bow.startTangent = {0, 5, 0};
    bow.endTangent = {0, -2, 0};
    double highest = 0.0;
    for (DrawingPoint const &p : FlattenFitted(bow, 1e-6))
        highest = std::max(highest, p.y);
    EXPECT_NEAR(highest, 0.25, 1e-5);
}

TEST(Flatten, ClosesASplineThroughPointsSmoothly) {
    // Points of a circle: the closed spline differs from it by the fourth power of their distance, and has no corner
    // where it closes.
    Spline ring;
    ring.closed = true;
    for (int i = 0; i < 16; ++i)
        ring.fitPoints.push_back({std::cos(kPi * i / 8), std::sin(kPi * i / 8), 0});
    std::vector<DrawingPoint> points = FlattenFitted(ring, 1e-5);
    ASSERT_GT(points.size(), 16u);
    for (DrawingPoint const &p : points)
        EXPECT_NEAR(std::hypot(p.x, p.y), 1.0, 1e-3);
    EXPECT_NEAR(PolygonArea(points), kPi, 1e-3);
    EXPECT_EQ(points.front().x, points.back().x);
    std::size_t const last = points.size() - 1;
    double const turn = std::atan2(points[1].y - points[0].y, points[1].x - points[0].x) -
                        std::atan2(points[last].y - points[last - 1].y, points[last].x - points[last - 1].x);
    EXPECT_LT(std::abs(turn), 0.05);
}

} // namespace zvi::app::test
