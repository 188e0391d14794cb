#include "zvi/command/MNumericOptimizer.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_set>

namespace zvi::lib {

namespace {

/// Fewest numbers of a run of step 1.
constexpr std::int64_t kLeastRunOfStepOne = 3;
/// Fewest numbers of a run of any other step.
constexpr std::int64_t kLeastRunOfOtherStep = 4;
/// Most characters of a number in a selection text: its sign and its digits.
constexpr std::uint64_t kMostNumberChars = 127;

bool FitsRun(std::int64_t number) {
    return static_cast<std::int32_t>(number) == number;
}

/// In 64 bits, for a `long` may have 32.
std::int64_t StepBetween(long from, long to) {
    return std::int64_t{to} - from;
}

MTArray<long> ViewOf(MArray<long> &numbers) {
    return MTArray<long>(numbers.Data(), static_cast<int>(numbers.Size()));
}

bool IsAscending(MTArray<long> const &numbers) {
    return std::is_sorted(numbers.begin(), numbers.end());
}

MArray<long> SortedOnce(MTArray<long> const &numbers) {
    MArray<long> ascending;
    ascending.Resize(static_cast<std::size_t>(numbers.end() - numbers.begin()));
    std::copy(numbers.begin(), numbers.end(), ascending.begin());
    std::sort(ascending.begin(), ascending.end());
    ascending.Resize(static_cast<std::size_t>(std::unique(ascending.begin(), ascending.end()) - ascending.begin()));
    return ascending;
}

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

bool IsBlank(wchar_t c) {
    return c == L'\t' || c == L'\r' || c == L' ';
}

/// Reads a number with an optional sign at `pos` and moves `pos` behind it; false, with nothing changed, when there is
/// none, when it is too long or too large, or when a second sign follows it.
bool ReadNumber(wchar_t const *text, std::uint64_t &pos, std::uint64_t &value) {
    constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
    std::uint64_t at = pos;
    bool const negative = text[at] == L'-';
    at += negative;
    while (negative && IsBlank(text[at]))
        ++at;
    std::uint64_t const firstDigit = at;
    std::uint64_t read = 0;
    for (; IsDigit(text[at]); ++at) {
        auto const digit = static_cast<std::uint64_t>(text[at] - L'0');
        if (read > (kLargest - digit) / 10)
            return false;
        read = read * 10 + digit;
    }
    if (at == firstDigit || at - firstDigit + negative > kMostNumberChars || text[at] == L'-')
        return false;
    pos = at;
    value = negative ? 0 - read : read;
    return true;
}

void AppendWord(std::wstring &text, std::wstring const &word) {
    if (!text.empty())
        text += L' ';
    text += word;
}

std::wstring RunWord(STB_OPT_NODE const &run) {
    std::wstring word = std::to_wstring(run.first) + L"to" + std::to_wstring(run.last);
    if (run.step > 1)
        word += L"by" + std::to_wstring(run.step);
    return word;
}

/// The numbers from `first` to `last`, both included, in steps of the size of `step` from `first`. The direction is
/// that from `first` to `last` whatever the sign of `step`; a step of 0 names `first` alone.
struct Range {
    std::int64_t first = 0;
    std::int64_t last = 0;
    std::int64_t step = 1;

