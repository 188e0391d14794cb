#include "zvi/command/VMCommand.h"

#include "zvi/command/lexer1.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zvi::lib::test {

TEST(VMCommand, TakesRunsAndChainsBehindItsOwnAndNothingFromItself) {
    for (int counts = 0; counts < 36; ++counts) {
        SCOPED_TRACE(counts);
        bool const isChain[] = {counts % 2 == 1, counts / 2 % 2 == 1};
        std::string const texts[] = {"AA", "BBBBBB"};
        int const lengths[] = {counts / 4 % 3, counts / 12 * 3};
        VMCommand commands[2];
        std::string wanted;
        for (int k = 0; k < 2; ++k) {
            for (int i = 0; i < lengths[k]; ++i) {
                commands[k].AddString(texts[k]);
                wanted += texts[k] + ",";
            }
            if (isChain[k])
                commands[k].GetFirst();
        }
        commands[0].TakeFrom(commands[1]);
        commands[0].TakeFrom(commands[0]);
        commands[0].AddInteger(1);
        EXPECT_EQ(commands[0].GetCommandString(), wanted + "1");
        EXPECT_EQ(commands[1].GetFirst(), nullptr);
        int walked = 0;
        for (VMArguement *at = commands[0].GetFirst(); at; at = commands[0].GetNext())
            ++walked;
        EXPECT_EQ(walked, lengths[0] + lengths[1] + 1);
    }
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
