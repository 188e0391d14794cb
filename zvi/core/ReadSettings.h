#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

// The grammar of settings files. Lines of categories and of values, "[ CATEGORY ]" and "KEYWORD = value"; blanks around
// each part do not count. A line that begins with ';' is a comment. Nothing is escaped.
//
// - A header drops its first and its last character, whatever that is: "[ABCx" begins the category "ABC".
// - The first '=' parts a line; the value may hold more of them. A line without one is a value without a keyword, less
//   its first character.
// - Values above the first header belong to the category with the empty name.
// - A later value of a keyword replaces an earlier one.
// - A line over 1,023 bytes ends the reading: it and all that stands behind it are as if they were not there.

namespace zvi::lib {

/// Bytes of the longest line of a settings file, without its line end.
inline constexpr std::size_t kLongestSettingsLine = 1023;

/// What one line of a settings file says.
struct SettingsLine {
    /// What a line can say.
    enum class Kind { kNothing, kCategory, kValue };

    Kind kind = Kind::kNothing; ///< what it says
    std::wstring_view name;     ///< of the category or the keyword; a part of the text that was read
    std::wstring_view value;    ///< of the keyword
};

/// Reads one line.
ZVI_API SettingsLine ReadSettingsLine(std::wstring_view text);

/// How the reading of a settings file ended.
enum class SettingsEnd {
    kDone,     ///< at the end of the file
    kNoFile,   ///< there is no file
    kUnread,   ///< there is a file that could not be opened, or not be read to its end
    kLongLine, ///< at a line over `kLongestSettingsLine`
};

/// A line that says something, and where it stands.
struct SettingsPlace {
    SettingsLine line;          ///< what it says
    std::wstring_view category; ///< in which it stands; its own for a header
    int number = 0;             ///< of the line, from 1
};

/// Reads a settings file, whose path is in the library's form, and shows each line that says something to `visit`.
/// `lastLine` is the number of the line at which the reading ended. Changes and makes nothing.
ZVI_API SettingsEnd ReadSettings(std::wstring_view path, std::function<void(SettingsPlace const &)> const &visit,
                                 int *lastLine = nullptr);

/// The line that holds a value, as bytes and without its line end: "KEYWORD = value", or without the blanks when only
/// that fits `kLongestSettingsLine`. Empty when it does not fit at all.
ZVI_API std::string SettingsValueLine(CString const &keyword, CString const &value);

/// The header of a category, in the same way.
ZVI_API std::string SettingsHeaderLine(CString const &category);

} // namespace zvi::lib
