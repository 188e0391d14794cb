#include "apps/zvi/common/typed/EvalMode.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"

#include <vector>

namespace zvi::app {

namespace {

/// In the order of EvalMode.
constexpr EvalModeEntry kModes[] = {
    {EvalMode::kNumber, "number", "one number", "one number"},
    {EvalMode::kInteger, "integer", "one integer", "one integer; a fraction is cut off"},
    {EvalMode::kTwo, "two", "one or two numbers", "up to two numbers"},
    {EvalMode::kPosition, "position", "one position", "x, y, z; @ in front: relative; @length<degrees: polar"},
    {EvalMode::kGridAbs, "grid-abs", "any numbers", "numbers; 3@2 stands for 2 4 6"},
    {EvalMode::kGridRel, "grid-rel", "any numbers", "numbers; 3@2 stands for 2 2 2"},
    {EvalMode::kGridEq, "grid-eq", "one or two numbers", "one or two numbers; one stands for both"},
    {EvalMode::kNodes, "nodes", "integers and ranges", "integers and ranges, such as 1to9by2 20"},
    {EvalMode::kPoints, "points", "points in brackets", "positions in brackets: [1,2,3] [4,5]"},
    {EvalMode::kList, "list", "integers and ranges", "integers and ranges, as nodes"},
};

} // namespace

std::span<EvalModeEntry const> EvalModes() {
    return kModes;
}

EvalModeEntry const &EntryOf(EvalMode mode) {
    return kModes[static_cast<std::size_t>(mode)];
}

EvalMode EvalModeNamed(std::string const &name) {
    std::vector<std::string> names;
    for (EvalModeEntry const &entry : kModes) {
        if (name == entry.name)
            return entry.mode;
        names.emplace_back(entry.name);
    }
    std::string list;
    for (std::string const &known : names)
        list += (list.empty() ? "" : ", ") + known;
    throw UsageError("unknown mode '" + name + "'; " + DidYouMean(name, names, "the modes are " + list));
}

bool ReadsDoubles(EvalMode mode) {
    return mode == EvalMode::kNumber || mode == EvalMode::kTwo || mode == EvalMode::kPosition ||
           mode == EvalMode::kPoints;
}

bool ReadsIntegers(EvalMode mode) {
    return mode == EvalMode::kNodes || mode == EvalMode::kList;
}

bool ReadsOneExpression(EvalMode mode) {
    return mode == EvalMode::kNumber || mode == EvalMode::kInteger;
}

} // namespace zvi::app
