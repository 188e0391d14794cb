#include "tests/drawing/DrawingFamilies.h"
#include "tests/drawing/DrawingInvariants.h"
#include "zvi/curves/MIntersectUtil.h"
#include "zvi/drawing/CutDrawingCurves.h"
#include "zvi/drawing/DomainCentroid.h"
#include "zvi/drawing/MakeDrawingDomains.h"
#include "zvi/drawing/SuggestedJoinTolerance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace zvi::lib::test {

namespace {

std::multiset<std::pair<unsigned int, int>> Reasons(DrawingResult const &result) {
    std::multiset<std::pair<unsigned int, int>> reasons;
    for (DrawingLeftover const &left : result.leftovers)
        reasons.insert({left.piece.curve, static_cast<int>(left.reason)});
    return reasons;
}

T_LINE_G Record(DrawingCurve const &c) {
    T_LINE_G record;
    MIntersectUtil::Point const p{c.start.x, c.start.y, 0.0}, q{c.end.x, c.end.y, 0.0};
    MIntersectUtil::Point const m{c.center.x, c.center.y, 0.0}, up{0.0, 0.0, c.clockwise ? -1.0 : 1.0};
    if (c.type == DrawingCurveType::kLine)
        record.Set(p, q);
    else if (c.type == DrawingCurveType::kCircle)
        record.Set(m, c.radius, up);
    else
        record.Set(p, q, 1, m, up, 0, 1e-9);
    return record;
}

} // namespace

TEST(DrawingDetails, EachLeftoverHasItsReason) {
    std::vector<DrawingCurve> curves =
        Curves("line 1 0 0 4 0; line 2 4 0 4 4; line 3 4 4 0 4; line 4 0 4 0 0; line 5 0 4 4 4; line 6 2 2 2 2.00001;"
               "line 7 4 0 6 0; line 8 6 0 7 0; line 9 7 0 7 1; line 10 7 1 6 0; line 11 1 0 1 1; line 12 1 1 2 1;"
               "circle 13 1 1 0; arc 14 0 0 1 0 0");
    curves.push_back(curves[0]);
    curves.back().id = 15;
    curves.back().end.x = std::numeric_limits<double>::quiet_NaN();
    DrawingResult const result = MakeDrawingDomains(curves);
    auto const code = [](LeftoverReason reason) { return static_cast<int>(reason); };
    std::multiset<std::pair<unsigned int, int>> const expected{
        {5, code(LeftoverReason::kDuplicate)},   {6, code(LeftoverReason::kZeroLength)},
        {7, code(LeftoverReason::kBridge)},      {11, code(LeftoverReason::kDangle)},
        {12, code(LeftoverReason::kDangle)},     {13, code(LeftoverReason::kUnsupported)},
        {14, code(LeftoverReason::kZeroLength)}, {15, code(LeftoverReason::kUnsupported)}};
    EXPECT_EQ(Reasons(result), expected);
    EXPECT_EQ(result.domains.size(), 2u);
}

TEST(DrawingDetails, TheSuggestedToleranceFollowsTheDrawingAndNotWhatIsStray) {
    std::vector<DrawingCurve> curves = Curves("line 1 0 0 40 0; line 2 40 0 40 30; line 3 40 30 0 30; line 4 0 30 0 0;"
                                              "circle 5 10 10 2; arc 6 20 15 5 0 90");
    EXPECT_DOUBLE_EQ(SuggestedJoinTolerance(curves), 40e-6);
    std::vector<DrawingCurve> const far = Curves("line 7 900000 0 900001 0; circle 8 0 -1e9 3; line 9 200 0 200 1");
    curves.insert(curves.end(), far.begin(), far.end() - 1);
    EXPECT_DOUBLE_EQ(SuggestedJoinTolerance(curves), 40e-6) << "stray";
    curves.push_back(far.back());
    EXPECT_DOUBLE_EQ(DrawingSize(curves), 200) << "away, but not stray";
    curves.back().end.y = std::numeric_limits<double>::infinity();
    EXPECT_DOUBLE_EQ(DrawingSize(curves), 40);
    EXPECT_EQ(SuggestedJoinTolerance({}), 0.0);
}

