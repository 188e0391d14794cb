#include "apps/zvi/domains/dxf/ReadDxf.h"

#include "apps/zvi/domains/dxf/DxfPlacer.h"

#include <algorithm>

namespace zvi::app {

namespace {

/// Where curves as close as the tolerance would be too many, it is taken this many times coarser, again and again, at
/// most up to the second.
constexpr double kCoarsening = 16.0;
constexpr double kCoarsest = 300.0;

/// The tolerance that curves are to meet within: one that is asked for, but none coarser than suits the drawing, so
/// that a larger one changes what is joined and not the curves.
double MeetingTolerance(DrawingInput const &input, ReadingOptions const &options) {
    double const suggested = SuggestedJoin(input);
    return options.join && *options.join > 0.0 ? std::min(*options.join, suggested) : suggested;
}

} // namespace

DrawingInput ReadDxf(std::string_view text, ReadingOptions const &options) {
    DxfDocument const document = ReadDxfDocument(text);
    DrawingInput input = DxfPlacer(document, options.layers, options.chordError).Place();
    if (input.chordRuns.empty() || options.chordError.absolute > 0.0)
        return input;
    // Now that the size of the drawing is known, its curves are flattened as closely as their ends are joined.
    double const tolerance = MeetingTolerance(input, options);
    for (double coarser = 1.0; coarser <= kCoarsest; coarser *= kCoarsening) {
        try {
            DrawingInput closer = DxfPlacer(document, options.layers, {0.0, coarser * tolerance}).Place();
            closer.notes.isCoarse = coarser > 1.0;
            return closer;
        } catch (TooManyCurves const &) {
            continue;
        }
    }
    input.notes.isCoarse = true;
    return input;
}

} // namespace zvi::app
