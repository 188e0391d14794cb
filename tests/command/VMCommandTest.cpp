#include "zvi/command/VMCommand.h"

#include "zvi/command/lexer1.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zvi::lib::test {

TEST(VMCommand, MovesItsChainAndTakesNothingFromItself) {
    VMCommand command, other;
    command.AddInteger(1);
    other.AddString("NAME");
    command.TakeFrom(other);
    command.TakeFrom(command);
    EXPECT_EQ(command.GetCount(), 2);
    EXPECT_EQ(command.MakeText(), L"1,NAME");
    EXPECT_EQ(other.GetFirst(), nullptr);
}

TEST(VMCommand, ReadsTheSameAsRunsAndAsAChain) {
    std::string const bytes = "\xE9\x80\xC3\xA9";
    VMCommand command;
    command.AddIntegers(INT32_MAX - 1, 2, 3);
    command.AddDoubles(-0.5, -0.5, 2);
    command.AddDoubles(1.5, 0, 2);
    command.AddString(bytes);
    command.AddPosition(7, 8, 9);
    std::string const text =
        "2147483646,-2147483648,-2147483646,-0.500000,-1.000000,1.500000,1.500000," + bytes + "," + bytes + ",5";
    VMCommand copy;
    for (bool const isChain : {false, true}) {
        SCOPED_TRACE(isChain);
        copy.AppendCopy(command);
        copy.AddInteger(5);
        EXPECT_EQ(copy.GetCommandString(), text);
        EXPECT_EQ(copy.MakeText().Right(6), L",\xFFFD\xFFFD\x00E9,5");
        EXPECT_EQ(command.GetFirst()->integer, INT32_MAX - 1);
        EXPECT_EQ(command.GetNext()->integer, INT32_MIN);
    }
    copy.TakeFrom(command);
    EXPECT_EQ(copy.GetCount(), 19);
    std::vector<double> values(19);
    copy.CopyDoubles(values.data());
    EXPECT_EQ(values[9], 5);
    EXPECT_EQ(values[13], -0.5);
}

TEST(lexer1, HasNoTokensBeforeItsFirstLine) {
    SymbolTable symbols;
    lexer1 lexer(symbols);
    EXPECT_EQ(lexer.NextToken(), kTokenEnd);
    EXPECT_EQ(lexer.TokenStart(), 0);
}

} // namespace zvi::lib::test
