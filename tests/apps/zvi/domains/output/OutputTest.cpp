#include "apps/zvi/common/Joined.h"
#include "apps/zvi/domains/dxf/ReadDxf.h"
#include "apps/zvi/domains/input/CurveText.h"
#include "apps/zvi/domains/output/Colors.h"
#include "apps/zvi/domains/output/DomainJson.h"
#include "apps/zvi/domains/output/DxfDrawing.h"
#include "apps/zvi/domains/output/FillClasses.h"
#include "apps/zvi/domains/output/JoinAdvice.h"
#include "apps/zvi/domains/output/LabelPoint.h"
#include "apps/zvi/domains/output/Loops.h"
#include "apps/zvi/domains/output/Report.h"
#include "apps/zvi/domains/output/SvgPicture.h"

#include "zvi/drawing/MakeDrawingDomains.h"
#include "zvi/drawing/SuggestedJoinTolerance.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <numbers>
#include <random>
#include <set>

namespace zvi::app::test {

namespace {

using lib::DrawingCurveType;
using lib::DrawingDomain;
using lib::DrawingPiece;
using lib::DrawingPoint;
using lib::DrawingResult;

constexpr double kPi = std::numbers::pi;

DrawingPiece Line(unsigned id, DrawingPoint from, DrawingPoint to) {
    return {.curve = id, .start = from, .end = to};
}

DrawingPiece Arc(unsigned id, DrawingPoint center, DrawingPoint from, DrawingPoint to, bool clockwise) {
    DrawingPiece piece = Line(id, from, to);
    piece.type = DrawingCurveType::kArc;
    piece.center = center;
    piece.radius = std::hypot(from.x - center.x, from.y - center.y);
    piece.clockwise = clockwise;
    return piece;
}

DrawingPiece Circle(unsigned id, DrawingPoint center, double radius, bool clockwise) {
    DrawingPiece piece = Arc(id, center, {center.x + radius, center.y}, {center.x + radius, center.y}, clockwise);
    piece.type = DrawingCurveType::kCircle;
    return piece;
}

/// A keyhole over half a turn of a circle of radius 5 and a straight foot, with a round hole; one dangling line, one
/// gap.
struct Keyhole {
    DrawingInput input = ReadCurveText("arc 1 0 0 5 300 240\nline 2 -2.5 -4.330127018922193 2.5 -4.330127018922193\n"
                                       "circle 3 0 1 1\nline 4 9 0 12 0\n");
    DrawingResult result;

