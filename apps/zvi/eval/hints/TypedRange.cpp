#include "apps/zvi/eval/hints/TypedRange.h"

#include "apps/zvi/common/Characters.h"

#include <algorithm>

namespace zvi::app {

namespace {

/// Passes blanks and then a word, in short or long; returns the index behind it, or kNowhere.
std::size_t PassMarker(std::wstring const &upper, std::size_t at, wchar_t first, wchar_t second) {
    at = NextItem(upper, at);
    if (at == kNowhere || upper[at] != first)
        return kNowhere;
    at += at + 1 < upper.size() && upper[at + 1] == second ? 2 : 1;
    return NextItem(upper, at);
}

/// Reads digits; returns the index behind them, or kNowhere if there are none. Beyond any integer of the language the
/// value stays where it is.
std::size_t PassDigits(std::wstring const &text, std::size_t at, long long &value) {
    constexpr long long kTooLarge = 1'000'000'000'000;
    std::size_t const end = EndOfDigits(text, at);
    value = 0;
    for (wchar_t const digit : Part(text, {at, end - at}))
        value = std::min(kTooLarge, value * 10 + (digit - L'0'));
    return end == at ? kNowhere : end;
}

std::optional<long long> StepValue(std::wstring const &text, Span const &step) {
    bool const negative = text[step.begin] == L'-';
    long long value = 0;
    std::size_t const end = PassDigits(text, step.begin + negative, value);
    return end == step.End() ? std::optional(negative ? -value : value) : std::nullopt;
}

std::optional<TypedRange> RangeAt(std::wstring const &upper, std::size_t at) {
    TypedRange range;
    std::size_t end = PassDigits(upper, at, range.from);
    end = end == kNowhere ? end : PassMarker(upper, end, L'T', L'O');
    end = end == kNowhere ? end : PassDigits(upper, end, range.to);
    if (end == kNowhere)
        return std::nullopt;
    range.stepValue = 1;
    std::size_t const step = PassMarker(upper, end, L'B', L'Y');
    if (step != kNowhere) {
        end = std::min(upper.find_first_of(L" ,", step), upper.size());
        range.step = {step, end - step};
        range.stepValue = StepValue(upper, range.step);
    }
    range.span = {at, end - at};
    return range;
}

} // namespace

std::optional<long long> TypedRange::Count() const {
    long long const size = stepValue.value_or(1);
    bool const ends = from < to ? size > 0 : size < 0;
    if (!ends && from != to)
        return std::nullopt;
    return from == to ? 1 : (to - from) / size + 1;
}

std::vector<TypedRange> TypedRanges(std::wstring const &text) {
    std::wstring const upper = Upper(text);
    std::vector<TypedRange> ranges;
    for (std::size_t at = 0; at < upper.size(); ++at) {
        bool const begins = IsDigit(upper[at]) && (at == 0 || !IsNameChar(upper[at - 1]));
        std::optional<TypedRange> const range = begins ? RangeAt(upper, at) : std::nullopt;
        if (range) {
            ranges.push_back(*range);
            at = range->span.End() - 1;
        }
    }
    return ranges;
}

long long CountNamed(std::wstring const &text) {
    long long count = 0;
    for (TypedRange const &range : TypedRanges(text))
        count += range.Count().value_or(0);
    for (std::size_t at = text.find(L'@'); at != kNowhere; at = text.find(L'@', at + 1)) {
        std::size_t begin = at;
        while (begin > 0 && IsDigit(text[begin - 1]))
            --begin;
        constexpr std::size_t kMostDigits = 12;
        long long repeats = 0;
        if (at - begin <= kMostDigits && PassDigits(text, begin, repeats) != kNowhere)
            count += repeats;
    }
    return count;
}

} // namespace zvi::app
