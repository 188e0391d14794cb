#include "tests/drawing/DrawingFamilies.h"
#include "tests/drawing/CoveredArea.h"
#include "tests/drawing/DrawingInvariants.h"
#include "zvi/drawing/CutDrawingCurves.h"
#include "zvi/drawing/MakeDrawingDomains.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace zvi::lib::test {

namespace {

/// What is tried besides the invariants, one for each drawing.
enum class Trial { kScan, kMotion, kOrder, kTolerance };
constexpr int kTrials = 4;

/// Areas agree to this share whatever the tolerance; coordinates to this share of the drawing.
constexpr double kSameArea = 1e-9, kRounding = 0x1p-44;

/// Domains of less area than this share of the drawing times their border are as thin as rounding.
constexpr double kThin = 1e-12;

/// Curves of fewer tolerances than this have more gaps than ends, and areas that the tolerance hides.
constexpr double kLongCurve = 20.0;

long FromEnvironment(char const *name, long standard) {
    char const *const wanted = std::getenv(name);
    return wanted ? std::atol(wanted) : standard;
}

/// The tolerance times the length, and rounding.
double AreaAllowed(std::vector<DrawingCurve> const &curves, double tolerance) {
    double const length = LengthOf(curves);
    return (tolerance + kRounding * SizeOf(curves)) * length + kSameArea * length * length;
}

/// How much the k-th largest areas differ at most.
double LargestDifference(std::vector<double> a, std::vector<double> b) {
    a.resize(std::max(a.size(), b.size()), 0.0);
    b.resize(a.size(), 0.0);
    double largest = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::fabs(a[i] - b[i]));
    return largest;
}

/// Whether an end stands off a curve, or off the other end of its own, by more than the one distance and less than the
/// other.
bool HasGap(std::vector<DrawingCurve> const &curves, double above, double below) {
    auto const isGap = [=](double distance) { return distance > above && distance < below; };
    for (DrawingCurve const &c : curves) {
        if (c.type == DrawingCurveType::kCircle)
            continue;
        if (isGap(Distance(c.start, c.end)))
            return true;
        for (DrawingCurve const &d : curves)
            if (isGap(DistanceTo(d, c.start)) || isGap(DistanceTo(d, c.end)))
                return true;
    }
    return false;
}

/// Whether circles, or arcs, pass one another nearly touching, at most so far apart.
bool HasNarrowPass(std::vector<DrawingCurve> const &curves, double apart) {
    for (DrawingCurve const &c : curves)
        for (DrawingCurve const &d : curves) {
            double const between = Distance(c.center, d.center), sum = c.radius + d.radius;
            if (c.radius > 0.0 && d.radius > 0.0 && between > sum && between < sum + apart)
                return true;
        }
    return false;
}

/// Whether rounding alone keeps some end off another curve, which a tolerance of nothing then joins or not.
bool HasRoundedGap(Drawing const &d) {
    double const size = SizeOf(d.curves);
    return d.options.joinTolerance < kRounding * size && HasGap(d.curves, 0.0, kSameArea * size);
}

std::string CompareWithScan(Drawing const &d, DrawingResult const &result) {
    std::ostringstream wrong;
    double const tolerance = d.options.joinTolerance, allowed = AreaAllowed(d.curves, tolerance);
    if (LengthOf(d.curves) < kLongCurve * tolerance * static_cast<double>(d.curves.size()))
        return "";
    double const widest = std::max(tolerance, kRounding * SizeOf(d.curves)) * (1.0 + kSameArea);
    ScannedRegions const least = ScanRegions(d.curves, tolerance, Gaps::kClear);
    ScannedRegions const most = ScanRegions(d.curves, widest, Gaps::kAll);
    double const total = TotalArea(result);
    // The scan takes what is narrow for closed.
    double const narrow = kSameArea * SizeOf(d.curves);
    bool const mayBeOpen = HasRoundedGap(d) || HasGap(d.curves, tolerance, narrow) ||
                           (tolerance < narrow && HasNarrowPass(d.curves, narrow));
    if ((total < least.total - allowed && !mayBeOpen) || total > most.total + most.thin + allowed)
        wrong << "total " << total << ", scanned from " << least.total << " to " << most.total << "\n";
    else if (!mayBeOpen && LargestDifference(least.areas, most.areas) <= allowed) {
        double const difference = LargestDifference(AreasOf(result), least.areas);
        if (difference > 2.0 * allowed)
            wrong << "some area differs by " << difference << " from a scanned one\n";
    }
    return wrong.str();
}

/// How many domains are not as thin as rounding, which may come or go.
std::size_t ThickCount(DrawingResult const &result, double size) {
    return static_cast<std::size_t>(
        std::count_if(result.domains.begin(), result.domains.end(),
                      [size](DrawingDomain const &d) { return d.area > kThin * size * d.perimeter; }));
}

