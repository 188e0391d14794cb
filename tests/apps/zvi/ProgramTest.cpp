#include "apps/zvi/common/Joined.h"
#include "tests/TemporaryFolder.h"
#include "tests/apps/zvi/ProgramProcess.h"
#include "tests/apps/zvi/Run.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace zvi::app::test {

namespace {

using zvi::test::TemporaryFolder;

std::string const kRing = "circle 1 0 0 2\ncircle 2 0 0 1\n";
std::string const kRingTotals = "2 domains, 1 holes, total area 12.5663706\n";

} // namespace

TEST(Program, TellsWhatItCanDo) {
    for (std::vector<std::string> const &arguments : std::vector<std::vector<std::string>>{
             {"-h"}, {"--help"}, {"domains", "-h"}, {"domains", "x", "--help"}, {"help"}, {"help", "units"}}) {
        RunOutcome const run = RunZvi(arguments);
        EXPECT_EQ(run.status, 0);
        EXPECT_TRUE(run.out.starts_with("Examples:\n")) << run.out;
        EXPECT_EQ(run.err, "");
    }
    EXPECT_TRUE(RunZvi({"--version"}).out.starts_with("zvi 0."));
    RunOutcome const bare = RunZvi({});
    EXPECT_EQ(bare.status, 2);
    EXPECT_EQ(bare.out, "");
}

TEST(Program, RefusesWrongUsageAndSuggests) {
    using Case = std::pair<std::vector<std::string>, std::string>;
    for (auto const &[arguments, message] : std::initializer_list<Case>{
             {{"domain"}, "zvi: unknown verb 'domain'; did you mean 'domains'?\n"},
             {{"paint"}, "zvi: unknown verb 'paint'; 'zvi -h' lists the verbs\n"},
             {{"--verson"}, "zvi: unknown option '--verson'; did you mean '--version'?\n"},
             {{"domains", "--jion", "1", "x.dxf"}, "zvi: unknown option '--jion'; did you mean '--join'?\n"},
             {{"domains", "--stric=1", "x.dxf"}, "zvi: unknown option '--stric'; did you mean '--strict'?\n"},
             {{"domains", "--colour", "x.dxf"}, "zvi: unknown option '--colour'; did you mean '--color'?\n"},
             {{"domains", "--frobnicate"}, "zvi: unknown option '--frobnicate'; 'zvi domains -h' lists the options\n"},
             {{"domains", "a.dxf", "b.dxf"}, "zvi: one drawing at a time; 'b.dxf' is one too many\n"},
             {{"domains", "--join", "-1"}, "zvi: --join needs a distance in drawing units, 0 or more, not '-1'\n"},
             {{"domains", "--join=nan"}, "zvi: --join needs a distance in drawing units, 0 or more, not 'nan'\n"},
             {{"domains", "--threads", "-2"}, "zvi: --threads needs a number from 0 to 256, not '-2'\n"},
             {{"domains", "--chord-error", "0"},
              "zvi: --chord-error needs a distance in drawing units above 0, not '0'\n"},
             {{"domains", "--color", "red"}, "zvi: --color is auto, always or never, not 'red'\n"},
             {{"domains", "--join", ""}, "zvi: --join needs a distance in drawing units, 0 or more, not ''\n"},
             {{"domains", "--dxf", ""}, "zvi: --svg and --dxf need the name of a file"},
             {{"domains", "--layers", "--svg", "o"}, "zvi: --layers lists the layers and does no more"},
             {{"domains", "--dxf-cut"}, "zvi: --dxf-cut and --dxf-leftovers say what --dxf writes; add --dxf FILE\n"},
             {{"domains", "--svg", "-"}, "zvi: --svg and --dxf need the name of a file"},
             {{"domains", "--svg", "o", "--dxf", "o"}, "zvi: --svg and --dxf name the same file"},
             {{"domains", "--layer", "A"},
              "zvi: curve text has no layers; --layer and --layers are for DXF drawings\n"},
             {{"domains", "--join"}, "zvi: --join needs a value; write --join T\n"},
             {{"domains", "--svg", "--json"}, "zvi: --svg needs a value; write --svg FILE\n"},
             {{"domains", "--join", "1", "--join=2"}, "zvi: --join is given more than once; give it once\n"},
             {{"domains", "--svg", "o", "--dxf", "./o"}, "zvi: --svg and --dxf name the same file"},
             {{"domains", ""}, "zvi: the name of the drawing is empty"},
         }) {
        RunOutcome const run = RunZvi(arguments, kRing);
        EXPECT_EQ(run.status, 2) << message;
        EXPECT_EQ(run.err.substr(0, message.size()), message);
        EXPECT_EQ(run.out, "");
    }
}

