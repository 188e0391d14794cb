#include "apps/zvi/common/CodePage.h"

#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"

#include "zvi/core/Utf8.h"
#include "zvi/host/CodePage.h"

#include <cstdint>

namespace zvi::app {

namespace {

struct NamedPage {
    std::string_view name;
    unsigned int number;
};

constexpr NamedPage kNamedPages[] = {
    {"ascii", 20127}, {"big5", 950},     {"euc-jp", 20932}, {"euc-kr", 51949},  {"gb18030", 54936},
    {"gb2312", 936},  {"gbk", 936},      {"johab", 1361},   {"koi8-r", 20866},  {"koi8-u", 21866},
    {"ksc5601", 949}, {"latin1", 28591}, {"sjis", 932},     {"shift_jis", 932},
};

/// Names that are a number behind a prefix.
struct NumberedPages {
    std::string_view prefix;
    unsigned int base;
    unsigned int last;
};

/// The pages of UTF-7 and UTF-8 are no pages of characters.
constexpr NumberedPages kNumberedPages[] = {{"cp", 0, 64999}, {"iso8859-", 28590, 16}, {"iso-8859-", 28590, 16}};

/// The number of a page; 0 for a name that is not known.
unsigned int PageNumber(std::string_view name) {
    for (NamedPage const &page : kNamedPages)
        if (SameNoCase(name, page.name))
            return page.number;
    for (NumberedPages const &pages : kNumberedPages) {
        if (!SameNoCase(name.substr(0, pages.prefix.size()), pages.prefix))
            continue;
        std::optional<std::int64_t> const number = ParseInteger(name.substr(pages.prefix.size()));
        if (number && *number > 0 && *number <= pages.last)
            return pages.base + static_cast<unsigned int>(*number);
    }
    return 0;
}

} // namespace

std::optional<std::string> FromCodePage(std::string_view text, std::string const &codePage) {
    unsigned int const page = PageNumber(codePage);
    if (page == 0 || !host::HasCodePage(page))
        return std::nullopt;
    return lib::Utf8Of(std::wstring_view(host::WideOfMulti(text, page)));
}

} // namespace zvi::app
