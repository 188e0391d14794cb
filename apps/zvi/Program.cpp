#include "apps/zvi/Program.h"

#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/Terminal.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/contacts/ContactsCommand.h"
#include "apps/zvi/convert/ConvertCommand.h"
#include "apps/zvi/domains/DomainsCommand.h"
#include "apps/zvi/draw-index/DrawIndexCommand.h"
#include "apps/zvi/eval/EvalCommand.h"
#include "apps/zvi/messages/MessagesCommand.h"
#include "apps/zvi/numbers/NumbersCommand.h"
#include "apps/zvi/profile-report/ProfileReportCommand.h"
#include "apps/zvi/run/RunCommand.h"
#include "apps/zvi/settings/SettingsCommand.h"
#include "apps/zvi/text/TextCommand.h"
#include "apps/zvi/units/UnitsCommand.h"

#include "zvi/core/Version.h"

#include <algorithm>
#include <iostream>
#include <new>

namespace zvi::app {

namespace {

std::string HelpText() {
    std::string text = "Examples:\n"
                       "  zvi domains plan.dxf                      the closed domains of a drawing\n"
                       "  zvi domains --svg plan.svg plan.dxf       and a picture of them\n"
                       "  zvi eval '1+2*3'                          the value of an expression\n"
                       "\n"
                       "Usage: zvi VERB [options] [FILE]\n"
                       "\n"
                       "Verbs:\n";
    std::size_t widest = 0;
    for (Verb const &verb : Verbs())
        widest = std::max(widest, std::string(verb.name).size());
    for (Verb const &verb : Verbs()) {
        std::string const name = verb.name;
        text += "  " + name + std::string(widest - name.size() + 2, ' ') + verb.summary + "\n";
    }
    return text + "\n"
                  "  -h, --help   this text; 'zvi VERB -h' tells the options of a verb\n"
                  "  --version    the version of the program\n"
                  "\n"
                  "Exit status: 0 done; 1 the input cannot be read or used; 2 wrong usage; 3 done, but --strict found\n"
                  "something left over; 4 a fault of the program.\n";
}

[[noreturn]] void RefuseWord(std::string const &word) {
    std::vector<std::string> known;
    if (word.starts_with("-")) {
        known = {"--help", "--version"};
    } else {
        for (Verb const &verb : Verbs())
            known.emplace_back(verb.name);
    }
    throw UsageError(std::string(word.starts_with("-") ? "unknown option '" : "unknown verb '") + word + "'; " +
                     DidYouMean(word, known, "'zvi -h' lists the verbs"));
}

/// A drawing without a verb in front of it means its domains.
bool IsDrawing(std::string const &word) {
    std::string const name = Lowered(word);
    return name.ends_with(".dxf") || name.ends_with(".curves");
}

int Dispatch(std::vector<std::string> const &arguments, Console &console) {
    if (arguments.empty()) {
        console.err << HelpText();
        return kExitBadUsage;
    }
    std::string const &word = arguments.front();
    if (word == "-h" || word == "--help")
        return WriteResult(console, HelpText());
    if (word == "--version")
        return WriteResult(console, std::string("zvi ") + kVersion + "\n");
    if (word == "help" && arguments.size() == 1)
        return WriteResult(console, HelpText());
    if (word == "help")
        return Dispatch({arguments[1], "--help"}, console);
    for (Verb const &verb : Verbs()) {
        if (word == verb.name)
            return verb.run({arguments.begin() + 1, arguments.end()}, console);
    }
    if (IsDrawing(word))
        return RunDomains(arguments, console);
    RefuseWord(word);
}

} // namespace

std::vector<Verb> const &Verbs() {
    static std::vector<Verb> const kVerbs = {
        {"domains", "the closed domains of a drawing (DXF or curve text)", RunDomains},
        {"contacts", "where bodies (STL) touch or nearly touch", RunContacts},
        {"eval", "the numbers of a typed text: expressions, positions, grids, lists", RunEval},
        {"convert", "a value from one unit label to another", RunConvert},
        {"units", "the kinds of quantity, their unit labels and factors", RunUnits},
        {"settings", "the settings in force, and changes to them", RunSettings},
        {"numbers", "number lists as compact text, and back", RunNumbers},
        {"draw-index", "a picture of the quadtree of a drawing's curves", RunDrawIndex},
        {"run", "a program, with its output line by line as the library hears it", RunRun},
        {"profile-report", "a profiler's PROF.csv as a sorted table with bars", RunProfileReport},
        {"messages", "the texts of message catalogues", RunMessages},
        {"text", "the encoding of a text file, its lines, and its text in another encoding", RunText},
    };
    return kVerbs;
}

int RunProgram(std::vector<std::string> const &arguments, Console &console) {
    try {
        return Dispatch(arguments, console);
    } catch (UsageError const &error) {
        TellFailure(console, "", 0, error.what());
        return kExitBadUsage;
    } catch (InputError const &error) {
        TellFailure(console, "", error.Line(), error.what());
        return kExitBadInput;
    } catch (std::bad_alloc const &) {
        TellFailure(console, "", 0, "the memory does not suffice; try a smaller drawing");
        return kExitOwnFault;
    } catch (std::exception const &error) {
        TellFailure(console, "", 0, std::string("fault of the program: ") + error.what() + "; please report it");
        return kExitOwnFault;
    }
}

int RunProgram(std::vector<std::string> const &arguments) {
    OpenStandardStreams();
    InstallSignalHandlers();
    Console console{std::cin, std::cout, std::cerr, IsTerminal(0), IsTerminal(1), IsTerminal(2)};
    return RunProgram(arguments, console);
}

} // namespace zvi::app
