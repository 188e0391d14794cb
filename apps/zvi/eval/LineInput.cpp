#include "apps/zvi/eval/LineInput.h"

#include "apps/zvi/common/Terminal.h"
#include "apps/zvi/common/WideText.h"
#include "zvi/core/Utf8.h"

#include <cstdlib>
#include <string_view>

#ifndef _WIN32
#include <cerrno>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>
#endif

namespace zvi::app {

namespace {

#ifdef _WIN32

/// The console of this host has its own line editing.
class RawTerminal {
public:
    bool Works() const { return false; }
    bool Read(char &) { return false; }
};

std::size_t TerminalColumns() {
    return 80;
}

bool CanMoveCursor() {
    return false;
}

#else

/// How the terminal was set before its keys were taken one by one.
termios before{};

void RestoreTerminal() {
    tcsetattr(STDIN_FILENO, TCSADRAIN, &before);
}

/// Key by key and without echo while it lives, one at a time; also a signal that ends the program restores the
/// terminal. Output is processed as before.
class RawTerminal {
public:
    RawTerminal() : m_works(tcgetattr(STDIN_FILENO, &before) == 0) {
        if (!m_works)
            return;
        termios raw = before;
        raw.c_iflag &= ~static_cast<tcflag_t>(ICRNL | IXON | ISTRIP);
        raw.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON | IEXTEN | ISIG);
        raw.c_cc[VMIN] = 1;
        raw.c_cc[VTIME] = 0;
        CallOnInterrupt(RestoreTerminal);
        m_works = tcsetattr(STDIN_FILENO, TCSADRAIN, &raw) == 0;
    }
    ~RawTerminal() {
        if (m_works)
            RestoreTerminal();
        CallOnInterrupt(nullptr);
    }
    RawTerminal(RawTerminal const &) = delete;
    RawTerminal &operator=(RawTerminal const &) = delete;

    bool Works() const { return m_works; }

    /// The next byte typed; false at the end.
    bool Read(char &byte) {
        while (true) {
            ssize_t const count = read(STDIN_FILENO, &byte, 1);
            if (count == 1 || (count < 0 && errno != EINTR) || count == 0)
                return count == 1;
        }
    }

private:
    bool m_works;
};

std::size_t TerminalColumns() {
    constexpr std::size_t kUsualColumns = 80;
    winsize size{};
    bool const known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : kUsualColumns;
}

bool CanMoveCursor() {
    char const *const terminal = std::getenv("TERM");
    return terminal && *terminal && std::string_view(terminal) != "dumb";
}

#endif

} // namespace

LineInput::LineInput(Console &to) : m_console(to), m_editable(CanMoveCursor()) {}

std::optional<std::string> LineInput::Next(std::string const &prompt) {
    return m_editable ? Edited(prompt) : Plain(prompt);
}

std::optional<std::string> LineInput::Plain(std::string const &prompt) {
    m_console.out << prompt << std::flush;
    std::string line;
    if (std::getline(m_console.in, line))
        return line;
    m_console.out << "\n";
    return std::nullopt;
}

std::optional<std::string> LineInput::Edited(std::string const &prompt) {
    RawTerminal terminal;
    if (!terminal.Works())
        return Plain(prompt);
    m_editor.Begin();
    Show(prompt);
    char byte = 0;
    while (terminal.Read(byte)) {
        switch (m_editor.Feed(byte)) {
        case LineEditor::Event::kNone:
            Show(prompt);
            break;
        case LineEditor::Event::kCancel:
            m_console.out << "^C\n";
            m_editor.Begin();
            Show(prompt);
            break;
        case LineEditor::Event::kDone:
            m_console.out << "\n" << std::flush;
            m_editor.Remember(m_editor.Text());
            return m_editor.Text();
        case LineEditor::Event::kEnd:
            m_console.out << "\n" << std::flush;
            return std::nullopt;
        }
    }
    m_console.out << "\n" << std::flush;
    return std::nullopt;
}

/// Draws the line anew. Of a line that is wider than the terminal the part before the cursor is shown.
void LineInput::Show(std::string const &prompt) {
    std::string const &text = m_editor.Text();
    std::size_t const width = TerminalColumns();
    std::size_t const room = width > prompt.size() + 2 ? width - prompt.size() - 1 : 1;
    std::size_t begin = 0;
    while (Columns(text.substr(begin, m_editor.Cursor() - begin)) > room)
        begin += lib::Utf8Length(text[begin]);
    std::size_t end = text.size();
    while (end > m_editor.Cursor() && Columns(text.substr(begin, end - begin)) > room)
        --end;
    m_console.out << "\r" << prompt << text.substr(begin, end - begin) << "\x1B[K\r";
    std::size_t const column = prompt.size() + Columns(text.substr(begin, m_editor.Cursor() - begin));
    m_console.out << "\x1B[" << column << "C" << std::flush;
}

} // namespace zvi::app
