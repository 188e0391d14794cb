#pragma once

#include <string_view>

namespace zvi::host {

/// Whether a name fits a pattern: '*' stands for any characters, '?' for any one; "*.*" fits every name.
bool FitsPattern(std::wstring_view name, std::wstring_view pattern);

} // namespace zvi::host
