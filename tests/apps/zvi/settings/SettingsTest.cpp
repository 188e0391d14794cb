#include "apps/zvi/settings/EditSettings.h"
#include "tests/TemporaryFolder.h"
#include "tests/apps/zvi/Run.h"
#include "zvi/core/MTolerance.h"
#include "zvi/host/Files.h"

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <utility>

namespace zvi::app::test {

namespace {

struct SettingsTest : testing::Test {
    RunOutcome Settings(std::vector<std::string> words) const {
        words.insert(words.begin(), {"settings", "--file", folder.Native("s.cfg").string()});
        return RunZvi(words);
    }

    zvi::test::TemporaryFolder const folder;
};

} // namespace

TEST_F(SettingsTest, ListShowsWhatIsInForceAndWhereItComesFrom) {
    EXPECT_EQ(Settings({"list"}).status, 1);
    EXPECT_EQ(Settings({"get", "a", "b"}).status, 1);
    EXPECT_TRUE(folder.Names().empty()) << "reading makes no file";
    std::string const content =
        "; by hand\n[ OPT_GEN_TOLERENCE ]\nRegardAsZero = 1.23456789e-6\nAngleTolerance = abc\n[MYAPP]\nk=\x1B[1m";
    folder.Write("s.cfg", content);
    RunOutcome const list = Settings({"list"});
    EXPECT_EQ(list.status, 0) << list.err;
    EXPECT_EQ(list.out, folder.Native("s.cfg").string() +
                            "\ncategory           keyword                        from     value\n"
                            "MYAPP              k                              line 6   ?[1m\n"
                            "OPT_ANAL_CTRL      OnlyMemory                     default  TRUE\n"
                            "OPT_ANAL_CTRL      Singular                       default  TRUE\n"
                            "OPT_ANAL_CTRL      UseMemory                      default  2\n"
                            "OPT_GEN_TOLERENCE  AngleTolerance                 line 4   0  (written: abc)\n"
                            "OPT_GEN_TOLERENCE  PointMergeTolerance            default  0.001\n"
                            "OPT_GEN_TOLERENCE  RegardAsZero                   line 3   1.23456789e-06\n"
                            "OPT_GEN_TOLERENCE  RegardAsZeroForAnalysisResult  default  1e-12\n");
    EXPECT_EQ(Settings({"get", "OPT_GEN_TOLERENCE", "RegardAsZero"}).out, "1.23456789e-06\n");
    EXPECT_EQ(Settings({"get", "OPT_ANAL_CTRL", "UseMemory"}).out, "2\n");
    EXPECT_NE(Settings({"list", "--json"}).out.find("\"line\": 4"), std::string::npos);
    RunOutcome const unknown = Settings({"get", "OPT_GEN_TOLERENCE", "RegardAsZer"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_NE(unknown.err.find("did you mean 'RegardAsZero'?"), std::string::npos);
    EXPECT_EQ(folder.Read("s.cfg"), content);
    EXPECT_EQ(lib::MTolerance::GetRegardAsZero(), 1e-10);
    folder.Write("s.cfg", "k = 1\n" + std::string(1024, 'x') + "\nl = 2\n");
    EXPECT_NE(Settings({"list"}).err.find("s.cfg:2: warning"), std::string::npos);
    EXPECT_EQ(Settings({"get", "", "l"}).status, 1);
}

TEST_F(SettingsTest, SetChangesOneLineAndLeavesTheRest) {
    for (auto const &[before, after] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
             {"[ B ]\nx = 1\n", "[ B ]\nx = 1\n\n[ A ]\nk = v w\n"},
             {"[A]\r\n; note\r\n  k=old\r\n", "[A]\r\n; note\r\nk = v w\r\n"},
             {"[A]\nk=1\n[B]\n[A]\nk=2", "[A]\nk=1\n[B]\n[A]\nk = v w"},
             {"[A]\nj=\xFF\n\n[B]\n", "[A]\nj=\xFF\nk = v w\n\n[B]\n"},
             {"\n[A]\nK=1", "\n[A]\nK=1\nk = v w\n"},
         })
        EXPECT_EQ(EditedSettings(before, L"A", L"k", L"v w"), after);
    std::string const end(host::LineEnd());
    EXPECT_EQ(EditedSettings("[A]", L"A", L"k", L"v w"), "[A]" + end + "k = v w" + end) << "the host's line end";
    EXPECT_EQ(EditedSettings("; top\n[A]\n", L"", L"k", L"v"), "k = v\n; top\n[A]\n");
    std::string const tooLong = std::string(1024, 'x') + "\n[A]\nk = 1\n";
    EXPECT_EQ(EditedSettings("[B]\n" + tooLong, L"A", L"k", L"v"), "[B]\n\n[ A ]\nk = v\n" + tooLong);
    EXPECT_EQ(Settings({"set", "A", "k", "-1"}).status, 0);
    EXPECT_EQ(Settings({"get", "A", "k"}).out, "-1\n");
}

TEST_F(SettingsTest, SetRefusesWhatTheFileCannotHold) {
    folder.Write("s.cfg", "k = 1\n");
    using Words = std::array<std::string, 3>;
    for (auto const &[category, keyword, value] :
         {Words{"A", "k=1", "v"}, Words{"A", "k ", "v"}, Words{"A", "k", " v"}, Words{"A\t", "k", "v"},
          Words{"A", "k", "v\nw"}, Words{"A", ";k", "v"}, Words{"A", "[k", "v"},
          Words{"A", "k", std::string(1022, 'v')}, Words{std::string(1022, 'A'), "k", "v"},
          Words{"OPT_GEN_TOLERENCE", "RegardAsZero", "abc"}, Words{"OPT_ANAL_CTRL", "Singular", "true"}}) {
        RunOutcome const refused = Settings({"set", category, keyword, value});
        EXPECT_EQ(refused.status, 2) << refused.err;
        EXPECT_EQ(folder.Read("s.cfg"), "k = 1\n");
    }
    EXPECT_EQ(Settings({"set", "A", "k", std::string(1021, 'v')}).status, 0);
    EXPECT_EQ(Settings({"get", "A", "k"}).out, std::string(1021, 'v') + "\n");
    for (std::string const &file : {folder.Native("none/s.cfg").string(), std::string("/dev/full")})
        EXPECT_EQ(RunZvi({"settings", "--file", file, "set", "A", "k", "v"}).status, 1);
    for (auto const &words : {std::vector<std::string>{"show"}, {"get", "A"}})
        EXPECT_EQ(Settings(words).status, 2);
}

} // namespace zvi::app::test
