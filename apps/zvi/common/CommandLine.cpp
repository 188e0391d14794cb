#include "apps/zvi/common/CommandLine.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace zvi::app {

namespace {

[[noreturn]] void RefuseOption(CLI::App const &app, std::string const &name) {
    std::vector<std::string> names;
    for (CLI::Option const *option : app.get_options()) {
        for (std::string const &longName : option->get_lnames())
            names.push_back("--" + longName);
    }
    throw UsageError("unknown option '" + name + "'; " +
                     DidYouMean(name, names, "'" + app.get_name() + " -h' lists the options"));
}

std::string NameIn(std::string const &argument) {
    return argument.substr(0, argument.find('='));
}

/// Parts the arguments into words and options, and puts each option together with its value.
class Arguments {
public:
    Arguments(CLI::App const &verb, CommandLineForm const &wanted) : m_app(verb), m_form(wanted) {}

    void Read(std::vector<std::string> const &arguments) {
        for (auto at = arguments.begin(); at != arguments.end(); ++at) {
            if (*at == "--") {
                words.insert(words.end(), at + 1, arguments.end());
                return;
            }
            if (m_form.optionsComeFirst && !at->starts_with("-")) {
                words.insert(words.end(), at, arguments.end());
                return;
            }
            if (*at == "-h")
                options.push_back(*at);
            else if (at->starts_with("--"))
                at = ReadOption(at, arguments.end());
            else if (!m_form.takesMinusWords && at->size() > 1 && at->starts_with("-"))
                RefuseOption(m_app, NameIn(*at));
            else
                words.push_back(*at);
        }
    }

    std::vector<std::string> words;
    std::vector<std::string> options;

private:
    using Place = std::vector<std::string>::const_iterator;

    /// Takes the option at `at`, and returns the last place that it takes up.
    Place ReadOption(Place at, Place end) {
        std::string const name = NameIn(*at);
        CLI::Option const *const option = m_app.get_option_no_throw(name);
        if (!option)
            RefuseOption(m_app, name);
        bool const hasValue = name.size() < at->size();
        if (option->get_items_expected_min() == 0) {
            if (hasValue)
                throw UsageError(name + " takes no value");
            options.push_back(name);
            return at;
        }
        bool const isAgain = std::find(m_given.begin(), m_given.end(), option) != m_given.end();
        if (isAgain && option->get_multi_option_policy() == CLI::MultiOptionPolicy::Throw)
            throw UsageError(name + " is given more than once; give it once");
        m_given.push_back(option);
        // An option in the place of the value is a value that was forgotten.
        if (!hasValue && (at + 1 == end || IsOption(at[1])))
            throw UsageError(name + " needs a value; write " + name + " " + option->get_type_name());
        std::string const value = hasValue ? at->substr(name.size() + 1) : *++at;
        // With "=", a value that begins with a minus is no option; an empty one is none at all.
        if (value.empty())
            options.insert(options.end(), {name, value});
        else
            options.push_back(name + "=" + value);
        return at;
    }

    bool IsOption(std::string const &argument) const {
        return argument == "-h" || (argument.starts_with("--") && m_app.get_option_no_throw(NameIn(argument)));
    }

    CLI::App const &m_app;
    CommandLineForm const &m_form;
    std::vector<CLI::Option const *> m_given; ///< those that hold a value
};

} // namespace

struct CommandLine::Grammar {
    explicit Grammar(std::string const &description) : app(description) {}

    template <typename Value>
    CLI::Option *Add(std::string const &name, Value &value, std::string const &valueName,
                     std::string const &description) {
        return app.add_option(name, value, description)->type_name(valueName);
    }

    CLI::App app;
    std::vector<std::string> words; ///< none: they do not come here
};

CommandLine::CommandLine(std::string const &verb, std::string const &description)
    : m_grammar(std::make_unique<Grammar>(description)) {
    m_grammar->app.name(verb);
    m_grammar->app.set_help_flag("-h,--help", "This text");
}

CommandLine::~CommandLine() = default;

void CommandLine::AddWord(std::string const &name, std::string const &description) {
    m_grammar->Add(name, m_grammar->words, "", description)->expected(1);
}

void CommandLine::AddWords(std::string const &name, std::string const &description) {
    m_grammar->Add(name, m_grammar->words, "", description);
}

void CommandLine::AddFlag(std::string const &name, bool &isGiven, std::string const &description) {
    m_grammar->app.add_flag(name, isGiven, description);
}

void CommandLine::AddOption(std::string const &name, std::string &value, std::string const &valueName,
                            std::string const &description) {
    m_grammar->Add(name, value, valueName, description);
}

void CommandLine::AddOption(std::string const &name, std::optional<std::string> &value, std::string const &valueName,
                            std::string const &description) {
    m_grammar->Add(name, value, valueName, description);
}

void CommandLine::AddNumber(std::string const &name, std::optional<double> &value, double most,
                            std::string const &valueName, std::string const &description) {
    m_grammar->Add(name, value, valueName, description)->check(CLI::Range(0.0, most).description(""));
}

void CommandLine::AddList(std::string const &name, std::vector<std::string> &values, std::string const &valueName,
                          std::string const &description) {
    m_grammar->Add(name, values, valueName, description)
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false);
}

ParsedWords CommandLine::Parse(std::vector<std::string> const &arguments, CommandLineForm const &form) {
    CLI::App &app = m_grammar->app;
    Arguments read(app, form);
    read.Read(arguments);
    std::reverse(read.options.begin(), read.options.end());
    try {
        app.parse(std::move(read.options));
    } catch (CLI::CallForHelp const &) {
        return {{}, form.examples + "\n" + std::string(Trimmed(app.help())) + "\n\n" + form.footer};
    } catch (CLI::ParseError const &error) {
        throw UsageError(std::string(error.what()) + "; see '" + app.get_name() + " -h'");
    }
    return {std::move(read.words), {}};
}

} // namespace zvi::app
