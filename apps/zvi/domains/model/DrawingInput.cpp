#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/drawing/SuggestedJoinTolerance.h"

#include <algorithm>

namespace zvi::app {

namespace {

/// A line across the box of some chords: it takes up as much room as they do together.
lib::DrawingCurve Across(std::vector<lib::DrawingCurve> const &curves, ChordRun const &run) {
    lib::DrawingCurve line = curves[run.first];
    for (std::size_t i = run.first; i < run.first + run.count; ++i) {
        for (lib::DrawingPoint const &p : {curves[i].start, curves[i].end}) {
            line.start = {std::min(line.start.x, p.x), std::min(line.start.y, p.y)};
            line.end = {std::max(line.end.x, p.x), std::max(line.end.y, p.y)};
        }
    }
    return line;
}

} // namespace

double SuggestedJoin(DrawingInput const &input) {
    if (input.chordRuns.empty())
        return lib::SuggestedJoinTolerance(input.curves);
    std::vector<lib::DrawingCurve> curves;
    std::size_t next = 0;
    auto const copyUpTo = [&](std::size_t end) {
        curves.insert(curves.end(), input.curves.begin() + static_cast<std::ptrdiff_t>(next),
                      input.curves.begin() + static_cast<std::ptrdiff_t>(end));
    };
    for (ChordRun const &run : input.chordRuns) {
        copyUpTo(run.first);
        curves.push_back(Across(input.curves, run));
        next = run.first + run.count;
    }
    copyUpTo(input.curves.size());
    return lib::SuggestedJoinTolerance(curves);
}

} // namespace zvi::app
