#pragma once

#include "apps/zvi/common/typed/EvalMode.h"

#include "zvi/command/ParseFault.h"
#include "zvi/command/SymbolTable.h"
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

    /// After a failure: why, with places in `line`, what the parser read; of kind kNone when there is nothing in the
    /// text.
    lib::ParseFault fault;
    CString line;
    /// For each character of `line` the index in the typed text of the one that it comes from.
    std::vector<int> sources;
    /// The character of the typed text at which the reading stopped, which may be its end.
    int place = 0;
};

/// Reads `text`. An empty text, and numbers beyond their range (an integer beyond 32 bits, infinity, NaN), are failures
/// here. Unit systems outside 0 to 5 count as 0.
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

/// Most variables.
inline constexpr std::size_t kMostVariables = lib::SymbolTable::kMostVariables;

} // namespace zvi::app
