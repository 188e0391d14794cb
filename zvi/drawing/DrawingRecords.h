#pragma once

#include <vector>

namespace zvi::lib {

/// A point of the drawing plane, in drawing units.
struct DrawingPoint {
    double x = 0.0;
    double y = 0.0;
};

/// What a curve is: a segment, a circular arc, or a full circle.
enum class DrawingCurveType { kLine, kArc, kCircle };

/// One curve of a drawing. `id` is the caller's, positive and unique within a call.
/// A line runs from `start` to `end`. An arc runs from `start` to `end` about `center`, counter-clockwise unless
/// `clockwise`; `radius` is the distance of its ends from the centre. A circle uses `center` and `radius` alone and is
/// taken to start and end at (center.x + radius, center.y), counter-clockwise.
struct DrawingCurve {
    unsigned int id = 0;
    DrawingCurveType type = DrawingCurveType::kLine;
    DrawingPoint start{};
    DrawingPoint end{};
    DrawingPoint center{};
    double radius = 0.0;
    bool clockwise = false;
};

/// Joining, cutting and dropping duplicates are on by default, and each can be switched off.
struct DrawingOptions {
    /// Gaps narrower than this, in drawing units, are closed, and what is thinner is dropped or merged. At 0 that is
    /// only what rounding makes: places and borders that it alone keeps apart are one all the same.
    double joinTolerance = 1e-4;
    /// Cut curves where they meet: crossings, touchings, T-junctions within the join tolerance, overlaps.
    bool split = true;
    /// Keep curves that lie on one another instead of dropping all but the first.
    bool keepDuplicates = false;
};

/// A stretch of a curve as a loop runs through it. `from` and `to` are fractions of the length of the caller's curve,
/// in the direction of that curve (from < to; equal only where ends taken as written stand nearer than rounding);
/// `reversed` says that the loop runs against it. `start`, `end` and `clockwise` are as the loop runs. A circle that no
/// other curve cuts is one piece of type kCircle.
struct DrawingPiece {
    unsigned int curve = 0;
    DrawingCurveType type = DrawingCurveType::kLine;
    bool reversed = false;
    double from = 0.0;
    double to = 1.0;
    DrawingPoint start{};
    DrawingPoint end{};
    DrawingPoint center{};
    double radius = 0.0;
    bool clockwise = false;
};

/// A closed domain. `outer` runs counter-clockwise, every hole clockwise; pieces follow one another head to tail.
/// `area` is net of the holes and exact for arcs; `perimeter` is the length of the outer loop and of all holes.
struct DrawingDomain {
    std::vector<DrawingPiece> outer;
    std::vector<std::vector<DrawingPiece>> holes;
    double area = 0.0;
    double perimeter = 0.0;
};

/// Why a piece of a curve bounds no domain.
enum class LeftoverReason {
    kDangle,     ///< it hangs on one end, or on a chain that does
    kBridge,     ///< it joins two parts without enclosing anything: the same region lies on both its sides
    kDuplicate,  ///< it lies on another curve, which came earlier if the two are alike
    kZeroLength, ///< its ends are one point and it encloses nothing
    kUnsupported ///< its numbers describe no curve (not finite, no radius, ends off the circle)
};

/// A piece of a curve that is part of no domain's border.
struct DrawingLeftover {
    DrawingPiece piece;
    LeftoverReason reason = LeftoverReason::kDangle;
};

/// A loose end that misses another curve: `curves[0]` ends at `at`, and `curves[1]` passes or ends at `distance` from
/// it, at most a hundredth of the drawing's size. A join tolerance of `closingTolerance` would close the gap.
struct DrawingGap {
    DrawingPoint at{};
    double distance = 0.0;
    unsigned int curves[2] = {0, 0};
    double closingTolerance = 0.0;
};

/// How often each repair was made.
struct DrawingCounts {
    int joined = 0;     ///< ends moved onto another end or curve that was not already at the very same place
    int cut = 0;        ///< places at which a curve was cut
    int duplicates = 0; ///< pieces dropped because another one covers them
};

/// Everything that one drawing gives. Domains stand from left to right, by the places where their outer
/// loops begin; MakeDrawingDomains.h says more.
struct DrawingResult {
    std::vector<DrawingDomain> domains;
    std::vector<DrawingLeftover> leftovers;
    std::vector<DrawingGap> gaps; ///< nearest first, each once
    DrawingCounts counts;
};

} // namespace zvi::lib
