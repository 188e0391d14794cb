#pragma once

namespace zvi::app {

/// How far chords may be from the curve that they stand for.
struct ChordError {
    /// In drawing units; 0 takes kRelativeChordError times the size of the entity.
    double absolute = 0.0;

    double ForSize(double size) const;
};

/// Chord error as a part of the entity's size: the major diameter of an ellipse, the diagonal of the box around the
/// control points of a spline.
inline constexpr double kRelativeChordError = 1e-4;

/// Smallest chord error that is honoured, as a part of the entity's size; below it chords only gain in number.
inline constexpr double kSmallestChordError = 1e-8;

} // namespace zvi::app
