#include "tests/apps/zvi/Run.h"
#include "tests/diagnostics/ChildRuns.h"

#include "apps/zvi/run/ChildOutput.h"

#include <gtest/gtest.h>

#include <sstream>

namespace zvi::app::test {

namespace {

/// What a form makes of the child's output.
std::string Shown(OutputForm form, std::string const &hexadecimal) {
    std::ostringstream out;
    ChildOutput child(out, form);
    EXPECT_EQ(lib::test::RunChildOf(&child, lib::test::Arguments({"bytes", hexadecimal, "exit", "9"})), 0);
    lib::test::PassUntil([&] { return child.HasEnded(); });
    EXPECT_EQ(child.ExitCode(), 9);
    return out.str();
}

std::string const kChild = ZVI_TEST_CHILD;

} // namespace

TEST(Run, ShowsWhatTheProgramWrites) {
    struct Case {
        char const *hexadecimal;
        std::string onTerminal;
        std::string elsewhere;
    };
    Case const cases[] = {
        {"610ac3a90d0a00ff", std::string("a\n\xC3\xA9\n\0\xFF\n", 8), std::string("a\n\xC3\xA9\n\0\xFF\n", 8)},
        {"3130250d3230250d0a62", "10%\r20%\nb\n", "10%\n20%\nb\n"},
        {"77c3a9080878080a", "w\xC3\xA9\b\bx\n", "w\xC3\xA9\nx\n"},
        {"3130250d", "10%\n", "10%\n"},
    };
    for (Case const &c : cases) {
        EXPECT_EQ(Shown(OutputForm::kTerminal, c.hexadecimal), c.onTerminal);
        EXPECT_EQ(Shown(OutputForm::kPlain, c.hexadecimal), c.elsewhere);
    }
    EXPECT_EQ(Shown(OutputForm::kJson, "3130250d3230250d0a"),
              "{\"schema\":1,\"event\":\"line\",\"text\":\"10%\",\"own\":\"10%\",\"ended\":false}\n"
              "{\"schema\":1,\"event\":\"same\",\"text\":\"1020%\",\"own\":\"20%\",\"ended\":true}\n"
              "{\"schema\":1,\"event\":\"exit\",\"code\":9}\n");
}

TEST(Run, EndsWithTheExitCodeOfTheProgram) {
    EXPECT_EQ(RunZvi({"run", kChild, "exit", "5"}).status, 5);
    EXPECT_EQ(RunZvi({"run", kChild, "die"}).status, 137);
    RunOutcome const words = RunZvi({"run", "--", kChild, "words", "--json", "a b", "", "it's", "\"", "\\", "\u8A08"});
    EXPECT_EQ(words.out, "[--json]\n[a b]\n[]\n[it's]\n[\"]\n[\\]\n[\u8A08]\n");
    // Silent and never ending, so that neither a stop nor time alone reaches it.
    EXPECT_EQ(RunZvi({"run", "--stop-after", "0.01", kChild, "hang"}).status, 124);
    EXPECT_EQ(RunZvi({"run", "--stop-after=0.01", kChild, "flood", "1000000000000"}).status, 124);
}

TEST(Run, RefusesWhatItCannotRun) {
    EXPECT_EQ(RunZvi({"run"}).status, 2);
    EXPECT_EQ(RunZvi({"run", "--stop-after", "-1", kChild}).status, 2);
    RunOutcome const none = RunZvi({"run", "no-such-program"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err.substr(0, 43), "zvi: no-such-program: there is no such prog");
}

} // namespace zvi::app::test
