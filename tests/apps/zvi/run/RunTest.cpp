#include "tests/apps/zvi/Run.h"
#include "tests/diagnostics/ChildRuns.h"

#include "apps/zvi/run/ChildOutput.h"

#include <gtest/gtest.h>

#include <sstream>

namespace zvi::app::test {

namespace {

/// What a form makes of the child's output.
std::string Shown(OutputForm form, std::wstring const &hexadecimal) {
    std::ostringstream out;
    ChildOutput child(out, form);
    EXPECT_EQ(lib::test::RunChild(&child, L"bytes " + hexadecimal + L" exit 9"), 0);
    lib::test::PassUntil([&] { return child.HasEnded(); });
    EXPECT_EQ(child.ExitCode(), 9);
    return out.str();
}

} // namespace

TEST(Run, ShowsWhatTheProgramWrites) {
    std::string const bytes("a\n\xC3\xA9\n\0\xFF\n", 8);
    using Row = std::tuple<wchar_t const *, std::string, std::string>;
    for (auto const &[hexadecimal, onTerminal, elsewhere] :
         {Row{L"610ac3a90d0a00ff", bytes, bytes}, Row{L"3130250d3230250d0a62", "10%\r20%\nb\n", "10%\n20%\nb\n"},
          Row{L"77c3a9080878080a", "w\xC3\xA9\b\bx\n", "w\xC3\xA9\nx\n"}, Row{L"3130250d", "10%\n", "10%\n"}}) {
        EXPECT_EQ(Shown(OutputForm::kTerminal, hexadecimal), onTerminal);
        EXPECT_EQ(Shown(OutputForm::kPlain, hexadecimal), elsewhere);
    }
    EXPECT_EQ(Shown(OutputForm::kJson, L"3130250d3230250d0a"),
              "{\"schema\":1,\"event\":\"line\",\"text\":\"10%\",\"own\":\"10%\",\"ended\":false}\n"
              "{\"schema\":1,\"event\":\"same\",\"text\":\"1020%\",\"own\":\"20%\",\"ended\":true}\n"
              "{\"schema\":1,\"event\":\"exit\",\"code\":9}\n");
}

TEST(Run, EndsWithTheExitCodeOfTheProgram) {
    std::string const child = ZVI_TEST_CHILD;
    using Row = std::pair<std::vector<std::string>, int>;
    // Neither a stop nor time alone reaches one that is silent and never ends.
    for (auto const &[words, status] :
         {Row{{"run"}, 2}, Row{{"run", "--stop-after", "-1", child}, 2}, Row{{"run", child, "exit", "5"}, 5},
          Row{{"run", child, "die"}, 137}, Row{{"run", "--stop-after", "0.01", child, "wait", "never"}, 124},
          Row{{"run", "--stop-after=0.01", child, "flood", "1000000000000"}, 124}})
        EXPECT_EQ(RunZvi(words).status, status);
    EXPECT_EQ(RunZvi({"run", "--", child, "word", "--json", "word", "a b", "word", "", "word", "\u8A08\""}).out,
              "[--json]\n[a b]\n[]\n[\u8A08\"]\n");
    RunOutcome const none = RunZvi({"run", "no-such-program"});
    EXPECT_EQ(none.status, 1);
    EXPECT_TRUE(none.err.starts_with("zvi: no-such-program: there is no such prog")) << none.err;
}

} // namespace zvi::app::test
