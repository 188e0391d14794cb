#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <vector>

namespace zvi::app {

/// Box around drawn things, in drawing units; empty while nothing was added.
struct Box {
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
    bool empty = true;

    /// Points that are not finite are passed over.
    void Add(lib::DrawingPoint const &p);
    double Width() const { return maxX - minX; }
    double Height() const { return maxY - minY; }
    double Diagonal() const;
};

/// Angle that a piece turns from start to end, in radians: positive counter-clockwise, negative clockwise, 0 for a
/// line, a full turn for a circle.
double SweepOf(lib::DrawingPiece const &piece);

/// Whether all numbers of a piece are finite.
bool IsFinite(lib::DrawingPiece const &piece);

/// Length of a piece, in drawing units.
double LengthOf(lib::DrawingPiece const &piece);

/// The point of a piece at a part (0 to 1) of its length from its start. A circle starts at its easternmost point.
lib::DrawingPoint PointOn(lib::DrawingPiece const &piece, double part);

/// Grows the box by a piece: exactly for lines, by points 10 degrees apart for arcs.
void AddToBox(Box &box, lib::DrawingPiece const &piece);

/// The corners of a polygon along the loop, arcs as chords of at most `degrees`, above 0; the first corner is not
/// repeated.
std::vector<lib::DrawingPoint> PolygonOf(std::vector<lib::DrawingPiece> const &loop, double degrees);

} // namespace zvi::app