    Keyhole() {
        DrawingPoint const left{-2.5, -4.330127018922193};
        DrawingPoint const right{2.5, -4.330127018922193};
        DrawingDomain domain;
        domain.outer = {Arc(1, {0, 0}, right, left, false), Line(2, left, right)};
        domain.holes = {{Circle(3, {0, 1}, 1, true)}};
        domain.area = 70.0;
        domain.perimeter = 37.5;
        result.domains = {domain};
        result.leftovers = {{Line(4, {9, 0}, {12, 0}), lib::LeftoverReason::kDangle},
                            {Line(4, {12, 0}, {12, 3}), lib::LeftoverReason::kDangle}};
        result.gaps = {{{9, 0}, 0.0040, {4, 1}, 0.0040000004}};
        result.counts = {1, 2, 3};
    }
};

std::vector<double> SortedAreas(DrawingResult const &result) {
    std::vector<double> areas;
    for (DrawingDomain const &domain : result.domains)
        areas.push_back(domain.area);
    std::sort(areas.begin(), areas.end());
    return areas;
}

/// A crowd of overlapping lines, circles and arcs as curve text.
std::string RandomCurves(unsigned seed) {
    std::mt19937 random(seed);
    auto const number = [&random] { return std::to_string(static_cast<int>(random() % 2000) / 100.0); };
    std::string text;
    for (int id = 1; id <= 24; ++id) {
        std::string const head = Joined(std::to_string(id), " ", number(), " ", number(), " ");
        std::string const radius = std::to_string(1 + static_cast<int>(random() % 6));
        if (id % 3 == 0)
            text += Joined("circle ", head, radius);
        else if (id % 3 == 1)
            text += Joined("arc ", head, radius, " ", number(), " ", std::to_string(random() % 360));
        else
            text += Joined("line ", head, number(), " ", number());
        text += "\n";
    }
    return text;
}

} // namespace

TEST(SvgPicture, DrawsTrueArcsHolesLeftoversAndGaps) {
    Keyhole const keyhole;
    std::string const svg = SvgPicture("a<b>&\".dxf", keyhole.input, keyhole.result);
    // The outer arc turns over half a circle, so it is drawn in two; y points down, so counter-clockwise is flag 0.
    char const *const parts[] = {
        // 17 units from -5 to 12 are 940 pixels, with a margin of 30.
        "d=\"M444.705882 545.901141A276.470588 276.470588 0 0 0 ",
        " 30A276.470588 276.470588 0 0 0 168.235294 545.901141L444.705882 545.901141Z",
        "M361.764706 251.176471A55.2941176 55.2941176 0 0 1 251.176471 251.176471A55.2941176 55.2941176 0 0 1 361",
        "fill-rule:evenodd",
        "class=\"leftover dangle\"",
        "d=\"M804.117647 306.470588L970 306.470588L970 140.588235\"><title>curve 4: dangle</title>",
        "<circle class=\"gap\" cx=\"804.117647\" cy=\"306.470588\" r=\"11\"",
        "<circle class=\"end\" cx=\"970\" cy=\"140.588235\"",
        ">bounds no domain</text>",
        ">gap</text>",
        "<title id=\"title\">Domains of a&lt;b>&amp;&quot;.dxf</title>",
        "1 domains, 1 holes, total area 70",
        "@media (prefers-color-scheme:dark){",
        "viewBox=\"0 0 1000 ",
    };
    for (char const *part : parts)
        EXPECT_NE(svg.find(part), std::string::npos) << part << " in\n" << svg;
    EXPECT_EQ(svg.find("class=\"end\" cx=\"970\" cy=\"306"), std::string::npos) << "where two pieces meet is no end";
}

TEST(SvgPicture, GivesNeighboursFillsOfTheirOwn) {
    for (unsigned seed = 1; seed <= 50; ++seed) {
        DrawingResult const result = lib::MakeDrawingDomains(ReadCurveText(RandomCurves(seed)).curves);
        std::vector<std::size_t> const fills = FillClasses(result.domains);
        std::map<std::tuple<unsigned, double, double>, std::size_t> sides;
        for (std::size_t i = 0; i < result.domains.size(); ++i) {
            for (DrawingPiece const &piece : result.domains[i].outer) {
                auto const [other, isNew] = sides.try_emplace({piece.curve, piece.from, piece.to}, i);
                EXPECT_TRUE(isNew || fills[other->second] != fills[i]) << "seed " << seed;
            }
        }
    }
}

TEST(SvgPicture, TakesEmptyAndBrokenResults) {
    DrawingInput const input = ReadCurveText("circle 1 0 0 0\nline 2 1 1 1 1\n");
    EXPECT_NE(SvgPicture("x", input, {}).find("viewBox=\"0 0 60 60\""), std::string::npos);
    DrawingResult result;
    result.leftovers = {{Circle(1, {0, 0}, 0, false), lib::LeftoverReason::kUnsupported},
                        {Line(2, {1, 1}, {1, 1}), lib::LeftoverReason::kZeroLength},
                        {Line(2, {NAN, 1}, {1, INFINITY}), lib::LeftoverReason::kUnsupported}};
    std::string const svg = SvgPicture("x", input, result);
    EXPECT_EQ(svg.find("nan"), std::string::npos);
    EXPECT_EQ(svg.find("inf"), std::string::npos);
}

TEST(LabelPoint, LiesWellInside) {
    struct Case {
        char const *what;
        DrawingDomain domain;
        double largest; ///< radius of the largest free circle
    };
    auto const loop = [](std::vector<DrawingPoint> const &corners) {
        std::vector<DrawingPiece> pieces;
        for (std::size_t i = 0; i < corners.size(); ++i)
            pieces.push_back(Line(1, corners[i], corners[(i + 1) % corners.size()]));
        return pieces;
    };
    Case const cases[] = {
        {"square", {loop({{0, 0}, {2, 0}, {2, 2}, {0, 2}}), {}, 0, 0}, 1.0},
        {"far-off square", {loop({{1e6, 1e6}, {1e6 + 2, 1e6}, {1e6 + 2, 1e6 + 2}, {1e6, 1e6 + 2}}), {}, 0, 0}, 1.0},
        {"u", {loop({{0, 0}, {9, 0}, {9, 9}, {7, 9}, {7, 3}, {2, 3}, {2, 9}, {0, 9}}), {}, 0, 0}, 1.6567},
        {"ring", {{Circle(1, {0, 0}, 5, false)}, {{Circle(2, {1, 0}, 3, true)}}, 0, 0}, 1.5},
        {"sliver", {loop({{0, 0}, {1000, 0}, {1000, 1}, {0, 1}}), {}, 0, 0}, 0.5},
        {"half disk", {{Arc(1, {0, 0}, {2, 0}, {-2, 0}, false), Line(2, {-2, 0}, {2, 0})}, {}, 0, 0}, 1.0},
    };
    for (Case const &c : cases) {
        LabelPoint const label = FindLabelPoint(c.domain);
        EXPECT_LE(label.radius, c.largest * 1.0001) << c.what;
        EXPECT_GE(label.radius, c.largest * 0.85) << c.what;
    }
    LabelPoint const middle = FindLabelPoint(cases[4].domain);
    EXPECT_NEAR(middle.at.x, 500.0, 1e-9) << "of equal places the middle one is taken";
    EXPECT_EQ(FindLabelPoint({}).radius, 0.0);
    EXPECT_EQ(FindLabelPoint({loop({{1, 1}, {1, 1}}), {}, 0, 0}).radius, 0.0);
}

TEST(Loops, MeasureArcs) {
    EXPECT_NEAR(SweepOf(Arc(1, {0, 0}, {1, 0}, {0, 1}, false)), kPi / 2, 1e-15);
    EXPECT_NEAR(SweepOf(Arc(1, {0, 0}, {1, 0}, {0, 1}, true)), -1.5 * kPi, 1e-15);
    EXPECT_NEAR(SweepOf(Circle(1, {0, 0}, 1, true)), -2 * kPi, 1e-15);
    DrawingPoint const half = PointOn(Arc(1, {0, 0}, {1, 0}, {0, 1}, true), 0.5);
    EXPECT_NEAR(half.x, -std::sqrt(0.5), 1e-15);
    EXPECT_NEAR(half.y, -std::sqrt(0.5), 1e-15);
}

TEST(Colors, OfDomainsInARowAreFarApart) {
    auto const channel = [](std::string const &color, std::size_t i) {
        return static_cast<double>(std::stoi(color.substr(1 + 2 * i, 2), nullptr, 16));
    };
    auto const distance = [&channel](std::string const &a, std::string const &b) {
        return std::hypot(channel(a, 0) - channel(b, 0), channel(a, 1) - channel(b, 1), channel(a, 2) - channel(b, 2));
    };
    for (std::size_t i = 0; i < 60; ++i) {
        for (std::size_t j = i + 1; j < i + 8; ++j) {
            EXPECT_GE(distance(ColorsOf(i).light, ColorsOf(j).light), 12.0) << i << ", " << j;
            EXPECT_GE(distance(ColorsOf(i).dark, ColorsOf(j).dark), 12.0) << i << ", " << j;
        }
    }
}

TEST(DxfDrawing, ReadsBackWithTheSameAreas) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        DrawingInput const input = ReadCurveText(RandomCurves(seed));
        DrawingResult const result = lib::MakeDrawingDomains(input.curves);
        ASSERT_FALSE(result.domains.empty());
        std::vector<double> const before = SortedAreas(result);
        for (bool const isCut : {false, true}) {
            DrawingInput const back = ReadDxf(DxfDrawing(input, result, {isCut, true}), {});
            DrawingResult const again = lib::MakeDrawingDomains(back.curves);
            std::vector<double> const after = SortedAreas(again);
            ASSERT_EQ(before.size(), after.size()) << "seed " << seed;
            for (std::size_t i = 0; i < before.size(); ++i)
                EXPECT_NEAR(before[i], after[i], 1e-6) << "seed " << seed;
            auto const isLeftOver = [&](lib::DrawingLeftover const &l) {
                return back.LayerOf(l.piece.curve) == kLeftoverLayer;
            };
            EXPECT_TRUE(std::all_of(again.leftovers.begin(), again.leftovers.end(), isLeftOver) || !isCut)
                << "nothing that bounds a domain is doubled; seed " << seed;
        }
    }
}

