#include "apps/zvi/eval/EvalCommand.h"

#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/eval/EvalOptions.h"
#include "apps/zvi/eval/EvalSession.h"
#include "apps/zvi/eval/LineInput.h"

#include <algorithm>
#include <string>

namespace zvi::app {

namespace {

int AnswerText(EvalOptions const &options, Console &console) {
    // One text alone sets no variables and knows no commands.
    EvalReply const reply = EvalSession(options.settings, options.json, false).Read(*options.text);
    if (!reply.failure.empty())
        TellFailure(console, "", 0, reply.failure);
    int const written = WriteResult(console, reply.out);
    return reply.failure.empty() ? written : int(kExitBadInput);
}

int AnswerLines(EvalOptions const &options, Console &console) {
    EvalSession session(options.settings, options.json, false);
    int status = kExitDone;
    std::string line;
    for (std::size_t number = 1; std::getline(console.in, line); ++number) {
        EvalReply const reply = session.Enter(std::string(number == 1 ? WithoutUtf8Mark(line) : line));
        if (!reply.failure.empty()) {
            TellFailure(console, "standard input", number, reply.failure);
            status = kExitBadInput;
        }
        int const written = reply.out.empty() ? int(kExitDone) : WriteResult(console, reply.out);
        if (reply.quit || written != kExitDone || !console.out.good())
            return std::max(status, written);
    }
    return status;
}

int AnswerPrompt(EvalOptions const &options, Console &console) {
    EvalSession session(options.settings, options.json, true);
    LineInput input(console);
    console.out << "zvi eval: an expression, name=expression, :help or :quit\n";
    while (std::optional<std::string> const line = input.Next("zvi> ")) {
        EvalReply const reply = session.Enter(*line);
        console.out << reply.out << std::flush;
        if (!reply.failure.empty())
            TellFailure(console, "", 0, reply.failure);
        if (reply.quit || !console.out.good())
            break;
    }
    return kExitDone;
}

} // namespace

int RunEval(std::vector<std::string> const &arguments, Console &console) {
    EvalOptions const options = ParseEvalOptions(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    if (options.text && *options.text != "-")
        return AnswerText(options, console);
    bool const isTerminal = console.inIsTerminal && console.outIsTerminal;
    try {
        return options.text || !isTerminal ? AnswerLines(options, console) : AnswerPrompt(options, console);
    } catch (InputError const &error) {
        TellFailure(console, "standard input", 0, error.what());
        return kExitBadInput;
    }
}

} // namespace zvi::app
