#include "apps/zvi/run/RunCommand.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/Terminal.h"
#include "apps/zvi/run/ChildOutput.h"

#include "zvi/diagnostics/MProcessMgr.h"
#include "zvi/host/CommandLine.h"
#include "zvi/host/Paths.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <system_error>

namespace zvi::app {

namespace {

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi run make -j4                           a build, line by line\n"
    "  zvi run --stop-after 10 ping localhost     a program that is stopped after ten seconds\n"
    "  zvi run --json ./solver plan.inp           every message as a JSON object on a line of its own\n";

constexpr char const *kFooter =
    "PROGRAM is a path, or a name that is looked up along the path of the environment. Everything behind it belongs "
    "to\n"
    "it. It has an empty input; what it writes to its standard output and its standard error comes out on standard\n"
    "output, byte for byte. Lines end with LF. A line that it writes over, with CR or BS, is drawn over on a "
    "terminal,\n"
    "as the program would; elsewhere each state of it is a line. In JSON \"own\" is the program's own line, and "
    "\"text\"\n"
    "the library's, which takes one character off for each CR and BS.\n"
    "\n"
    "Ctrl-C stops the program when it next writes, or 2 s later, or at the second Ctrl-C, with all that it has "
    "started.\n"
    "\n"
    "Exit status: that of the program, or 128 and the number of the signal that ended it; 130 when Ctrl-C stopped it,\n"
    "124 when --stop-after did; 1 the program cannot be run; 2 wrong usage.\n";

/// Exit statuses of a program that was stopped.
constexpr int kInterrupted = 130;
constexpr int kTimedOut = 124;

/// How long a program that was asked to stop may be silent.
constexpr std::chrono::milliseconds kPatience{2000};
/// How often interrupts are looked at.
constexpr std::chrono::milliseconds kLook{50};
/// The longest time that a program may be given.
constexpr double kLongestSeconds = 1e9;

using Clock = std::chrono::steady_clock;

struct RunOptions {
    std::optional<double> stopAfter;
    bool json = false;
    std::vector<std::string> words;
    std::string help;
};

RunOptions Parse(std::vector<std::string> const &arguments) {
    RunOptions options;
    CommandLine line("zvi run", "Runs a program and shows its output line by line.");
    line.AddWord("PROGRAM", "The program");
    line.AddWords("ARGS", "Its arguments");
    line.AddNumber("--stop-after", options.stopAfter, kLongestSeconds, "SECONDS",
                   "Stop the program after so many seconds");
    line.AddFlag("--json", options.json, "One JSON object for each message");
    CommandLineForm form{kExamples, kFooter};
    form.takesMinusWords = false;
    form.optionsComeFirst = true;
    ParsedWords parsed = line.Parse(arguments, form);
    options.help = parsed.help;
    options.words = std::move(parsed.words);
    if (options.help.empty() && (options.words.empty() || options.words[0].empty()))
        throw UsageError("run needs a program, such as zvi run make -j4");
    return options;
}

/// Asks a program to stop, and ends it when it does not.
class Stopper {
public:
    Stopper(ChildOutput &child, std::optional<double> seconds) : m_child(child) {
        if (seconds)
            m_timeOut = Clock::now() + std::chrono::milliseconds(static_cast<long long>(*seconds * 1000));
    }

    /// The document that the program belongs to, of which the address alone counts.
    CDocument *Document() { return reinterpret_cast<CDocument *>(this); }

    /// Looks at what the user and the clock want. Whether the program has been ended.
    bool Look() {
        bool const isTimeOut = m_timeOut && Clock::now() >= *m_timeOut;
        if (m_status == 0 && (InterruptCount() > 0 || isTimeOut)) {
            m_status = isTimeOut && InterruptCount() == 0 ? kTimedOut : kInterrupted;
            m_end = Clock::now() + kPatience;
            m_child.SendMsg(L"!Stop");
        }
        if (RequestedEndStatus() != 0)
            m_status = RequestedEndStatus();
        bool const isOver =
            m_status != 0 && (InterruptCount() > 1 || RequestedEndStatus() != 0 || Clock::now() >= m_end);
        if (isOver)
            End();
        return isOver;
    }

    void End() { lib::MProcessMgr::Instance()->OnCloseDocument(Document()); }

    /// Exit status of the program that was stopped; 0 when it was not.
    int Status() const { return m_status; }

private:
    ChildOutput &m_child;
    std::optional<Clock::time_point> m_timeOut;
    Clock::time_point m_end;
    int m_status = 0;
};

std::wstring ProgramOf(std::string const &name) {
    std::wstring program = host::FindProgram(host::LibraryPath(PathOf(name)));
    if (program.empty())
        throw InputError(0, name +
                                ": there is no such program; name one along the path of the environment, or the path "
                                "of a file that may be executed");
    return program;
}

std::wstring ArgumentsOf(std::vector<std::string> const &words) {
    std::wstring line;
    for (auto word = words.begin() + 1; word != words.end(); ++word)
        line += (line.empty() ? L"" : L" ") + host::QuotedArgument(PathOf(*word).native());
    return line;
}

/// Shows what the program writes until it has ended. False when the output cannot be written.
bool Watch(ChildOutput &child, Stopper &stopper, std::ostream &out) {
    lib::MProcessMgr &manager = *lib::MProcessMgr::Instance();
    while (!child.HasEnded() && !stopper.Look()) {
        manager.WaitForOutput(static_cast<unsigned int>(kLook.count()));
        lib::MProcessMgr::TimerProc(nullptr, 0, lib::MProcessMgr::kTimerId, 0);
        if (!out.flush())
            return false;
    }
    return true;
}

int StatusOf(ChildOutput const &child, Stopper const &stopper) {
    bool const wasStopped = stopper.Status() != 0 && (!child.HasEnded() || child.ExitCode() == kInterrupted);
    return wasStopped ? stopper.Status() : child.ExitCode();
}

} // namespace

int RunRun(std::vector<std::string> const &arguments, Console &console) {
    RunOptions const options = Parse(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    std::wstring const program = ProgramOf(options.words[0]);
    std::wstring const line = ArgumentsOf(options.words);
    CountInterrupts();
    ChildOutput child(console.out, options.json            ? OutputForm::kJson
                                   : console.outIsTerminal ? OutputForm::kTerminal
                                                           : OutputForm::kPlain);
    Stopper stopper(child, options.stopAfter);
    if (lib::MProcessMgr::Instance()->Run(program.c_str(), line.c_str(), L"", 0, kInterrupted, &child, 1, 1,
                                          stopper.Document()) != 0)
        throw InputError(0, options.words[0] + ": cannot be started; see whether it is still there");
    if (!Watch(child, stopper, console.out)) {
        stopper.End();
        return TellWriteFailure(console);
    }
    child.EndLine();
    if (!console.out.flush())
        return TellWriteFailure(console);
    if (child.StartError() != 0)
        throw InputError(0, options.words[0] + ": cannot be run: " +
                                std::system_category().message(static_cast<int>(child.StartError())));
    return StatusOf(child, stopper);
}

} // namespace zvi::app