TEST(DrawingDetails, AGapNamesPlaceDistanceCurvesAndTheToleranceThatClosesIt) {
    std::vector<DrawingCurve> const curves =
        Curves("line 1 0 0 4 0; line 2 4 0 4 4; line 3 4 4 0 4; line 4 0 4 0 0.003; line 5 2 0.006 2 4");
    DrawingResult const open = MakeDrawingDomains(curves);
    ASSERT_EQ(open.gaps.size(), 2u); // the corner that does not close, once, and the wall that stops short
    double closing = 0.0;
    for (DrawingGap const &gap : open.gaps) {
        EXPECT_NEAR(gap.distance, gap.curves[0] == 5 ? 0.006 : 0.003, 1e-12);
        EXPECT_EQ(gap.curves[1], gap.curves[0] == 1 ? 4u : 1u);
        closing = std::max(closing, gap.closingTolerance);
    }
    EXPECT_LT(closing, 0.0061);
    DrawingOptions options;
    options.joinTolerance = closing;
    DrawingResult const closed = MakeDrawingDomains(curves, options);
    EXPECT_EQ(closed.domains.size(), 2u);
    EXPECT_TRUE(closed.gaps.empty());
    EXPECT_EQ(closed.counts.joined, 2);
}

TEST(DrawingDetails, GapsAreClosedWhereRoundingExceedsTheTolerance) {
    std::vector<DrawingCurve> curves;
    for (int i = 0; i < 60; ++i) {
        DrawingPoint const a{1e9 + 10.0001 * i, 1e9 + 0.00013 * i}, b{a.x + 5.0, a.y}, c{a.x, a.y + 5.0};
        for (auto const &[from, to] : {std::pair{a, b}, {b, c}, {c, DrawingPoint{a.x + 4e-5, a.y + 4e-5}}})
            curves.push_back(LineOf(from, to));
    }
    EXPECT_EQ(MakeDrawingDomains(Numbered(curves)).domains.size(), 60u);
}

TEST(DrawingDetails, KeptDuplicatesServeTheTwoSidesOfABorder) {
    std::vector<DrawingCurve> const curves =
        Curves("line 1 0 0 1 0; line 2 1 0 1 1; line 3 1 1 0 1; line 4 0 1 0 0;"
               "line 5 1 0 2 0; line 6 2 0 2 1; line 7 2 1 1 1; line 8 1 1 1 0; line 9 0 0 1 0");
    DrawingOptions options;
    options.keepDuplicates = true;
    DrawingResult const kept = MakeDrawingDomains(curves, options);
    ASSERT_EQ(kept.domains.size(), 2u);
    std::set<unsigned int> used[2];
    for (int i = 0; i < 2; ++i)
        for (DrawingPiece const &p : kept.domains[static_cast<std::size_t>(i)].outer)
            used[i].insert(p.curve);
    EXPECT_EQ(used[0], (std::set<unsigned int>{1, 2, 3, 4}));
    EXPECT_EQ(used[1], (std::set<unsigned int>{5, 6, 7, 8}));
    EXPECT_EQ(kept.counts.duplicates, 1); // the third wall has no second side to serve
    EXPECT_EQ(WhatIsWrong(curves, options, kept), "");
    EXPECT_EQ(MakeDrawingDomains(curves).counts.duplicates, 2);
}

TEST(DrawingDetails, TheOrderOfTheDomainsIsThatOfTheirPlaces) {
    std::vector<DrawingCurve> curves =
        Curves("circle 9 0 0 2; line 4 -3 0 3 0; line 7 0 -3 0 3; circle 2 10 0 1; line 1 -3 -3 3 -3; line 3 9 0 11 0");
    DrawingResult const a = MakeDrawingDomains(curves);
    std::reverse(curves.begin(), curves.end());
    DrawingResult const b = MakeDrawingDomains(curves);
    ASSERT_EQ(a.domains.size(), 6u);
    for (std::size_t i = 0; i < a.domains.size(); ++i) {
        DrawingPoint const p = a.domains[i].outer[0].start, q = b.domains[i].outer[0].start;
        EXPECT_EQ(std::pair(p.x, p.y), std::pair(q.x, q.y));
        EXPECT_EQ(a.domains[i].area, b.domains[i].area);
    }
}

TEST(DrawingDetails, CutsLieWhereCurveIntersectionFindsThem) {
    Dice dice(11);
    DrawingOptions options;
    options.joinTolerance = 1e-9; // what misses by more is no meeting there either
    int compared = 0;
    for (int round = 0; round < 3000; ++round) {
        std::vector<DrawingCurve> curves;
        for (unsigned int i = 0; i < 2; ++i) {
            curves.push_back(ArcOf({dice.Real(0.0, 4.0), dice.Real(0.0, 4.0)}, dice.Real(1.0, 3.0),
                                   dice.Real(0.0, 360.0), dice.Real(0.0, 360.0)));
            curves.back().id = i + 1;
            curves.back().type = static_cast<DrawingCurveType>(dice.Whole(0, 2));
            curves.back().clockwise = dice.Chance(0.5);
        }
        zvi::MArray<MIntersectUtil::Point> points;
        MIntersectUtil::GetIntersectPointByLine2Line(Record(curves[0]), Record(curves[1]), points, 1e-9);
        DrawingPieces const cut = CutDrawingCurves(curves, options);
        ASSERT_EQ(static_cast<std::size_t>(cut.counts.cut), 2 * points.Size()) << "round " << round;
        for (MIntersectUtil::Point const &p : points) {
            ++compared;
            auto const startsThere = [&](DrawingPiece const &q) {
                return std::hypot(p[0] - q.start.x, p[1] - q.start.y) < 1e-7;
            };
            EXPECT_GE(std::count_if(cut.pieces.begin(), cut.pieces.end(), startsThere), 2) << "round " << round;
        }
    }
    EXPECT_GT(compared, 1000);
}

