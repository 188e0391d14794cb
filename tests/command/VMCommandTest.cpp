#include "zvi/command/VMCommand.h"

#include "zvi/command/lexer1.h"

#include <gtest/gtest.h>

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

TEST(lexer1, HasNoTokensBeforeItsFirstLine) {
    SymbolTable symbols;
    lexer1 lexer(symbols);
    EXPECT_EQ(lexer.NextToken(), kTokenEnd);
    EXPECT_EQ(lexer.TokenStart(), 0);
}

} // namespace zvi::lib::test
