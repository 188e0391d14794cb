#include "apps/zvi/domains/dxf/ReadDxf.h"

#include "apps/zvi/domains/dxf/DxfPlacer.h"

#include <algorithm>

namespace zvi::app {

namespace {

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
    try {
        return DxfPlacer(document, options.layers, {0.0, MeetingTolerance(input, options)}).Place();
    } catch (TooManyCurves const &) {
        return input;
    }
}

} // namespace zvi::app
