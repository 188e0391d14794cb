#include "zvi/drawing/MakeDrawingDomains.h"

#include "zvi/drawing/DrawingCutDetail.h"
#include "zvi/drawing/DrawingDirectionsDetail.h"
#include "zvi/drawing/DrawingDuplicatesDetail.h"
#include "zvi/drawing/DrawingGapsDetail.h"
#include "zvi/drawing/DrawingJoinDetail.h"
#include "zvi/drawing/DrawingNestingDetail.h"
#include "zvi/drawing/DrawingReportDetail.h"

#include <algorithm>

namespace zvi::lib {

namespace {

using namespace drawing;

/// The whole road. `snap` gets the distance below which two places were one.
DrawingResult MakeDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options, double &snap) {
    Network network;
    JoinEnds(curves, options, network);
    snap = network.snap;
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

bool HasPieceBelow(std::vector<DrawingPiece> const &loop, double snap) {
    return std::any_of(loop.begin(), loop.end(), [snap](DrawingPiece const &piece) {
        return piece.type != DrawingCurveType::kCircle && Distance(piece.start, piece.end) < snap;
    });
}

/// Whether a border runs from place to place within rounding, or a domain is no wider than that or lies on the wrong
/// side of its border. Ends that only rounding keeps apart have then left the curves between them in no order.
bool IsTorn(DrawingResult const &result, double snap) {
    return std::any_of(result.domains.begin(), result.domains.end(), [snap](DrawingDomain const &domain) {
        return !(domain.area > snap * domain.perimeter) || HasPieceBelow(domain.outer, snap) ||
               std::any_of(domain.holes.begin(), domain.holes.end(),
                           [snap](std::vector<DrawingPiece> const &hole) { return HasPieceBelow(hole, snap); });
    });
}

} // namespace

DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options) {
    double snap = 0.0;
    DrawingResult const asAsked = MakeDomains(curves, options, snap);
    if (!options.split || options.joinTolerance >= snap || !IsTorn(asAsked, snap))
        return asAsked;
    DrawingOptions joined = options;
    joined.joinTolerance = snap;
    return MakeDomains(curves, joined, snap);
}

} // namespace zvi::lib
