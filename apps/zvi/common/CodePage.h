#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zvi::app {

/// A text of a code page in UTF-8, or nothing when the page is unknown. Pages have the names that drawings and
/// converters give them: "CP1250" by number, "ISO8859-5", "BIG5", "GB2312", "KSC5601", "EUC-KR", in any case. A byte
/// that means nothing becomes U+FFFD.
std::optional<std::string> FromCodePage(std::string_view text, std::string const &codePage);

} // namespace zvi::app
