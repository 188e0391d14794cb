#pragma once

#include "apps/zvi/common/Console.h"

#include <memory>
#include <optional>
#include <string>

namespace zvi::app {

/// Reads lines at a prompt. On a terminal that can move its cursor libedit edits the line and brings earlier ones back;
/// the console of Windows does both by itself. Elsewhere lines are read as they come.
class LineInput {
public:
    explicit LineInput(Console &console);
    ~LineInput();
    LineInput(LineInput const &) = delete;
    LineInput &operator=(LineInput const &) = delete;

    /// The next line without its end; nothing at the end of the input. Ctrl-C gives up the line begun, Ctrl-D on an
    /// empty line ends the input.
    std::optional<std::string> Next(std::string const &prompt);

private:
    class Editor;

    Console &m_console;
    std::unique_ptr<Editor> m_editor; ///< null where the line is not edited here
};

} // namespace zvi::app
