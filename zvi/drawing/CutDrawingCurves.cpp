#include "zvi/drawing/CutDrawingCurves.h"

#include "zvi/drawing/DrawingCutDetail.h"
#include "zvi/drawing/DrawingDuplicatesDetail.h"
#include "zvi/drawing/DrawingJoinDetail.h"

#include <utility>

namespace zvi::lib {

DrawingPieces CutDrawingCurves(std::vector<DrawingCurve> const &curves, DrawingOptions const &options) {
    using namespace drawing;
    Network network;
    JoinEnds(curves, options, network);
    if (!options.keepDuplicates)
        DropDuplicates(network, curves, nullptr);
    if (options.split)
        CutAtMeetings(network);
    if (!options.keepDuplicates)
        DropDuplicates(network, curves, nullptr);
    DrawingPieces result;
    result.pieces.reserve(network.edges.size());
    for (Edge const &e : network.edges)
        result.pieces.push_back(PieceOf(e, curves, false));
    result.leftovers = std::move(network.leftovers);
    result.counts = network.counts;
    return result;
}

} // namespace zvi::lib
