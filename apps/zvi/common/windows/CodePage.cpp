#include "apps/zvi/common/CodePage.h"

#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/windows/WindowsHeader.h"

#include "zvi/core/Utf8.h"
#include "zvi/core/WideUnits.h"

#include <array>
#include <limits>

namespace zvi::app {

namespace {

struct NamedPage {
    std::string_view name;
    UINT number;
};

constexpr NamedPage kNamedPages[] = {
    {"ascii", 20127},     {"big5", 950},        {"gb2312", 936},      {"johab", 1361},      {"ksc5601", 949},
    {"iso8859-1", 28591}, {"iso8859-2", 28592}, {"iso8859-3", 28593}, {"iso8859-4", 28594}, {"iso8859-5", 28595},
    {"iso8859-6", 28596}, {"iso8859-7", 28597}, {"iso8859-8", 28598}, {"iso8859-9", 28599},
};

/// The host's number of a page; 0 for a name that it does not know, and for UTF-8 and its like, which are no pages.
UINT PageNumber(std::string const &name) {
    for (NamedPage const &page : kNamedPages)
        if (SameNoCase(name, page.name))
            return page.number;
    constexpr std::string_view kPrefix = "CP";
    if (!SameNoCase(std::string_view(name).substr(0, kPrefix.size()), kPrefix))
        return 0;
    std::optional<std::int64_t> const number = ParseInteger(name.substr(kPrefix.size()));
    bool const isPage = number && *number > 0 && *number < CP_UTF7 && IsValidCodePage(static_cast<UINT>(*number));
    return isPage ? static_cast<UINT>(*number) : 0;
}

} // namespace

std::optional<std::string> FromCodePage(std::string_view text, std::string const &codePage) {
    UINT const page = PageNumber(codePage);
    if (page == 0)
        return std::nullopt;
    std::string decoded;
    while (!text.empty()) {
        bool const isPair = IsDBCSLeadByteEx(page, static_cast<BYTE>(text[0])) && text.size() > 1;
        std::array<wchar_t, 4> units;
        int const bytes = isPair ? 2 : 1;
        int const count = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, text.data(), bytes, units.data(),
                                              static_cast<int>(units.size()));
        if (count > 0)
            decoded += lib::Utf8Of(std::wstring_view(units.data(), static_cast<std::size_t>(count)));
        else
            lib::AppendUtf8(decoded, lib::kReplacementCharacter);
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(bytes) : 1);
    }
    return decoded;
}

} // namespace zvi::app
