#include "zvi/drawing/MakeDrawingDomains.h"

#include "zvi/drawing/DivideDrawingDetail.h"
#include "zvi/drawing/FacesDetail.h"
#include "zvi/drawing/GapsDetail.h"
#include "zvi/drawing/OverfullFacesDetail.h"
#include "zvi/drawing/ReportDetail.h"

namespace zvi::lib {

namespace {

/// Shares of the time when the steps of MakeDrawingDomains end.
constexpr double kDivided = 0.5;
constexpr double kFacesFound = 0.85;
constexpr double kReported = 0.97;

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
    progress(kFacesFound);
    DrawingResult result = ReportDomains(drawing, faces, curves, options.keepDuplicates);
    progress(kReported);
    result.gaps = FindGaps(drawing, curves);
    progress(1.0);
    return result;
}

} // namespace zvi::lib
