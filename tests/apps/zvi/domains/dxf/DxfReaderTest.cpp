#include "apps/zvi/domains/dxf/LayerPattern.h"
#include "tests/apps/zvi/domains/dxf/DxfText.h"

#include "zvi/drawing/MakeDrawingDomains.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <sstream>
#include <tuple>

namespace zvi::app::test {

namespace {

using lib::DrawingCurve;
using lib::DrawingCurveType;

/// A number rounded to four places, without the "-0" that rounding leaves.
double Rounded(double value) {
    double const rounded = std::round(value * 1e4) / 1e4;
    return rounded == 0.0 ? 0.0 : rounded;
}

/// "line 0,0 1,0", "arc 0,0 r2 2,0 0,2", "arc ... cw", "circle 0,0 r2".
std::string Shown(DrawingCurve const &curve) {
    std::ostringstream text;
    auto const point = [](lib::DrawingPoint const &p) {
        std::ostringstream at;
        at << Rounded(p.x) << "," << Rounded(p.y);
        return at.str();
    };
    if (curve.type == DrawingCurveType::kLine)
        text << "line " << point(curve.start) << " " << point(curve.end);
    else if (curve.type == DrawingCurveType::kCircle)
        text << "circle " << point(curve.center) << " r" << Rounded(curve.radius);
    else
        text << "arc " << point(curve.center) << " r" << Rounded(curve.radius) << " " << point(curve.start) << " "
             << point(curve.end) << (curve.clockwise ? " cw" : "");
    return text.str();
}

std::string Shown(DrawingInput const &input) {
    std::string text;
    for (DrawingCurve const &curve : input.curves)
        text += (text.empty() ? "" : "; ") + Shown(curve);
    return text;
}

/// The area that lines enclose, counter-clockwise.
double AreaOf(DrawingInput const &input) {
    double doubled = 0.0;
    for (DrawingCurve const &curve : input.curves) {
        EXPECT_EQ(curve.type, DrawingCurveType::kLine);
        doubled += curve.start.x * curve.end.y - curve.end.x * curve.start.y;
    }
    return doubled / 2.0;
}

std::string const kArc = "0 ARC\n10 1\n20 2\n40 2\n";
std::string const kDown = "210 0\n220 0\n230 -1\n";
std::string const kSquare = "0 LWPOLYLINE\n90 4\n70 1\n10 0\n20 0\n10 2\n20 0\n10 2\n20 2\n10 0\n20 2\n";

} // namespace

TEST(DxfReader, ReadsEachKindOfCurve) {
    using Case = std::tuple<char const *, std::string, char const *>;
    for (
        auto const &[what, entities, curves] : std::initializer_list<Case>{
            {"line, its z dropped", "0 LINE\n10 1\n20 2\n30 0\n11 3.5\n21 -4\n31 0\n", "line 1,2 3.5,-4"},
            {"arc", kArc + "50 0\n51 90\n", "arc 1,2 r2 3,2 1,4"},
            {"arc past 360", kArc + "50 270\n51 450\n", "arc 1,2 r2 1,0 1,4"},
            {"arc from a negative angle", kArc + "50 -90\n51 0\n", "arc 1,2 r2 1,0 3,2"},
            {"arc of the whole turn", kArc + "50 0\n51 360\n", "circle 1,2 r2"},
            {"arc of equal angles", kArc + "50 30\n51 750\n", "circle 1,2 r2"},
            {"circle", "0 CIRCLE\n10 1\n20 2\n40 2\n", "circle 1,2 r2"},
            {"circle without a radius is handed on", "0 CIRCLE\n10 1\n20 2\n40 0\n", "circle 1,2 r0"},
            {"closed polyline", kSquare, "line 0,0 2,0; line 2,0 2,2; line 2,2 0,2; line 0,2 0,0"},
            {"closing bulge", "0 LWPOLYLINE\n70 1\n10 0\n20 0\n10 2\n20 0\n42 1\n", "line 0,0 2,0; arc 1,0 r1 2,0 0,0"},
            {"bulge of an open end is ignored", "0 LWPOLYLINE\n70 0\n10 0\n20 0\n10 2\n20 0\n42 1\n", "line 0,0 2,0"},
            {"clockwise bulge over half a turn", "0 LWPOLYLINE\n10 0\n20 0\n42 -2\n10 4\n20 0\n",
             "arc 2,1.5 r2.5 0,0 4,0 cw"},
            {"repeated vertex", "0 LWPOLYLINE\n70 1\n10 0\n20 0\n10 2\n20 0\n10 2\n20 0\n10 1\n20 1\n10 0\n20 0\n",
             "line 0,0 2,0; line 2,0 1,1; line 1,1 0,0"},
            {"old polyline with a bulge",
             "0 POLYLINE\n66 1\n70 0\n0 VERTEX\n10 0\n20 0\n42 1\n0 VERTEX\n10 2\n20 0\n0 SEQEND\n",
             "arc 1,0 r1 0,0 2,0"},
            {"spline-fit polyline without its frame",
             "0 POLYLINE\n70 4\n0 VERTEX\n70 16\n10 9\n20 9\n0 VERTEX\n70 8\n10 0\n20 0\n0 VERTEX\n70 8\n10 1\n20 0\n0 "
             "SEQEND\n",
             "line 0,0 1,0"},
            {"polyline in space",
             "0 POLYLINE\n70 8\n0 VERTEX\n10 0\n20 0\n30 1\n0 VERTEX\n10 1\n20 0\n30 1\n0 SEQEND\n", "line 0,0 1,0"},
            {"circular ellipse", "0 ELLIPSE\n10 0\n20 0\n11 0\n21 2\n40 1\n41 0\n42 3.141592653589793\n",
             "arc 0,0 r2 0,2 0,-2"},
            {"spline of degree 1", "0 SPLINE\n71 1\n40 0\n40 0\n40 1\n40 2\n40 2\n10 0\n20 0\n10 1\n20 0\n10 1\n20 5\n",
             "line 0,0 1,0; line 1,0 1,5"},
            // Seen from below.
            {"arc", kArc + "50 0\n51 90\n" + kDown, "arc -1,2 r2 -3,2 -1,4 cw"},
            {"circle", "0 CIRCLE\n10 1\n20 2\n40 2\n" + kDown, "circle -1,2 r2"},
            {"bulge", "0 LWPOLYLINE\n10 0\n20 0\n42 1\n10 2\n20 0\n" + kDown, "arc -1,0 r1 0,0 -2,0 cw"},
            {"line, which has none", "0 LINE\n10 1\n20 2\n11 3\n21 4\n" + kDown, "line 1,2 3,4"},
            {"ellipse", "0 ELLIPSE\n10 1\n20 0\n11 2\n21 0\n40 1\n41 0\n42 1.5707963267948966\n" + kDown,
             "arc 1,0 r2 3,0 1,-2 cw"},
            {"no direction", "0 CIRCLE\n10 1\n20 2\n40 2\n210 0\n220 0\n230 0\n", "circle 1,2 r2"},
        })
        EXPECT_EQ(Shown(ReadDxf(DxfWith(entities), {})), curves) << what;
}

TEST(DxfReader, PutsBlocksIn) {
    std::string const tick = BlockSection("0 BLOCK\n2 Tick\n10 1\n20 0\n0 LINE\n10 1\n20 0\n11 2\n21 0\n"
                                          "0 ENDBLK\n0 BLOCK\n2 Bow\n10 0\n20 0\n0 LWPOLYLINE\n10 0\n20 0\n42 "
                                          "1\n10 2\n20 0\n0 ENDBLK\n0 BLOCK\n2 Pair\n10 0\n20 0\n0 INSERT\n2 "
                                          "TICK\n10 0\n20 0\n0 INSERT\n2 tick\n10 0\n20 5\n50 90\n0 ENDBLK\n");
    using Case = std::tuple<char const *, std::string, char const *>;
    for (auto const &[what, insert, curves] : std::initializer_list<Case>{
             {"base point", "2 TICK\n10 10\n20 20\n", "line 10,20 11,20"},
             {"turned and scaled", "2 TICK\n10 10\n20 20\n41 3\n42 3\n50 90\n", "line 10,20 10,23"},
             {"mirrored arc", "2 BOW\n10 0\n20 0\n41 1\n42 -1\n", "arc 1,0 r1 0,0 2,0 cw"},
             {"mirrored by extrusion", "2 BOW\n10 5\n20 0\n210 0\n220 0\n230 -1\n", "arc -6,0 r1 -5,0 -7,0 cw"},
             {"nested", "2 PAIR\n10 100\n20 0\n41 2\n42 2\n", "line 100,0 102,0; line 100,10 100,12"},
             {"rows and columns, steps turned but not scaled",
              "2 TICK\n10 0\n20 0\n41 2\n42 2\n50 90\n70 2\n71 2\n44 5\n45 7\n",
              "line 0,0 0,2; line 0,5 0,7; line -7,0 -7,2; line -7,5 -7,7"},
             {"no such block", "2 NONE\n10 0\n20 0\n", ""},
         }) {
        DrawingInput const input = ReadDxf(DxfWith("0 INSERT\n" + insert, tick), {});
        EXPECT_EQ(Shown(input), curves) << what;
        EXPECT_EQ(input.notes.missingBlocks, *curves ? 0 : 1) << what;
    }
}

TEST(DxfReader, FlattensCirclesUnderUnequalScales) {
    std::string const block = BlockSection("0 BLOCK\n2 B\n10 0\n20 0\n0 CIRCLE\n10 0\n20 0\n40 1\n0 ENDBLK\n");
    DrawingInput const input = ReadDxf(DxfWith("0 INSERT\n2 B\n10 7\n20 0\n41 3\n42 1\n50 30\n", block), {});
    EXPECT_NEAR(AreaOf(input), 3.0 * std::numbers::pi, 3e-6);
    EXPECT_EQ(input.notes.flattened.at("CIRCLE"), 1);
    EXPECT_EQ(input.notes.chords, input.curves.size());
}

TEST(DxfReader, FlattensAsCloselyAsEndsAreJoined) {
    // An ellipse in a frame, and spokes from the frame that end a two-millionth of its size short of the ellipse.
    for (double const unit : {1.0, 1e-3, 1e6}) {
        auto const line = [unit](double x1, double y1, double x2, double y2) {
            std::ostringstream text;
            text.precision(17);
            text << "0 LINE\n10 " << unit * x1 << "\n20 " << unit * y1 << "\n11 " << unit * x2 << "\n21 " << unit * y2
                 << "\n";
            return text.str();
        };
        std::string entities = line(-10, -10, 10, -10) + line(10, -10, 10, 10) + line(10, 10, -10, 10) +
                               line(-10, 10, -10, -10) + "0 ELLIPSE\n10 0\n20 0\n11 " + std::to_string(6 * unit) +
                               "\n21 0\n40 0.5\n";
        for (int spoke = 0; spoke < 40; ++spoke) {
            double const x = -5.85 + 0.3 * spoke;
            entities += line(x, 10, x, 3 * std::sqrt(1 - x * x / 36) + 1e-5);
        }
        DrawingInput const input = ReadDxf(DxfWith(entities), {});
        lib::DrawingOptions options;
        options.joinTolerance = SuggestedJoin(input);
        EXPECT_NEAR(options.joinTolerance, 20e-6 * unit, 1e-9 * unit);
        lib::DrawingResult const result = lib::MakeDrawingDomains(input.curves, options);
        EXPECT_EQ(result.domains.size(), 41u);
        EXPECT_TRUE(result.leftovers.empty());
        EXPECT_LE(input.notes.chordError, options.joinTolerance / 4);
    }
    // A thousand such curves in one drawing would be too many.
    std::string crowd;
    for (int i = 0; i < 1500; ++i)
        crowd += "0 ELLIPSE\n10 " + std::to_string(0.01 * i) + "\n20 0\n11 1000\n21 0\n40 0.5\n";
    DrawingInput const coarse = ReadDxf(DxfWith(crowd), {});
    EXPECT_TRUE(coarse.notes.isCoarse);
    EXPECT_LT(coarse.curves.size(), kMostMadeCurves);
}

TEST(DxfReader, GivesEntitiesInBlocksTheLayerOfTheInsert) {
    std::string const blocks = BlockSection("0 BLOCK\n2 B\n10 0\n20 0\n0 LINE\n8 0\n5 A1\n10 0\n20 0\n11 1\n21 0\n"
                                            "0 LINE\n8 OWN\n10 0\n20 1\n11 1\n21 1\n0 ENDBLK\n"
                                            "0 BLOCK\n2 OUTER\n10 0\n20 0\n0 INSERT\n8 0\n2 B\n10 0\n20 0\n0 ENDBLK\n");
    DrawingInput const input = ReadDxf(DxfWith("0 INSERT\n8 WALLS\n2 OUTER\n10 0\n20 0\n0 LINE\n10 0\n20 0\n11 1\n21 "
                                               "9\n",
                                               blocks),
                                       {});
    ASSERT_EQ(input.curves.size(), 3u);
    EXPECT_EQ(input.LayerOf(1), "WALLS");
    EXPECT_EQ(input.EntityOf(1).handle, "A1");
    EXPECT_EQ(input.LayerOf(2), "OWN");
    EXPECT_EQ(input.LayerOf(3), "0");
}

TEST(DxfReader, LeavesOutHiddenThingsAndCountsThem) {
    std::string const layers = "0 SECTION\n2 TABLES\n0 TABLE\n2 LAYER\n70 2\n0 LAYER\n2 Off\n70 0\n62 -7\n0 LAYER\n2 "
                               "Frozen\n70 1\n62 7\n0 ENDTAB\n0 ENDSEC\n";
    std::string const block =
        BlockSection("0 BLOCK\n2 B\n10 0\n20 0\n0 LINE\n8 0\n10 0\n20 0\n11 1\n21 0\n0 LINE\n8 "
                     "X\n10 0\n20 1\n11 1\n21 1\n0 ENDBLK\n0 BLOCK\n2 *Paper_Space1\n0 LINE\n10 0\n20 0\n11 1\n21 "
                     "0\n0 ENDBLK\n");
    std::string const ends = "10 5\n20 5\n11 6\n21 6\n";
    std::string const text = DxfWith(
        "0 LINE\n8 OFF\n" + ends + "0 LINE\n8 FROZEN\n" + ends + "0 LINE\n67 1\n" + ends + "0 LINE\n60 1\n" + ends +
            "0 TEXT\n1 A\n0 TEXT\n1 B\n0 HATCH\n10 0\n0 POLYLINE\n70 16\n0 VERTEX\n10 0\n20 0\n0 SEQEND\n" +
            "0 INSERT\n8 OFF\n2 B\n10 0\n20 0\n0 INSERT\n8 FROZEN\n2 B\n10 0\n20 0\n",
        layers + block);
    DrawingInput const input = ReadDxf(text, {});
    EXPECT_EQ(Shown(input), "line 0,1 1,1");
    EXPECT_EQ(input.notes.off, 2);
    EXPECT_EQ(input.notes.frozen, 2);
    EXPECT_EQ(input.notes.paperSpace, 2);
    EXPECT_EQ(input.notes.invisible, 1);
    EXPECT_EQ(input.notes.meshes, 1);
    EXPECT_EQ(input.notes.notCurves, (std::map<std::string, int>{{"HATCH", 1}, {"TEXT", 2}}));

    ReadingOptions options;
    options.layers = {"off"};
    DrawingInput const chosen = ReadDxf(text, options);
    EXPECT_EQ(Shown(chosen), "line 5,5 6,6; line 0,0 1,0");
    EXPECT_EQ(chosen.layers[0].others, 0);
    options.layers = {"FRO?EN", "o*"};
    EXPECT_EQ(Shown(ReadDxf(text, options)), "line 5,5 6,6; line 5,5 6,6; line 0,0 1,0; line 0,0 1,0");
    options.layers = {"frozne"};
    EXPECT_EQ(Refusal(text, options), "0: there is no layer \"frozne\"; did you mean \"Frozen\"?");

    std::string const space = "0 BLOCK\n2 *MODEL_SPACE\n10 0\n20 0\n0 LINE\n8 A\n" + ends + "0 ENDBLK\n";
    EXPECT_EQ(Shown(ReadDxf(DxfGroups(BlockSection(space) + "0 EOF\n"), {})), "line 5,5 6,6") << "no ENTITIES";
}

TEST(LayerPattern, FitsNames) {
    for (auto const &[name, pattern, fits] : {std::tuple{"WALLS", "wall*", true},
                                              {"WALLS", "*", true},
                                              {"", "*", true},
                                              {"WALLS", "WALL", false},
                                              {"A-WALL-1", "*wall*", true},
                                              {"A-WALL-1", "a?wall??", true},
                                              {"A-WALL", "A-WALL?", false},
                                              {"aab", "*ab", true},
                                              {"aabaa", "*ab", false},
                                              {"a*b", "a*b", true},
                                              {"WALL", "WALL**", true},
                                              {"\xD0\xA1\xD1\x82", "\xD1\x81?", true},
                                              {"\xD0\xA1", "*??", false},
                                              {"A", "[A]", false}})
        EXPECT_EQ(FitsPattern(FoldedLayerName(name), FoldedLayerName(pattern)), fits) << name << " " << pattern;
}

TEST(DxfReader, ReadsHeaderLayerNamesAndOddFiles) {
    std::string const header = "0 SECTION\n2 HEADER\n9 $DWGCODEPAGE\n3 ANSI_1251\n9 $INSUNITS\n70 4\n0 ENDSEC\n";
    std::string const line = "0 LINE\n5 \n8 \xD1\xF2\xE5\xED\xE0\n10 0\n20 0\n11 1\n21 0\n"; // a word in code page 1251
    DrawingInput const input = ReadDxf(DxfWith(line + line, header), {});
    EXPECT_EQ(input.units, "mm");
    EXPECT_EQ(input.LayerOf(2), "\xD0\xA1\xD1\x82\xD0\xB5\xD0\xBD\xD0\xB0");
    EXPECT_EQ(ReadDxf(DxfWith(""), {}).units, "absent");
    EXPECT_EQ(ReadDxf(DxfWith("", "0 SECTION\n2 HEADER\n9 $INSUNITS\n70 99\n0 ENDSEC\n"), {}).units, "unknown");

    std::string const plain = DxfWith(line);
    std::string carriage;
    for (char const c : "\xEF\xBB\xBF" + DxfGroups("999 a comment\n") + plain)
        carriage += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(Shown(ReadDxf(carriage, {})), "line 0,0 1,0");
    EXPECT_EQ(ReadDxf(plain + "rest\nof a file", {}).notes.bytesAfterEnd, 14u);
    EXPECT_EQ(Shown(ReadDxf(plain.substr(0, plain.size() - 1), {})), "line 0,0 1,0");
}

TEST(DxfReader, RefusesWhatIsDamagedWithTheLine) {
    std::string const line = "0 LINE\n10 0\n20 0\n11 1\n21 0\n";
    std::string const whole = DxfWith(line);
    std::string const self = BlockSection("0 BLOCK\n2 A\n10 0\n20 0\n0 INSERT\n2 B\n10 0\n20 0\n0 ENDBLK\n"
                                          "0 BLOCK\n2 B\n10 0\n20 0\n0 INSERT\n2 A\n10 0\n20 0\n0 ENDBLK\n");
    using Case = std::pair<std::string, std::string>; // how the refusal starts
    for (auto const &[text, begin] : std::initializer_list<Case>{
             {"", "0: the file is empty"},
             {" \r\n\n", "0: the file is empty"},
             {std::string("AnyName Binary DXF\r\n\x1A\0rest", 26), "0: this is a binary DXF"},
             {"hello\nworld\n", "1: expected a group code, found \"hello\""},
             {"0\nLINE\n", "2: expected a SECTION or EOF"},
             {"99999\nx\n", "1: expected a group code"},
             {whole.substr(0, whole.size() - 6), "17: the drawing ends before its EOF group; it was cut short"},
             {whole.substr(0, whole.find("ENDSEC")), "15: the file ends within a group"},
             {DxfWith("0 LINE\n10 zero\n20 0\n11 1\n21 0\n"), "8: group 10 should hold a number, not \"zero\""},
             {DxfWith("0 LINE\n10 nan\n20 0\n11 1\n21 0\n"), "8: group 10 should hold a number, not \"nan\""},
             {DxfWith("0 LINE\n10 0,5\n20 0\n11 1\n21 0\n"), "8: group 10 should hold a number, not \"0,5\""},
             {DxfWith("0 LINE\n10 0\n20 0\n11 1\n"), "6: LINE has no group 21"},
             {DxfWith("0 SECTION\n2 ENTITIES\n"), "6: a SECTION starts inside another one"},
             {DxfGroups("0 SECTION\n10 0\n0 ENDSEC\n0 EOF\n"), "4: a SECTION has no name"},
             {DxfWith("0 INSERT\n2 A\n10 0\n20 0\n", self), "32: block \"A\" contains itself"},
         }) {
        std::string const refusal = Refusal(text);
        EXPECT_EQ(refusal.substr(0, begin.size()), begin) << text;
        EXPECT_NE(refusal.find(';'), std::string::npos) << "no advice in: " << refusal;
    }
}

TEST(DxfReader, EveryCutOfADrawingIsRefusedOrWhole) {
    std::string const whole = DxfWith(kSquare + "0 SPLINE\n71 3\n11 0\n21 0\n11 1\n21 1\n11 2\n21 0\n");
    std::size_t const lastGroup = whole.size() - std::string("EOF\n").size();
    for (std::size_t size = 0; size < lastGroup; ++size)
        EXPECT_NE(Refusal(whole.substr(0, size)), "") << size;
}

TEST(DxfReader, LimitsWhatSmallFilesCanAskFor) {
    std::string const dot = "0 BLOCK\n2 A\n10 0\n20 0\n0 LINE\n10 0\n20 0\n11 1\n21 0\n0 ENDBLK\n";
    std::string const array = "70 32767\n71 32767\n44 1\n45 1\n";
    EXPECT_NE(Refusal(DxfWith("0 INSERT\n2 A\n10 0\n20 0\n" + array, BlockSection(dot))).find("2000000 curves"),
              std::string::npos);
    EXPECT_NE(Refusal(DxfWith("0 INSERT\n2 E\n10 0\n20 0\n" + array, BlockSection("0 BLOCK\n2 E\n0 ENDBLK\n")))
                  .find("repeat more than"),
              std::string::npos);
    // Each block draws the one before it ten times.
    std::string nested = dot;
    for (char name = 'B'; name <= 'K'; ++name) {
        std::string const before(1, static_cast<char>(name - 1));
        nested += std::string("0 BLOCK\n2 ") + name + "\n10 0\n20 0\n";
        for (int i = 0; i < 10; ++i)
            nested += "0 INSERT\n2 " + before + "\n10 0\n20 0\n";
        nested += "0 ENDBLK\n";
    }
    EXPECT_NE(Refusal(DxfWith("0 INSERT\n2 K\n10 0\n20 0\n", BlockSection(nested)))
                  .find("delete the array or the nested blocks"),
              std::string::npos);
    std::string chain = dot;
    std::string last = "A";
    for (int i = 0; i < 70; ++i) {
        std::string const name = std::to_string(i);
        chain.append("0 BLOCK\n2 ").append(name).append("\n10 0\n20 0\n0 INSERT\n2 ").append(last);
        chain += "\n10 0\n20 0\n0 ENDBLK\n";
        last = name;
    }
    EXPECT_NE(
        Refusal(DxfWith("0 INSERT\n2 " + last + "\n10 0\n20 0\n", BlockSection(chain))).find("nested more than 64"),
        std::string::npos);
}

TEST(DxfReader, LeavesOutWhatCannotBeDrawn) {
    for (auto const &[what, type, entity] : std::initializer_list<std::array<char const *, 3>>{
             {"circle seen edge-on", "CIRCLE", "0 CIRCLE\n10 0\n20 0\n40 1\n210 1\n220 0\n230 0\n"},
             {"ellipse without an axis", "ELLIPSE", "0 ELLIPSE\n10 0\n20 0\n11 0\n21 0\n40 1\n"},
             {"ellipse without a width", "ELLIPSE", "0 ELLIPSE\n10 0\n20 0\n11 1\n21 0\n40 0\n"},
             {"spline without points", "SPLINE", "0 SPLINE\n71 3\n"},
             {"spline of one point", "SPLINE", "0 SPLINE\n71 3\n11 1\n21 1\n11 1\n21 1\n"},
             {"spline of falling knots", "SPLINE", "0 SPLINE\n71 1\n40 0\n40 1\n40 0\n40 1\n10 0\n20 0\n10 1\n20 0\n"},
             {"spline of a negative weight", "SPLINE",
              "0 SPLINE\n71 1\n40 0\n40 0\n40 1\n40 1\n41 1\n41 -1\n10 0\n20 0\n10 1\n20 0\n"},
             {"spline of an absurd degree", "SPLINE", "0 SPLINE\n71 1000000\n10 0\n20 0\n10 1\n20 0\n"},
             {"polyline of one vertex", "LWPOLYLINE", "0 LWPOLYLINE\n70 1\n10 0\n20 0\n"},
             {"coordinates that overflow", "CIRCLE", "0 CIRCLE\n10 1e308\n20 1e308\n40 1e308\n210 0\n220 0.1\n230 1\n"},
         }) {
        DrawingInput const input = ReadDxf(DxfWith(entity), {});
        EXPECT_TRUE(input.curves.empty()) << what;
        EXPECT_EQ(input.notes.unusable.count(type), 1u) << what;
    }
}

TEST(DxfReader, TakesInclinedThingsAsSeenFromAbove) {
    // The circle of radius 2 in a plane inclined by 60 degrees is an ellipse of half axes 2 and 1.
    DrawingInput const input =
        ReadDxf(DxfWith("0 CIRCLE\n10 0\n20 0\n40 2\n210 0\n220 0.8660254037844386\n230 0.5\n"), {});
    EXPECT_NEAR(AreaOf(input), 2.0 * std::numbers::pi, 1e-5);
    EXPECT_EQ(input.notes.tilted, 1);
    DrawingInput const levels =
        ReadDxf(DxfWith("0 CIRCLE\n10 0\n20 0\n30 3000\n40 1\n0 CIRCLE\n10 0\n20 0\n40 2\n" + kSquare +
                        "0 POLYLINE\n70 8\n0 VERTEX\n10 0\n20 0\n30 1\n0 VERTEX\n10 1\n20 0\n"
                        "30 2\n0 SEQEND\n"),
                {});
    EXPECT_EQ(levels.notes.heights, (std::map<double, int>{{0.0, 2}, {3000.0, 1}}));
    EXPECT_EQ(levels.notes.tilted, 1) << "a polyline that rises";
    EXPECT_EQ(ReadDxf(DxfWith("0 LINE\n10 0\n20 0\n30 0\n11 1\n21 0\n31 5\n"), {}).notes.tilted, 1);
}

} // namespace zvi::app::test