TEST(DxfDrawing, KeepsLayersAndPutsHolesOnThatOfTheirDomain) {
    Keyhole keyhole;
    keyhole.input.units = "mm";
    keyhole.input.layers = {{"leftovers"}, {"\xD0\xA1\xD1\x82\\U+", 3}};
    for (std::size_t i = 0; i < 2; ++i)
        keyhole.input.origins[i].layer = 1; // the border but for its hole
    DrawingInput const back = ReadDxf(DxfDrawing(keyhole.input, keyhole.result, {false, true}), {});
    EXPECT_EQ(back.units, "mm");
    ASSERT_EQ(back.curves.size(), 7u); // the outer arc in two, the foot, the hole in two, two leftovers
    for (unsigned id = 1; id <= 7; ++id) {
        EXPECT_EQ(back.LayerOf(id), id <= 5 ? keyhole.input.layers[1].name : "LEFTOVERS_");
        EXPECT_EQ(back.EntityOf(id).type, id <= 5 ? "LWPOLYLINE" : "LINE");
    }
    EXPECT_EQ(back.layers[back.OriginOf(1).layer].color, 3);
    EXPECT_EQ(back.curves[0].start.x, 2.5);
    EXPECT_EQ(back.curves[0].start.y, -4.330127018922193);
    EXPECT_TRUE(back.curves[4].clockwise);

    DrawingInput const cut = ReadDxf(DxfDrawing(keyhole.input, keyhole.result, {true, false}), {});
    ASSERT_EQ(cut.curves.size(), 3u);
    EXPECT_EQ(cut.curves[2].type, DrawingCurveType::kCircle);
    EXPECT_EQ(cut.LayerOf(3), "leftovers");
}

