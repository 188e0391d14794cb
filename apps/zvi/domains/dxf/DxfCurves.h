#pragma once

#include "apps/zvi/domains/dxf/DxfEntities.h"
#include "apps/zvi/domains/model/ChordError.h"
#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/drawing/DrawingRecords.h"

#include <cstddef>
#include <vector>

namespace zvi::app {

/// Most chords that one entity may become.
inline constexpr std::size_t kMostChordsOfEntity = 1'000'000;

/// The curves of one entity in the drawing plane, all ids 0, and what happened on the way.
struct DrawnShape {
    std::vector<lib::DrawingCurve> curves;
    std::vector<ChordRun> runs; ///< those of the curves that are chords
    std::size_t chords = 0;     ///< how many these are
    double chordError = 0.0;    ///< how far they may be from their curves
    bool tilted = false;        ///< the entity is not level; it was taken as seen from above
    double height = 0.0;        ///< its z where it is level
    bool unusable = false;      ///< its numbers describe nothing that can be drawn; `curves` is empty
    bool tooManyChords = false; ///< more than kMostChordsOfEntity
};

/// Draws a shape that `place` maps to the drawing. Lines stay lines and arcs stay arcs under maps that keep circles;
/// arcs under others, ellipses and splines become chords, circular ellipses arcs. Segments of a polyline between
/// vertices at the very same place are left out. Shapes that are no curves give none.
DrawnShape DrawShape(DxfShape const &shape, Affine const &place, ChordError const &chordError);

} // namespace zvi::app
