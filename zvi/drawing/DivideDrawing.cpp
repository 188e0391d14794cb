#include "zvi/drawing/DivideDrawingDetail.h"

#include "zvi/drawing/ArrangementDetail.h"
#include "zvi/drawing/ContractionDetail.h"
#include "zvi/drawing/FaceWalkDetail.h"
#include "zvi/drawing/FitEdgesDetail.h"
#include "zvi/drawing/SoundnessDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib::drawing {

namespace {

/// Shares of the time when the steps of DivideDrawing end.
constexpr double kRead = 0.05;
constexpr double kArranged = 0.6;
constexpr double kFolded = 0.8;

/// What is thinner than so many snap distances is thin, however small the join tolerance.
constexpr double kThinInSnaps = 3.0;

/// An edge that was bent is not cut at a point farther than this from where it would be cut as it was, in shares of it,
/// nor at one of its ends.
constexpr double kNearShare = 0.25;

/// At most so far from its start, as a fraction of a circle, an edge begins or ends there but for rounding.
constexpr double kAtStart = 1e-9;

/// Cuts an edge where it runs past the start of its circle: as the edge stands by now, at its point nearest to that.
/// A contracted one whose place is too far from there for its neighbours to take it over is dropped. Returns the second
/// part.
int CutAtStart(DividedDrawing &drawing, int edge, DrawingPoint start) {
    Stretch const &s = drawing.map.Edge(edge).stretch;
    double const share = (1.0 - s.from) / (s.to - s.from);
    DrawingPoint const place = drawing.positions[Index(drawing.map.Origin(HalfEdge::Along(edge)))];
    if (drawing.map.Edge(edge).state == EdgeState::kContracted &&
        Distance(place, start) >= std::max(drawing.curves.tolerance, drawing.snap)) {
        drawing.map.Remove(edge, EdgeState::kDuplicate);
        drawing.dropped.push_back({edge});
    }
    std::optional<Foot> const foot = FootOn(s, start);
    double const atEnd = drawing.snap / LengthOf(s);
    bool const isNear = foot && std::fabs(foot->t - share) < kNearShare && foot->t > atEnd && foot->t < 1.0 - atEnd;
    int const second = drawing.map.Split(edge, isNear ? foot->t : share);
    drawing.positions.push_back(drawing.map.Edge(second).stretch.start);
    drawing.map.StretchOf(edge).to = 1.0;
    drawing.map.StretchOf(second).from = 0.0;
    drawing.map.StretchOf(second).to -= 1.0;
    return second;
}

/// Lets a stretch begin or end at the start of its circle when it does so but for rounding.
void MeetStart(Stretch &s, double snap) {
    double const near = s.to > 1.0 ? std::min(kAtStart, snap * (s.to - s.from) / LengthOf(s)) : 0.0;
    for (double *const at : {&s.from, &s.to})
        if (std::fabs(*at - 1.0) <= near)
            *at = 1.0;
}

/// Cuts what runs past the start of a circle there, so that fractions of circles are below 1. Returns whether there was
/// anything.
bool CutCirclesAtStarts(DividedDrawing &drawing, std::vector<DrawingCurve> const &curves) {
    int const count = drawing.map.EdgeCount();
    std::vector<int> second(Index(count), -1);
    for (int e = 0; e < count; ++e) {
        Stretch &s = drawing.map.StretchOf(e);
        MeetStart(s, drawing.snap);
        if (s.to > 1.0 && s.from < 1.0) {
            DrawingCurve const &c = curves[Index(s.curve)];
            bool const isCircle = c.type == DrawingCurveType::kCircle;
            second[Index(e)] =
                CutAtStart(drawing, e, isCircle ? DrawingPoint{c.center.x + c.radius, c.center.y} : c.start);
        } else if (s.to > 1.0) {
            s.from -= 1.0;
            s.to -= 1.0;
        }
    }
    std::size_t const dropped = drawing.dropped.size();
    for (std::size_t d = 0; d < dropped; ++d)
        if (DroppedEdge more = drawing.dropped[d]; second[Index(more.edge)] >= 0) {
            more.edge = second[Index(more.edge)];
            drawing.dropped.push_back(more);
        }
    return drawing.map.EdgeCount() > count;
}

} // namespace

DividedDrawing DivideDrawing(std::vector<DrawingCurve> const &curves, DrawingOptions const &options,
                             std::function<void(double)> const &progress) {
    base::Workers const workers(options.threads);
    UsableCurves usable = ReadCurves(curves, options.joinTolerance, workers);
    progress(kRead);
    Arrangement arrangement = Arrange(usable, options.split, options.keepDuplicates, workers);
    assert(!options.split || IsNoFaceInsideOut(arrangement.map, arrangement.snap));
    progress(kArranged);
    DividedDrawing drawing{.curves = std::move(usable),
                           .map = std::move(arrangement.map),
                           .vanished = std::move(arrangement.vanished),
                           .repeated = std::move(arrangement.repeated),
                           .dropped = {},
                           .positions = {},
                           .snap = arrangement.snap,
                           .covered = {},
                           .walks = {},
                           .alongCurves = {}};
    Landmarks const &landmarks = drawing.curves.landmarks;
    double const tolerance = std::max(drawing.curves.tolerance, kThinInSnaps * drawing.snap);
    drawing.tolerance = tolerance;
    double const same = SameDistance(tolerance, drawing.snap, landmarks);
    ContractShortEdges(drawing.map, tolerance, drawing.snap, landmarks, drawing.dropped, workers);
    drawing.covered = AddCovered(drawing.map, arrangement.carriers, arrangement.covered, drawing.dropped);
    CollapseThinFaces(drawing.map, tolerance, drawing.snap, landmarks, drawing.dropped, workers);
    progress(kFolded);
    drawing.map.ForgetBorders();
    drawing.positions = FitEdges(drawing.map, same, landmarks, workers);
    // Far from the origin nothing may be more than the tolerance, below which alone regions are dropped.
    drawing.noWidth = std::min(same, tolerance);
    drawing.walks = DropEmptyFaces(drawing.map, drawing.noWidth, landmarks, drawing.dropped, workers);
    if (CutCirclesAtStarts(drawing, curves))
        drawing.walks = WalkFaces(drawing.map, workers);
    drawing.alongCurves = EdgesAlongCurves(drawing.map, curves.size(), workers);
    AbsorbContracted(drawing.map, drawing.alongCurves, drawing.vanished);
    assert(!options.split || IsSound(drawing.map, drawing.snap));
    progress(1.0);
    return drawing;
}

} // namespace zvi::lib::drawing
