#include "tests/apps/zvi/Run.h"

#include <gtest/gtest.h>

namespace zvi::app::test {

namespace {

constexpr char const *kReport =
    "Total Work Time :     2.000000\r\n"
    "Function Name,   Percentage, Independent Work Time, Unit Work Time,        Calls, Total Work Time, Child Work "
    "Time\r\n"
    "main, of a program,     0.500000,     1.000000,     1.000000,            1,     2.000000,     1.000000\r\n"
    "       solve,     0.499999,     0.999998,     0.000001,       900000,     0.999998,     0.000000\r\n"
    "   f, 1, 2,b,     0.000001,     0.000002,     0.000000,            4,     0.000002,     0.000000\r\n"
    "            ,     0.000000,     0.000000,     0.000000,            1,     0.000000,     0.000000\n";

RunOutcome Report(std::vector<std::string> words, std::string const &input = kReport) {
    words.insert(words.begin(), "profile-report");
    return RunZvi(words, input);
}

} // namespace

TEST(ProfileReport, IsATableWithBars) {
    RunOutcome const outcome = Report({"-"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "share   own  total   calls  own/call  own # inside .                  name\n"
                           "  50%  1 s    2 s        1      1 s   ###############...............  main, of a program\n"
                           "  50%  1 s    1 s   900000  1.111 us  ###############                 solve\n"
                           "   0%  2 us   2 us       4    500 ns                                  f, 1, 2,b\n"
                           "   0%  0 ns   0 ns       1      0 ns\n");
}

TEST(ProfileReport, IsSortedAndCut) {
    struct Case {
        char const *key;
        char const *first;
    };
    for (Case const &row :
         {Case{"own", "main, of a program"}, Case{"calls", "solve"}, Case{"per-call", "main, of a program"},
          Case{"total", "main, of a program"}, Case{"child", "main, of a program"}, Case{"name", ""}}) {
        RunOutcome const outcome = Report({"--sort", row.key, "--top", "1", "--json"});
        EXPECT_NE(outcome.out.find("\"rows\":[{\"name\":\"" + std::string(row.first) + "\","), std::string::npos)
            << row.key << outcome.out;
    }
    RunOutcome const outcome = Report({"--top", "3"});
    EXPECT_NE(outcome.out.find("\nand 1 name more\n"), std::string::npos);
    EXPECT_EQ(
        Report({"--json", "--top=1"}).out,
        "{\"schema\":1,\"total_seconds\":2.0,\"names\":4,\"rows\":[{\"name\":\"main, of a program\",\"share\":0.5,"
        "\"own_seconds\":1.0,\"total_seconds\":2.0,\"child_seconds\":1.0,\"calls\":1,\"own_seconds_per_call\":1.0}]}"
        "\n");
}

TEST(ProfileReport, OfNothingHasNoRows) {
    std::string const text = std::string(kReport).substr(0, std::string(kReport).find("main"));
    EXPECT_EQ(Report({}, text).status, 0);
    EXPECT_EQ(Report({"--json"}, text).out.find("\"rows\":[]") != std::string::npos, true);
}

TEST(ProfileReport, RefusesWhatIsNone) {
    std::string const report = kReport;
    struct Case {
        std::string text;
        char const *where;
    };
    for (Case const &row :
         {Case{"", ":1:"}, Case{"Total Work Time : x\n", ":1:"}, Case{"Total Work Time : 1\nFunction", ":2:"},
          Case{report.substr(0, report.size() - 80), ":6:"}, Case{report + "solve, 1, 2, 3, 4, 5\n", ":7:"},
          Case{report + "solve, 1, two, 3, 4, 5, 6\n", ":7:"}, Case{report + "a,1,2,3,4,5,6\n", ":7:"}}) {
        RunOutcome const outcome = Report({}, row.text);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.err.find(std::string("zvi: standard input") + row.where + " is no line of a profile report"),
                  std::string::npos)
            << outcome.err;
    }
    EXPECT_EQ(Report({"no such file"}).status, 1);
    for (std::vector<std::string> const &words :
         {std::vector<std::string>{"--sort", "callz"}, {"--top", "0"}, {"--top", "x"}, {"a", "b"}})
        EXPECT_EQ(Report(words).status, 2);
}

} // namespace zvi::app::test
