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
    RunOutcome const outcome = Report({"-", "--top", "3"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "share   own  total   calls  own/call  own # inside .                  name\n"
                           "  50%  1 s    2 s        1      1 s   ###############...............  main, of a program\n"
                           "  50%  1 s    1 s   900000  1.111 us  ###############                 solve\n"
                           "   0%  2 us   2 us       4    500 ns                                  f, 1, 2,b\n"
                           "and 1 name more\n");
    std::string const none = std::string(kReport).substr(0, std::string(kReport).find("main"));
    EXPECT_EQ(Report({}, none).status, 0);
    EXPECT_TRUE(Report({"--json"}, none).out.ends_with("\"names\":0,\"rows\":[]}\n"));
}

TEST(ProfileReport, IsSorted) {
    for (auto const &[key, first] : {std::pair("own", "main"),
                                     {"calls", "solve"},
                                     {"per-call", "main"},
                                     {"total", "main"},
                                     {"child", "main"},
                                     {"name", "\""}})
        EXPECT_NE(Report({"--sort", key, "--json"}).out.find(std::string("\"rows\":[{\"name\":\"") + first),
                  std::string::npos)
            << key;
    EXPECT_EQ(
        Report({"--json", "--top=1"}).out,
        "{\"schema\":1,\"total_seconds\":2.0,\"names\":4,\"rows\":[{\"name\":\"main, of a program\",\"share\":0.5,"
        "\"own_seconds\":1.0,\"total_seconds\":2.0,\"child_seconds\":1.0,\"calls\":1,\"own_seconds_per_call\":1.0}]}"
        "\n");
}

TEST(ProfileReport, RefusesWhatIsNone) {
    std::string const report = kReport;
    std::pair<std::string, char const *> const cases[] = {
        {"", "1"},
        {"Total Work Time : x\n", "1"},
        {"Total Work Time : 1\nFunction", "2"},
        {report.substr(0, report.size() - 80), "6"},
        {report + "solve, 1, 2, 3, 4, 5\n", "7"},
        {report + "solve, 1, two, 3, 4, 5, 6\n", "7"},
        {report + "a,1,2,3,4,5,6\n", "7"},
    };
    for (auto const &[text, line] : cases) {
        RunOutcome const outcome = Report({}, text);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.err.find(std::string("zvi: standard input:") + line + ": is no line of a profile report"),
                  std::string::npos)
            << outcome.err;
    }
    EXPECT_EQ(Report({"no such file"}).status, 1);
    for (std::vector<std::string> const &words :
         {std::vector<std::string>{"--sort", "callz"}, {"--top", "0"}, {"--top", "x"}, {"a", "b"}})
        EXPECT_EQ(Report(words).status, 2);
}

} // namespace zvi::app::test
