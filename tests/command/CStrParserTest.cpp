#include "zvi/command/CStrParser.h"
#include "zvi/command/MParser.h"
#include "zvi/units/MUnitCtrl.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace zvi::lib::test {

namespace {

/// Lengths are in metres.
struct Metres : MUnitCtrl {
    Metres() : MUnitCtrl(nullptr) { Initialize(1); }
};

/// What the parsers wrote on the standard error stream since it was captured: a line for each unexpected token.
std::string const kSyntaxError = "syntax error\n";

} // namespace

TEST(CStrParser, WritesItsOutputsAsEachEntryPromises) {
    testing::internal::CaptureStderr();
    int i = 7;
    EXPECT_EQ(CStrParser::GetNumberOfTimes(L"2*3", i), 1);
    EXPECT_EQ(i, 6);
    EXPECT_EQ(CStrParser::GetINumber(L"2*", i), 0);
    EXPECT_EQ(i, 6);
    EXPECT_EQ(CStrParser::GetNumberOfTimes(L"2*", i), 0);
    EXPECT_EQ(i, 0);

    double x = 9, y = 9, z = 9;
    EXPECT_EQ(CStrParser::GetPosition(L"1,2,3,4", x, y, z), 0);
    EXPECT_EQ(x, 9.0);
    EXPECT_EQ(CStrParser::GetDirectionVector(L"1 2", x, y, z), 1);
    EXPECT_EQ(y, 2.0);
    EXPECT_EQ(z, 0.0);
    EXPECT_EQ(CStrParser::GetEQDistance(L"(", x, y, z), 0);
    EXPECT_EQ(y, 0.0);

    CArray<double> distances{1};
    EXPECT_EQ(CStrParser::GetUEDistance(L"oops", distances), 0);
    EXPECT_EQ(distances.GetSize(), 1);
    EXPECT_EQ(CStrParser::GetUEDistance(L"3@2,5", distances), 1);
    EXPECT_EQ(std::vector<double>(distances.begin(), distances.end()), (std::vector<double>{2, 2, 2, 5}));

    unsigned int op = 0;
    EXPECT_EQ(CStrParser::ParsingPositionNOp(L"3,0", x, y, z, op, 2), 1);
    EXPECT_EQ(op, 2u);
    EXPECT_EQ(x, 3.0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), kSyntaxError + kSyntaxError + kSyntaxError);
}

TEST(CStrParser, VariablesLiveInFourEntriesAndTheFirstOfANameCounts) {
    testing::internal::CaptureStderr();
    CStrParser::ClearVariables();
    CStrParser::AddDoubleVar(L"w", 4);
    CStrParser::AddDoubleVar(L"W", 5);
    CStrParser::AddDoubleVar(L"\x4E2D", 6);
    double a = 0, b = 0, c = 0;
    int i = 0;
    EXPECT_EQ(CStrParser::GetFloatNumber(L"w+1", a), 1);
    EXPECT_EQ(a, 5.0);
    EXPECT_EQ(CStrParser::Get2FloatNumber(L"w,2*w", a, b), 1);
    EXPECT_EQ(b, 8.0);
    EXPECT_EQ(CStrParser::GetPosition(L"w,1", a, b, c), 0);
    EXPECT_EQ(CStrParser::GetINumber(L"w", i), 0);
    CStrParser::ClearVariables();
    EXPECT_EQ(CStrParser::GetFloatNumber(L"w", a), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), kSyntaxError + kSyntaxError);
}

TEST(CStrParser, WritesDistancesAsRuns) {
    using Row = std::pair<CArray<double>, wchar_t const *>;
    for (auto const &[distances, text] : std::initializer_list<Row>{
             {{}, L""},
             {{2.5}, L"2.5"},
             {{1, 2}, L"1, 2"},
             {{2, 2}, L"2@2"},
             {{2, 2, 2, 5}, L"3@2, 5"},
             {{5, 2, 2}, L"5, 2@2"},
             {{1, 1, 2, 1, 1}, L"2@1, 2, 2@1"},
             {{1.0 / 3, 1e12}, L"0.333333333, 1e+12"},
         })
        EXPECT_EQ(CStrParser::ConvtDistArr2DistStr(distances), text);
}

