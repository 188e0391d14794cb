#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zvi::app {

/// Most numbers that a text of runs may name.
inline constexpr std::size_t kMostRunNumbers = 10'000'000;

/// The numbers that a text of runs names, in its order: "1to9by2 20" gives 1 3 5 7 9 20; blanks and commas separate. A
/// run leads from its first number towards its last whatever the sign of its step, as in a selection; a step of 0 names
/// the first alone. Throws InputError, with the line and a caret under the place, for a text of another form and beyond
/// the limit.
std::vector<long> ExpandRuns(std::string const &text);

/// The integers of a text that lists nothing else, blanks, commas and line ends between them. Throws InputError as
/// above.
std::vector<long> ListedNumbers(std::string const &text);

/// The numbers as a text of runs; they are sorted first, and each appears once.
std::string CompressNumbers(std::vector<long> const &numbers);

/// The numbers of `list` that a text of runs names, ascending; or, with `keepOrder`, in the order of the text, a
/// repeated one in its last place. Throws InputError for a text that cannot be read.
std::vector<long> SelectNumbers(std::vector<long> const &list, std::string const &text, bool keepOrder);

} // namespace zvi::app
