#include "tests/apps/zvi/Run.h"

#include <gtest/gtest.h>

namespace zvi::app::test {

namespace {

std::string const kHeading =
    "Total Work Time :     2.000000\r\n"
    "Function Name,   Percentage, Independent Work Time, Unit Work Time,        Calls, Total Work Time, Child Work "
    "Time\r\n";
std::string const kReport =
    kHeading +
    "main, of a program,     0.500000,     1.000000,     1.000000,            1,     2.000000,     1.000000\r\n"
    "       solve,     0.499999,     0.999998,     0.000001,       900000,     0.999998,     0.000000\r\n"
    "   f, 1, 2,b,     0.000001,     0.000002,     0.000000,            4,     0.000002,     0.000000\r\n"
    "            ,     0.000000,     0.000000,     0.000000,            2,     0.000000,     0.000000\n";

using Row = std::pair<std::string, std::string>;

RunOutcome Report(std::vector<std::string> words, std::string const &input = kReport) {
    words.insert(words.begin(), "profile-report");
    return RunZvi(words, input);
}

} // namespace

TEST(ProfileReport, IsASortedTableWithBarsOrJson) {
    EXPECT_EQ(Report({"-", "--top", "3"}).out,
              "share   own  total   calls  own/call  own # inside .                  name\n"
              "  50%  1 s    2 s        1      1 s   ###############...............  main, of a program\n"
              "  50%  1 s    1 s   900000  1.111 us  ###############                 solve\n"
              "   0%  2 us   2 us       4    500 ns                                  f, 1, 2,b\n"
              "and 1 name more\n");
    EXPECT_EQ(
        Report({"--json", "--top=1"}).out,
        "{\"schema\":1,\"total_seconds\":2.0,\"names\":4,\"rows\":[{\"name\":\"main, of a program\",\"share\":0.5,"
        "\"own_seconds\":1.0,\"total_seconds\":2.0,\"child_seconds\":1.0,\"calls\":1,\"own_seconds_per_call\":1.0}]}"
        "\n");
    EXPECT_TRUE(Report({"--json"}, kHeading).out.ends_with("\"names\":0,\"rows\":[]}\n"));
    EXPECT_EQ(Report({}, kHeading).status, 0);
    // The first letters of the names, with a quote for the empty one.
    for (auto const &[key, order] : {Row{"own", "msf\""}, Row{"total", "msf\""}, Row{"child", "msf\""},
                                     Row{"calls", "sf\"m"}, Row{"per-call", "msf\""}, Row{"name", "\"fms"}}) {
        std::string names;
        std::string const json = Report({"--sort", key, "--json"}).out;
        for (std::size_t at = 0; (at = json.find("\"name\":\"", at)) != json.npos; ++at)
            names += json[at + 8];
        EXPECT_EQ(names, order) << key;
    }
}

TEST(ProfileReport, RefusesWhatIsNone) {
    for (auto const &[text, line] :
         {Row{"", "1"}, Row{"Total Work Time : x\n", "1"}, Row{"Total Work Time : 1\nFunction", "2"},
          Row{kReport.substr(0, kReport.size() - 80), "6"}, Row{kReport + "solve, 1, 2, 3, 4, 5\n", "7"},
          Row{kReport + "solve, 1, two, 3, 4, 5, 6\n", "7"}, Row{kReport + "a,1,2,3,4,5,6\n", "7"}}) {
        RunOutcome const outcome = Report({}, text);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(outcome.err.starts_with("zvi: standard input:" + line + ": is no line of a profile report"))
            << outcome.err;
    }
    EXPECT_EQ(Report({"no such file"}).status, 1);
    for (std::vector<std::string> const &words :
         {std::vector<std::string>{"--sort", "callz"}, {"--top", "0"}, {"--top", "x"}, {"a", "b"}})
        EXPECT_EQ(Report(words).status, 2);
}

} // namespace zvi::app::test
