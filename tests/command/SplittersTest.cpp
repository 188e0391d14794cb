#include "zvi/command/MArrayParser.h"
#include "zvi/command/MStringToken.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zvi::lib::test {

TEST(MArrayParser, SkipsPiecesThatDoNotConvert) {
    MArray<int> ints{1};
    EXPECT_EQ(MArrayParser::ParseArray_Int(L"1, -2;x,,+3,4.0,9999999999", L',', ints), 1);
    EXPECT_EQ(std::vector<int>(ints.begin(), ints.end()), (std::vector<int>{1, 3}));

    MArray<double> doubles;
    EXPECT_EQ(MArrayParser::ParseArray_Double(L" 1.5 |2e3|nan|0x10|-.25|+-1|", L'|', doubles), 1);
    EXPECT_EQ(std::vector<double>(doubles.begin(), doubles.end()), (std::vector<double>{1.5, 2000.0, -0.25}));

    CStringArray strings;
    MArrayParser::ParseArray_String(L"a; b ;;c", L';', strings, 0);
    ASSERT_EQ(strings.GetSize(), 3);
    EXPECT_TRUE(strings.GetAt(1) == L"b");
    MArrayParser::ParseArray_String(L"a; b ;;c", L';', strings, 1);
    ASSERT_EQ(strings.GetSize(), 4);
    EXPECT_TRUE(strings.GetAt(2).IsEmpty());
}

TEST(MArrayParser, PairsNeedBothSides) {
    int i = 7;
    int j = 8;
    double d = 0.5;
    EXPECT_EQ(MArrayParser::Parse2Number(L"12", L':', i, j), 0);
    EXPECT_EQ(MArrayParser::Parse2Number(L"12:x", L':', i, j), 0);
    EXPECT_EQ(MArrayParser::Parse2Number(L"1:2:3", L':', i, j), 0);
    EXPECT_EQ(i, 7);
    EXPECT_EQ(j, 8);
    EXPECT_EQ(MArrayParser::Parse2Number(L"12: 2.5", L':', i, d), 1);
    EXPECT_EQ(i, 12);
    EXPECT_EQ(d, 2.5);
    double e = 0;
    EXPECT_EQ(MArrayParser::Parse2Number(L"-1,1e-3", L',', d, e), 1);
    EXPECT_EQ(d, -1.0);
    EXPECT_EQ(e, 1e-3);
}

TEST(MStringToken, KeepsThePiecesBetweenDelimiters) {
    MStringToken const tokens(L",one, two;three,,", L",;");
    ASSERT_EQ(tokens.Size(), 3);
    EXPECT_EQ(tokens.GetStdwstring(0), L"one");
    EXPECT_TRUE(tokens.GetCstring(1) == L" two");
    EXPECT_EQ(std::wstring(tokens.Get(2)), L"three");
    EXPECT_EQ(std::wstring(tokens.Get(3)), L"");
    EXPECT_EQ(std::wstring(tokens.Get(-1)), L"");
    EXPECT_EQ(MStringToken(L"", L",").Size(), 0);
    EXPECT_EQ(MStringToken(L"a b", L"").Size(), 1);
}

} // namespace zvi::lib::test
