#include "zvi/drawing/MakeDrawingDomains.h"

#include "zvi/drawing/DivideDrawingDetail.h"
#include "zvi/drawing/FacesDetail.h"
#include "zvi/drawing/GapsDetail.h"
#include "zvi/drawing/ReportDetail.h"

namespace zvi::lib {

DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options) {
    using namespace drawing;
    DividedDrawing const drawing = DivideDrawing(curves, options);
    std::vector<Face> const faces = FindFaces(drawing.map, drawing.snap);
    DrawingResult result = ReportDomains(drawing, faces, curves, options.keepDuplicates);
    result.gaps = FindGaps(drawing, curves);
    return result;
}

} // namespace zvi::lib
