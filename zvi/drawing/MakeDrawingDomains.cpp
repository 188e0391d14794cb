#include "zvi/drawing/MakeDrawingDomains.h"

#include "zvi/drawing/DivideDrawingDetail.h"
#include "zvi/drawing/FacesDetail.h"
#include "zvi/drawing/GapsDetail.h"
#include "zvi/drawing/OverfullFacesDetail.h"
#include "zvi/drawing/ReportDetail.h"
#include "zvi/drawing/ShortestFirstDetail.h"
#include "zvi/drawing/SoundnessDetail.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace zvi::lib {

namespace {

/// Shares of the time when the steps of MakeDrawingDomains end.
constexpr double kDivided = 0.5;
constexpr double kFacesFound = 0.85;
constexpr double kGapsFound = 0.88;

/// Borders farther from one another than so many tolerances cannot have changed places.
constexpr double kMovedInTolerances = 3.0;

/// With no more edges than this, giving memory back to the system and taking it anew costs more than it is worth.
constexpr int kManyEdges = 1 << 16;

} // namespace

DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options) {
    return MakeDrawingDomains(curves, options, [](double) {});
}

DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options,
                                 DrawingProgress const &progress) {
    using namespace drawing;
    base::Workers const workers(options.threads);
    DividedDrawing drawing = DivideDrawing(curves, options, [&progress](double done) { progress(kDivided * done); });
    Landmarks const &landmarks = drawing.curves.landmarks;
    double const moved = std::max(kMovedInTolerances * drawing.curves.tolerance, kMovedInSnaps * drawing.snap);
    double const same = SameDistance(drawing.curves.tolerance, drawing.snap, landmarks);
    auto const findFaces = [&] {
        return FindFaces(drawing.map, drawing.walks, drawing.snap, same, moved, landmarks, workers);
    };
    std::vector<Face> faces = findFaces();
    while (DropOverfullFaces(drawing, faces, workers))
        faces = findFaces();
    assert(!options.split || AreApart(drawing.map, faces, drawing.snap, moved));
    assert(!options.split || AreSimple(drawing.map, faces));
    assert(!options.split || CoverWhatIsEnclosed(faces, drawing.curves, drawing.tolerance, options.keepDuplicates));
    progress(kFacesFound);
    std::vector<DrawingGap> gaps = FindGaps(drawing, curves, workers);
    if (drawing.map.EdgeCount() > kManyEdges) { // makes room for the result, which is large
        drawing.curves.stretches = std::vector<Stretch>();
        drawing.walks = FaceWalks();
        drawing.map.ForgetOrder();
    }
    progress(kGapsFound);
    DrawingResult result = ReportDomains(std::move(drawing), faces, curves, options.keepDuplicates, workers);
    result.gaps = std::move(gaps);
    progress(1.0);
    return result;
}

} // namespace zvi::lib
