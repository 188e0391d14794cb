#pragma once

#include <span>
#include <string>
#include <string_view>

namespace zvi::app {

/// What a typed text is read as.
enum class EvalMode { kNumber, kInteger, kTwo, kPosition, kGridAbs, kGridRel, kGridEq, kNodes, kPoints, kList };

struct EvalModeEntry {
    EvalMode mode;
    char const *name;    ///< as in `--mode NAME`
    char const *takes;   ///< what a text of the mode is, in few words
    char const *summary; ///< one line for people
};

/// Every mode, in the order in which help lists them.
std::span<EvalModeEntry const> EvalModes();

EvalModeEntry const &EntryOf(EvalMode mode);

/// The mode of this name; throws UsageError, with the nearest name, when there is none.
EvalMode EvalModeNamed(std::string const &name);

/// Modes that read every number as a double and one or more items, and modes whose items are integers.
bool ReadsDoubles(EvalMode mode);
bool ReadsIntegers(EvalMode mode);
/// Modes that read one expression instead of a list.
bool ReadsOneExpression(EvalMode mode);

} // namespace zvi::app
