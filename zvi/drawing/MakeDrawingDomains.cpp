#include "zvi/drawing/MakeDrawingDomains.h"

#include "zvi/drawing/DivideDrawingDetail.h"
#include "zvi/drawing/FacesDetail.h"
#include "zvi/drawing/GapsDetail.h"
#include "zvi/drawing/OverfullFacesDetail.h"
#include "zvi/drawing/ReportDetail.h"
#include "zvi/drawing/SoundnessDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib {

namespace {

/// Shares of the time when the steps of MakeDrawingDomains end.
constexpr double kDivided = 0.5;
constexpr double kFacesFound = 0.85;
constexpr double kReported = 0.97;

/// So many tolerances from all edges, or snap distances, nothing that was moved can have crossed a border.
[[maybe_unused]] constexpr double kClearInTolerances = 3.0, kClearInSnaps = 64.0;

} // namespace

DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options) {
    return MakeDrawingDomains(curves, options, [](double) {});
}

DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options,
                                 DrawingProgress const &progress) {
    using namespace drawing;
    DividedDrawing drawing = DivideDrawing(curves, options, [&progress](double done) { progress(kDivided * done); });
    Landmarks const &landmarks = drawing.curves.landmarks;
    std::vector<Face> faces = FindFaces(drawing.map, drawing.walks, drawing.snap, landmarks);
    while (DropOverfullFaces(drawing, faces))
        faces = FindFaces(drawing.map, drawing.walks, drawing.snap, landmarks);
    assert(!options.split ||
           AreApart(drawing.map, faces,
                    std::max(kClearInTolerances * drawing.curves.tolerance, kClearInSnaps * drawing.snap)));
    progress(kFacesFound);
    DrawingResult result = ReportDomains(drawing, faces, curves, options.keepDuplicates);
    progress(kReported);
    result.gaps = FindGaps(drawing, curves);
    progress(1.0);
    return result;
}

} // namespace zvi::lib