    bool Holds(long number) const {
        std::uint64_t const distance = number >= first ? Difference(number, first) : Difference(first, number);
        std::uint64_t const size = step >= 0 ? static_cast<std::uint64_t>(step) : 0 - static_cast<std::uint64_t>(step);
        return size == 0 ? distance == 0 : distance % size == 0;
    }

private:
    static std::uint64_t Difference(std::int64_t high, std::int64_t low) {
        return static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(low);
    }
};

void SelectRange(MTArray<long> const &numbers, Range const &range, MArray<long> &result) {
    auto const low = std::lower_bound(numbers.begin(), numbers.end(), std::min(range.first, range.last));
    auto const high = std::upper_bound(low, numbers.end(), std::max(range.first, range.last));
    std::size_t const before = result.Size();
    for (auto it = low; it != high; ++it) {
        if (range.Holds(*it))
            result.PushBack(*it);
    }
    if (range.first > range.last)
        std::reverse(result.begin() + static_cast<std::ptrdiff_t>(before), result.end());
}

void SelectNumber(MTArray<long> const &numbers, std::int64_t number, MArray<long> &result) {
    auto const found = std::lower_bound(numbers.begin(), numbers.end(), number);
    if (found != numbers.end() && *found == number)
        result.PushBack(*found);
}

/// Where a selection text stands within a word: behind nothing, a number alone, "to", the end of a range, "by", a step.
enum class WordState { kStart, kAfterFirst, kAfterTo, kAfterLast, kAfterBy, kAfterStep };

/// Whether a word may end here, and so another begin; "to" and "by" must be followed by a number.
bool MayEnd(WordState state) {
    return state != WordState::kAfterTo && state != WordState::kAfterBy;
}

/// Moves on behind a token; false when it may not follow: "to" follows a number alone, "by" the end of a range.
bool Follow(WordState &state, std::uint64_t type) {
    WordState const before = state;
    if (type == MNumericOptimizer::kNumber)
        state = MayEnd(before)                  ? WordState::kAfterFirst
                : before == WordState::kAfterTo ? WordState::kAfterLast
                                                : WordState::kAfterStep;
    else if (type == MNumericOptimizer::kTo && before == WordState::kAfterFirst)
        state = WordState::kAfterTo;
    else if (type == MNumericOptimizer::kBy && before == WordState::kAfterLast)
        state = WordState::kAfterBy;
    return state != before || (type == MNumericOptimizer::kNumber && before == WordState::kAfterFirst);
}

} // namespace

MNumericOptimizer::~MNumericOptimizer() = default;

CString MNumericOptimizer::OptimizeSortedArray(MArray<long> &numbers) {
    return TextOf(ViewOf(numbers));
}

CString MNumericOptimizer::OptimizeUnsortedArray(MArray<long> &numbers) {
    std::sort(numbers.begin(), numbers.end());
    MArray<long> once = SortedOnce(ViewOf(numbers));
    return TextOf(ViewOf(once));
}

int MNumericOptimizer::OptimizeSortedArray(MArray<long> &numbers, MArray<STB_OPT_NODE> &result) {
    ExtractAll(ViewOf(numbers));
    result = m_runs;
    for (long const number : m_rest) {
        auto const value = static_cast<std::int32_t>(number);
        result.PushBack(STB_OPT_NODE{value, value, 1});
    }
    return 1;
}

int MNumericOptimizer::OptimizeUnsortedArray(MArray<long> &numbers, MArray<STB_OPT_NODE> &result) {
    std::sort(numbers.begin(), numbers.end());
    MArray<long> once = SortedOnce(ViewOf(numbers));
    return OptimizeSortedArray(once, result);
}

CString MNumericOptimizer::Optimize(MArray<long> &numbers) {
    return TextOf(ViewOf(numbers));
}

CString MNumericOptimizer::Optimize(long *numbers, std::int64_t count) {
    return TextOf(MTArray<long>(numbers, static_cast<int>(count)));
}

CString MNumericOptimizer::TextOf(MTArray<long> const &numbers) {
    if (IsAscending(numbers)) {
        ExtractAll(numbers);
        return MakeOptimizedStr();
    }
    MArray<long> ascending = SortedOnce(numbers);
    ExtractAll(ViewOf(ascending));
    return MakeOptimizedStr();
}

void MNumericOptimizer::ExtractAll(MTArray<long> const &numbers) {
    m_runs.Clear();
    m_rest.Clear();
    std::int64_t pos = 0;
    while (ExtractSeq(numbers, pos))
        ;
}

int MNumericOptimizer::ExtractSeq(MTArray<long> const &numbers, std::int64_t &pos) {
    std::int64_t const count = numbers.Size();
    for (; pos < count; ++pos) {
        long const *const run = numbers.Data() + pos;
        std::int64_t length = 1;
        if (pos + 1 < count && FitsRun(run[0]) && FitsRun(run[1])) {
            std::int64_t const step = StepBetween(run[0], run[1]);
            for (std::int64_t next = run[0] + step; pos + length < count && run[length] == next && FitsRun(next);
                 next += step)
                ++length;
            if (FitsRun(step) && length >= (step == 1 ? kLeastRunOfStepOne : kLeastRunOfOtherStep)) {
                m_runs.PushBack(STB_OPT_NODE{static_cast<std::int32_t>(run[0]),
                                             static_cast<std::int32_t>(run[length - 1]),
                                             static_cast<std::int32_t>(step)});
                pos += length;
                return 1;
            }
        }
        m_rest.PushBack(run[0]);
    }
    return 0;
}

CString MNumericOptimizer::MakeOptimizedStr() {
    std::stable_sort(m_runs.begin(), m_runs.end(),
                     [](STB_OPT_NODE const &a, STB_OPT_NODE const &b) { return a.first < b.first; });
    std::wstring text;
    auto rest = m_rest.begin();
    for (STB_OPT_NODE const &run : m_runs) {
        for (; rest != m_rest.end() && *rest <= run.first; ++rest)
            AppendWord(text, std::to_wstring(*rest));
        AppendWord(text, RunWord(run));
    }
    for (; rest != m_rest.end(); ++rest)
        AppendWord(text, std::to_wstring(*rest));
    return CString(text.c_str());
}

int MNumericOptimizer::SelectNumByStr(MTArray<long> &numbers, wchar_t const *text, MArray<long> &result) {
    int const read = SelectNumByStrBase(numbers, text, result);
    result = SortedOnce(ViewOf(result));
    return read;
}

int MNumericOptimizer::SelectNumByStr(MArray<long> &numbers, wchar_t const *text, MArray<long> &result) {
    MTArray<long> view = ViewOf(numbers);
    return SelectNumByStr(view, text, result);
}

int MNumericOptimizer::SelectNumByStr(long *numbers, std::int64_t count, wchar_t const *text, MArray<long> &result) {
    MTArray<long> view(numbers, static_cast<int>(count));
    return SelectNumByStr(view, text, result);
}

int MNumericOptimizer::SelectNumByStrKeepSeq(MTArray<long> &numbers, wchar_t const *text, MArray<long> &result,
                                             int unique) {
    int const read = SelectNumByStrBase(numbers, text, result);
    if (!unique)
        return read;
    std::unordered_set<long> met;
    auto keep = result.end();
    for (auto it = result.end(); it != result.begin();) {
        --it;
        if (met.insert(*it).second)
            *--keep = *it;
    }
    std::move(keep, result.end(), result.begin());
    result.Resize(static_cast<std::size_t>(result.end() - keep));
    return read;
}

int MNumericOptimizer::SelectNumByStrKeepSeq(MArray<long> &numbers, wchar_t const *text, MArray<long> &result,
                                             int unique) {
    MTArray<long> view = ViewOf(numbers);
    return SelectNumByStrKeepSeq(view, text, result, unique);
}

int MNumericOptimizer::SelectNumByStrKeepSeq(long *numbers, std::int64_t count, wchar_t const *text,
                                             MArray<long> &result, int unique) {
    MTArray<long> view(numbers, static_cast<int>(count));
    return SelectNumByStrKeepSeq(view, text, result, unique);
}

int MNumericOptimizer::SelectNumByStrBase(MTArray<long> &numbers, wchar_t const *text, MArray<long> &result) {
    result.Clear();
    if (numbers.Size() == 0)
        return 1;
    std::wstring words(std::wstring_view(text ? text : L"").size() + 1, L'\0');
    if (!StrCpyRemoveSpace(words.data(), text ? text : L""))
        return 0;
    std::uint64_t pos = 0;
    std::uint64_t type = kNoToken;
    std::uint64_t value = 0;
    // StrCpyRemoveSpace let nothing but numbers and ranges through, with one blank between them.
    while (words[pos] != L'\0') {
        Range range;
        GetToken(words.data(), pos, type, value);
        range.first = static_cast<std::int64_t>(value);
        GetToken(words.data(), pos, type, value);
        if (type == kBlank) {
            SelectNumber(numbers, range.first, result);
            continue;
        }
        GetToken(words.data(), pos, type, value);
        range.last = static_cast<std::int64_t>(value);
        GetToken(words.data(), pos, type, value);
        if (type == kBy) {
            GetToken(words.data(), pos, type, value);
            range.step = static_cast<std::int64_t>(value);
            GetToken(words.data(), pos, type, value);
        }
        SelectRange(numbers, range, result);
    }
    return 1;
}

int MNumericOptimizer::StrCpyRemoveSpace(wchar_t *dst, wchar_t const *src) {
    WordState state = WordState::kStart;
    std::uint64_t pos = 0;
    std::uint64_t type = kNoToken;
    std::uint64_t value = 0;
    wchar_t *out = dst;
    *dst = L'\0';
    while (src[pos] != L'\0') {
        std::uint64_t const begin = pos;
        bool const isToken = GetToken(src, pos, type, value) != 0;
        if (isToken && type == kBlank)
            continue;
        bool const begins = type == kNumber && MayEnd(state) && state != WordState::kStart;
        if (!isToken || !Follow(state, type)) {
            *dst = L'\0';
            return 0;
        }
        if (begins)
            *out++ = L' ';
        out = std::copy_if(src + begin, src + pos, out, [](wchar_t c) { return !IsBlank(c); });
    }
    *(MayEnd(state) ? out : dst) = L'\0';
    return MayEnd(state) ? 1 : 0;
}

int MNumericOptimizer::GetToken(wchar_t const *text, std::uint64_t &pos, std::uint64_t &type, std::uint64_t &value) {
    auto const letters = [&](wchar_t upper, wchar_t lower) { return text[pos] == upper || text[pos] == lower; };
    type = kNoToken;
    if (text[pos] == L'\0' || IsBlank(text[pos])) {
        pos += text[pos] != L'\0';
        type = kBlank;
        return 1;
    }
    if (letters(L'T', L't')) {
        ++pos;
        pos += letters(L'O', L'o');
        type = kTo;
        return 1;
    }
    if (letters(L'B', L'b')) {
        ++pos;
        pos += letters(L'Y', L'y');
        type = kBy;
        return 1;
    }
    if (!ReadNumber(text, pos, value))
        return 0;
    type = kNumber;
    return 1;
}

} // namespace zvi::lib