TEST(DrawingDetails, ProgressGrowsToTheWholeAndChangesNothing) {
    std::vector<DrawingCurve> const curves = Curves("circle 1 0 0 2; line 2 -3 0 3 0");
    std::vector<double> told{0.0};
    DrawingResult const result = MakeDrawingDomains(curves, {}, [&told](double done) { told.push_back(done); });
    EXPECT_EQ(AreasOf(result), AreasOf(MakeDrawingDomains(curves)));
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_GT(told.size(), 5u);
    EXPECT_EQ(told.back(), 1.0);
}

TEST(DomainCentroid, IsExactForArcsAndHolesFarFromTheOrigin) {
    struct Case {
        char const *curves;
        DrawingPoint centroid;
    };
    // A half disc has it 4 r / 3 pi from its centre, a quarter as far in both directions. A disc of radius 2 without
    // one of a quarter of its area loses a third of that one's distance.
    Case const cases[] = {
        {"line 1 -3 0 3 0; arc 2 0 0 3 0 180", {0, 4 / kPi}},
        {"line 1 -3 0 3 0; arc 2 0 0 3 180 360", {0, -4 / kPi}},
        {"line 1 0 0 3 0; arc 2 0 0 3 0 90; line 3 0 3 0 0", {4 / kPi, 4 / kPi}},
        {"circle 1 0 0 2", {0, 0}},
        {"circle 1 0 0 2; circle 2 0.9 0 1", {-0.3, 0}},
    };
    for (Case const &c : cases)
        for (double const away : {0.0, 4096.0}) {
            std::vector<DrawingCurve> const curves = Moved(Curves(c.curves), {.shift = {away, -away}});
            DrawingPoint const centroid = DomainCentroid(MakeDrawingDomains(curves).domains.back());
            EXPECT_NEAR(centroid.x, c.centroid.x + away, 1e-12 + 1e-15 * away) << c.curves;
            EXPECT_NEAR(centroid.y, c.centroid.y - away, 1e-12 + 1e-15 * away) << c.curves;
        }
    EXPECT_EQ(DomainCentroid({}).x, 0.0);
}

TEST(DrawingDetails, AnswerWildNumbers) {
    double const inf = std::numeric_limits<double>::infinity();
    double const wild[] = {0.0, -0.0, 1.0, 1e-320, 1e-160, 1e-9, 1e9, 1e149, 1e160, 1e308, inf, -inf, std::nan("")};
    Dice dice(7);
    auto const any = [&] { return wild[dice.Whole(0, static_cast<int>(std::size(wild)) - 1)]; };
    for (int round = 0; round < 3000; ++round) {
        std::vector<DrawingCurve> curves(static_cast<std::size_t>(dice.Whole(1, 6)));
        for (DrawingCurve &c : curves) {
            c.id = static_cast<unsigned int>(dice.Whole(0, 2)); // 0 and repeated ids are carried through
            c.type = static_cast<DrawingCurveType>(dice.Whole(0, 2));
            c.start = {any(), any()};
            c.end = {any(), any()};
            c.center = {any(), any()};
            c.radius = any();
            c.clockwise = dice.Chance(0.5);
        }
        DrawingOptions options;
        options.joinTolerance = any();
        DrawingResult const result = MakeDrawingDomains(curves, options);
        for (DrawingDomain const &d : result.domains)
            ASSERT_TRUE(std::isfinite(d.area)) << "round " << round;
        ASSERT_FALSE(result.domains.empty() && result.leftovers.empty());
    }
}

TEST(DrawingDetails, BearManyCurvesInOnePlace) {
    std::vector<DrawingCurve> curves;
    for (int i = 0; i < 5000; ++i)
        curves.push_back(i % 2 == 0 ? ArcOf({1.0, 2.0}, 3.0, 0.0, 180.0) : ArcOf({1.0, 2.0}, 3.0, 180.0, 360.0));
    EXPECT_EQ(MakeDrawingDomains(curves).domains.size(), 1u);
    EXPECT_EQ(MakeDrawingDomains(curves).counts.duplicates, 4998);
}

} // namespace zvi::lib::test
