#include "apps/zvi/common/windows/ConsoleBuffers.h"

#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/WideText.h"

#include "zvi/core/Utf8.h"

#include <algorithm>

namespace zvi::app {

namespace {

/// Units that are read from a console, or written to it, in one step; more than some consoles take.
constexpr std::size_t kUnitsAtOnce = 4096;

constexpr wchar_t kEndOfInput = 0x1A; ///< Ctrl-Z

bool IsHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

} // namespace

std::size_t WholeCharacters(std::string_view utf8) {
    constexpr std::size_t kLongest = 4;
    for (std::size_t back = 1; back <= std::min(kLongest, utf8.size()); ++back) {
        char const byte = utf8[utf8.size() - back];
        if ((static_cast<unsigned char>(byte) & 0xC0u) != 0x80u)
            return lib::Utf8Length(byte) > back ? utf8.size() - back : utf8.size();
    }
    return utf8.size();
}

std::error_code ConsoleOutput::HandOver(std::string_view &bytes) {
    bytes = bytes.substr(0, WholeCharacters(bytes));
    CString const text = lib::WideOf(bytes);
    std::wstring_view left = View(text);
    while (!left.empty()) {
        DWORD written = 0;
        auto const count = static_cast<DWORD>(std::min(left.size(), kUnitsAtOnce));
        if (!WriteConsoleW(m_console, left.data(), count, &written, nullptr) || written == 0)
            return std::make_error_code(std::errc::io_error);
        left.remove_prefix(written);
    }
    return {};
}

std::streambuf::int_type ConsoleInput::underflow() {
    std::wstring units(kUnitsAtOnce, L'\0');
    std::size_t const kept = m_pending ? 1 : 0;
    units[0] = m_pending;
    m_pending = L'\0';
    DWORD count = 0;
    auto const room = static_cast<DWORD>(units.size() - kept);
    bool const isRead = ReadConsoleW(m_console, units.data() + kept, room, &count, nullptr) && count > 0;
    units.resize(kept + count);
    if (!isRead || units[0] == kEndOfInput)
        return traits_type::eof();
    if (IsHighSurrogate(units.back()) && units.size() > 1) {
        m_pending = units.back();
        units.pop_back();
    }
    m_line = lib::Utf8Of(units);
    ReplaceAll(m_line, "\r\n", "\n");
    setg(m_line.data(), m_line.data(), m_line.data() + m_line.size());
    return traits_type::to_int_type(m_line.front());
}

} // namespace zvi::app
