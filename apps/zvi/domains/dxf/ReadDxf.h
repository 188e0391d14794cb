#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"
#include "apps/zvi/domains/model/ReadingOptions.h"

#include <string_view>

namespace zvi::app {

/// Most curves that INSERTs and flattening together may make of a drawing.
inline constexpr std::size_t kMostMadeCurves = 2'000'000;

/// Most groups that INSERTs may repeat: the work of placing blocks, also those that draw nothing.
inline constexpr std::size_t kMostRepeatedGroups = 30'000'000;

/// A copy of a block counts as so many groups more than the block has.
inline constexpr std::size_t kGroupsOfCopy = 8;

/// Deepest nesting of blocks.
inline constexpr int kDeepestNesting = 64;

/// Reads an ASCII DXF drawing: model space (the section ENTITIES or, where that has nothing, the block *Model_Space),
/// seen from above, blocks put in. Curves get the ids 1, 2, 3, ... in their order. Entities inside a block that are on
/// layer "0" take the layer of the INSERT. A frozen layer hides an INSERT with all it draws, a layer that is off only
/// what is on it. Throws InputError for a text that ReadDxfDocument refuses, for bad numbers, for blocks that contain
/// themselves, for drawings beyond the limits above, and for a layer in `options` that the drawing does not have.
DrawingInput ReadDxf(std::string_view text, ReadingOptions const &options);

} // namespace zvi::app
