#pragma once

#include <istream>
#include <string>

namespace zvi::app {

/// The bytes of the file of that name, or of `standardInput` for "-". Throws InputError when it cannot be read.
std::string ReadWhole(std::string const &file, std::istream &standardInput);

} // namespace zvi::app
