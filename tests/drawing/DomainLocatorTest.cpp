#include "zvi/drawing/DomainLocator.h"
#include "tests/drawing/DrawingFamilies.h"
#include "tests/drawing/DrawingInvariants.h"
#include "zvi/drawing/MakeDrawingDomains.h"

#include <gtest/gtest.h>

#include <limits>

namespace zvi::lib::test {

TEST(DomainLocator, FindsTheDomainThatHoldsAPoint) {
    int probes = 0;
    for (int i = 0; i < 3000; ++i) {
        Drawing d = DrawFamily(i % FamilyCount(), 700u + static_cast<unsigned>(i));
        d.options.split = true;
        d.options.keepDuplicates = false;
        DrawingResult const result = MakeDrawingDomains(d.curves, d.options);
        DomainLocator const locator(result.domains);
        double const off = std::max(d.options.joinTolerance, 1e-6 * SizeOf(d.curves));
        for (Probe const &probe : ProbesOf(d.curves, off, result)) {
            ASSERT_EQ(locator.DomainAt(probe.at), DomainAt(result, probe.at))
                << FamilyName(i % FamilyCount()) << ", seed " << 700 + i << ", at " << probe.at.x << " " << probe.at.y;
            ++probes;
        }
    }
    EXPECT_GT(probes, 3000);
}

TEST(DomainLocator, GivesEachBorderToTheDomainOnItsRight) {
    // Two unit squares side by side, the right one with a round hole that holds a domain of its own.
    DomainLocator const locator(MakeDrawingDomains(Curves("line 1 0 0 2 0; line 2 2 0 2 1; line 3 2 1 0 1;"
                                                          "line 4 0 1 0 0; line 5 1 0 1 1; circle 6 1.5 0.5 0.25"))
                                    .domains);
    struct {
        DrawingPoint at;
        int domain;
    } const rows[] = {{{0, 0.5}, 0},      {{0.5, 0}, 0},   {{1, 0.5}, 1},   {{1, 0}, 1},      {{1, 1}, -1},
                      {{0.5, 1}, -1},     {{2, 0.5}, -1},  {{0, 0}, 0},     {{1.25, 0.5}, 2}, {{1.75, 0.5}, 1},
                      {{1.5, 0.5}, 2},    {{1.1, 0.9}, 1}, {{-1, 0.5}, -1}, {{3, 0.5}, -1},   {{0.5, -1}, -1},
                      {{1.5, 0.2499}, 1}, {{0.5, 2}, -1}};
    for (auto const &row : rows)
        EXPECT_EQ(locator.DomainAt(row.at), row.domain) << row.at.x << " " << row.at.y;
    double const none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(locator.DomainAt({none, 0.5}), -1);
    EXPECT_EQ(locator.DomainAt({0.5, std::numeric_limits<double>::infinity()}), -1);
    EXPECT_EQ(DomainLocator({}).DomainAt({0, 0}), -1);
}

} // namespace zvi::lib::test
