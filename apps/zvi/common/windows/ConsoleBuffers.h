#pragma once

#include "apps/zvi/common/StandardStreams.h"
#include "apps/zvi/common/windows/WindowsHeader.h"

#include <streambuf>
#include <string>
#include <string_view>

namespace zvi::app {

/// What is written as UTF-8 appears on a console. A character that comes in two writes waits for its end.
class ConsoleOutput : public GatheredOutput {
public:
    /// `console` is open for writing as long as the buffer lives.
    explicit ConsoleOutput(HANDLE console) : m_console(console) {}

protected:
    std::error_code HandOver(std::string_view &bytes) override;

private:
    HANDLE m_console;
};

/// The lines that are typed at a console, as UTF-8 that ends its lines with LF. A line that begins with Ctrl-Z is the
/// end of the input.
class ConsoleInput : public std::streambuf {
public:
    /// `console` is open for reading as long as the buffer lives.
    explicit ConsoleInput(HANDLE console) : m_console(console) {}

protected:
    int_type underflow() override;

private:
    HANDLE m_console;
    std::string m_line;
    wchar_t m_pending = 0; ///< the first half of a surrogate pair whose second has not come yet
};

/// The number of leading bytes of `utf8` that hold whole characters: all but the beginning of a character at its end.
std::size_t WholeCharacters(std::string_view utf8);

} // namespace zvi::app