std::string CompareResults(Drawing const &d, DrawingResult const &a, DrawingResult const &b, double scale) {
    std::ostringstream wrong;
    double const size = SizeOf(d.curves);
    if (d.areCountsSure && (ThickCount(a, size) != ThickCount(b, scale * size) || HoleCount(a) != HoleCount(b)))
        wrong << a.domains.size() << " domains, " << HoleCount(a) << " holes; otherwise " << b.domains.size() << ", "
              << HoleCount(b) << "\n";
    std::vector<double> areas = AreasOf(b);
    for (double &area : areas)
        area /= scale * scale;
    double const difference = LargestDifference(AreasOf(a), areas);
    if (difference > 2.0 * AreaAllowed(d.curves, d.options.joinTolerance))
        wrong << "some area differs by " << difference << "\n";
    return wrong.str();
}

DrawingPoint AnyPointOf(DrawingCurve const &c) {
    return c.type == DrawingCurveType::kLine ? c.start : c.center;
}

/// Whether moving has turned an arc whose ends rounding alone keeps apart from one that goes round into one without
/// length, or back.
bool IsAnyArcFlipped(std::vector<DrawingCurve> const &curves, std::vector<DrawingCurve> const &moved) {
    for (std::size_t i = 0; i < curves.size(); ++i)
        if (Distance(curves[i].start, curves[i].end) < curves[i].radius &&
            IsOverHalf(curves[i]) != IsOverHalf(moved[i]))
            return true;
    return false;
}

std::string CompareMoved(Drawing const &d, DrawingResult const &result, Dice &dice) {
    Motion motion;
    motion.turn = dice.Chance(0.3) ? 0.5 * kPi * dice.Whole(0, 3) : dice.Real(0.0, 6.28);
    motion.isMirrored = dice.Chance(0.5);
    motion.scale = dice.Chance(0.5) ? 1.0 : std::pow(10.0, dice.Real(-3.0, 3.0));
    // One that stands far from the origin stays about as far, so that rounding takes nothing of it. How large it is its
    // curves say, not the centres of flat arcs.
    DrawingPoint const o = d.curves.empty() ? DrawingPoint() : AnyPointOf(d.curves[0]);
    double const size =
        motion.scale * std::min(SizeOf(Moved(d.curves, {0.0, false, 1.0, {-o.x, -o.y}})), LengthOf(d.curves));
    if (d.options.joinTolerance > 1e-6 * SizeOf(d.curves))
        motion.shift = {size * dice.Real(-1e2, 1e2), size * dice.Real(-1e2, 1e2)};
    DrawingOptions options = d.options;
    options.joinTolerance *= motion.scale;
    std::vector<DrawingCurve> const curves = Moved(d.curves, motion);
    if (IsAnyArcFlipped(d.curves, curves) || HasRoundedGap(d))
        return "";
    std::string const wrong = CompareResults(d, result, MakeDrawingDomains(curves, options), motion.scale);
    std::ostringstream how;
    how.precision(17);
    how << wrong << "turned by " << motion.turn << (motion.isMirrored ? ", mirrored" : "") << ", scaled by "
        << motion.scale << ", moved by " << motion.shift.x << ", " << motion.shift.y << "\n";
    return wrong.empty() ? wrong : how.str();
}

/// Another order of the curves gives the same domains in the same order.
std::string CompareReordered(Drawing const &d, DrawingResult const &result, Dice &dice) {
    DrawingResult const other = MakeDrawingDomains(dice.Shuffled(d.curves), d.options);
    std::string wrong = CompareResults(d, result, other, 1.0);
    double const allowed = 2.0 * AreaAllowed(d.curves, d.options.joinTolerance);
    // Where a duplicate was dropped, places lie on the curve that comes first.
    if (result.counts.duplicates > 0 || result.domains.size() != other.domains.size())
        return wrong;
    for (std::size_t i = 0; i < result.domains.size() && wrong.empty(); ++i)
        if (std::fabs(result.domains[i].area - other.domains[i].area) > allowed)
            wrong = "the same domains in another order\n";
    return wrong;
}

/// The pieces of the cut drawing cover the curves as a result that is all leftovers.
std::string CheckPieces(Drawing const &d) {
    DrawingPieces const cut = CutDrawingCurves(d.curves, d.options);
    DrawingResult result;
    result.leftovers = cut.leftovers;
    for (DrawingPiece const &p : cut.pieces)
        result.leftovers.push_back({p, LeftoverReason::kDangle});
    return WhatIsWrong(d.curves, {d.options.joinTolerance, d.options.split, true}, result);
}

