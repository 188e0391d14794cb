#pragma once

#include "zvi/diagnostics/MProcessCommunicator.h"

#include <ostream>
#include <string>
#include <string_view>

namespace zvi::app {

/// How the output of a child is shown.
enum class OutputForm {
    kTerminal, ///< as the child draws it, lines that it writes over included
    kPlain,    ///< what is written over as lines of its own
    kJson,     ///< each message as one JSON object
};

/// Writes what a child writes to a stream, byte for byte, line by line.
class ChildOutput : public lib::MProcessCommunicator {
public:
    ChildOutput(std::ostream &out, OutputForm form) : m_out(out), m_form(form) { SetSelfDelete(0); }

    void OnProcessMsg(wchar_t const *text) override;

    /// Ends a line on a terminal that the child has left open.
    void EndLine();

    bool HasEnded() const { return m_hasEnded; }
    int ExitCode() const { return m_exitCode; }
    /// Why the program could not be started; 0 when it was.
    unsigned int StartError() const { return m_startError; }

private:
    void TakeExit(std::wstring_view code, unsigned int startError);
    void ShowOnTerminal(lib::T_PROCESS_MSG const &message);
    void ShowAsLine(lib::T_PROCESS_MSG const &message);
    void ShowAsJson(std::wstring_view text, lib::T_PROCESS_MSG const &message);
    void NoteLine(lib::T_PROCESS_MSG const &message);

    std::ostream &m_out;
    OutputForm m_form;
    /// The child's line as it stands, and whether one stands there.
    std::string m_line;
    bool m_isOpen = false;
    bool m_hasEnded = false;
    int m_exitCode = 0;
    unsigned int m_startError = 0;
};

} // namespace zvi::app
