#include "apps/zvi/domains/input/CurveText.h"
#include "apps/zvi/common/Failure.h"

#include <gtest/gtest.h>

#include <tuple>

namespace zvi::app::test {

using lib::DrawingCurve;
using lib::DrawingCurveType;

TEST(CurveText, ReadsEachKind) {
    DrawingInput const input = ReadCurveText("# a comment\n"
                                             "line 7 0 0 +1.5 -2e1 # with a comment\r\n"
                                             "\n"
                                             "arc 3\t1 2 2 0 90\n"
                                             "arc 4 1 2 2 0 360\n"
                                             "arc3 5 0 0 1 1 2 0\n"
                                             "arc3 6 0 0 1 -1 2 0\n"
                                             "arc3 8 0 0 1 0 3 0\n"
                                             "circle 4294967295 1 2 3");
    ASSERT_EQ(input.curves.size(), 7u);
    EXPECT_EQ(input.curves[0].id, 7u);
    EXPECT_EQ(input.curves[0].end.y, -20.0);
    DrawingCurve const &arc = input.curves[1];
    EXPECT_EQ(arc.type, DrawingCurveType::kArc);
    EXPECT_EQ(arc.start.x, 3.0);
    EXPECT_EQ(arc.end.x, 1.0);
    EXPECT_EQ(arc.end.y, 4.0);
    EXPECT_FALSE(arc.clockwise);
    EXPECT_EQ(input.curves[2].type, DrawingCurveType::kCircle);
    DrawingCurve const &over = input.curves[3];
    EXPECT_NEAR(over.center.x, 1.0, 1e-15);
    EXPECT_NEAR(over.center.y, 0.0, 1e-15);
    EXPECT_TRUE(over.clockwise);
    EXPECT_FALSE(input.curves[4].clockwise);
    EXPECT_EQ(input.curves[5].type, DrawingCurveType::kLine);
    EXPECT_EQ(input.curves[6].radius, 3.0);
    EXPECT_EQ(input.IndexOf(4294967295u), 6u);
    EXPECT_EQ(input.EntityOf(3).line, 4u);
    EXPECT_EQ(input.units, "absent");
    EXPECT_TRUE(ReadCurveText("").curves.empty());
}

TEST(CurveText, RefusesWithTheLineAndAdvice) {
    using Case = std::tuple<char const *, std::size_t, std::string>;
    for (auto const &[text, line, what] : std::initializer_list<Case>{
             {"lien 1 0 0 1 1", 1, "unknown curve \"lien\"; did you mean \"line\"?"},
             {"\n\nellipse 1 0 0", 3, "unknown curve \"ellipse\"; a line starts with line, arc, arc3 or circle"},
             {"line 1 0 0 1", 1, "4 values where 5 belong; write: line ID x1 y1 x2 y2"},
             {"circle", 1, "0 values where 4 belong; write: circle ID cx cy r"},
             {"circle 1 0 0 1 1", 1, "5 values where 4 belong; write: circle ID cx cy r"},
             {"circle 0 0 0 1", 1, "the id \"0\" is not an integer from 1 to 4294967295"},
             {"circle -3 0 0 1", 1, "the id \"-3\" is not an integer from 1 to 4294967295"},
             {"circle 4294967296 0 0 1", 1, "the id \"4294967296\" is not an integer from 1 to 4294967295"},
             {"circle 1.5 0 0 1", 1, "the id \"1.5\" is not an integer from 1 to 4294967295"},
             {"circle 1 0 x 1", 1, "\"x\" is not a number; write: circle ID cx cy r"},
             {"circle 1 0 1e999 1", 1, "\"1e999\" is not a number; write: circle ID cx cy r"},
             {"circle 1 0 inf 1", 1, "\"inf\" is not a number; write: circle ID cx cy r"},
             {"circle 5 0 0 1\n#\nline 5 0 0 1 1", 3,
              "id 5 was used in line 1 already; give each curve an id of its own"},
             {"arc3 1 0 0 3 0 2 0", 1, "the points of arc3 are on one line with the middle point outside"},
             {"arc3 1 0 0 3 0 0 0", 1, "arc3 starts and ends at one point; write a circle instead"},
         }) {
        try {
            ReadCurveText(text);
            ADD_FAILURE() << "read: " << text;
        } catch (InputError const &error) {
            EXPECT_EQ(error.Line(), line) << text;
            EXPECT_EQ(std::string(error.what()).substr(0, what.size()), what);
        }
    }
}

} // namespace zvi::app::test
