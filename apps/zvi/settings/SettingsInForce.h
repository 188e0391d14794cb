#pragma once

#include "zvi/core/CString.h"
#include "zvi/core/ReadSettings.h"

#include <string>
#include <vector>

namespace zvi::app {

/// A setting, and where it comes from.
struct SettingInForce {
    CString category;
    CString keyword;
    std::string value;   ///< UTF-8; what counts, which for a bad text is not what is written
    int line = 0;        ///< of the file; 0 for a default
    std::string written; ///< UTF-8; what the file has, where that is no good value
    bool isKnown = false;
};

/// What counts when the library has read a settings file.
struct SettingsInForce {
    std::vector<SettingInForce> settings; ///< by category and keyword
    lib::SettingsEnd end = lib::SettingsEnd::kDone;
    int lastLine = 0; ///< at which the reading ended
};

/// Reads a settings file, in the library's form of a path, and gives the values of every registered group and the
/// others of the file. Makes and changes nothing; the groups have their defaults afterwards.
SettingsInForce ReadSettingsInForce(std::wstring const &path);

/// What is wrong with the text of a known setting and what to write; empty for a good one and for an unknown setting.
std::string WrongValue(CString const &category, CString const &keyword, CString const &value);

} // namespace zvi::app