TEST(CStrParser, MakesNamesThatAreNotTaken) {
    MArray<CString> const names{L"a", L"a-1", L"a (1)"};
    CString out = L"kept";
    EXPECT_EQ(CStrParser::MakeUniqueName(names, L"", out, 1), 0);
    EXPECT_EQ(CStrParser::MakeUniqueName(names, L"a", out, 3), 0);
    EXPECT_EQ(out, L"kept");
    EXPECT_EQ(CStrParser::MakeUniqueName(names, L"b", out, 9), 1);
    EXPECT_EQ(out, L"b");
    wchar_t const *const expected[] = {L"a-(Copy1)", L"a-2", L"a (2)"};
    for (int mode = 0; mode < 3; ++mode) {
        EXPECT_EQ(CStrParser::MakeUniqueName(names, L"a", out, mode), 1);
        EXPECT_EQ(out, expected[mode]);
    }
    CString name = L"a";
    EXPECT_EQ(CStrParser::MakeUniqueName(names, name, name, 1), 1);
    EXPECT_EQ(name, L"a-2");
    MArray<CString> full{L"n"};
    for (int i = 1; i <= 100; ++i) {
        name.Format(L"n-%d", i);
        full.PushBack(name);
    }
    EXPECT_EQ(CStrParser::MakeUniqueName(full, L"n", out, 1), 1);
    EXPECT_EQ(out, L"n-101");
    full.PushBack(out);
    EXPECT_EQ(CStrParser::MakeUniqueName(full, L"n", out, 1), 0);
}

TEST(MParser, TurnsLengthUnitsIntoFactors) {
    testing::internal::CaptureStderr();
    Metres metres;
    using Row = std::tuple<wchar_t const *, wchar_t const *, double, int>; // 2: it is parsed, whatever the value
    for (auto const &[text, expected, number, parsed] : std::initializer_list<Row>{
             {L"5mm+3", L"(5*0.001000)+3", 3.005, 1},
             {L"1,000MM", L"(1000*0.001000)", 1.0, 1},
             {L"10,20", L"1020", 1020.0, 1},
             {L"2m-30cm", L"(2*1.000000)-(30*0.010000)", 1.7, 1},
             {L"1um", L"(1*0.000001)", 1e-6, 1},
             {L"sin(30)*2in", L"SIN(30)*(2*0.025400)", 0, 2},
             {L"5KG", L"(5kg)", 0, 0},
             // The T of a foot is a marker by the time units are looked for.
             {L"5ft", L"(5f)#__ARG_TO__#", 0, 0},
             // A word at the very end is kept only behind a number.
             {L"2*pi", L"2*", 0, 0},
             {L"", L"", 0, 0},
         }) {
        MParser parser;
        EXPECT_EQ(parser.SetUnitArgTokenString(text, L"", &metres), expected) << text;
        EXPECT_EQ(parser.ParsingUNumberArg(text, &metres), parsed != 0) << text;
        double value = 0;
        if (parsed == 1) {
            EXPECT_EQ(parser.GetNumberData(value), 1);
            EXPECT_NEAR(value, number, 1e-15) << text;
        }
    }
    MParser parser;
    CString token = L"MM";
    EXPECT_EQ(parser.ConvertUnitToken(token, nullptr), 0);
    EXPECT_EQ(token, L"MM");
    EXPECT_EQ(parser.ParsingUINumberArg(L"5M", &metres), 1);
    EXPECT_FALSE(parser.IsNumberSymbol(L'-'));
    EXPECT_TRUE(parser.IsAlpahbetUpper(L'Z') && parser.IsAlpahbetLower(L'a') && !parser.IsAlpahbetLower(L'A'));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), kSyntaxError + kSyntaxError + kSyntaxError);
}

TEST(MParser, TellsTheTypedCharacterBehindEachOfItsOwn) {
    Metres metres;
    std::vector<int> sources;
    EXPECT_EQ(MParser().SetUnitArgTokenString(L" 1,250 mm + sin( 30 )*x1", &metres, sources),
              L"(1250*0.001000)+SIN(30)*X1");
    // What the unit became comes from its first letter.
    EXPECT_EQ(sources, (std::vector<int>{1, 1, 3,  4,  5,  7,  7,  7,  7,  7,  7,  7,  7,
                                         7, 8, 10, 12, 13, 14, 15, 17, 18, 20, 21, 22, 23}));
}

} // namespace zvi::lib::test
