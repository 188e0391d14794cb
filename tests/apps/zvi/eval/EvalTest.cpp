#include "tests/apps/zvi/Run.h"

#include "apps/zvi/common/CaretText.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/common/typed/EvalMode.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>

namespace zvi::app::test {

namespace {

std::vector<std::string> Words(std::string const &mode, std::string const &text) {
    std::vector<std::string> words = {"eval", "--mode", mode};
    if (mode == "mm")
        words = {"eval", "--unit-system", "0"};
    words.push_back(text);
    return words;
}

/// The text behind "write " in a hint, up to the end of its line; empty if there is none.
std::string Correction(std::string const &err) {
    std::string const word = "; write ";
    std::size_t const at = err.find(word);
    return at == std::string::npos ? "" : err.substr(at + word.size(), err.find('\n', at) - at - word.size());
}

} // namespace

TEST(Eval, PrintsOneGroupPerLine) {
    for (auto const &[mode, text, out] : std::initializer_list<std::array<char const *, 3>>{
             {"number", "-2^1.0*0+1e5", ""},
             {"number", "1/3", "0.3333333333333333\n"},
             {"number", "1e20", "1e+20\n"},
             {"number", "-0", "0\n"},
             {"number", "", ""},
             {"nodes", "  ", ""},
             {"integer", "2^10", "1024\n"},
             {"two", "4", "4 0\n"},
             {"position", "10 2*5", "10 10 0\n"},
             {"grid-abs", "3@2", "2 4 6\n"},
             {"grid-rel", "3@2,0.5", "2 2 2 0.5\n"},
             {"grid-eq", "4", "4 4\n"},
             {"nodes", "1to9by2 20", "1 3 5 7 9 20\n"},
             {"list", "5to1by-2", "5 3 1\n"},
             {"points", "[1,2,3] [4,5]", "1 2 3\n4 5 0\n"},
             {"mm", "2m+1,000mm", "3000\n"},
         }) {
        RunOutcome const run = RunZvi(Words(mode, text));
        EXPECT_EQ(run.out, out) << mode << ": " << text << run.err;
        EXPECT_EQ(run.status, *out ? 0 : 1) << text;
    }
}

TEST(Eval, AFailureShowsThePlaceAndWhatToWrite) {
    // The line under the text without its indent, and a part of the hint.
    for (auto const &[mode, text, caret, hint] : std::initializer_list<std::array<char const *, 4>>{
             {"number", "1 + 2", "  ^", "blanks separate items; write 1+2"},
             {"number", "1 + 2 * sin 30 + 3pi", "  ^", "write 1+2*sin(30)+3*pi"},
             {"number", "7/(2-2)+1", "  ^~~~~", "division by zero"},
             {"number", "2^3", "  ^", "x^2 is x*x, or use --mode grid-rel"},
             {"number", "(1+2)^0.5", "      ^~~", "x^0.5 is sqrt(x)"},
             {"grid-rel", "2^3.0", "  ^~~", "without a point"},
             {"number", "2^0.3", "  ^~~", "x^y is exp(y*ln(x))"},
             {"number", "2**3", "  ^", "a power is written ^"},
             {"number", "1+tan(90)", "  ^~~~~~~", "angles are in degrees"},
             {"number", "asin(2)*3", "^~~~~~~", "from -1 to 1"},
             {"number", "1+sqrt(-1)", "  ^~~~~~~~", "no value"},
             {"number", "2*1e400", "  ^~~~~", "no value"},
             {"integer", "1+50000*50000", "       ^~~~~~", "-2147483648 to 2147483647"},
             {"nodes", "1 2147483648", "  ^~~~~~~~~~", "-2147483648 to 2147483647"},
             {"number", "1+sqr(4)", "  ^~~", "did you mean sqrt?"},
             {"number", "2*beta", "  ^~~~", "B and T stand for BY and TO"},
             {"number", "max(1,2)", "^~~", "unknown function 'max'"},
             {"number", "x*2", "^", "--var x=..."},
             {"number", "sin30", "^~~~~", "write sin(30)"},
             {"number", "sin(30", "      ^", "write sin(30)"},
             {"number", "(1+2))", "     ^", "write (1+2)"},
             {"number", "2(3+4)", " ^", "write 2*(3+4)"},
             {"number", "1,5", " ^", "write 1.5"},
             {"number", "1,000", " ^", "write 1000"},
             {"number", "1 000", "  ^", "write 1000"},
             {"number", "1,2,", " ^", "--mode grid-rel"},
             {"number", "10^-3", "   ^~", "divide by the power"},
             {"number", "1/(1-1", "      ^", "not closed"},
             {"number", "1e 3", " ^", "without blanks"},
             {"number", "2x3", " ^~", "write * for x"},
             {"number", "+5", "^", "write 5"},
             {"number", "=1+2", "^", "write 1+2"},
             {"number", "a=5", " ^", "--var a=5"},
             {"number", "1+", "  ^", "the text ends"},
             {"number", "2\u00D73", " ^", "write 2*3"},
             {"number", "\uFF15\uFF0B\uFF13", "^~", "write 5+3"},
             {"number", "\u4E2D+1", "^~", "has no meaning here"},
             {"number", "1\x01+2", " ^", "'?' has no meaning here"},
             {"number", "1\u00B300000@1", " ^", "has no meaning here"}, // with the sign mended it may name many
             {"number", "5mm", " ^~", "--unit-system"},
             {"number", "1to5", " ^", "--mode nodes"},
             {"number", "[1,2]", "^", "--mode points"},
             {"mm", "1+5kg", "   ^~", "unknown unit 'kg'"},
             {"mm", "2*5ft", "   ^", "write 2*5*12in"},
             {"mm", "5mm*pi", "      ^", "write 5mm*(pi)"},
             {"mm", "5 mm + sqr(2)", "       ^~~", "did you mean sqrt?"},
             {"nodes", "1to5 5to1by2 7", "             ^", "write 1to5 5to1by-2 7"},
             {"nodes", "1to5q", "    ^", "unknown name 'q'"},
             {"mm", "12\"", "  ^", "write 12in"},
             {"position", "(1,2,3)", "  ^", "write 1,2,3"},
             {"nodes", "3 5to5", "      ^", "write 3 5to5by-1"},
             {"nodes", "1..5", "  ^", "write 1to5"},
             {"nodes", "1,2.5,3", "  ^~~", "2.5 is no integer"},
             {"nodes", "1 7/2", "  ^~~", "quotient"},
             {"nodes", "1to5by0", "^~~~~~~", "from its first number to its last"},
             {"nodes", "1to2000000000", "             ^", "at most 10,000,000"},
             {"nodes", "-5to-1", "  ^", "plain integers"},
             {"grid-rel", "3.0@2", "^~~~~", "is an integer"},
             {"position", "10<45", "  ^", "write @10<45"},
             {"position", "1,2,3,4", "      ^", "--mode grid-rel"},
             {"position", "3@2", "^~~", "3@2 is a repeat"},
             {"points", "(1,2) (3,4)", "^", "write [1,2] [3,4]"},
             {"points", "[1,2] [1,2,3,4]", "      ^~~~~~~~~", "one to three"},
         }) {
        RunOutcome const run = RunZvi(Words(mode, text));
        std::string const shown = std::string(text) == "1\x01+2" ? "1?+2" : text;
        std::string const carets = "\n  " + shown + "\n  " + caret + "\n  hint: ";
        EXPECT_EQ(run.status, 1) << text;
        EXPECT_EQ(run.out, "") << text;
        EXPECT_NE(run.err.find(carets), std::string::npos) << text << "\n" << run.err;
        EXPECT_NE(run.err.find(hint), std::string::npos) << text << "\n" << run.err;
        std::string const mended = Correction(run.err);
        EXPECT_TRUE(mended.empty() || RunZvi(Words(mode, mended)).status == 0) << text << " -> " << mended;
    }
    // What the parser itself says stands before.
    EXPECT_TRUE(RunZvi({"eval", "tan(90)"}).err.starts_with("zvi: Function error tan(90)\n"));
    EXPECT_TRUE(RunZvi({"eval", "--mode", "two", "1,2,3"}).err.starts_with("zvi: extra arguement!\n"));
    EXPECT_TRUE(RunZvi({"eval", "--mode", "position", "3@2"})
                    .err.starts_with("zvi: Syntax error : Iteration Number must be integer !\n"));
}

TEST(Eval, BadTextNeverHurts) {
    std::string many;
    for (int i = 0; i < 1001; ++i)
        many += "1,";
    std::string foreign;
    for (int i = 0; i < 300; ++i)
        foreign += "1\u00D7(";
    for (std::string const &text :
         {std::string(10000, '('), std::string(1900, '('), std::string(5000, '1') + "+", std::string(1000, '/'), many,
          foreign, std::string("\xC3\x28\xFF\xED\xA0\x80"), std::string("1\0002", 3), std::string("__GET_POSITION__"),
          std::string("__ARG_TO__ __AGR_ERROR__"), std::string("\t\r\n,"), std::string("[[[]]]@<@@")}) {
        for (EvalModeEntry const &entry : EvalModes()) {
            RunOutcome const run = RunZvi({"eval", "--mode", entry.name, "--", text});
            EXPECT_LE(run.status, 1) << entry.name << ": " << text.substr(0, 40);
            EXPECT_EQ(run.status == 0, run.err.empty()) << text.substr(0, 40);
        }
    }
    for (char const *text : {"1tO2000000000", "1to9999999 1to9999999", "1to9999999 x", "1,5to5"})
        EXPECT_EQ(RunZvi({"eval", "--mode", "nodes", text}).status, 1) << text;
    EXPECT_NE(RunZvi({"eval", std::string(3000, '1')}).err.find("too long"), std::string::npos);
    EXPECT_NE(RunZvi({"eval", "--mode", "nodes", many}).err.find("at most 1,000 numbers"), std::string::npos);
}

TEST(Eval, AnswersMachines) {
    auto const json = [](std::vector<std::string> words) {
        words.insert(words.begin() + 1, "--json");
        return nlohmann::json::parse(RunZvi(words).out);
    };
    EXPECT_EQ(json({"eval", "1+2"}), nlohmann::json::parse(R"({"schema":1,"mode":"number","groups":[[3]]})"));
    EXPECT_EQ(json({"eval", "--mode", "position", "@1,2"}),
              nlohmann::json::parse(R"({"schema":1,"mode":"position","op":1,"groups":[[1,2,0]]})"));
    EXPECT_EQ(json({"eval", "1+sqrt(-1)"})["error"]["column"], 3);
    nlohmann::json const failed = json({"eval", "\U0001F600\u00E9+ 1"});
    EXPECT_EQ(failed["error"]["column"], 1);
    EXPECT_EQ(json({"eval", "1+\u00E9"})["error"]["column"], 3);
    EXPECT_EQ(json({"eval", "7/0"})["error"]["hint"], "division by zero");
}

TEST(Eval, ReadsLinesAndKeepsVariables) {
    RunOutcome const run = RunZvi({"eval", "-"}, "h = 3\n2*h\n\n1 + 2\n:mode nodes\n1to3\n:units 1\n:mode number\n"
                                                 "h*5mm\nh=4\n:units off\nh\n:quit\n99\n");
    EXPECT_EQ(run.out, "6\n1 2 3\n0.015\n4\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.starts_with("zvi: standard input:4: syntax error\n")) << run.err;
    EXPECT_EQ(RunZvi({"eval"}, "\xEF\xBB\xBF"
                               "1+1\n2+2")
                  .out,
              "2\n4\n");
    for (char const *line : {":mde nodes", ":mode nods", ":units 7", "sin=3", "b1=3", "x=1 + 2", "x=", "1=2"}) {
        RunOutcome const failed = RunZvi({"eval"}, std::string(line) + "\n");
        EXPECT_EQ(failed.status, 1) << line;
        EXPECT_FALSE(failed.err.empty()) << line;
    }
}

TEST(Eval, TextsMayBeginWithAMinusAndOptionsStandAnywhere) {
    EXPECT_EQ(RunZvi({"eval", "-5+3"}).out, "-2\n");
    EXPECT_EQ(RunZvi({"eval", "-pi*0-1", "--mode=integer"}).out, "-1\n");
    EXPECT_EQ(RunZvi({"eval", "--var", "x=-5", "x"}).out, "-5\n");
    EXPECT_EQ(RunZvi({"eval", "--mode", "nodes", "1to3", "7"}).out, "1 2 3 7\n");
    for (std::vector<std::string> const &words : std::initializer_list<std::vector<std::string>>{
             {"eval", "--mode", "nods", "1"},
             {"eval", "--moed", "nodes", "1"},
             {"eval", "--unit-system", "6", "1"},
             {"eval", "--unit-system", "1", "--mode", "nodes", "1"},
             {"eval", "--var", "beta=1", "1"},
             {"eval", "--var", "x", "1"},
             {"eval", "--var", "pi=3", "1"},
             {"eval", "--var", "x=1 + 2", "1"},
             {"eval", "--mode"},
         }) {
        RunOutcome const run = RunZvi(words);
        EXPECT_EQ(run.status, 2) << words[1];
        EXPECT_TRUE(run.err.starts_with("zvi: ")) << run.err;
    }
    EXPECT_TRUE(RunZvi({"eval", "-h"}).out.starts_with("Examples:"));
}

TEST(Eval, ALongTextShowsTheSurroundingsOfThePlace) {
    CString const text = WideOf(std::string(200, '1') + "+" + std::string(200, '2'));
    std::string const shown = CaretText(text, {200, 1});
    std::size_t const line = shown.find('\n');
    EXPECT_LT(line, 80u);
    EXPECT_EQ(shown[shown.find('^') - line - 1], '+');
    EXPECT_EQ(CaretText(WideOf("ab"), {2, 5}), "  ab\n    ^\n");
}

} // namespace zvi::app::test
