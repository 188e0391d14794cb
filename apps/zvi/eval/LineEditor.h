#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace zvi::app {

/// Edits the line at a prompt and brings earlier ones back: libedit, with the keys that the user's .editrc asks for.
/// The console of Windows does all this before the program sees the line, so there is no editor there.
class LineEditor {
public:
    /// The editor of the terminal that the standard streams are; null where its lines are not edited here, as on a
    /// terminal that cannot move its cursor.
    static std::unique_ptr<LineEditor> ForTerminal();

    virtual ~LineEditor() = default;

    /// The next line without its end; nothing at the end of the input. Ctrl-C gives up the line begun, Ctrl-D on an
    /// empty line ends the input. `out` is standard output.
    virtual std::optional<std::string> Read(std::string const &prompt, std::ostream &out) = 0;
};

} // namespace zvi::app