TEST(Report, PrintsTheTable) {
    EXPECT_EQ(DomainTable(Keyhole().result, false), "number  area  perimeter  curves  holes\n"
                                                    "     1    70       37.5       3      1\n"
                                                    "1 domains, 1 holes, total area 70\n");
    EXPECT_EQ(DomainTable({}, true), "\x1B[1mnumber  area  perimeter  curves  holes\x1B[0m\n"
                                     "0 domains, 0 holes, total area 0\n");
}

TEST(Report, SummarisesForPeople) {
    Keyhole keyhole;
    keyhole.input.notes.notCurves = {{"TEXT", 3}, {"HATCH", 1}};
    keyhole.input.notes.frozen = 2;
    keyhole.input.notes.flattened = {{"SPLINE", 2}};
    keyhole.input.notes.chords = 40;
    keyhole.input.notes.chordError = 0.25;
    keyhole.input.notes.heights = {{0.0, 3}, {1e-5, 4}, {3000.0, 1}};
    std::vector<std::string> const expected = {
        "read 4 curves, units: absent",
        "flattened 2 SPLINE into 40 chords (--chord-error 0.25)",
        "took 2 heights as one, seen from above: 7 at z = 0, 1 at z = 3000",
        "left out what is no curve: 1 HATCH, 3 TEXT",
        "left out 2 on frozen layers",
        "joined 1 end (--join 0.0001), cut at 2 places, dropped 3 duplicates",
        "left over: 2 dangle",
        "  dangle at (9, 0): curve 4",
        "  dangle at (12, 0): curve 4",
        "gap of 0.004 at (9, 0): curve 4 misses curve 1",
        "--join 0.00401 would close 1 gap",
    };
    EXPECT_EQ(Summary(keyhole.input, keyhole.result, 1e-4, false), expected);
    for (int i = 0; i < 30; ++i) {
        keyhole.result.gaps.push_back(keyhole.result.gaps.front());
        keyhole.result.gaps.back().closingTolerance = keyhole.result.gaps.back().distance *= i < 20 ? 1 : 4;
        keyhole.result.leftovers.push_back(keyhole.result.leftovers.front());
        keyhole.input.notes.notCurves[Joined("T", std::to_string(i))] = 1;
    }
    std::vector<std::string> const lines = Summary(keyhole.input, keyhole.result, 1e-4, false);
    EXPECT_EQ(lines.back(), "--join 0.004 would close 21 of 31 gaps");
    EXPECT_EQ(lines[lines.size() - 2], "and 21 wider gaps (--json lists them all)");
    EXPECT_NE(std::find(lines.begin(), lines.end(), "  and 22 more (--leftovers lists them all)"), lines.end());
    EXPECT_EQ(Summary(keyhole.input, keyhole.result, 1e-4, true).size(), lines.size() + 21);
    EXPECT_NE(lines[3].find(" and 20 other types"), std::string::npos);
}

