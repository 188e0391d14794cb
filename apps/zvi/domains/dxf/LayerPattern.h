#pragma once

#include <string>
#include <string_view>

namespace zvi::app {

/// A layer's name, or a pattern, in the form in which they are compared: well-formed UTF-8, letters in one case,
/// because the format takes capitals and small letters as one.
std::string FoldedLayerName(std::string_view name);

/// Whether a name fits a pattern, both folded: `*` stands for any characters or none, `?` for one, all others for
/// themselves. A name fits itself.
bool FitsPattern(std::string_view name, std::string_view pattern);

} // namespace zvi::app
