#include "zvi/command/Parser.h"
#include "zvi/command/NormalizeCommandText.h"
#include "zvi/core/Utf8.h"

#include "tests/Rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <vector>

namespace zvi::lib::test {

namespace {

/// Hears every message, and keeps the standard error stream quiet.
class ListeningParser : public Parser {
public:
    void ReportError(CString const &text) override { heard.push_back(text.GetString()); }

    std::vector<std::wstring> heard;
    int unexpected = 0;

protected:
    void yyerror(char const *text) override { unexpected += std::string(text) == "syntax error"; }
};

/// Puts a line of its own in the place of what it is told to parse, so that every start word meets integer literals.
class SubstitutingParser : public ListeningParser {
public:
    int ParseIntegers(wchar_t const *substitute) {
        line = substitute;
        return ParsingCommandLine(L"");
    }
    int _Parsing(CString const &) override { return Parser::_Parsing(line); }

    CString line;
};

std::vector<double> Numbers(Parser &parser) {
    CArray<double> list;
    parser.GetGridArgList(list);
    return {list.begin(), list.end()};
}

using Entry = int (Parser::*)(CString const &);

using Row = std::tuple<Entry, wchar_t const *, std::vector<double>>;

void Check(std::vector<Row> const &rows) {
    for (auto const &[entry, text, expected] : rows) {
        ListeningParser parser;
        EXPECT_EQ((parser.*entry)(text), 1) << text;
        std::vector<double> const got = Numbers(parser);
        ASSERT_EQ(got.size(), expected.size()) << text;
        for (std::size_t i = 0; i < got.size(); ++i)
            EXPECT_DOUBLE_EQ(got[i], expected[i]) << text;
    }
}

/// Each row is a text and the number that it is.
void CheckNumbers(Entry entry, std::string const &rows) {
    for (auto const &[text, value] : Rows<std::string, double>(rows)) {
        ListeningParser parser;
        EXPECT_EQ((parser.*entry)(WideOf(text)), 1) << text;
        ASSERT_EQ(parser.GetGridArgNum(), 1) << text;
        EXPECT_DOUBLE_EQ(Numbers(parser)[0], value) << text;
    }
}

void Refuse(Entry entry, std::vector<wchar_t const *> const &texts) {
    for (wchar_t const *text : texts)
        EXPECT_EQ((ListeningParser().*entry)(text), 0) << text;
}

constexpr Entry kNumber = &Parser::ParsingNumberArg;
constexpr Entry kInteger = &Parser::ParsingINumberArg;
constexpr Entry kTwo = &Parser::Parsing2NumberArg;
constexpr Entry kGridAbs = &Parser::ParsingGridDefineAbs;
constexpr Entry kGridRel = &Parser::ParsingGridDefineRel;
constexpr Entry kGridEq = &Parser::ParsingEQGridDefine;
constexpr Entry kPosition = &Parser::ParsingPositionArg;

} // namespace

TEST(Parser, ComputesExpressions) {
    constexpr double kPi = 3.141592653589793;
    CheckNumbers(kNumber,
                 "1+2*3 7; 7/2 3.5; 10-4-3 3; 2*-3 -6; --2 2; -(2)*3 -6; (((4))) 4; 1e3+.5+2. 1002.5; 1E-2 0.01;"
                 "sqrt(4)+3 5; SQRT(abs(-4)) 2; log(1000)+ln(exp(2)) 5; sinh(0)+cosh(0) 1");
    Check({
        {kNumber, L"", {0}},
        {kNumber, L"pi+Phi", {2 * kPi}},
        {kNumber, L"sin(30)", {std::sin(30 * 0.01745329238474369)}},
        {kNumber, L"atan(1)", {std::atan(1.0) * 57.295780181884766}},
        {kNumber, L"deg(rad(90))", {90 * 0.01745329238474369 * 57.295780181884766}},
        {kNumber, L"tan(270)", {std::tan(270 * 0.01745329238474369)}},
    });
    // Every literal is a double in this mode, so that the integer exponent of a power is missing.
    Refuse(kNumber, {L"1 + 2", L"1,2", L"(1", L"1)", L"(1,2)", L"7/0", L"x", L"2*", L"sin 30", L"1&2", L"tan(90)",
                     L"acos(1.5)", L"3@2", L"2^3"});
}

TEST(Parser, PowersNeedAnIntegerExponentThatIsNotZero) {
    // The last one is infinity times 0.
    CheckNumbers(kInteger, "2^3^2 64; -2^2 -4; 2^-1 1; (-3)^3 -27; 2^-1*3 3; 3*2^2 12; 1.5^2000000000*0 -2147483648");
    Check({
        // What no further factor changes keeps its magnitude, and its sign is that of the product.
        {kGridRel, L"(-1)^2147483647 (-1)^2147483646 (-9)^2147483647", {-1, 1, -INFINITY}},
        {kGridRel, L"(-0.9)^2147483647*1e300 (-0.4)^2147483647", {-25e-324 * 1e300, 0}},
    });
    Refuse(kInteger, {L"2^0", L"2^0.5", L"2^(4/2)", L"2^-1^2"});
}

TEST(Parser, IntegersWrapAndDoublesAreTruncated) {
    Check({{kInteger, L"", {0}}});
    CheckNumbers(kInteger, "7/2 3; -7/2 -3; 2147483647+1 -2147483648; 65536*65536 0; -(-2147483647-1) -2147483648;"
                           "99999999999 2147483647");
}

TEST(Parser, ReadsTwoNumbersAndGrids) {
    Check({
        {kTwo, L"", {0, 0}},
        {kTwo, L"5", {5, 0}},
        {kTwo, L"5 6", {5, 6}},
        {kGridEq, L"", {0, 0}},
        {kGridEq, L"4", {4, 4}},
        {kGridEq, L"4,5", {4, 5}},
        {kGridAbs, L"", {0}},
        {kGridAbs, L"3@2,5", {2, 4, 6, 5}},
        {kGridAbs, L"0@2", {2}},
        {kGridAbs, L"1,,3,", {1, 0, 3}},
        {kGridRel, L"3@2,5", {2, 2, 2, 5}},
        {kGridRel, L"(1+2)@1.5", {1.5, 1.5, 1.5}},
        {kGridRel, L"1,0@2", {1}},
        {kGridRel, L"1TO5BY2", {1, 3, 5}},
    });
    Refuse(kTwo, {L"5,6,7", L"5,NAME"});
    Refuse(kGridEq, {L"3@2", L"NAME"});
    Refuse(kGridRel, {L"3.0@2", L"2@3@4", L",3", L"NAME"});
}

TEST(Parser, ByToWalksDifferAtTheHeadOfAList) {
    struct ListRow {
        wchar_t const *text;
        std::vector<int> expected;
        int parsed = 1;
    };
    ListRow const rows[] = {
        {L"", {}},
        {L"1TO5", {1, 2, 3, 4, 5}},
        {L"1t9b2", {1, 3, 5, 7, 9}},
        {L"1to10by2+2", {1, 5, 9}},
        {L"5TO1BY-2", {5, 3, 1}},
        {L"7 1TO3", {7, 1, 2, 3}},
        {L"1to3by2.9", {1, 3}},
        {L"1+1 (3) -3", {2, 3, -3}},
        // A step that overshoots the bound by the wrap of 32 bits ends the walk.
        {L"1TO5BY-2000000000", {1, -1999999999}},
        {L"5TO1", {}, 0},
        {L"5TO5", {}, 0},
        {L"5TO5BY-1", {5}},
        {L"1,5TO4", {}, 0},
        {L"1,5TO5", {}, 0},
        {L"1TO5BY0", {}, 0},
        {L"1TO2000000000", {}, 0},
        {L"-3TO5", {}, 0},
        {L"(1)TO5", {}, 0},
        {L"1.0TO5", {}, 0},
        {L"1TO", {}, 0},
        {L"7/2", {}, 0},
        {L"3@2", {}, 0},
        {L"NAME", {}, 0},
    };
    for (ListRow const &row : rows) {
        ListeningParser parser;
        CArray<int> list{42};
        EXPECT_EQ(parser.ParsingNodeList(row.text, list), row.parsed) << row.text;
        std::vector<int> const kept{42};
        EXPECT_EQ(std::vector<int>(list.begin(), list.end()), row.parsed ? row.expected : kept) << row.text;

        CArray<unsigned int> unsignedList;
        EXPECT_EQ(parser.ParsingNodeList(row.text, unsignedList), row.parsed) << row.text;
        EXPECT_EQ(parser.ParsingListByTo(row.text, list), row.parsed) << row.text;
    }
}

TEST(Parser, ReadsPositions) {
    double const r = 10 * std::cos(45 * 0.01745329238474369);
    struct PositionRow {
        wchar_t const *text;
        int mode = 0;
        int parsed = 1;
        unsigned int op = 0;
        double x = 0, y = 0, z = 0;
    };
    PositionRow const rows[] = {
        {.text = L"", .op = 3},
        {.text = L"10 20", .op = 3, .x = 10, .y = 20},
        {.text = L"1,2,3", .op = 3, .x = 1, .y = 2, .z = 3},
        {.text = L"5", .op = 3, .x = 5},
        {.text = L"1,2", .mode = 1, .op = 1, .x = 1, .y = 2},
        {.text = L"@1,2,3", .op = 1, .x = 1, .y = 2, .z = 3},
        {.text = L"@@1,2", .op = 4, .x = 1, .y = 2},
        {.text = L"@10<45", .op = 2, .x = r, .y = r},
        {.text = L"@@10<45", .op = 5, .x = r, .y = r},
        {.text = L"10,45", .mode = 2, .op = 2, .x = r, .y = r},
        {.text = L"10", .mode = 2, .op = 2, .x = 10},
        {.text = L"", .mode = 2, .op = 3},
        {.text = L"1,2", .mode = 7, .op = 0},
        {.text = L"1,2,3", .mode = 2, .parsed = 0},
        {.text = L"1,2,3,4", .parsed = 0},
        {.text = L"@1,2,3,4", .parsed = 0},
        {.text = L"10<45", .parsed = 0},
        {.text = L"1,NAME", .parsed = 0},
        {.text = L"3@2", .parsed = 0},
    };
    for (PositionRow const &row : rows) {
        ListeningParser parser;
        parser.SetPreModePosNOp(row.mode);
        double x = -1;
        double y = -1;
        double z = -1;
        unsigned int op = 99;
        EXPECT_EQ(parser.ParsingPositionNOp(row.text, x, y, z, op), row.parsed) << row.text;
        if (!row.parsed)
            continue;
        EXPECT_EQ(op, row.op) << row.text;
        EXPECT_DOUBLE_EQ(x, row.x) << row.text;
        EXPECT_NEAR(y, row.y, 1e-6) << row.text; // the sine and cosine of 45 degrees differ in their last digits
        EXPECT_DOUBLE_EQ(z, row.z) << row.text;
    }
}

TEST(Parser, APositionOfNoCoordinatesGetsNone) {
    for (auto const &[mode, parsed, op] : Rows<int, int, unsigned>("0 1 3; 1 1 1; 2 0 0; 3 1 0")) {
        SubstitutingParser parser;
        parser.SetPreModePosNOp(mode);
        EXPECT_EQ(parser.ParseIntegers(L"__GET_POSITION__ 0@2"), parsed) << mode;
        EXPECT_EQ(parser.GetOpCode(), op) << mode;
        EXPECT_EQ(parser.GetGridArgNum(), 0) << mode;
    }
}

TEST(Parser, ReadsBracketedTriples) {
    using ListRow = std::tuple<wchar_t const *, int, std::vector<double>>;
    for (auto const &[text, parsed, expected] : std::initializer_list<ListRow>{
             {L"", 1, {}},
             {L"[1,2,3]", 1, {1, 2, 3}},
             {L"[1 2] [3]", 1, {1, 2, 0, 3, 0, 0}},
             {L"[1,2],[3,4,5],", 1, {1, 2, 0, 3, 4, 5}},
             {L"[1,2,3,4]", 0, {}},
             {L"[1,NAME]", 0, {}},
             {L"[1,2", 0, {}},
             {L"1,2", 0, {}},
             {L"[]", 0, {}},
             {L"[1],__AGR_ERROR__", 0, {}},
         }) {
        ListeningParser parser;
        CArray<double> list{42};
        EXPECT_EQ(parser.ParsingPositionXYZList(text, list), parsed) << text;
        std::vector<double> const kept{42};
        EXPECT_EQ(std::vector<double>(list.begin(), list.end()), parsed ? expected : kept) << text;
    }
}

TEST(Parser, TellsAFaultAsTextAndAsAValueWithItsPlace) {
    using enum ParseFaultKind;
    struct FaultRow {
        Entry entry;
        wchar_t const *text;
        ParseFaultKind kind;
        wchar_t const *culprit; ///< what the fault points at, in the normalised text
        int stop = 0;
        std::vector<std::wstring> heard = {L"Syntax Error"};
    };
    auto const said = [](wchar_t const *text) { return std::vector<std::wstring>{text, L"Syntax Error"}; };
    FaultRow const rows[] = {
        {kTwo, L"1,2,3", kExtraArgument, L"", 5, said(L"extra arguement!")},
        {kPosition, L"1,2,3,4", kExtraArgument, L"", 7, said(L"extra arguement!")},
        {kPosition, L"@1,2,3,4", kExtraCoordinate, L"", 8},
        {kGridRel, L"2.5@1", kRepeatCount, L"", 5, said(L"Syntax error : Iteration Number must be integer !")},
        {kGridRel, L"2@1@", kRepeatTwice, L"", 3, said(L"Syntax error : Iteration Define Error !")},
        {kNumber, L"1+asin(2)", kInverseSine, L"ASIN(2)", 9, said(L"asin(x) , acos(x) ==> ( -1 <= x <= 1 )")},
        {kNumber, L"tan(90)+asin(2)", kRightAngleTangent, L"TAN(90)", 7, said(L"Function error tan(90)")},
        {kNumber, L"1/0", kZeroDivisor, L"0", 3},
        {kNumber, L"8/4/(1-1)*2", kZeroDivisor, L"(1-1)", 9},
        {kNumber, L"1+*2", kUnexpectedToken, L"*", 2},
        {kNumber, L"(1+2", kUnexpectedToken, L"", 4},
        {kNumber, L"2+foo3", kUnexpectedToken, L"FOO3", 2},
        // Operators before the stray token are computed first.
        {kNumber, L"1/0&", kZeroDivisor, L"0", 3},
        {kInteger, L"3*2^0.5", kExponent, L"0.5", 7},
        {kGridRel, L"1to2000000000", kTooManyArguments, L"", 23},
        {kGridRel, L"1.5to3", kRangeEnds, L"", 16},
        {kGridRel, L"3to1", kRangeStep, L"", 14},
        {kGridEq, L"NAME", kNoNumber, L"", 4},
        {kPosition, L"1,__AGR_ERROR__", kErrorWord, L"", 2},
        {kPosition, L"1,NAME", kNoCoordinate, L"", 6, {}},
        {kNumber, L"1+2", kNone, L"", 0, {}},
    };
    for (FaultRow const &row : rows) {
        ListeningParser parser;
        EXPECT_EQ((parser.*row.entry)(row.text), row.kind == kNone) << row.text;
        EXPECT_EQ(parser.heard, row.heard) << row.text;
        ParseFault const &fault = parser.GetFault();
        EXPECT_EQ(fault.kind, row.kind) << row.text;
        EXPECT_EQ(parser.unexpected, fault.kind == kUnexpectedToken) << row.text;
        CString const line = NormalizeCommandText(row.text);
        EXPECT_STREQ(line.Mid(fault.begin, fault.end - fault.begin).GetString(), row.culprit) << row.text;
        EXPECT_EQ(fault.stop, row.stop) << row.text;
    }
}

TEST(Parser, CommandLinesTakeAnyArguments) {
    ListeningParser parser;
    EXPECT_EQ(parser.ParsingCommandLine(L"MOVE 1 2.5 3@1"), 1);
    EXPECT_STREQ(parser.GetCommandString(), "MOVE,1,2.500000,1.000000,1.000000,1.000000");
    EXPECT_EQ(parser.GetFirstArguement()->kind, kArgString);
    EXPECT_EQ(parser.GetNextArguement()->kind, kArgInteger);
    // Results and angles are read and dropped.
    for (wchar_t const *const text : {L"=1+2", L"1<2<3", L"1<2,3", L""}) {
        EXPECT_EQ(parser.ParsingCommandLine(text), 1) << text;
        EXPECT_EQ(parser.GetGridArgNum(), 0) << text;
    }
    EXPECT_EQ(parser.ParsingCommandLine(L"1<2"), 0);

    CArray<int> table{1, 2};
    EXPECT_EQ(parser.ParsingByTable(L"REC(1),2", table), 1);
    EXPECT_EQ(parser.GetGridArgNum(), 0);
    // A text without a start word is an argument list that stays in the working list.
    EXPECT_EQ(parser._Parsing(L"1,__BLANK_ARG__"), 0);
    EXPECT_EQ(parser._Parsing(L"__BLANK_ARG__,1"), 1);
    EXPECT_EQ(parser.GetGridArgNum(), 0);
    EXPECT_EQ(parser._Parsing(L""), 0);
}

TEST(Parser, KnowsVariablesUntilItsLimit) {
    ListeningParser parser;
    char name[] = "len";
    char function[] = "sin";
    EXPECT_EQ(parser.AddDoubleVar(name, 2.5), 1);
    EXPECT_EQ(parser.AddDoubleVar(name, 9), 0);
    EXPECT_EQ(parser.AddDoubleVar(function, 7), 1);
    double value = 0;
    EXPECT_EQ(parser.ParsingNumberArg(L"Len*2"), 1);
    EXPECT_EQ(parser.GetNumberData(value), 1);
    EXPECT_EQ(value, 5.0);
    EXPECT_EQ(parser.ParsingNumberArg(L"sin"), 0); // the function wins

    std::string const longName(104, 'x');
    EXPECT_EQ(parser.AddDoubleVar(std::string(longName).data(), 1), 0);
    int added = 2;
    for (int i = 0; i < 300; ++i) {
        std::string numbered("v");
        numbered += std::to_string(i);
        added += parser.AddDoubleVar(numbered.data(), i);
    }
    EXPECT_EQ(added, SymbolTable::kMostVariables);
    SymbolTable const &table = parser.GetSymbolTable();
    EXPECT_EQ(table.GetSymbolCount(), SymbolTable::kMostSymbols);
    EXPECT_STREQ(table.GetSymbol(0).name, "log");
    EXPECT_STREQ(table.GetSymbol(17).name, "len");
    EXPECT_EQ(table.GetReservedWord(table.GetReservedWordCount() - 1).text, "__ARG_TO__");
}

TEST(Parser, AnOverflowIsTakenForThatOfTheNextInteger) {
    ListeningParser parser;
    EXPECT_EQ(parser.Parsing2NumberArg(L"1e999,5"), 1);
    EXPECT_EQ(Numbers(parser), (std::vector<double>{INFINITY, 1.0}));
    EXPECT_EQ(parser.Parsing2NumberArg(L"1e999,5.0"), 1);
    EXPECT_EQ(Numbers(parser)[1], 5.0);
    EXPECT_EQ(parser.Parsing2NumberArg(L"1e-999,5"), 1);
    EXPECT_EQ(Numbers(parser), (std::vector<double>{0.0, 5.0}));
}

TEST(Parser, HostileTextFailsAtOnce) {
    std::wstring const parentheses(10000, L'(');
    // Fits the line with its start word.
    std::wstring const nested = std::wstring(900, L'(') + L"1" + std::wstring(900, L')');
    std::wstring tooManyNumbers = L"1";
    for (int i = 0; i < 1000; ++i)
        tooManyNumbers += L"+1";
    std::wstring const texts[] = {
        parentheses,        std::wstring(3000, L'1'),
        tooManyNumbers,     L"2000000000@1",
        L"1TO2000000000",   L"1,5TO5",
        L"\x01\x02",        L"\xD800",
        L"\x4E2D\x6587",    L"1\xA0+2",
        L"\xFFFF\xDC00",    std::wstring(2500, L'B'),
        L"9@9@9@9@9@9@9@9",
    };
    for (std::wstring const &text : texts) {
        ListeningParser parser;
        CString const typed(text.c_str());
        EXPECT_EQ(parser.ParsingGridDefineRel(typed), 0) << text.size();
        CArray<int> list;
        EXPECT_EQ(parser.ParsingNodeList(typed, list), 0) << text.size();
        EXPECT_NE(parser.GetFault().kind, ParseFaultKind::kNone) << text.size();
    }
    ListeningParser parser;
    EXPECT_EQ(parser.ParsingNumberArg(nested.c_str()), 1);
}

TEST(Parser, CountsArgumentsAndBytesBeforeItStoresThem) {
    ListeningParser parser;
    EXPECT_EQ(parser.ParsingGridDefineRel(L"9999998@1,1to2"), 1);
    EXPECT_EQ(parser.GetGridArgNum(), Parser::kMostArguments);
    for (auto const &[entry, text] : {std::pair(kGridRel, L"10000000@1,5"),
                                      {kGridAbs, L"10000000@1,0@5"},
                                      {kGridRel, L"9999999@1,1to2"},
                                      {kGridRel, L"10000001@1"}}) {
        EXPECT_EQ((parser.*entry)(text), 0) << text;
        EXPECT_EQ(parser.GetFault().kind, ParseFaultKind::kTooManyArguments) << text;
    }
    // 2,047 bytes with the start word "__NUMBER_INPUT__ " (17) and the appended blank.
    EXPECT_EQ(parser.ParsingNumberArg(std::wstring(2029, L'0').c_str()), 1);
    EXPECT_EQ(parser.ParsingNumberArg(std::wstring(2030, L'0').c_str()), 0);
    EXPECT_EQ(parser.GetFault().kind, ParseFaultKind::kTooLong);
}

} // namespace zvi::lib::test
