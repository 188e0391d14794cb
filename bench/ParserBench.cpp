// Typed input: parse and evaluate once, a fresh parser each time, beside muParser.

#include "zvi/command/CStrParser.h"
#include "zvi/command/MNumericOptimizer.h"
#include "zvi/command/Parser.h"

#include <benchmark/benchmark.h>
#include <muParser.h>

#include <cmath>
#include <numbers>
#include <numeric>
#include <string>
#include <vector>

using namespace zvi;
using namespace zvi::lib;

namespace {

constexpr char const *kTexts[] = {"1+2*3", "sqrt(4)+sin(30)*2^3", "10,20,30"};

CString Wide(char const *text) {
    CString wide;
    wide.Format(L"%S", text);
    return wide;
}

/// The first number of the text; integers stay integers, as an exponent must.
double Evaluate(CString const &text) {
    Parser parser;
    double x = NAN;
    if (parser.ParsingGridDefineRel(text)) {
        VMArguement const *const first = parser.GetFirstArguement();
        x = first->AsDouble();
    }
    return x;
}

void BM_ParseZvi(benchmark::State &state) {
    CString const text = Wide(kTexts[state.range(0)]);
    double value = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(value = Evaluate(text));
    if (std::isnan(value))
        state.SkipWithError("not parsed");
    state.SetLabel(kTexts[state.range(0)]);
}
BENCHMARK(BM_ParseZvi)->DenseRange(0, 2);

double MuSine(double degrees) {
    return std::sin(degrees * std::numbers::pi / 180);
}

void BM_ParseMuParser(benchmark::State &state) {
    std::string const text = kTexts[state.range(0)];
    for (auto _ : state) {
        mu::Parser parser;
        parser.DefineFun("sin", MuSine);
        parser.SetExpr(text);
        int count = 0;
        benchmark::DoNotOptimize(parser.Eval(count)[0]);
    }
    state.SetLabel(kTexts[state.range(0)]);
}
BENCHMARK(BM_ParseMuParser)->DenseRange(0, 2);

void BM_NodeList(benchmark::State &state) {
    CString text;
    text.Format(L"1to%d", static_cast<int>(state.range(0)));
    CArray<int> list;
    for (auto _ : state)
        CStrParser::GetNodeList(text, list);
    if (list.GetSize() != state.range(0))
        state.SkipWithError("wrong list");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_NodeList)->Arg(1000)->Arg(1000000)->Unit(benchmark::kMillisecond);

/// The peer: the numbers of a range of which the bounds are known already.
void BM_NodeListIota(benchmark::State &state) {
    std::vector<int> list;
    for (auto _ : state) {
        list.assign(static_cast<std::size_t>(state.range(0)), 0);
        std::iota(list.begin(), list.end(), 1);
        benchmark::DoNotOptimize(list.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_NodeListIota)->Arg(1000)->Arg(1000000)->Unit(benchmark::kMillisecond);

/// A power that needs no loop.
void BM_PowerOfMinusOne(benchmark::State &state) {
    CString const text = Wide("(-1)^2147483647");
    double value = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(value = Evaluate(text));
    if (value != -1)
        state.SkipWithError("wrong power");
}
BENCHMARK(BM_PowerOfMinusOne);

/// Every second number, with a gap now and then.
MArray<long> SampleNumbers(std::int64_t count) {
    MArray<long> numbers;
    for (long i = 0, number = 1; i < count; ++i, number += i % 97 == 0 ? 5 : 2)
        numbers.PushBack(number);
    return numbers;
}

void BM_Compress(benchmark::State &state) {
    MArray<long> numbers = SampleNumbers(state.range(0));
    MNumericOptimizer optimizer;
    CString text;
    for (auto _ : state)
        text = optimizer.OptimizeSortedArray(numbers);
    MArray<long> selected;
    if (!optimizer.SelectNumByStr(numbers, text.GetString(), selected) || selected.Size() != numbers.Size())
        state.SkipWithError("the text does not select its numbers");
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_Compress)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond)->Complexity();

} // namespace
