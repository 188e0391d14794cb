#include "zvi/drawing/MakeDrawingDomains.h"

#include "zvi/drawing/DrawingCutDetail.h"
#include "zvi/drawing/DrawingDirectionsDetail.h"
#include "zvi/drawing/DrawingDuplicatesDetail.h"
#include "zvi/drawing/DrawingGapsDetail.h"
#include "zvi/drawing/DrawingJoinDetail.h"
#include "zvi/drawing/DrawingNestingDetail.h"
#include "zvi/drawing/DrawingReportDetail.h"

namespace zvi::lib {

DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options) {
    using namespace drawing;
    Network network;
    JoinEnds(curves, options, network);
    std::vector<KeptDuplicate> duplicates;
    if (!options.keepDuplicates)
        DropDuplicates(network, curves, nullptr);
    std::vector<Edge> const uncut = network.edges;
    if (options.split)
        CutAtMeetings(network);
    DropDuplicates(network, curves, options.keepDuplicates ? &duplicates : nullptr);

    Spokes const allSpokes = MakeSpokes(network);
    Blocks const blocks = FindBlocks(network, allSpokes);
    Spokes spokes = MakeSpokes(network, &blocks.blockOfEdge);
    std::vector<double> const directions = SortByDirection(network, spokes);
    Faces const faces = FindFaces(network, blocks, spokes, directions);
    std::vector<int> const parents = NestOutsides(network, blocks, spokes, faces);

    DrawingResult result;
    Report(network, curves, blocks, faces, parents, duplicates, result);
    result.gaps = FindGaps(network, allSpokes, uncut, curves, options.joinTolerance);
    return result;
}

} // namespace zvi::lib
