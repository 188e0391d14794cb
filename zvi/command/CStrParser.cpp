#include "zvi/command/CStrParser.h"

#include "zvi/command/MyParser.h"
#include "zvi/core/CStringArray.h"

#include <iterator>
#include <string>
#include <unordered_set>

namespace zvi::lib {

namespace {

/// Names and values of the variables, in step.
CStringArray &VariableNames() {
    static CStringArray names;
    return names;
}

CArray<double> &VariableValues() {
    static CArray<double> values;
    return values;
}

/// Hands all variables to a parser or to a handle of one.
template <class AnyParser>
void AddVariablesTo(AnyParser &parser) {
    for (int i = 0; i < VariableNames().GetSize(); ++i) {
        CString const &wide = VariableNames()[i];
        std::string name;
        // A character outside ASCII makes a name that nobody can type.
        for (int k = 0; k < wide.GetLength(); ++k)
            name.push_back(wide.GetAt(k) < 0x80 ? static_cast<char>(wide.GetAt(k)) : '?');
        parser.AddDoubleVar(name.data(), VariableValues()[i]);
    }
}

/// Forms of a unique name by mode.
constexpr wchar_t const *kUniqueNameForms[] = {L"%s-(Copy%d)", L"%s-%d", L"%s (%d)"};
/// The last number that is tried for a unique name.
constexpr int kLastUniqueNumber = 101;

} // namespace

int CStrParser::GetNumberOfTimes(CString const &text, int &value) {
    Parser parser;
    int const parsed = parser.ParsingINumberArg(text);
    if (parsed)
        parser.GetINumberData(value);
    else
        value = 0;
    return parsed;
}

int CStrParser::GetEQDistance(CString const &text, double &x, double &y, double &z) {
    Parser parser;
    int const parsed = parser.ParsingPositionArg(text);
    if (parsed)
        parser.GetPositionData(x, y, z);
    else
        x = y = z = 0.0;
    return parsed;
}

int CStrParser::GetDirectionVector(CString const &text, double &x, double &y, double &z) {
    return GetEQDistance(text, x, y, z);
}

int CStrParser::GetUEDistance(CString const &text, CArray<double> &distances) {
    Parser parser;
    int const parsed = parser.ParsingGridDefineRel(text);
    if (parsed)
        parser.GetGridArgList(distances);
    return parsed;
}

int CStrParser::GetPosition(CString const &text, double &x, double &y, double &z) {
    Parser parser;
    int const parsed = parser.ParsingPositionArg(text);
    if (parsed)
        parser.GetPositionData(x, y, z);
    return parsed;
}

int CStrParser::Get2FloatNumber(CString const &text, double &a, double &b) {
    Parser parser;
    AddVariablesTo(parser);
    int const parsed = parser.Parsing2NumberArg(text);
    if (parsed)
        parser.Get2NumberData(a, b);
    return parsed;
}

int CStrParser::GetFloatNumber(CString const &text, double &value) {
    Parser parser;
    AddVariablesTo(parser);
    int const parsed = parser.ParsingNumberArg(text);
    if (parsed)
        parser.GetNumberData(value);
    return parsed;
}

int CStrParser::GetINumber(CString const &text, int &value) {
    Parser parser;
    int const parsed = parser.ParsingINumberArg(text);
    if (parsed)
        parser.GetINumberData(value);
    return parsed;
}

int CStrParser::GetNodeList(CString const &text, CArray<int> &list) {
    Parser parser;
    return parser.ParsingNodeList(text, list);
}

int CStrParser::GetNodeList(CString const &text, CArray<unsigned int> &list) {
    Parser parser;
    return parser.ParsingNodeList(text, list);
}

int CStrParser::ParsingPositionXYZList(CString const &text, CArray<double> &coordinates) {
    Parser parser;
    AddVariablesTo(parser);
    return parser.ParsingPositionXYZList(text, coordinates);
}

int CStrParser::ParsingPositionNOp(CString const &text, double &x, double &y, double &z, unsigned int &op, int mode) {
    Parser parser;
    AddVariablesTo(parser);
    parser.SetPreModePosNOp(mode);
    return parser.ParsingPositionNOp(text, x, y, z, op);
}

int CStrParser::ParsingCommandLine(CString const &text) {
    Parser parser;
    return parser.ParsingCommandLine(text);
}

int CStrParser::ParsingListByTo(CString const &text, CArray<int> &list) {
    Parser parser;
    return parser.ParsingListByTo(text, list);
}

void CStrParser::ClearVariables() {
    VariableNames().RemoveAll();
    VariableValues().RemoveAll();
}

int CStrParser::AddDoubleVar(wchar_t const *name, double value) {
    VariableNames().Add(CString(name));
    VariableValues().Add(value);
    return 1;
}

void CStrParser::AddAllVariables(MyParser *parser) {
    if (parser)
        AddVariablesTo(*parser);
}

CString CStrParser::ConvtDistArr2DistStr(CArray<double> const &distances) {
    CString text;
    for (int begin = 0; begin < distances.GetSize();) {
        int end = begin + 1;
        while (end < distances.GetSize() && distances[end] == distances[begin])
            ++end;
        wchar_t const *const separator = text.IsEmpty() ? L"" : L", ";
        if (end - begin == 1)
            text.AppendFormat(L"%s%.9g", separator, distances[begin]);
        else
            text.AppendFormat(L"%s%d@%.9g", separator, end - begin, distances[begin]);
        begin = end;
    }
    return text;
}

int CStrParser::MakeUniqueName(MArray<CString> const &names, CString const &base, CString &out, int mode) {
    if (base.IsEmpty())
        return 0;
    std::unordered_set<CString> const taken(names.begin(), names.end());
    // `out` may be `base`.
    CString const plain = base; // NOLINT(performance-unnecessary-copy-initialization)
    if (!taken.contains(plain)) {
        out = plain;
        return 1;
    }
    if (mode < 0 || mode >= static_cast<int>(std::size(kUniqueNameForms)))
        return 0;
    for (int number = 1; number <= kLastUniqueNumber; ++number) {
        out.Format(kUniqueNameForms[mode], plain.GetString(), number);
        if (!taken.contains(out))
            return 1;
    }
    return 0;
}

} // namespace zvi::lib
