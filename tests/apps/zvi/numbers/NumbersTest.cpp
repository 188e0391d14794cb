#include "tests/apps/zvi/Run.h"

#include <gtest/gtest.h>

#include <climits>

namespace zvi::app::test {

TEST(Numbers, DoTheirThreeJobs) {
    struct Row {
        std::vector<std::string> words;
        std::string out; ///< empty: it fails with `status`
        int status = 0;
        char const *err = "";
    };
    std::string const secondLast = std::to_string(LONG_MAX - 1), last = std::to_string(LONG_MAX);
    for (Row const &row : std::initializer_list<Row>{
             {{"compress", "1", "3", "5", "7", "9", "20"}, "1to9by2 20\n"},
             {{"compress", "5,4,3", "3", "-1", "-2", "-3"}, "-3to-1 3to5\n"},
             {{"compress"}, "\n"},
             {{"expand", "1to9by2 20"}, "1 3 5 7 9 20\n"},
             {{"expand", "5", "t", "1", "b", "2"}, "5 3 1\n"},
             {{"expand", "-5to-1by-3"}, "-5 -2\n"},
             {{"expand", "1to9by0"}, "1\n"},
             {{"expand", secondLast + "to" + last}, secondLast + " " + last + "\n"},
             {{"expand", "1 " + std::to_string(ULONG_MAX)}, "", 1, "too large"},
             {{"select", "--from", "1to100", "95to200by2"}, "95 97 99\n"},
             {{"select", "--from", "10to1", "--keep-order", "9 3 9to7"}, "3 9 8 7\n"},
             {{"select", "--from", "", "1"}, "\n"},
             {{"expand", "1to"}, "", 1, "  1to\n     ^\n"},
             {{"expand", "1, 1..5"}, "", 1, "  1, 1..5\n      ^~~\n"},
             {{"expand", "7 1to99999999"}, "", 1, "    ^~~~~~~~~~~\n"},
             {{"compress", "1", "2to5"}, "", 1, "     ^~~\n"},
             {{"compress", "-99999999999999999999"}, "", 1, "too large"},
             {{"select", "--from", "1 y", "1"}, "", 2, "--from: no number\n  1 y\n    ^\n"},
             {{"select", "--from", "1to9", "1;2"}, "", 1, "   ^~\n"},
             {{"select", "1"}, "", 2, "--from LIST"},
             {{"expand", "--from", "1", "1"}, "", 2, "--from goes with select"},
             {{"compres", "1"}, "", 2, "did you mean 'compress'?"},
             {{}, "", 2, "compress, expand or select"},
         }) {
        std::vector<std::string> words = row.words;
        words.insert(words.begin(), "numbers");
        RunOutcome const run = RunZvi(words);
        EXPECT_EQ(run.out, row.out) << run.err;
        EXPECT_EQ(run.status, row.status) << run.err;
        EXPECT_NE(run.err.find(row.err), std::string::npos) << run.err;
    }
    EXPECT_EQ(RunZvi({"numbers", "compress"}, "\xEF\xBB\xBF"
                                              "1\r\n2\n3\n\n7\n")
                  .out,
              "1to3 7\n");
    std::string const told = RunZvi({"numbers", "expand"}, "1to3\r\n5 2to\r\n\r\n").err;
    EXPECT_TRUE(
        told.starts_with("zvi: standard input:2: the text ends where a number is expected\n  5 2to\n       ^\n"))
        << told;
    EXPECT_EQ(RunZvi({"numbers", "expand", "--json", "-"}, "1to3").out, "{\"schema\":1,\"numbers\":[1,2,3]}\n");
}

} // namespace zvi::app::test
