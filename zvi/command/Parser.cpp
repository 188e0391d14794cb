#include "zvi/command/Parser.h"

#include "zvi/command/CommandGrammarDetail.h"
#include "zvi/command/NormalizedLineDetail.h"

#include <algorithm>
#include <cassert>
#include <string>
#include <string_view>

namespace zvi::lib {

namespace {

/// Coordinates of a position.
constexpr int kCoordinates = 3;

/// Counts the places of a fault from `begin` on, in a line that ends at `end`.
void CountFrom(ParseFault &fault, int begin, int end) {
    if (fault.kind == ParseFaultKind::kNone)
        return;
    for (std::int32_t *const place : {&fault.begin, &fault.end, &fault.stop})
        *place = std::clamp(*place, begin, end) - begin;
}

} // namespace

Parser::Parser() : m_lexer(m_symbols) {}

Parser::~Parser() = default;

void Parser::ReportError(CString const &) {}

void Parser::Report(std::string_view text) {
    std::wstring const wide(text.begin(), text.end());
    ReportError(CString(std::wstring_view(wide)));
}

void Parser::SetPreModePosNOp(int mode) {
    m_positionInputMode = mode;
}

int Parser::_Parsing(CString const &text) {
    m_lexer.SetAllDoubles(m_allDoubles != 0);
    m_result.Clear();
    m_working.Clear();
    m_symbols.ClearNumbers();
    m_symbols.ClearStrings();
    if (!m_gridArguments.IsEmpty())
        m_gridArguments.RemoveAll();
    if (!m_tableStrings.IsEmpty())
        m_tableStrings.RemoveAll();
    m_fault = {};
    m_overflow = {};
    if (!m_lexer.Load(text.GetString(), text.GetLength())) {
        m_fault.kind = ParseFaultKind::kTooLong;
        Report(kAnyFaultText);
        return 0;
    }
    int const parsed = command::CommandGrammar(*this).Parse();
    CountFrom(m_overflow, 0, text.GetLength());
    if (!parsed)
        CountFrom(m_fault, 0, text.GetLength());
    return parsed;
}

/// The start word, a blank, and the normalised text.
int Parser::ParseAs(int startWord, CString const &text) {
    assert(startWord >= kTokenGetPosition && startWord <= kTokenArgTo);
    // The built-in reserved words are in the order of their tokens.
    std::string_view const word = m_symbols.GetReservedWord(startWord - kTokenGetPosition).text;
    CString const line = command::NormalizedLine(word, text);
    int const parsed = _Parsing(line);
    int const begin = static_cast<int>(word.size()) + 1;
    CountFrom(m_overflow, begin, line.GetLength());
    if (!parsed)
        CountFrom(m_fault, begin, line.GetLength());
    return parsed;
}

int Parser::ParseAsIntegers(int startWord, CString const &text) {
    m_allDoubles = 0;
    int const parsed = ParseAs(startWord, text);
    m_allDoubles = 1;
    return parsed;
}

int Parser::ParsingPositionArg(CString const &text) {
    return ParseAs(kTokenGetPosition, text);
}

int Parser::ParsingNumberArg(CString const &text) {
    return ParseAs(kTokenNumberInput, text);
}

int Parser::Parsing2NumberArg(CString const &text) {
    return ParseAs(kTokenGet2Number, text);
}

int Parser::ParsingINumberArg(CString const &text) {
    return ParseAsIntegers(kTokenINumberInput, text);
}

int Parser::ParsingGridDefineAbs(CString const &text) {
    SetAbsIteration();
    return ParseAsIntegers(kTokenGridInput, text);
}

int Parser::ParsingGridDefineRel(CString const &text) {
    SetRelIteration();
    return ParseAsIntegers(kTokenGridInput, text);
}

int Parser::ParsingEQGridDefine(CString const &text) {
    return ParseAsIntegers(kTokenEqGridInput, text);
}

int Parser::ParsingCommandLine(CString const &text) {
    return ParseAsIntegers(kTokenCommandLine, text);
}

int Parser::ParsingByTable(CString const &text, CArray<int> &table) {
    m_tableIntegers = table;
    m_tableStrings.RemoveAll();
    return ParseAs(kTokenRecordInput, text);
}

template <class Number>
int Parser::ParseIntegerList(int startWord, CString const &text, CArray<Number> &list) {
    if (!ParseAsIntegers(startWord, text) || m_result.IsComputed())
        return 0;
    list.RemoveAll();
    list.SetSize(m_result.GetCount());
    // The bits of a negative number are those of its value modulo 2^32.
    m_result.CopyIntegers(reinterpret_cast<std::int32_t *>(list.GetData()));
    return 1;
}

int Parser::ParsingNodeList(CString const &text, CArray<unsigned int> &list) {
    SetAbsIteration();
    return ParseIntegerList(kTokenNodeListInput, text, list);
}

int Parser::ParsingNodeList(CString const &text, CArray<int> &list) {
    SetAbsIteration();
    return ParseIntegerList(kTokenNodeListInput, text, list);
}

int Parser::ParsingListByTo(CString const &text, CArray<int> &list) {
    return ParseIntegerList(kTokenGetIntsByToList, text, list);
}

int Parser::ParsingPositionXYZList(CString const &text, CArray<double> &coordinates) {
    if (!ParseAs(kTokenGetPositionXyzList, text))
        return 0;
    coordinates.RemoveAll();
    if (!m_result.HoldsPositions())
        return 0;
    coordinates.SetSize(kCoordinates * m_result.GetCount());
    m_result.CopyPositions(coordinates.GetData());
    return 1;
}

int Parser::ParsingPositionNOp(CString const &text, double &x, double &y, double &z, unsigned int &op) {
    if (!ParseAs(kTokenGetPosition, text))
        return 0;
    op = m_result.GetOpCode();
    return m_result.ReadNumbers(x, y, z);
}

int Parser::GetPositionData(double &x, double &y, double &z) {
    return m_result.ReadNumbers(x, y, z);
}

int Parser::Get2NumberData(double &a, double &b) {
    return m_result.ReadNumbers(a, b);
}

int Parser::GetNumberData(double &value) {
    return m_result.ReadNumber(value);
}

int Parser::GetINumberData(int &value) {
    return m_result.ReadInteger(value);
}

int Parser::AddDoubleVar(char *name, double value) {
    if (!name || m_symbols.FindVariable(name))
        return 0;
    TagSymbolNode *const symbol = m_symbols.AddSymbol(name);
    if (!symbol)
        return 0;
    symbol->value = value;
    return 1;
}

CArray<double> &Parser::GetGridArgList() {
    GetGridArgList(m_gridArguments);
    return m_gridArguments;
}

void Parser::GetGridArgList(CArray<double> &list) const {
    list.RemoveAll();
    list.SetSize(m_result.GetCount());
    m_result.CopyDoubles(list.GetData());
}

// A program that takes the address of these finds them in the library also where they are imported.
constexpr std::int64_t Parser::kMostArguments;

} // namespace zvi::lib