TEST(JoinAdvice, HoldsUntilNothingIsAdvised) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        std::mt19937 random(seed);
        auto const part = [&random](double most) { return most * static_cast<double>(random() % 1000 + 1) / 1000.0; };
        // Rows of squares with a gap at some corners, of two sizes that differ by far.
        double const unit = std::pow(10.0, static_cast<double>(random() % 7) - 3.0);
        std::vector<lib::DrawingCurve> curves;
        for (int square = 0; square < 12; ++square) {
            DrawingPoint const at{20.0 * unit * (square % 4), 20.0 * unit * (square / 4)};
            DrawingPoint const corners[] = {
                at, {at.x + 10 * unit, at.y}, {at.x + 10 * unit, at.y + 10 * unit}, {at.x, at.y + 10 * unit}};
            for (int side = 0; side < 4; ++side) {
                DrawingPoint end = corners[(side + 1) % 4];
                double const gap = random() % 2 ? 0.0 : unit * (square % 2 ? 0.05 + part(0.04) : 0.001 + part(0.001));
                (side % 2 ? end.y : end.x) += side < 2 ? -gap : gap;
                curves.push_back({.id = static_cast<unsigned>(curves.size() + 1), .start = corners[side], .end = end});
            }
        }
        lib::DrawingOptions options;
        options.joinTolerance = lib::SuggestedJoinTolerance(curves);
        DrawingResult result = lib::MakeDrawingDomains(curves, options);
        for (int round = 0; std::optional<JoinAdvice> const advice = AdviseJoin(result.gaps); ++round) {
            ASSERT_LT(round, 5) << "seed " << seed;
            ASSERT_GT(advice->join, options.joinTolerance) << "seed " << seed;
            options.joinTolerance = advice->join;
            std::size_t const left = result.gaps.size() - advice->closes;
            result = lib::MakeDrawingDomains(curves, options);
            ASSERT_LE(result.gaps.size(), left) << "seed " << seed;
        }
        EXPECT_EQ(result.domains.size(), 12u) << "seed " << seed;
    }
}

namespace {

using Json = nlohmann::ordered_json;

/// Adds the paths of all keys that lead to no other object, "piece.KEY" for those of a piece.
void AddPaths(std::set<std::string> &paths, Json const &json, std::string const &path) {
    bool const isPiece = json.is_object() && json.contains("from");
    bool const hasTypesAsKeys = path.ends_with(".flattened") || path.ends_with("Curves") || path.ends_with(".unusable");
    if (json.is_object() && !hasTypesAsKeys && !path.ends_with("between[]")) {
        for (auto const &[key, value] : json.items())
            AddPaths(paths, value, Joined(isPiece ? "piece" : path, path.empty() ? "" : ".", key));
        return;
    }
    if (json.is_array() && !json.empty() && json.front().is_structured()) {
        for (Json const &item : json)
            AddPaths(paths, item, path + "[]");
        if (json.front().is_object() && !json.front().contains("from"))
            return;
    }
    paths.insert(path.ends_with("[]") ? path.substr(0, path.size() - 2) : path);
}

} // namespace

TEST(DomainJson, HasTheKeysThatAreDocumented) {
    Keyhole keyhole;
    keyhole.input.notes.heights = {{0.0, 4}};
    Json const json = Json::parse(DomainJson(keyhole.input, keyhole.result, 1e-4));
    std::set<std::string> paths;
    AddPaths(paths, json, "");
    std::ifstream stream(ZVI_SOURCE_DIR "/docs/domains-json.md");
    std::set<std::string> documented;
    for (std::string line; std::getline(stream, line);) {
        std::string const names = line.substr(0, line.find('|', 1));
        for (std::size_t at = names.find('`'); line.starts_with("| `") && at < names.size();
             at = names.find('`', at + 1)) {
            std::size_t const end = names.find('`', at + 1);
            documented.insert(names.substr(at + 1, end - at - 1));
            at = end;
        }
    }
    for (std::string const &path : paths)
        EXPECT_EQ(documented.count(path), 1u) << path << " is not documented";
    for (std::string const &path : documented)
        EXPECT_TRUE(paths.count(path) != 0 || path == "advice") << path << " is not written";

    EXPECT_EQ(json["schema"], 1);
    Json const &domain = json["domains"][0];
    EXPECT_EQ(domain["outer"][1]["start"], Json::array({-2.5, -4.330127018922193}));
    EXPECT_EQ(domain["holes"][0][0]["type"], "circle");
    EXPECT_EQ(json["leftovers"][0]["reason"], "dangle");
    EXPECT_EQ(json["gaps"][0]["curves"], Json::array({4, 1}));
    EXPECT_EQ(json["gaps"][0]["between"][1]["line"], 1);
    EXPECT_EQ(json["advice"]["closes"], 1);
    EXPECT_EQ(json["totals"]["holes"], 1);
    EXPECT_EQ(DomainJson(keyhole.input, {}, 0.0).find("nan"), std::string::npos);
}

} // namespace zvi::app::test
