#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace zvi::app {

/// The streams of a run, and whether people watch them.
struct Console {
    std::istream &in;
    std::ostream &out;
    std::ostream &err;
    bool inIsTerminal = false;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
};

/// Tells a failure in the form "zvi: WHERE:LINE: WHAT"; an empty `where` and a `line` of 0 are left out.
void TellFailure(Console &console, std::string const &where, std::size_t line, std::string const &what);

/// Writes a result to standard output and returns the exit status: done also when the reader has gone, bad input (with
/// a message) when it cannot be written otherwise.
int WriteResult(Console &console, std::string const &text);

/// Behind a write to standard output that failed: tells why, unless the reader has gone, and returns the exit status.
int TellWriteFailure(Console &console);

/// Where standard input is a terminal, says that the verb waits for text to be typed there; `what` says what text.
void TellWaiting(Console &console, std::string const &what, std::string const &verb);

/// Says on a terminal what goes on, in one line that the next step replaces.
class Progress {
public:
    /// Shows nothing unless `shown`.
    Progress(Console &to, bool isShown) : m_console(to), m_shown(isShown && to.errIsTerminal) {}
    ~Progress() { Clear(); }
    Progress(Progress const &) = delete;
    Progress &operator=(Progress const &) = delete;

    void Step(std::string const &what);
    void Clear();

private:
    Console &m_console;
    bool m_shown;
};

} // namespace zvi::app
