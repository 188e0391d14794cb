#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/ReadWhole.h"
#include "apps/zvi/domains/dxf/ReadDxf.h"
#include "apps/zvi/domains/input/ReadDrawing.h"
#include "apps/zvi/domains/output/DxfDrawing.h"
#include "apps/zvi/domains/output/SvgPicture.h"

#include "zvi/drawing/MakeDrawingDomains.h"

#include "tests/ResultHash.h"
#include "tests/apps/zvi/Run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

namespace zvi::app::test {

namespace {

namespace fs = std::filesystem;
fs::path const kDrawings = fs::path(ZVI_SOURCE_DIR) / "tests" / "data";

/// Drawings of unknown authors, which are tested where there is a copy but are not part of the project.
fs::path const kOutsideDrawings = ZVI_OUTSIDE_DRAWINGS_DIR;

struct Totals {
    std::size_t domains = 0;
    std::size_t holes = 0;
    double area = 0.0;
};

Totals TotalsOf(lib::DrawingResult const &result) {
    Totals totals;
    totals.domains = result.domains.size();
    for (lib::DrawingDomain const &domain : result.domains) {
        totals.holes += domain.holes.size();
        totals.area += domain.area;
    }
    return totals;
}

DrawingInput Read(fs::path const &file) {
    return ReadDrawing(file.string(), ReadWhole(file.string(), std::cin), {});
}

/// Compares the drawings of a folder with its list, but for those that tests/data has.
void ExpectAsListed(fs::path const &folder) {
    std::ifstream stream(folder / "expected.json");
    nlohmann::json const expected = nlohmann::json::parse(stream);
    for (auto const &[name, numbers] : expected["drawings"].items()) {
        if (folder != kDrawings && fs::exists(kDrawings / name))
            continue;
        DrawingInput const input = Read(folder / name);
        lib::DrawingOptions options;
        options.joinTolerance = expected["join_tolerance"];
        Totals const totals = TotalsOf(lib::MakeDrawingDomains(input.curves, options));
        options.joinTolerance = SuggestedJoin(input);
        Totals const suggested = TotalsOf(lib::MakeDrawingDomains(input.curves, options));
        EXPECT_EQ(suggested.domains, totals.domains) << name;
        EXPECT_EQ(suggested.holes, totals.holes) << name;
        double const area = numbers["area"];
        double const allowed = input.notes.flattened.empty() ? 1e-6 : 1e-4;
        EXPECT_EQ(totals.domains, numbers["faces"].get<std::size_t>()) << name;
        EXPECT_EQ(totals.holes, numbers["holes"].get<std::size_t>()) << name;
        EXPECT_NEAR(totals.area, area, allowed * area) << name;
        EXPECT_EQ(input.units, numbers["units"]) << name;
    }
}

/// Reads every drawing of a folder and writes its domains in both forms.
void ExpectReadOrRefused(fs::path const &folder) {
    for (fs::directory_entry const &entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".dxf")
            continue;
        std::string const name = entry.path().filename().string();
        try {
            DrawingInput const input = Read(entry.path());
            lib::DrawingOptions options;
            options.joinTolerance = SuggestedJoin(input);
            lib::DrawingResult const result = lib::MakeDrawingDomains(input.curves, options);
            EXPECT_FALSE(SvgPicture(name, input, result).empty());
            Totals const back = TotalsOf(lib::MakeDrawingDomains(ReadDxf(DxfDrawing(input, result), {}).curves));
            EXPECT_NEAR(back.area, TotalsOf(result).area, 1e-6 * back.area) << name;
        } catch (InputError const &error) {
            EXPECT_EQ(name, "binary_r2000.dxf") << error.what();
            EXPECT_NE(std::string(error.what()).find("binary DXF"), std::string::npos);
        }
    }
}

} // namespace

TEST(RealDrawings, GiveTheExpectedFacesHolesAndAreaOrAreRefused) {
    ExpectAsListed(kDrawings);
    ExpectReadOrRefused(kDrawings);
}

TEST(RealDrawings, FromOutsideGiveTheExpectedToo) {
    if (!fs::exists(kOutsideDrawings / "expected.json"))
        GTEST_SKIP() << "drawings whose authors are not known are not published with the project; none in "
                     << kOutsideDrawings;
    ExpectAsListed(kOutsideDrawings);
    ExpectReadOrRefused(kOutsideDrawings);
}

/// The hash of everything that the program tells about them, which is the same on every compiler, processor and host; a
/// commit that changes it changes results, and says so in CHANGELOG.md.
TEST(RealDrawings, GiveTheSameJsonEverywhere) {
    std::vector<std::string> files{(fs::path(ZVI_SOURCE_DIR) / "examples" / "floor_plan.dxf").string()};
    for (fs::directory_entry const &entry : fs::recursive_directory_iterator(kDrawings))
        if (entry.path().extension() == ".dxf")
            files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    lib::test::ResultHash hash;
    for (std::string const &file : files)
        hash.Add(RunZvi({"domains", "--json"}, ReadWhole(file, std::cin)).out);
    EXPECT_EQ(hash.Value(), 9475291874622127305U);
}

TEST(RealDrawings, TheFloorPlanIsTidy) {
    DrawingInput const input = Read(fs::path(ZVI_SOURCE_DIR) / "examples" / "floor_plan.dxf");
    lib::DrawingResult const result = lib::MakeDrawingDomains(input.curves);
    // Everything inside the outer walls belongs to a domain: the rectangle of 14 by 10 and half a disk of radius 1.5.
    Totals const totals = TotalsOf(result);
    EXPECT_EQ(totals.domains, 60u);
    EXPECT_NEAR(totals.area, 14.0 * 10.0 + std::acos(-1.0) * 1.5 * 1.5 / 2.0, 1e-9);
    EXPECT_EQ(result.gaps.size(), 1u);
    EXPECT_EQ(input.units, "m");
}

} // namespace zvi::app::test
