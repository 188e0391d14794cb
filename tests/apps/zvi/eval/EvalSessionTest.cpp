#include "apps/zvi/eval/EvalSession.h"
#include "apps/zvi/common/Joined.h"

#include <gtest/gtest.h>

namespace zvi::app::test {

TEST(EvalSession, AtAPromptItConfirmsAndSpeaksOfCommands) {
    EvalSession session({}, false, true);
    EXPECT_EQ(session.Enter(" Len = 2*3 ").out, "Len = 6\n");
    EXPECT_EQ(session.Enter("len = len+1").out, "len = 7\n");
    EXPECT_EQ(session.Enter(":vars").out, "Len = 7\n");
    EXPECT_NE(session.Enter("3 4").failure.find("; :mode grid-rel"), std::string::npos);
    EXPECT_NE(session.Enter("5mm").failure.find("add :units 0"), std::string::npos);
    EXPECT_NE(session.Enter("q").failure.find("with q=..."), std::string::npos);
    EXPECT_EQ(session.Enter(":units").out, "off\n");
    EXPECT_EQ(session.Enter(":units 1").failure, "");
    EXPECT_EQ(session.Enter("5mm").out, "0.005\n");
    EXPECT_EQ(session.Enter(":mode points").failure, "");
    EXPECT_EQ(session.Enter("[len,1] [2]").out, "7 1 0\n2 0 0\n");
    EXPECT_NE(session.Enter(":mode").out.find("* points"), std::string::npos);
    EXPECT_FALSE(session.Enter("help").out.empty());
    EXPECT_FALSE(session.Enter("  ").quit);
    EXPECT_TRUE(session.Enter("exit").quit);
}

TEST(EvalSession, HoldsAsManyVariablesAsAParserKnows) {
    EvalSession session({}, false, false);
    for (std::size_t i = 0; i < kMostVariables; ++i)
        EXPECT_EQ(session.Enter(Joined("q", std::to_string(i), "=", std::to_string(i))).failure, "");
    EXPECT_NE(session.Enter("w=1").failure, "");
    EXPECT_EQ(session.Enter("q182=5").failure, "");
    EXPECT_EQ(session.Enter("q182+q181").out, "186\n");
}

} // namespace zvi::app::test
