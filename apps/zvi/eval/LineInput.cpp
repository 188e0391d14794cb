#include "apps/zvi/eval/LineInput.h"

namespace zvi::app {

std::optional<std::string> LineInput::Next(std::string const &prompt) {
    if (m_editor) {
        m_console.out << std::flush;
        return m_editor->Read(prompt, m_console.out);
    }
    m_console.out << prompt << std::flush;
    std::string line;
    if (std::getline(m_console.in, line))
        return line;
    m_console.out << "\n";
    return std::nullopt;
}

} // namespace zvi::app
