#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zvi::app {

/// Least number of letters to insert, drop, replace or swap with their neighbour that turns `a` into `b`
/// (optimal string alignment distance). Letters are bytes; case counts.
std::size_t EditDistance(std::string_view a, std::string_view b);

/// The one of `names` that a mistyped `name` most likely meant, the first among equals; empty when none is near,
/// that is when more than a third of the longer one's letters (but for one letter at least) would have to change,
/// or all of them.
std::string NearestName(std::string_view name, std::vector<std::string> const &names);

/// "did you mean 'NAME'?" with the nearest of `names`; `otherwise` when none is near.
std::string DidYouMean(std::string_view name, std::vector<std::string> const &names, std::string const &otherwise);

} // namespace zvi::app
