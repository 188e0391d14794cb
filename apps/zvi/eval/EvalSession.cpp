#include "apps/zvi/eval/EvalSession.h"

#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/UnitNumbers.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/eval/EvalText.h"
#include "apps/zvi/eval/hints/Diagnose.h"

namespace zvi::app {

namespace {

constexpr char const *kHelp =
    "Type an expression, or\n"
    "  name=expression    sets a variable; names know no B or T and no case\n"
    "  :mode NAME         reads positions, lists, ...; ':mode' lists the modes\n"
    "  :units 0..5        lengths with units, such as 5mm, in the units of that system; ':units off'\n"
    "  :vars              the variables\n"
    "  :help              this text\n"
    "  :quit              ends, as does Ctrl-D\n"
    "Blanks separate items: write 1+2, not 1 + 2. Angles are in degrees.\n";

std::string FailureOf(CString const &text, EvalSettings const &settings, EvalOutcome const &outcome) {
    return DiagnosisText(text, Diagnose(text, settings, outcome));
}

std::string ModeList(EvalMode current) {
    std::string text;
    for (EvalModeEntry const &entry : EvalModes()) {
        std::string const name = entry.name;
        text +=
            (entry.mode == current ? "* " : "  ") + name + std::string(10 - name.size(), ' ') + entry.summary + "\n";
    }
    return text;
}

} // namespace

bool SplitAssignment(std::string const &text, std::string &name, std::string &expression) {
    std::size_t const equals = text.find('=');
    if (equals == std::string::npos)
        return false;
    name = Trimmed(std::string_view(text).substr(0, equals));
    expression = text.substr(equals + 1);
    bool const begins = !name.empty() && IsNameChar(static_cast<wchar_t>(static_cast<unsigned char>(name[0])));
    return begins && !Trimmed(expression).empty() && expression.find('=') == std::string::npos;
}

bool ReadVariable(std::string const &text, EvalSettings settings, double &value, std::string &failure) {
    settings.mode = EvalMode::kNumber;
    CString const typed = WideOf(text);
    EvalOutcome const outcome = Evaluate(typed, settings);
    if (outcome.parsed)
        value = outcome.groups[0][0];
    else
        failure = FailureOf(typed, settings, outcome);
    return outcome.parsed;
}

EvalReply EvalSession::Enter(std::string const &line) {
    std::string const text(Trimmed(line));
    if (text.empty())
        return {};
    if (text[0] == ':')
        return Command(text);
    if (m_prompt && (text == "help" || text == "?" || text == "quit" || text == "exit"))
        return Command(text == "?" ? ":help" : ":" + text);
    std::string name;
    std::string expression;
    return SplitAssignment(text, name, expression) ? Set(name, expression) : Read(line);
}

EvalReply EvalSession::Read(std::string const &text) const {
    CString const typed = WideOf(text);
    EvalOutcome const outcome = Evaluate(typed, m_settings);
    if (outcome.parsed)
        return {m_json ? OutcomeJson(m_settings, outcome) : OutcomeText(outcome), {}, false};
    Diagnosis const diagnosis = Diagnose(typed, m_settings, outcome);
    return {m_json ? DiagnosisJson(m_settings, typed, diagnosis) : "", Told(DiagnosisText(typed, diagnosis)), false};
}

EvalReply EvalSession::Set(std::string const &name, std::string const &text) {
    std::string const why = WhyNoVariableName(name);
    if (!why.empty())
        return {{}, why, false};
    double value = 0.0;
    std::string failure;
    if (!ReadVariable(text, m_settings, value, failure))
        return {{}, Told(failure), false};
    if (!SetVariable(m_settings.variables, name, value))
        return {{}, "there are " + std::to_string(kMostVariables) + " variables already; set one of them anew", false};
    return {m_prompt ? Joined(name, " = ", PlainNumber(value), "\n") : "", {}, false};
}

EvalReply EvalSession::Command(std::string const &line) {
    std::size_t const blank = line.find_first_of(" \t");
    std::string const command = line.substr(0, blank);
    std::string const value(blank == std::string::npos ? "" : Trimmed(line.substr(blank)));
    try {
        if (command == ":mode") {
            m_settings.mode = value.empty() ? m_settings.mode : EvalModeNamed(value);
            return {value.empty() ? ModeList(m_settings.mode) : "", {}, false};
        }
        if (command == ":units" && value.empty())
            return {m_settings.unitSystem ? std::to_string(*m_settings.unitSystem) + "\n" : "off\n", {}, false};
        if (command == ":units") {
            m_settings.unitSystem = value == "off" ? std::nullopt : std::optional(UnitSystemNamed(value));
            return {};
        }
    } catch (UsageError const &error) {
        return {{}, error.what(), false};
    }
    if (command == ":vars")
        return {Listed(), {}, false};
    if (command == ":help" || command == ":h" || command == ":?")
        return {kHelp, {}, false};
    if (command == ":quit" || command == ":q" || command == ":exit")
        return {{}, {}, true};
    std::string const advice =
        DidYouMean(command, {":mode", ":units", ":vars", ":help", ":quit"}, "':help' lists the commands");
    return {{}, "unknown command '" + command + "'; " + advice, false};
}

std::string EvalSession::Listed() const {
    std::string text;
    for (EvalVariable const &variable : m_settings.variables)
        text += Joined(variable.name, " = ", PlainNumber(variable.value), "\n");
    return text.empty() ? "none; name=expression sets one\n" : text;
}

/// At a prompt, options are commands.
std::string EvalSession::Told(std::string text) const {
    if (m_prompt) {
        ReplaceAll(text, "--mode ", ":mode ");
        ReplaceAll(text, "--unit-system ", ":units ");
        ReplaceAll(text, "--var ", "");
    }
    return text;
}

} // namespace zvi::app