/// Places well inside different domains stay in different ones.
std::string CompareTolerances(Drawing const &d, DrawingResult const &result, Dice &dice) {
    std::ostringstream wrong;
    DrawingOptions options = d.options;
    options.joinTolerance = options.joinTolerance * dice.Real(1.0, 30.0) + 1e-7 * SizeOf(d.curves);
    DrawingResult const wide = MakeDrawingDomains(d.curves, options);
    std::vector<std::pair<int, int>> seen;
    for (Probe const &p : ProbesOf(d.curves, 2.0 * options.joinTolerance, result)) {
        int const domain = DomainAt(wide, p.at);
        if (domain < 0)
            wrong << "(" << p.at.x << ", " << p.at.y << ") is in a domain, and in none with tolerance "
                  << options.joinTolerance << "\n";
        for (auto const &[narrow, other] : seen)
            if (other == domain && narrow != p.domain)
                wrong << "domains apart are one with tolerance " << options.joinTolerance << " at (" << p.at.x << ", "
                      << p.at.y << ")\n";
        seen.push_back({p.domain, domain});
    }
    return wrong.str();
}

/// What is wrong with the result of a drawing; the seed picks the trial.
std::string FaultOf(Drawing const &d, std::uint64_t seed) {
    DrawingResult const result = MakeDrawingDomains(d.curves, d.options);
    std::string wrong = WhatIsWrong(d.curves, d.options, result);
    double const allowed = AreaAllowed(d.curves, d.options.joinTolerance);
    if (d.domains >= 0 && static_cast<int>(result.domains.size()) != d.domains)
        wrong += std::to_string(result.domains.size()) + " domains, not " + std::to_string(d.domains) + "\n";
    if (d.area >= 0.0 && std::fabs(TotalArea(result) - d.area) > allowed)
        wrong += "area " + std::to_string(TotalArea(result)) + ", not " + std::to_string(d.area) + "\n";
    if (!d.options.split || d.options.keepDuplicates)
        return wrong;
    Dice dice(seed);
    switch (static_cast<Trial>(dice.Whole(0, kTrials - 1))) {
    case Trial::kScan:
        return wrong + CompareWithScan(d, result);
    case Trial::kMotion:
        return wrong + (d.areCountsSure ? CompareMoved(d, result, dice) : "");
    case Trial::kOrder:
        return wrong + CheckPieces(d) + CompareReordered(d, result, dice);
    case Trial::kTolerance:
        return wrong + CompareTolerances(d, result, dice);
    }
    return wrong;
}

/// Leaves curves out as long as the fault stays.
Drawing Shrunk(Drawing d, std::uint64_t seed) {
    d.domains = -1;
    d.area = -1.0;
    for (std::size_t share = d.curves.size(); share > 0; share /= 2)
        for (std::size_t i = 0; i + share <= d.curves.size();) {
            Drawing less = d;
            auto const from = less.curves.begin() + static_cast<std::ptrdiff_t>(i);
            less.curves.erase(from, from + static_cast<std::ptrdiff_t>(share));
            if (FaultOf(less, seed).empty())
                i += share;
            else
                d = less;
        }
    return d;
}

std::string Describe(Drawing const &whole, int family, std::uint64_t seed) {
    Drawing const small =
        FaultOf(Drawing{whole.curves, whole.options, whole.areCountsSure}, seed).empty() ? whole : Shrunk(whole, seed);
    std::ostringstream text;
    text.precision(17);
    text << FamilyName(family) << ", seed " << seed << ", trial " << Dice(seed).Whole(0, kTrials - 1) << "\n"
         << FaultOf(small, seed) << "zvi domains --join " << small.options.joinTolerance
         << (small.options.split ? "" : " --no-split") << (small.options.keepDuplicates ? " --keep-duplicates" : "")
         << " - <<END\n"
         << TextOf(small.curves) << "END\n";
    return text.str();
}

} // namespace

TEST(DrawingFamilies, CirclesThatTouchByAHairKeepTheirArea) {
    struct Known {
        char const *curves;
        int domains;
        double radius;
    };
    Known const known[] = {
        {"circle 1 0 0 3; circle 2 2 0.01 1", 2, 3.0},
        {"circle 1 7.22 4.24 29.81; circle 2 14.83 4.27 22.2", 2, 29.81},
        {"circle 1 0 0 1.157; circle 2 0.126 -0.002 1.031", 2, 1.157},
        {"circle 1 2.9432 3.383 6.0346; circle 2 3.1522 3.0787 5.6655; circle 3 3.3594 2.7771 5.2995", 3, 6.0346},
    };
    for (Known const &k : known)
        for (int turn = 0; turn < 12; ++turn) {
            Drawing d{Moved(Curves(k.curves), {0.5 * turn, turn % 2 == 1, 1.0, {}}), {}};
            d.domains = k.domains;
            d.area = kPi * k.radius * k.radius;
            for (std::uint64_t seed = 0; seed < 4; ++seed)
                EXPECT_EQ(FaultOf(d, seed), "") << k.curves << " turned by " << 0.5 * turn;
        }
}

