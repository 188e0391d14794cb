#pragma once

#include "zvi/spatial/FindBodyContacts.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::app {

/// A solid of an STL file.
struct StlSolid {
    std::string name; ///< as the file has it, empty where it has none; UTF-8
    lib::TriangleBody triangles;
};

/// What an STL file holds.
struct StlFile {
    std::vector<StlSolid> solids;
    std::size_t leftOut = 0;    ///< facets with a corner that is no number or beyond the range of single precision
    std::size_t bytesAfter = 0; ///< behind the last facet of a binary file
};

/// Reads an STL file, ASCII or binary. What it is shows in its bytes and its size, not in the word "solid" at its
/// begin, which binary files have as well. An ASCII file may hold several solids. Normals are not looked at. Throws
/// InputError, with the line of an ASCII file, for anything else: a file that is cut, or is no STL file.
StlFile ReadStl(std::string_view bytes);

} // namespace zvi::app
