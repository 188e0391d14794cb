#pragma once

#include "apps/zvi/common/Console.h"
#include "apps/zvi/eval/LineEditor.h"

#include <memory>
#include <optional>
#include <string>

namespace zvi::app {

/// Reads lines at a prompt: edited where there is an editor, as they come elsewhere.
class LineInput {
public:
    explicit LineInput(Console &console) : m_console(console), m_editor(LineEditor::ForTerminal()) {}

    /// The next line without its end; nothing at the end of the input.
    std::optional<std::string> Next(std::string const &prompt);

private:
    Console &m_console;
    std::unique_ptr<LineEditor> m_editor;
};

} // namespace zvi::app
