#pragma once

#include "apps/zvi/common/typed/Evaluate.h"

#include <string>
#include <utility>

namespace zvi::app {

/// What a line brought about.
struct EvalReply {
    std::string out;     ///< for standard output, whole lines
    std::string failure; ///< for standard error, without the place and the last line end; empty when all went well
    bool quit = false;
};

/// Reads line after line and keeps variables and settings from one to the next. A line is an expression of the mode,
/// `name=expression`, or a command such as `:mode nodes`.
class EvalSession {
public:
    /// `forPeople`: lines are answered as at a prompt, where a set variable is confirmed and hints name commands.
    EvalSession(EvalSettings initial, bool asJson, bool forPeople)
        : m_settings(std::move(initial)), m_json(asJson), m_prompt(forPeople) {}

    /// A line of any form; a blank one does nothing.
    EvalReply Enter(std::string const &line);
    /// A text that is nothing but an expression of the mode.
    EvalReply Read(std::string const &text) const;

    EvalSettings const &Settings() const { return m_settings; }

private:
    EvalReply Set(std::string const &name, std::string const &text);
    EvalReply Command(std::string const &line);
    std::string Listed() const;
    std::string Told(std::string text) const;

    EvalSettings m_settings;
    bool m_json;
    bool m_prompt;
};

/// `NAME=EXPRESSION` as its two sides, blanks around the name dropped; false for a text of another form.
bool SplitAssignment(std::string const &text, std::string &name, std::string &expression);

/// The value of an expression that a variable is given, read in the mode number, with units if there is a unit
/// system. On failure returns false with what to tell in `failure`.
bool ReadVariable(std::string const &text, EvalSettings settings, double &value, std::string &failure);

} // namespace zvi::app