TEST(Program, TellsWhereTheInputIsWrong) {
    TemporaryFolder const folder;
    for (auto const &[name, text, message] : std::initializer_list<std::array<std::string, 3>>{
             {"bad.curves", "line 1 0 0 1 1\nlime 2 0 0 1 1\n", ":2: unknown curve \"lime\""},
             {"cut.dxf", "0\nSECTION\n", ":3: the drawing ends before its EOF group"},
             {"empty.DXF", "", ": the file is empty"},
             {"letter.txt", "Dear reader,\n", ": is no drawing that can be read; name a .dxf or a .curves file"},
         }) {
        folder.Write(name, text);
        std::string const file = folder.Native(name).string();
        RunOutcome const run = RunZvi({"domains", file});
        EXPECT_EQ(run.status, 1) << name;
        EXPECT_TRUE(run.err.starts_with(Joined("zvi: ", file, message))) << run.err;
        EXPECT_EQ(run.out, "");
    }
    EXPECT_NE(RunZvi({"domains", folder.Native("none.dxf").string()}).err.find("none.dxf: there is no such file"),
              std::string::npos);
    EXPECT_NE(RunZvi({"domains", folder.Native().string()}).err.find(": is a folder; name a file in it"),
              std::string::npos);
    EXPECT_EQ(RunZvi({"domains"}, "rubbish").err.substr(0, 40), "zvi: standard input:1: unknown curve \"ru");
}

TEST(Program, ReadsStandardInputAndDxfByItsLook) {
    for (std::vector<std::string> const &arguments :
         std::vector<std::vector<std::string>>{{"domains"}, {"domains", "-"}}) {
        RunOutcome const run = RunZvi(arguments, kRing);
        EXPECT_EQ(run.status, 0);
        EXPECT_TRUE(run.out.ends_with(kRingTotals)) << run.out;
        EXPECT_NE(run.err.find("     left over: nothing\n"), std::string::npos);
    }
    std::string const dxf = "0\nSECTION\n2\nENTITIES\n0\nCIRCLE\n8\nA\n10\n0\n20\n0\n40\n1\n0\nENDSEC\n0\nEOF\n";
    EXPECT_EQ(RunZvi({"domains", "--layers"}, dxf).out.substr(0, 30), "curves  others  state  layer\n ");
    EXPECT_TRUE(RunZvi({"domains", "--layer", "a"}, dxf).out.ends_with("1 domains, 0 holes, total area 3.14159265\n"));
    std::string carriage = dxf;
    std::replace(carriage.begin(), carriage.end(), '\n', '\r');
    EXPECT_EQ(RunZvi({"domains"}, carriage).out, RunZvi({"domains"}, dxf).out);
    EXPECT_TRUE(RunZvi({"domains"}, "").out.ends_with("0 domains, 0 holes, total area 0\n"));
}

TEST(Program, FollowsItsOptions) {
    std::string const square = "line 1 0 0 4 0\nline 2 4 0 4 4\nline 3 4 4 0 4\nline 4 0 4.01 0 0\n";
    EXPECT_EQ(RunZvi({"domains"}, square).status, 0);
    EXPECT_EQ(RunZvi({"domains", "--strict"}, square).status, 3);
    EXPECT_EQ(RunZvi({"domains", "--strict", "--join", "0.02"}, square).status, 0);
    EXPECT_NE(RunZvi({"domains", "--join", "0.02"}, square).out.find("1 domains,"), std::string::npos);
    EXPECT_NE(RunZvi({"domains", "--join", "0.001"}, square).err.find(" at (0, 4"), std::string::npos);
    EXPECT_EQ(RunZvi({"domains", "--strict"}, "circle 1 0 0 0\n").status, 3);

    std::string const crossing = "circle 1 0 0 2\nline 2 -3 0 3 0\n";
    EXPECT_NE(RunZvi({"domains"}, crossing).out.find("2 domains"), std::string::npos);
    EXPECT_NE(RunZvi({"domains", "--no-split"}, crossing).out.find("1 domains,"), std::string::npos);
    // Two squares side by side, each drawn whole: what they share is drawn twice.
    std::string const twice = "line 1 0 0 1 0\nline 2 1 0 1 1\nline 3 1 1 0 1\nline 4 0 1 0 0\n"
                              "line 5 1 0 2 0\nline 6 2 0 2 1\nline 7 2 1 1 1\nline 8 1 1 1 0\n";
    EXPECT_NE(RunZvi({"domains"}, twice).err.find("dropped 1 duplicate"), std::string::npos);
    EXPECT_NE(RunZvi({"domains", "--keep-duplicates"}, twice).err.find("dropped 0 duplicates"), std::string::npos);

    RunOutcome const json = RunZvi({"domains", "--json"}, kRing);
    EXPECT_TRUE(json.out.starts_with("{\"schema\":1,\"units\":\"absent\",\n\"reading\":{")) << json.out;
    EXPECT_NE(RunZvi({"domains", "--color=always"}, kRing).out.find("\x1B[1m"), std::string::npos);
    EXPECT_EQ(RunZvi({"domains", "--color=auto"}, kRing).out.find("\x1B"), std::string::npos);
}

