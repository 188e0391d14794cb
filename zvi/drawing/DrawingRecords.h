#pragma once

#include <vector>

namespace zvi::lib {

/// A point of the drawing plane, in drawing units.
struct DrawingPoint {
    double x = 0.0; ///< to the right
    double y = 0.0; ///< upwards
};

/// What a curve is: a segment, a circular arc, or a full circle.
enum class DrawingCurveType { kLine, kArc, kCircle };

/// One curve of a drawing. `id` is the caller's, positive and unique within a call.
/// A line runs from `start` to `end`. An arc runs from `start` to `end` about `center`, counter-clockwise unless
/// `clockwise`; `radius` is the distance of its ends from the centre. A circle uses `center` and `radius` alone and is
/// taken to start and end at (center.x + radius, center.y), counter-clockwise.
struct DrawingCurve {
    unsigned int id = 0;                             ///< the caller's
    DrawingCurveType type = DrawingCurveType::kLine; ///< which of the fields count
    DrawingPoint start{};                            ///< of a line or an arc
    DrawingPoint end{};                              ///< of a line or an arc
    DrawingPoint center{};                           ///< of an arc or a circle
    double radius = 0.0;                             ///< of an arc or a circle
    bool clockwise = false;                          ///< of an arc
};

/// Joining, cutting and dropping duplicates are on by default, and each can be switched off.
struct DrawingOptions {
    /// Gaps narrower than this, in drawing units, are closed, and what is thinner is dropped or merged. At 0 that is
    /// only what rounding makes: places and borders that it alone keeps apart are one all the same.
    double joinTolerance = 1e-4;
    /// Cut curves where they meet: crossings, touchings, T-junctions within the join tolerance, overlaps.
    bool split = true;
    /// Keep curves that lie on one another instead of dropping all but one.
    bool keepDuplicates = false;
    /// At most so many threads work on a large drawing, that of the call among them; 0 stands for as many as the
    /// machine has. The result is the same, to the last bit, however many they are.
    int threads = 1;
};

/// A stretch of a curve as a loop runs through it. `from` and `to` are fractions of the length of the caller's curve,
/// in the direction of that curve (from < to; equal only where ends taken as written stand nearer than rounding);
/// `reversed` says that the loop runs against it. `start`, `end` and `clockwise` are as the loop runs. A circle that no
/// other curve cuts is one piece of type kCircle.
struct DrawingPiece {
    unsigned int curve = 0;                          ///< the id of the caller's curve
    DrawingCurveType type = DrawingCurveType::kLine; ///< of the piece
    bool reversed = false;                           ///< against the direction of the curve
    double from = 0.0;                               ///< fraction of the curve's length
    double to = 1.0;                                 ///< fraction of the curve's length
    DrawingPoint start{};                            ///< as the loop runs
    DrawingPoint end{};                              ///< as the loop runs
    DrawingPoint center{};                           ///< of an arc or a circle
    double radius = 0.0;                             ///< of an arc or a circle
    bool clockwise = false;                          ///< of an arc, as the loop runs
};

/// A closed domain. `outer` runs counter-clockwise, every hole clockwise; pieces follow one another head to tail.
/// `area` is net of the holes and exact for arcs; `perimeter` is the length of the outer loop and of all holes.
struct DrawingDomain {
    std::vector<DrawingPiece> outer;              ///< counter-clockwise
    std::vector<std::vector<DrawingPiece>> holes; ///< each clockwise
    double area = 0.0;                            ///< net of the holes
    double perimeter = 0.0;                       ///< of all loops
};

/// Why a piece of a curve bounds no domain.
enum class LeftoverReason {
    kDangle,     ///< it hangs on one end, or on a chain that does
    kBridge,     ///< it joins two parts without enclosing anything: the same region lies on both its sides
    kDuplicate,  ///< it lies on another curve, which came earlier if rounding alone tells the two apart
    kZeroLength, ///< its ends are one point and it encloses nothing
    kUnsupported ///< its numbers describe no curve (not finite, no radius, ends off the circle)
};

/// A piece of a curve that is part of no domain's border.
struct DrawingLeftover {
    DrawingPiece piece;                              ///< what is left over
    LeftoverReason reason = LeftoverReason::kDangle; ///< why
};

/// A loose end that misses another curve: `curves[0]` ends at `at`, and `curves[1]` passes or ends at `distance` from
/// it, at most a hundredth of the drawing's size. A join tolerance of `closingTolerance` would close the gap.
struct DrawingGap {
    DrawingPoint at{};               ///< the loose end
    double distance = 0.0;           ///< that it misses the other curve by
    unsigned int curves[2] = {0, 0}; ///< ids: whose end it is, and which it misses
    double closingTolerance = 0.0;   ///< that would close it
};

/// How often each repair was made.
struct DrawingCounts {
    int joined = 0;     ///< ends moved onto another end or curve that was not already at the very same place
    int cut = 0;        ///< places at which a curve was cut
    int duplicates = 0; ///< pieces dropped because another one covers them
};

/// Everything that one drawing gives. Domains stand from left to right, by the places where their outer loops begin;
/// MakeDrawingDomains.h says more.
struct DrawingResult {
    std::vector<DrawingDomain> domains;     ///< from left to right
    std::vector<DrawingLeftover> leftovers; ///< what bounds no domain
    std::vector<DrawingGap> gaps;           ///< nearest first, each once
    DrawingCounts counts;                   ///< how often each repair was made
};

} // namespace zvi::lib
