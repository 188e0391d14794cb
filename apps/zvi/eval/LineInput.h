#pragma once

#include "apps/zvi/common/Console.h"
#include "apps/zvi/eval/LineEditor.h"

#include <optional>
#include <string>

namespace zvi::app {

/// Reads lines at a prompt. On a terminal that can move its cursor the line can be edited, and earlier lines come back;
/// otherwise lines are read as they come.
class LineInput {
public:
    explicit LineInput(Console &console);

    /// The next line; nothing at the end of the input.
    std::optional<std::string> Next(std::string const &prompt);

private:
    std::optional<std::string> Edited(std::string const &prompt);
    std::optional<std::string> Plain(std::string const &prompt);
    void Show(std::string const &prompt);

    Console &m_console;
    bool m_editable;
    LineEditor m_editor;
};

} // namespace zvi::app
