// Every reader of typed text on whatever the fuzzer makes up: modes, units, number lists, splitters.

#include "zvi/command/CStrParser.h"
#include "zvi/command/MArrayParser.h"
#include "zvi/command/MNumericOptimizer.h"
#include "zvi/command/MParser.h"
#include "zvi/command/MStringToken.h"
#include "zvi/units/MUnitCtrl.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace zvi;
using namespace zvi::lib;

namespace {

/// Longer lists are not printed as text: a million numbers are right, but slow under the sanitizers.
constexpr int kMostPrinted = 10000;

/// Keeps the standard error stream quiet.
class QuietParser : public Parser {
protected:
    void yyerror(char const *) override {}
};

/// Bytes as text: a byte of 0x80 and above takes the next one with it, so that any 16-bit unit can occur.
std::wstring TextOf(std::uint8_t const *data, std::size_t size) {
    std::wstring text;
    for (std::size_t i = 0; i < size; ++i) {
        unsigned unit = data[i];
        if (unit >= 0x80 && i + 1 < size)
            unit = (unit << 8) | data[++i];
        text.push_back(static_cast<wchar_t>(unit));
    }
    return text;
}

void ParseEveryWay(CString const &text) {
    QuietParser parser;
    double x = 0, y = 0, z = 0;
    unsigned int op = 0;
    CArray<int> list;
    CArray<double> numbers;
    parser._Parsing(text);
    parser.ParsingNumberArg(text);
    parser.GetNumberData(x);
    parser.Parsing2NumberArg(text);
    parser.ParsingINumberArg(text);
    parser.ParsingGridDefineAbs(text);
    parser.ParsingGridDefineRel(text);
    parser.GetGridArgList(numbers);
    parser.ParsingEQGridDefine(text);
    parser.ParsingCommandLine(text);
    if (parser.GetGridArgNum() < kMostPrinted)
        parser.GetCommandString();
    parser.ParsingByTable(text, list);
    parser.ParsingNodeList(text, list);
    parser.ParsingPositionXYZList(text, numbers);
    for (int mode = 0; mode < 4; ++mode) {
        parser.SetPreModePosNOp(mode);
        parser.ParsingPositionNOp(text, x, y, z, op);
    }
}

void SplitEveryWay(std::wstring const &text) {
    MNumericOptimizer optimizer;
    MArray<long> listed{-3, 1, 2, 3, 5, 8, 13};
    MArray<long> selected;
    optimizer.SelectNumByStrKeepSeq(listed, text.c_str(), selected, 1);
    MArray<int> ints;
    MArray<double> doubles;
    CStringArray strings;
    MArrayParser::ParseArray_Int(text.c_str(), L',', ints);
    MArrayParser::ParseArray_Double(text.c_str(), L',', doubles);
    MArrayParser::ParseArray_String(text.c_str(), L',', strings, 0);
    MStringToken const tokens(text.c_str(), L" ,;");
    CString const last = tokens.GetCstring(tokens.Size() - 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    static MUnitCtrl units(nullptr);
    static bool const ready = (units.Initialize(1), true);
    std::wstring const text = TextOf(data, size);
    CString const typed(text.c_str());
    ParseEveryWay(typed);
    MParser withUnits;
    CString const converted = ready ? withUnits.SetUnitArgTokenString(typed, CString(), &units) : typed;
    ParseEveryWay(converted);
    SplitEveryWay(text);
    return 0;
}
