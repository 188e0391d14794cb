#pragma once

namespace zvi::app {

/// How far chords may be from the curve that they stand for, in drawing units.
struct ChordError {
    double absolute = 0.0; ///< as the user wants it; 0: what follows from the size of the entity and the tolerance
    /// The join tolerance that ends and other curves are to meet the curve within; 0: none is known.
    double tolerance = 0.0;

    /// For an entity of this size, 0 or more.
    double ForSize(double size) const;
};

/// Chord error as a part of the entity's size: the major diameter of an ellipse, the diagonal of the box around the
/// control points of a spline.
inline constexpr double kRelativeChordError = 1e-4;

/// Chord error as a part of the join tolerance. What lies on the true curve within three quarters of the tolerance
/// meets the chords, and so do the chords of a curve that runs along it.
inline constexpr double kChordErrorOfTolerance = 0.25;

/// Smallest chord error that is honoured, as a part of the entity's size; below it chords only gain in number.
inline constexpr double kSmallestChordError = 1e-8;

} // namespace zvi::app
