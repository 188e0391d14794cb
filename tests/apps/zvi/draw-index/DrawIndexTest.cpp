#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/draw-index/CurveIndex.h"
#include "tests/TemporaryFolder.h"
#include "tests/apps/zvi/Run.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace zvi::app::test {

namespace {

std::size_t CountOf(std::string const &text, std::string const &piece) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1))
        ++count;
    return count;
}

} // namespace

TEST(DrawIndex, RectanglesTouchTheirCurves) {
    using Type = lib::DrawingCurveType;
    double const half = std::sqrt(0.5);
    std::pair<lib::DrawingCurve, std::array<double, 4>> const rows[] = {
        {{1, Type::kLine, {3, 1}, {2, 5}, {}, 0, false}, {2, 1, 3, 5}},
        {{2, Type::kCircle, {}, {}, {1, 2}, 3, false}, {-2, -1, 4, 5}},
        // From north-east over the top to north-west, and the same ends the other way round.
        {{3, Type::kArc, {half, half}, {-half, half}, {0, 0}, 1, false}, {-half, half, half, 1}},
        {{4, Type::kArc, {half, half}, {-half, half}, {0, 0}, 1, true}, {-1, -1, 1, half}},
    };
    for (auto const &[curve, box] : rows)
        EXPECT_EQ((std::bit_cast<std::array<double, 4>>(RectangleOf(curve))), box) << curve.id;
}

TEST(DrawIndex, DrawsEachLeafAndEachCurve) {
    std::string curves;
    for (int i = 0; i < 30; ++i) {
        std::string const x = std::to_string(i % 6 * 10 + 1), y = std::to_string(i / 6 * 10 + 1);
        curves += "circle " + std::to_string(i + 1) + " " + x + " " + y + " 2\n";
    }
    zvi::test::TemporaryFolder const folder;
    RunOutcome const run = RunZvi({"draw-index", "--capacity", "2", "--svg", folder.Native("a.svg").string()}, curves);
    EXPECT_EQ(run.status, kExitDone);
    EXPECT_EQ(run.err, "");
    std::string const svg = folder.Read("a.svg");
    EXPECT_NE(run.out.find("curves                 30\n"), std::string::npos);
    EXPECT_NE(run.out.find("  leaves               " + std::to_string(CountOf(svg, "<rect class=\"leaf\"")) + "\n"),
              std::string::npos);
    // Each circle is drawn in two halves.
    EXPECT_EQ(CountOf(svg, " 0 0 0 "), 60U);
    EXPECT_GT(CountOf(svg, "<rect class=\"leaf\""), 4U);
}

TEST(DrawIndex, RefusesWhatItCannotDo) {
    struct Row {
        std::vector<std::string> words;
        int status;
        char const *says;
        char const *curves = "# nothing\n";
    };
    Row const rows[] = {
        {{}, kExitBadUsage, "--svg FILE"},
        {{"--svg", "x.svg", "--capacity", "0"}, kExitBadUsage, "--capacity needs"},
        {{"--svg", "x.svg", "--capacity", "nan"}, kExitBadUsage, "--capacity needs"},
        {{"--svg", "x.svg", "a.dxf", "b.dxf"}, kExitBadUsage, "one drawing at a time"},
        {{"--svg", "x.svg"}, kExitBadInput, "holds no curves"},
        {{"--svg", "/no/such/folder/x.svg", "-"}, kExitBadInput, "holds no curves"},
        {{"--svg", "x.svg"}, kExitBadInput, "too large for a picture", "line 1 -1e308 0 1e308 1\n"},
        {{"--svg", "x.svg"}, kExitBadInput, "too large for a picture", "line 1 0 0 1e308 1\nline 2 -1e308 0 1 1\n"},
    };
    for (Row row : rows) {
        row.words.insert(row.words.begin(), "draw-index");
        RunOutcome const run = RunZvi(row.words, row.curves);
        EXPECT_EQ(run.status, row.status) << run.err;
        EXPECT_NE(run.err.find(row.says), std::string::npos) << run.err;
        EXPECT_FALSE(std::filesystem::exists("x.svg"));
    }
}

} // namespace zvi::app::test