TEST(Program, WritesPictureAndDrawing) {
    TemporaryFolder const folder;
    folder.Write("ring.curves", kRing);
    std::string const curves = folder.Native("ring.curves").string();
    std::string const dxf = folder.Native("ring.dxf").string();
    EXPECT_EQ(RunZvi({"domains", "--svg", folder.Native("ring.svg").string(), "--dxf", dxf, curves}).status, 0);
    EXPECT_TRUE(folder.Read("ring.svg").ends_with("</svg>\n"));
    EXPECT_TRUE(RunZvi({dxf}).out.ends_with(kRingTotals)) << "domains is what is meant";

    RunOutcome const over = RunZvi({"domains", "--svg", curves, curves});
    EXPECT_EQ(over.status, 2);
    EXPECT_EQ(folder.Read("ring.curves"), kRing);
    RunOutcome const nowhere = RunZvi({"domains", "--svg", folder.Native("no/x.svg").string(), curves});
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_NE(nowhere.err.find("x.svg: cannot be written"), std::string::npos);
    EXPECT_EQ(nowhere.out, "");
    EXPECT_EQ(nowhere.err.find("cut at"), std::string::npos) << "found before the work";
    EXPECT_EQ(folder.Names().size(), 3u) << "something was left";
}

TEST(Program, BehavesInAShell) {
    TemporaryFolder const folder;
    using Case = std::tuple<std::vector<std::string>, char const *, int>;
    for (auto const &[arguments, input, status] : {Case{{"domains", "--nope"}, "", 2},
                                                   {{"domains", "--strict"}, "circle 1 0 0 2\r\ncircle 2 0 0 1\r\n", 0},
                                                   {{"domains", "--strict"}, "line 1 0 0 1 1\n", 3},
                                                   {{"domains"}, "line 1 0 0 1\n", 1}})
        EXPECT_EQ(ProgramProcess(folder.Native(), arguments).Run(input), status) << input;

    ProgramProcess ring(folder.Native(), {"domains"});
    EXPECT_EQ(ring.Run(kRing), 0);
    EXPECT_TRUE(ring.Out().ends_with(kRingTotals)) << ring.Out();
    EXPECT_EQ(ring.Out().find('\r'), std::string::npos);
    EXPECT_TRUE(ring.Err().ends_with("\n     left over: nothing\n")) << ring.Err();
}

TEST(Program, TakesAndGivesAnyCharacter) {
    TemporaryFolder const folder;
    ProgramProcess convert(folder.Native(), {"convert", "12.5", "\u00B5m", "mm"});
    EXPECT_EQ(convert.Run(), 0);
    EXPECT_EQ(convert.Out(), "0.0125 mm\n") << convert.Err();

    std::string const plan = "\u8A08\u753B \u0161\U0001F600"; // of no single code page
    folder.Write(PathOf(plan + ".curves"), kRing);
    std::string const file = NameOf(folder.Native(PathOf(plan)));
    ProgramProcess domains(folder.Native(), {"domains", "--svg", file + ".svg", file + ".curves"});
    EXPECT_EQ(domains.Run(), 0) << domains.Err();
    EXPECT_NE(domains.Err().find(plan + ".curves: read 2 curves"), std::string::npos) << domains.Err();
    EXPECT_NE(folder.Read(PathOf(plan + ".svg")).find(plan), std::string::npos);
}

TEST(Program, TellsOnATerminalHowFarItIs) {
    std::istringstream in(kRing);
    std::ostringstream out;
    std::ostringstream err;
    Console console{in, out, err, false, false, true};
    EXPECT_EQ(RunProgram({"domains"}, console), 0);
    for (char const *share : {" 2 curves, 0 % ...", " 2 curves, 100 % ..."})
        EXPECT_NE(err.str().find(share), std::string::npos) << err.str();
    EXPECT_TRUE(out.str().ends_with(kRingTotals));
}

TEST(Program, WritesADevice) {
#ifdef _WIN32
    char const *const device = "NUL";
#else
    char const *const device = "/dev/null";
#endif
    TemporaryFolder const folder;
    ProgramProcess domains(folder.Native(), {"domains", "--svg", device});
    EXPECT_EQ(domains.Run(kRing), 0) << domains.Err();
}

TEST(Program, EndsSilentlyWhenTheReaderHasGone) {
    TemporaryFolder const folder;
    std::string curves;
    for (int i = 1; i <= 5000; ++i)
        curves += "circle " + std::to_string(i) + " " + std::to_string(3 * i) + " 0 1\n";
    folder.Write("many.curves", curves);
    ProgramProcess domains(folder.Native(), {"domains", folder.Native("many.curves").string()});
    EXPECT_EQ(domains.RunWithoutReader(), 0);
    EXPECT_NE(domains.Err().find("left over: nothing"), std::string::npos);
    EXPECT_EQ(domains.Err().find("cannot be written"), std::string::npos) << domains.Err();
}

} // namespace zvi::app::test
