#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <string>

namespace zvi::app {

/// How a drawing lies in its picture: in pixels from the picture's own corner, so that plans far from the origin, large
/// or tiny, show alike. y grows downwards.
struct SvgFrame {
    double left = 0.0;   ///< the drawing's left side, in drawing units
    double top = 0.0;    ///< the drawing's upper side, in drawing units
    double scale = 1.0;  ///< pixels to a drawing unit
    double margin = 0.0; ///< in pixels

    double X(double x) const { return margin + (x - left) * scale; }
    double Y(double y) const { return margin + (top - y) * scale; }

    /// A point, "X Y".
    std::string Place(lib::DrawingPoint const &p) const;

    /// Path commands that draw a piece from where the pen is. An arc over more than half a turn is drawn in two,
    /// because a single command cannot tell an arc that nearly closes from one that has no length.
    std::string PathAlong(lib::DrawingPiece const &piece) const;
};

/// Pixels to a drawing unit, so that a drawing whose longer side is this long in drawing units fills a page; 1 where
/// that is no length.
double SvgScale(double longerSide);

/// Margin around a drawing in its picture, in pixels.
inline constexpr double kSvgMargin = 30.0;

/// A length in pixels, with nine digits: well below what a screen shows when it zooms in.
std::string SvgNumber(double value);

/// Text of a picture, also within quotes.
std::string SvgEscaped(std::string const &text);

} // namespace zvi::app
