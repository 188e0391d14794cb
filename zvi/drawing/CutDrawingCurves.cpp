#include "zvi/drawing/CutDrawingCurves.h"

#include "zvi/drawing/ReportDetail.h"

namespace zvi::lib {

DrawingPieces CutDrawingCurves(std::vector<DrawingCurve> const &curves, DrawingOptions const &options) {
    using namespace drawing;
    return ReportPieces(DivideDrawing(curves, options, [](double) {}), curves, options.keepDuplicates);
}

} // namespace zvi::lib
