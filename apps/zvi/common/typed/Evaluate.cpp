#include "apps/zvi/common/typed/Evaluate.h"

#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/WideText.h"

#include "zvi/command/MParser.h"
#include "zvi/command/NormalizeCommandText.h"
#include "zvi/command/SymbolTable.h"
#include "zvi/units/MUnitCtrl.h"

#include <algorithm>

namespace zvi::app {

namespace {

/// A parser that keeps the standard error stream quiet: what is wrong is told from its fault.
class QuietParser : public lib::Parser {
protected:
    void yyerror(char const *) override {}
};

/// The built-in functions, or else the constants.
std::vector<std::string> BuiltInNames(bool functions) {
    lib::SymbolTable const table;
    std::vector<std::string> names;
    for (int i = 0; i < table.GetSymbolCount(); ++i) {
        if ((table.GetSymbol(i).function != nullptr) == functions)
            names.emplace_back(table.GetSymbol(i).name);
    }
    return names;
}

std::vector<double> Taken(CArray<int> const &list) {
    return {list.GetData(), list.GetData() + list.GetSize()};
}

void TakeList(QuietParser &parser, EvalOutcome &outcome) {
    CArray<double> const &list = parser.GetGridArgList();
    outcome.groups.emplace_back(list.GetData(), list.GetData() + list.GetSize());
}

bool ReadOneNumber(QuietParser &parser, CString const &text, EvalOutcome &outcome) {
    double value = 0.0;
    bool const read = parser.ParsingNumberArg(text) && parser.GetNumberData(value);
    outcome.groups.push_back({value});
    return read;
}

bool ReadInteger(QuietParser &parser, CString const &text, EvalOutcome &outcome) {
    int value = 0;
    bool const read = parser.ParsingINumberArg(text) && parser.GetINumberData(value);
    outcome.groups.push_back({double(value)});
    return read;
}

bool ReadPosition(QuietParser &parser, CString const &text, EvalOutcome &outcome) {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    bool const read = parser.ParsingPositionNOp(text, x, y, z, outcome.opCode);
    outcome.groups.push_back({x, y, z});
    return read;
}

bool ReadPoints(QuietParser &parser, CString const &text, EvalOutcome &outcome) {
    CArray<double> coordinates;
    bool const read = parser.ParsingPositionXYZList(text, coordinates);
    for (int i = 0; i + 2 < coordinates.GetSize(); i += 3) {
        double const *const point = coordinates.GetData() + i;
        outcome.groups.emplace_back(point, point + 3);
    }
    return read;
}

bool ReadAs(EvalMode mode, QuietParser &parser, CString const &text, EvalOutcome &outcome) {
    CArray<int> list;
    bool read = false;
    switch (mode) {
    case EvalMode::kNumber:
        return ReadOneNumber(parser, text, outcome);
    case EvalMode::kInteger:
        return ReadInteger(parser, text, outcome);
    case EvalMode::kPosition:
        return ReadPosition(parser, text, outcome);
    case EvalMode::kPoints:
        return ReadPoints(parser, text, outcome);
    case EvalMode::kNodes:
        read = parser.ParsingNodeList(text, list);
        outcome.groups.push_back(Taken(list));
        return read;
    case EvalMode::kList:
        read = parser.ParsingListByTo(text, list);
        outcome.groups.push_back(Taken(list));
        return read;
    case EvalMode::kTwo:
        read = parser.Parsing2NumberArg(text);
        break;
    case EvalMode::kGridAbs:
        read = parser.ParsingGridDefineAbs(text);
        break;
    case EvalMode::kGridRel:
        read = parser.ParsingGridDefineRel(text);
        break;
    case EvalMode::kGridEq:
        read = parser.ParsingEQGridDefine(text);
        break;
    }
    TakeList(parser, outcome);
    return read;
}

/// Traces the place of a failure back to the typed text, over `unitSources` if units were rewritten on the way.
void TraceFailure(lib::Parser const &parser, CString const &read, CString const &typed,
                  std::vector<int> const *unitSources, EvalOutcome &outcome) {
    bool const isOverflow = parser.GetFault().kind == lib::ParseFaultKind::kNone;
    outcome.fault = isOverflow ? parser.GetOverflow() : parser.GetFault();
    outcome.line = lib::NormalizeCommandText(read, outcome.sources);
    if (unitSources) {
        for (int &source : outcome.sources)
            source = (*unitSources)[static_cast<std::size_t>(source)];
    }
    int const stop = outcome.fault.stop;
    outcome.place =
        stop < outcome.line.GetLength() ? outcome.sources[static_cast<std::size_t>(stop)] : typed.GetLength();
}

bool IsWithinRange(lib::Parser const &parser) {
    return parser.GetOverflow().kind == lib::ParseFaultKind::kNone;
}

bool IsName(std::string_view name) {
    return !name.empty() && IsLetter(name[0]) &&
           std::all_of(name.begin(), name.end(), [](char c) { return IsNameChar(c); });
}

bool HoldsNoCase(std::vector<std::string> const &names, std::string_view name) {
    return std::any_of(names.begin(), names.end(), [&](std::string const &other) { return SameNoCase(name, other); });
}

} // namespace

bool KnowsUnits(EvalMode mode) {
    return ReadsOneExpression(mode);
}

EvalOutcome Evaluate(CString const &text, EvalSettings const &settings) {
    QuietParser parser;
    for (EvalVariable const &variable : settings.variables) {
        std::string name = variable.name;
        parser.AddDoubleVar(name.data(), variable.value);
    }
    EvalOutcome outcome;
    CString read = text;
    std::vector<int> unitSources;
    bool const hasUnits = settings.unitSystem && KnowsUnits(settings.mode);
    if (hasUnits) {
        lib::MUnitCtrl units(nullptr);
        units.Initialize(*settings.unitSystem);
        read = lib::MParser().SetUnitArgTokenString(text, &units, unitSources);
    }
    // The library reads an empty text as 0 or as an empty list.
    CString blank = read;
    outcome.parsed = !blank.Trim().IsEmpty() && ReadAs(settings.mode, parser, read, outcome) && IsWithinRange(parser);
    if (!outcome.parsed) {
        outcome.groups.clear();
        TraceFailure(parser, read, text, hasUnits ? &unitSources : nullptr, outcome);
    }
    return outcome;
}

std::vector<std::string> const &BuiltInFunctions() {
    static std::vector<std::string> const kNames = BuiltInNames(true);
    return kNames;
}

std::vector<std::string> const &BuiltInConstants() {
    static std::vector<std::string> const kNames = BuiltInNames(false);
    return kNames;
}

std::string WhyNoVariableName(std::string const &name) {
    std::string const quoted = "'" + name + "'";
    if (!IsName(name))
        return quoted + " is no name; a name is a letter, then letters, digits and _";
    if (name.size() > lib::TagSymbolNode::kMostNameChars)
        return "a name has at most " + std::to_string(lib::TagSymbolNode::kMostNameChars) + " characters";
    if (HoldsNoCase(BuiltInFunctions(), name))
        return quoted + " is a function; take another name";
    if (HoldsNoCase(BuiltInConstants(), name))
        return quoted + " is 3.14159... and stays so; take another name";
    CString const wide = WideOf(name);
    CString upper = wide;
    upper.MakeUpper();
    if (lib::NormalizeCommandText(wide) != upper)
        return quoted + " cannot be a name: B and T stand for BY and TO wherever they are; take a name without them";
    lib::SymbolTable const table;
    if (table.FindReservedWord(Utf8Of(upper)))
        return quoted + " is a word of the language; take another name";
    return {};
}

bool SetVariable(std::vector<EvalVariable> &variables, std::string const &name, double value) {
    for (EvalVariable &variable : variables) {
        if (SameNoCase(variable.name, name)) {
            variable.value = value;
            return true;
        }
    }
    if (variables.size() >= kMostVariables)
        return false;
    variables.push_back({name, value});
    return true;
}

} // namespace zvi::app