TEST(DrawingFamilies, HoldWhereTheyOnceDidNot) {
    struct {
        char const *what;
        std::vector<unsigned> seeds;
    } const rows[] = {
        {"kept duplicates beside what became one place", {35972, 601944, 611972, 2125113, 2141901}},
        {"an arc whose ends have come to lie half a turn further", {12008}},
        {"faces and places that rounding alone tells apart, far away", {91911, 131358, 914184, 2089060}},
        {"edges that lie on one another but for a little", {630494}},
        {"a border laid upon another that the next part sees", {3222094, 3794644, 3809120}},
        {"a foot beside a place that is as good", {3361027, 10233145, 50056819}},
        {"where a circle is taken to start on an arc of it", {30072503, 30673653}},
        {"an arc that is closed but for nothing", {60162607}},
        {"copies of a place that rounding alone tells apart", {3493787}},
        {"a thin face whose neighbours have taken its edges", {513289, 3285091, 3643955}},
        {"kept duplicates that would have to go far", {3956435}},
        {"circles that another one crosses where they keep together, far away", {60326686}},
        {"a waist behind a corner that passes by", {70207487, 110030435}},
        {"pieces that many short steps lead away from their line, or that turn more than once", {70132541, 70109555}},
        {"a tip between sides that have changed", {70419049}},
        {"ends that are on their circle but for nothing", {30045271, 60544197}},
        {"where a kept circle starts on a kept arc of it", {110094071}},
        {"places told apart by rounding alone between connectors", {130081332}},
        {"parts that come to lie on one another", {120181508}},
        {"arcs that turn round where they end", {130146301, 900137083}},
        {"a bent edge that begins where its circle starts", {200328875}},
        {"circles through one another's centres", {200571139}},
        {"a region thicker than the tolerance, far away", {500223032, 1000044160}},
        {"a place beside a foot that is taken already", {600310831}},
        {"curves round a place that something else ends close to", {500071524}},
        {"curves that cross at small angles in one point", {1100367110}},
        {"contacts of a small circle, and of flat arcs", {1200066048, 1500022052}},
        {"a border that a place at its centre cuts", {1500139211}},
        {"connectors cut close to their ends", {1400141093, 1900029292}},
        {"a curve so short that rounding may leave it no length", {500208807}},
        {"a side of a thin face of which nothing is left", {200302450}},
        {"a region as thin as rounding in the scan", {70150950}},
        {"tangents, steep curves and arcs of nearly one turn in the scan", {117347, 921359, 208270, 614820, 159392}},
        {"upright lines, and narrow openings before steep ones, in the scan", {3182930, 50003769, 30532624}},
    };
    for (auto const &row : rows)
        for (unsigned const seed : row.seeds) {
            int const family = static_cast<int>(seed) % FamilyCount();
            EXPECT_EQ(FaultOf(DrawFamily(family, seed), seed), "") << row.what << ", seed " << seed;
        }
}

/// ZVI_DRAWINGS says how many are tried, ZVI_FIRST_DRAWING where to begin, ZVI_FAMILY which kind alone, ZVI_FAULTS how
/// many faults of a kind are shown.
TEST(DrawingFamilies, HoldWhateverIsDrawn) {
    long const count = FromEnvironment("ZVI_DRAWINGS", 3000), first = FromEnvironment("ZVI_FIRST_DRAWING", 1);
    long const only = FromEnvironment("ZVI_FAMILY", -1), shown = FromEnvironment("ZVI_FAULTS", 1);
    std::vector<long> tried(static_cast<std::size_t>(FamilyCount())), faults = tried;
    for (long seed = first; seed < first + count; ++seed) {
        int const family = static_cast<int>(only >= 0 ? only : seed % FamilyCount());
        std::size_t const kind = static_cast<std::size_t>(family);
        ++tried[kind];
        Drawing const drawing = DrawFamily(family, static_cast<std::uint64_t>(seed));
        if (FaultOf(drawing, static_cast<std::uint64_t>(seed)).empty())
            continue;
        if (++faults[kind] <= shown)
            ADD_FAILURE() << Describe(drawing, family, static_cast<std::uint64_t>(seed));
    }
    for (std::size_t i = 0; i < tried.size() && std::getenv("ZVI_DRAWINGS"); ++i)
        std::printf("%9ld drawings, %7ld faults: %s\n", tried[i], faults[i], FamilyName(static_cast<int>(i)));
}

} // namespace zvi::lib::test
