// However many threads work on a drawing, it comes out the same to the last bit. Run under the thread sanitizer too.

#include "tests/ResultHash.h"
#include "tests/drawing/DrawingCurves.h"
#include "tests/drawing/DrawingFamilies.h"
#include "zvi/drawing/CutDrawingCurves.h"
#include "zvi/drawing/MakeDrawingDomains.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <thread>

namespace zvi::lib::test {

namespace {

/// A sanitizer sees on three threads what it would see on others, and takes its time.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::initializer_list<int> kThreads = {3};
#else
constexpr std::initializer_list<int> kThreads = {2, 3, 8};
#endif

/// Short curves of every kind that cross, nearly meet, lie on one another, hang loose, or stand in one another.
std::vector<DrawingCurve> Clutter(int count) {
    Dice dice(7);
    std::vector<DrawingCurve> curves;
    double const side = 2.0 * std::sqrt(count), near = 0.01;
    auto const beside = [&](DrawingPoint p, double distance) {
        double const x = dice.Real(-distance, distance);
        return DrawingPoint{p.x + x, p.y + dice.Real(-distance, distance)};
    };
    for (int i = 0; i < count; i += 4) {
        DrawingPoint const a = beside({0.5 * side, 0.5 * side}, 0.5 * side), b = beside(a, 8.0);
        curves.push_back(LineOf(a, b));
        curves.push_back(LineOf(beside(b, near), beside(a, 8.0)));
        if (i % 20 == 0)
            curves.push_back(LineOf(beside(a, 1e-3), beside(b, 1e-3)));
        double const from = dice.Real(0.0, 360.0), turn = dice.Real(20.0, 350.0);
        curves.push_back(ArcOf(beside(a, 4.0), dice.Real(0.5, 4.0), from, from + turn));
        curves.push_back(CircleOf(beside(a, 4.0), dice.Real(0.1, 2.0)));
    }
    return Numbered(curves);
}

/// Parts that stand in one another, and boxes that all meet.
std::vector<DrawingCurve> ConcentricCircles(int count) {
    std::vector<DrawingCurve> curves;
    for (int i = 1; i <= count; ++i)
        curves.push_back(CircleOf({3.0, 4.0}, i));
    return Numbered(curves);
}

/// Lines that all cross in one point, so that each gap between them ends there.
std::vector<DrawingCurve> Star(int count) {
    std::vector<DrawingCurve> curves{CircleOf({0.0, 0.0}, 7.0)};
    for (int i = 0; i < count; ++i) {
        double const angle = kPi * (i + 0.3) / count;
        curves.push_back(
            LineOf({-9.0 * std::cos(angle), -9.0 * std::sin(angle)}, {8.0 * std::cos(angle), 8.0 * std::sin(angle)}));
    }
    return Numbered(curves);
}

void Add(ResultHash &hash, DrawingPiece const &piece) {
    for (double const number : {piece.from, piece.to, piece.start.x, piece.start.y, piece.end.x, piece.end.y,
                                piece.center.x, piece.center.y, piece.radius})
        hash.Add(number);
    hash.Add(piece.curve);
    hash.Add(static_cast<int>(piece.type) + (piece.reversed ? 8 : 0) + (piece.clockwise ? 16 : 0));
}

void Add(ResultHash &hash, std::vector<DrawingLeftover> const &leftovers, DrawingCounts const &counts) {
    for (DrawingLeftover const &left : leftovers) {
        Add(hash, left.piece);
        hash.Add(static_cast<int>(left.reason));
    }
    for (int const count : {counts.joined, counts.cut, counts.duplicates})
        hash.Add(count);
}

std::uint64_t Everything(std::vector<DrawingCurve> const &curves, DrawingOptions const &options) {
    ResultHash hash;
    DrawingResult const result = MakeDrawingDomains(curves, options);
    for (DrawingDomain const &domain : result.domains) {
        for (DrawingPiece const &piece : domain.outer)
            Add(hash, piece);
        for (std::vector<DrawingPiece> const &hole : domain.holes)
            for (DrawingPiece const &piece : hole)
                Add(hash, piece);
        hash.Add(domain.area);
        hash.Add(domain.perimeter);
    }
    Add(hash, result.leftovers, result.counts);
    for (DrawingGap const &gap : result.gaps)
        for (double const number : {gap.at.x, gap.at.y, gap.distance, gap.closingTolerance})
            hash.Add(number);
    DrawingPieces const cut = CutDrawingCurves(curves, options);
    for (DrawingPiece const &piece : cut.pieces)
        Add(hash, piece);
    Add(hash, cut.leftovers, cut.counts);
    return hash.Value();
}

} // namespace

TEST(DrawingThreads, DoNotChangeABitOfTheResult) {
    struct {
        char const *name;
        std::vector<DrawingCurve> curves;
        DrawingOptions options;
    } const rows[] = {{"clutter", Clutter(9000), {.joinTolerance = 0.02}},
                      {"clutter as written", Clutter(3000), {.joinTolerance = 0.0}},
                      {"clutter with duplicates", Clutter(3000), {.joinTolerance = 0.02, .keepDuplicates = true}},
                      {"clutter not split", Clutter(3000), {.joinTolerance = 0.02, .split = false}},
                      {"concentric circles", ConcentricCircles(2200), {}},
                      {"star", Star(1000), {}}};
    for (auto const &row : rows) {
        SCOPED_TRACE(row.name);
        std::uint64_t const expected = Everything(row.curves, row.options);
        for (int const threads : kThreads) {
            DrawingOptions options = row.options;
            options.threads = threads;
            EXPECT_EQ(Everything(row.curves, options), expected) << threads << " threads";
        }
    }
}

TEST(DrawingThreads, ProgressIsToldOnTheThreadOfTheCall) {
    DrawingOptions options;
    options.threads = 3;
    std::thread::id const mine = std::this_thread::get_id();
    int told = 0;
    MakeDrawingDomains(Clutter(3000), options, [&](double) { told += std::this_thread::get_id() == mine ? 1 : -1000; });
    EXPECT_GT(told, 3);
}

} // namespace zvi::lib::test
