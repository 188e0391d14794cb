#pragma once

#include "zvi/Export.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// A command line is one string. On Windows every program splits its own, and nearly all do so as `ArgumentWords` does.
// On POSIX programs get words, and the host splits the string as a shell does with its quotes and backslashes, but
// replaces nothing: blanks, tabs and line ends part words; '...' is taken as it stands; within "..." a backslash stands
// for itself except before " \ $ ` and a line end; elsewhere a backslash takes away the meaning of what follows. A
// quote that is not closed ends with the string, and a backslash at its very end is one.

namespace zvi::host {

/// A word in the host's own form: bytes on POSIX, UTF-16 on Windows.
using NativeWord = std::filesystem::path::string_type;

/// A word as part of a command line, quoted so that the program gets it as it is. On POSIX a byte that is not UTF-8
/// becomes the lone surrogate 0xDC00 + byte.
ZVI_API std::wstring QuotedArgument(NativeWord const &word);

/// The words that a program gets of a string of arguments.
ZVI_API std::vector<NativeWord> ArgumentWords(std::wstring_view arguments);

/// The program that a name means to the host, in the library's form; empty when there is none. A path means itself. A
/// bare name is looked up along the path of the environment: on POSIX a file that may be executed, on Windows also one
/// whose name ends in .exe, .com, .bat or .cmd, and in the folders where the host itself looks.
ZVI_API std::wstring FindProgram(std::wstring const &name);

} // namespace zvi::host
