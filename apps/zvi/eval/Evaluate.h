#pragma once

#include "apps/zvi/eval/EvalMode.h"

#include "zvi/core/CString.h"

#include <optional>
#include <string>
#include <vector>

namespace zvi::app {

struct EvalVariable {
    std::string name;
    double value;
};

/// How texts are read.
struct EvalSettings {
    EvalMode mode = EvalMode::kNumber;
    /// With a unit system, 0 to 5, numbers may bear a length unit, in the modes number and integer; the result is
    /// in the length unit of that system.
    std::optional<int> unitSystem;
    std::vector<EvalVariable> variables;
};

/// What came of a text.
struct EvalOutcome {
    bool parsed = false;
    /// The numbers: one group, but in the mode points a group of three for each point.
    std::vector<std::vector<double>> groups;
    unsigned int opCode = 0; ///< of a position: 1 relative, 2 relative polar, 3 absolute, 4 and 5 as 1 and 2 after "@@"

    /// After a failure: what the parser said, in its own words, and whether it met a token that it did not expect.
    std::vector<std::string> messages;
    bool unexpectedToken = false;
    /// What it read, and for each of those characters the index in the typed text of the one that it comes from.
    CString line;
    std::vector<int> sources;
    /// Where it gave up, as an index into `line`, which may be its end.
    int at = 0;
    /// The same place in the typed text.
    int place = 0;
};

/// Reads `text`. Unit systems outside 0 to 5 count as 0.
EvalOutcome Evaluate(CString const &text, EvalSettings const &settings);

/// Whether the mode can read length units.
bool KnowsUnits(EvalMode mode);

/// The names that every text may use: functions, and constants.
std::vector<std::string> const &BuiltInFunctions();
std::vector<std::string> const &BuiltInConstants();

/// Why no variable can bear this name, and what to do; empty when one can.
std::string WhyNoVariableName(std::string const &name);

/// Puts a variable in place of one of the same name, or behind the others; false when there are as many as may be.
bool SetVariable(std::vector<EvalVariable> &variables, std::string const &name, double value);

/// Most variables: what the functions and constants leave of the symbols that the language holds.
inline constexpr std::size_t kMostVariables = 183;

} // namespace zvi::app
