#include "apps/zvi/common/CommandLine.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"

#include <algorithm>

namespace zvi::app {

namespace {

[[noreturn]] void RefuseOption(CLI::App const &app, std::string const &name) {
    std::vector<std::string> names;
    for (CLI::Option const *option : app.get_options()) {
        for (std::string const &longName : option->get_lnames()) {
            names.push_back("--" + longName);
        }
    }
    std::string const nearest = NearestName(name, names);
    throw UsageError(
        "unknown option '" + name + "'; " +
        (nearest.empty() ? "'" + app.get_name() + " -h' lists the options" : "did you mean '" + nearest + "'?"));
}

/// Whether the option takes its value from the next argument.
bool NeedsNextArgument(CLI::App const &app, std::string const &argument) {
    std::string const name = argument.substr(0, argument.find('='));
    CLI::Option const *const option = app.get_option_no_throw(name);
    if (!option) {
        RefuseOption(app, name);
    }
    return name.size() == argument.size() && option->get_items_expected_min() > 0;
}

} // namespace

ParsedWords ParseCommandLine(CLI::App &app, std::vector<std::string> const &arguments) {
    ParsedWords parsed;
    std::vector<std::string> options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string const &argument = arguments[i];
        if (argument == "--") {
            parsed.words.insert(parsed.words.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                arguments.end());
            break;
        }
        if (argument == "-h") {
            options.push_back(argument);
        } else if (!argument.starts_with("--")) {
            parsed.words.push_back(argument);
        } else if (NeedsNextArgument(app, argument) && i + 1 < arguments.size()) {
            // With "=", a value that begins with a minus is no option; an empty one is none at all.
            std::string const &value = arguments[++i];
            if (value.empty()) {
                options.insert(options.end(), {argument, value});
            } else {
                options.push_back(argument + "=" + value);
            }
        } else {
            options.push_back(argument);
        }
    }
    std::reverse(options.begin(), options.end());
    try {
        app.parse(std::move(options));
    } catch (CLI::CallForHelp const &) {
        parsed.wantsHelp = true;
    } catch (CLI::ParseError const &error) {
        throw UsageError(std::string(error.what()) + "; see '" + app.get_name() + " -h'");
    }
    return parsed;
}

} // namespace zvi::app
