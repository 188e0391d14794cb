#include "zvi/host/CodePage.h"

#include "zvi/host/windows/WindowsHeader.h"

#include <limits>

namespace zvi::host {

namespace {

/// What the host's functions take at once.
constexpr auto kLargestText = static_cast<std::size_t>(std::numeric_limits<int>::max());

constexpr wchar_t kReplacement = 0xFFFD;

/// Appends a text as units; whether there are any, which with `MB_ERR_INVALID_CHARS` there are for characters alone.
bool Append(std::wstring &units, std::string_view text, unsigned int codePage, DWORD flags) {
    auto const size = static_cast<int>(text.size());
    int const count = ::MultiByteToWideChar(codePage, flags, text.data(), size, nullptr, 0);
    if (count <= 0)
        return false;
    std::size_t const before = units.size();
    units.resize(before + static_cast<std::size_t>(count));
    int const written = ::MultiByteToWideChar(codePage, flags, text.data(), size, units.data() + before, count);
    units.resize(before + static_cast<std::size_t>(written > 0 ? written : 0));
    return written > 0;
}

/// Character by character, U+FFFD for each byte that begins none.
void AppendCharacters(std::wstring &units, std::string_view text, unsigned int codePage) {
    while (!text.empty()) {
        bool const isPair = ::IsDBCSLeadByteEx(codePage, static_cast<BYTE>(text[0])) && text.size() > 1;
        bool const isCharacter = Append(units, text.substr(0, isPair ? 2 : 1), codePage, MB_ERR_INVALID_CHARS);
        if (!isCharacter)
            units += kReplacement;
        text.remove_prefix(isCharacter && isPair ? 2 : 1);
    }
}

} // namespace

bool HasCodePage(unsigned int codePage) {
    return ::MultiByteToWideChar(codePage, 0, "a", 1, nullptr, 0) > 0;
}

std::wstring WideOfMulti(std::string_view text, unsigned int codePage) {
    std::wstring units;
    AppendWideOfMulti(units, text, codePage);
    return units;
}

void AppendWideOfMulti(std::wstring &units, std::string_view text, unsigned int codePage) {
    if (text.empty() || text.size() > kLargestText || Append(units, text, codePage, MB_ERR_INVALID_CHARS))
        return;
    // Some pages take no flag, and UTF-8 has a replacement of its own.
    bool const isUtf8 = codePage == CP_UTF8 || (codePage == CP_ACP && ::GetACP() == CP_UTF8);
    if (::GetLastError() != ERROR_NO_UNICODE_TRANSLATION || isUtf8)
        Append(units, text, codePage, 0);
    else
        AppendCharacters(units, text, codePage);
}

std::string MultiOfWide(std::wstring_view units, unsigned int codePage) {
    std::string text;
    AppendMultiOfWide(text, units, codePage);
    return text;
}

void AppendMultiOfWide(std::string &text, std::wstring_view units, unsigned int codePage) {
    if (units.empty() || units.size() > kLargestText)
        return;
    auto const size = static_cast<int>(units.size());
    int const count = ::WideCharToMultiByte(codePage, 0, units.data(), size, nullptr, 0, nullptr, nullptr);
    if (count <= 0)
        return;
    std::size_t const before = text.size();
    text.resize(before + static_cast<std::size_t>(count));
    int const written =
        ::WideCharToMultiByte(codePage, 0, units.data(), size, text.data() + before, count, nullptr, nullptr);
    text.resize(before + static_cast<std::size_t>(written > 0 ? written : 0));
}

std::size_t WideOfBytes(std::string_view bytes, wchar_t *units) {
    if (bytes.empty() || bytes.size() > kLargestText)
        return 0;
    auto const size = static_cast<int>(bytes.size());
    int const count = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, units, size);
    return static_cast<std::size_t>(count > 0 ? count : 0);
}

std::string BytesOfWide(std::wstring_view units) {
    return MultiOfWide(units, kSystemCodePage);
}

} // namespace zvi::host
