#pragma once

#include <string>
#include <vector>

namespace zvi::app {

/// Rows of equally many cells, one at least, as lines of columns, each cell to the right of its column; with
/// `endsInText` those of the last column to the left of it, and then they may hold any characters, and the others ASCII
/// alone. The first row is the heading, which `color` makes bold.
std::string TextTable(std::vector<std::vector<std::string>> const &rows, bool endsInText, bool color);

} // namespace zvi::app
