#include "apps/zvi/run/ChildOutput.h"

#include <nlohmann/json.hpp>

#include <cstdlib>

namespace zvi::app {

namespace {

constexpr std::wstring_view kSame = L"!Same:";
constexpr std::wstring_view kExit = L"!Exit:";

/// The bytes that a text was made of.
std::string BytesOf(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (wchar_t const unit : text)
        bytes += static_cast<char>(unit & 0xFF);
    return bytes;
}

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// Takes so many characters off the end.
void Erase(std::string &line, int count) {
    for (; count > 0 && !line.empty(); --count) {
        while (line.size() > 1 && ContinuesCharacter(line.back()))
            line.pop_back();
        line.pop_back();
    }
}

} // namespace

void ChildOutput::OnProcessMsg(wchar_t const *text) {
    lib::T_PROCESS_MSG const message = *GetCurrentMsg();
    std::wstring_view const whole(text, message.length);
    // What the child itself writes in front of a line has bytes of its own.
    if (message.bytes.empty() && whole.starts_with(kExit)) {
        TakeExit(whole.substr(kExit.size()), message.startError);
        return;
    }
    if (m_form == OutputForm::kTerminal)
        ShowOnTerminal(message);
    else if (m_form == OutputForm::kPlain)
        ShowAsLine(message);
    else
        ShowAsJson(whole, message);
}

void ChildOutput::TakeExit(std::wstring_view code, unsigned int startError) {
    EndLine();
    m_hasEnded = true;
    m_exitCode = std::atoi(BytesOf(code).c_str());
    m_startError = startError;
    if (m_form == OutputForm::kJson && startError == 0)
        m_out << nlohmann::ordered_json{{"schema", 1}, {"event", "exit"}, {"code", m_exitCode}}.dump() << '\n';
}

void ChildOutput::EndLine() {
    if (m_isOpen && m_form == OutputForm::kTerminal)
        m_out << '\n';
    m_isOpen = false;
}

/// Moves as the child has moved, and writes what it has written: the terminal does the rest.
void ChildOutput::ShowOnTerminal(lib::T_PROCESS_MSG const &message) {
    if (message.back == 0)
        EndLine();
    else if (m_isOpen && message.back == lib::T_PROCESS_MSG::kLineStart)
        m_out << '\r';
    else if (m_isOpen)
        m_out << std::string(static_cast<std::size_t>(message.back), '\b');
    m_out << message.bytes;
    if (message.endsLine)
        m_out << '\n';
    m_isOpen = !message.endsLine;
}

void ChildOutput::ShowAsLine(lib::T_PROCESS_MSG const &message) {
    NoteLine(message);
    m_out << m_line << '\n';
}

void ChildOutput::NoteLine(lib::T_PROCESS_MSG const &message) {
    if (message.back > 0 && m_isOpen)
        Erase(m_line, message.back);
    else
        m_line.clear();
    m_line += message.bytes;
    m_isOpen = !message.endsLine;
}

void ChildOutput::ShowAsJson(std::wstring_view text, lib::T_PROCESS_MSG const &message) {
    NoteLine(message);
    bool const isSame = message.back != 0 && text.starts_with(kSame);
    if (isSame)
        text.remove_prefix(kSame.size());
    if (message.endsLine)
        text.remove_suffix(1);
    nlohmann::ordered_json const json = {{"schema", 1},
                                         {"event", isSame ? "same" : "line"},
                                         {"text", BytesOf(text)},
                                         {"own", m_line},
                                         {"ended", message.endsLine}};
    m_out << json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

} // namespace zvi::app
