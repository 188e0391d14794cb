#include "tests/curves/MDomainMakerOracle.h"
#include "tests/curves/RandomCurves.h"
#include "zvi/curves/MDomainMaker.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

namespace zvi::lib::test {

namespace {

MArray<DM_VTEX> ToArray(std::vector<DM_VTEX> const &points) {
    MArray<DM_VTEX> array;
    for (DM_VTEX const &p : points)
        array.PushBack(p);
    return array;
}

void Feed(CurveSet const &curves, MDomainMaker &maker, MDomainMakerOracle &oracle) {
    for (InputCurve const &curve : curves) {
        MArray<DM_VTEX> points = ToArray(curve.points);
        if (curve.isMidPoints) {
            maker.AddCurvMidPoint(curve.id, points);
            oracle.AddCurvMidPoint(curve.id, curve.points);
        } else if (curve.points.size() == 2) {
            maker.AddCurv(curve.id, curve.points[0], curve.points[1]);
            oracle.AddCurv(curve.id, curve.points[0], curve.points[1]);
        } else {
            maker.AddCurvedCurvOnce(curve.id, points);
            oracle.AddCurvedCurvOnce(curve.id, curve.points);
        }
    }
}

template <typename List>
void Write(std::ostream &out, char const *name, List const &list) {
    out << name;
    for (int const value : list)
        out << ' ' << value;
    out << '\n';
}

template <typename Loop>
void WriteLoop(std::ostream &out, Loop const &loop) {
    Write(out, "  Vtex", loop.Vtex);
    Write(out, "  Curv", loop.Curv);
    Write(out, "  CurvDir", loop.CurvDir);
}

/// Every field of every domain, as text.
template <typename Surfs>
std::string Print(Surfs const &surfs) {
    std::ostringstream out;
    for (auto const &surf : surfs) {
        out << "domain\n";
        WriteLoop(out, surf);
        for (auto const &hole : surf.Holes) {
            out << " hole\n";
            WriteLoop(out, hole);
        }
    }
    return out.str();
}

std::string PrintCurves(CurveSet const &curves) {
    std::ostringstream out;
    out.precision(17);
    for (InputCurve const &curve : curves) {
        out << curve.id << (curve.isMidPoints ? " mid" : "");
        for (DM_VTEX const &p : curve.points)
            out << " (" << p.x << ", " << p.y << ")";
        out << '\n';
    }
    return out.str();
}

/// How often the oracle met what makes a division hard.
struct Coverage {
    int domains = 0;
    int holes = 0;
    int hung = 0;
    int barred = 0;
    int abandoned = 0;
};

/// Runs one input through both; false, with the input printed, when any field differs.
bool IsSame(CurveSet const &curves, std::string const &name, Coverage &coverage) {
    MDomainMaker maker;
    MDomainMakerOracle oracle;
    Feed(curves, maker, oracle);
    maker.MakeDomain();
    oracle.MakeDomain();
    for (OracleSurf const &surf : oracle.Surfs)
        coverage.holes += static_cast<int>(surf.Holes.size());
    coverage.domains += static_cast<int>(oracle.Surfs.size());
    coverage.hung += oracle.LoopsHung ? 1 : 0;
    coverage.barred += oracle.EdgesBarred ? 1 : 0;
    coverage.abandoned += oracle.Abandoned ? 1 : 0;
    std::string const expected = Print(oracle.Surfs);
    std::string const found = Print(maker.GetResultSurf());
    EXPECT_EQ(found, expected) << name << '\n' << PrintCurves(curves);
    return found == expected;
}

} // namespace

// Field by field the result of the plain algorithm, whatever the input. ZVI_DOMAIN_CASES sets the number of cases of
// each kind, ZVI_DOMAIN_SEED the seed.
TEST(MDomainMakerRandom, GivesWhatThePlainAlgorithmGives) {
    char const *const casesText = std::getenv("ZVI_DOMAIN_CASES");
    char const *const seedText = std::getenv("ZVI_DOMAIN_SEED");
    int const cases = casesText != nullptr ? std::atoi(casesText) : 25;
    unsigned int const seed = seedText != nullptr ? static_cast<unsigned int>(std::atoi(seedText)) : 20260501u;
    for (int k = 0; k < static_cast<int>(CurveKind::kCount); ++k) {
        auto const kind = static_cast<CurveKind>(k);
        Coverage coverage;
        for (int i = 0; i < cases; ++i) {
            std::mt19937 random(seed + static_cast<unsigned int>(i));
            int const size = 2 + i % 6;
            std::string const name = NameOf(kind) + ", seed " + std::to_string(seed + static_cast<unsigned int>(i));
            if (!IsSame(MakeRandomCurves(kind, size, random), name, coverage))
                return;
        }
        std::cout << NameOf(kind) << ": seeds from " << seed << ", " << coverage.domains << " domains, "
                  << coverage.holes << " holes, with loops hung " << coverage.hung << ", edges barred "
                  << coverage.barred << ", abandoned " << coverage.abandoned << '\n';
    }
}

// Fewer and larger: long rims, many rounds, corners that stay open for long.
TEST(MDomainMakerRandom, GivesThePlainResultOnLargerInputs) {
    Coverage coverage;
    for (unsigned int seed = 1; seed <= 2; ++seed) {
        for (CurveKind const kind : {CurveKind::kGrid, CurveKind::kFan}) {
            std::mt19937 random(seed);
            if (!IsSame(MakeRandomCurves(kind, 12, random), NameOf(kind) + ", seed " + std::to_string(seed), coverage))
                return;
        }
    }
    EXPECT_GT(coverage.domains, 300);
}

} // namespace zvi::lib::test
