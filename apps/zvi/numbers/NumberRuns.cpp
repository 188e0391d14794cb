#include "apps/zvi/numbers/NumberRuns.h"

#include "apps/zvi/common/CaretText.h"
#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/WideText.h"

#include "zvi/command/MNumericOptimizer.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace zvi::app {

namespace {

using lib::MNumericOptimizer;

/// Refuses the text at a place, which is shown in its line, as `zvi eval` does.
[[noreturn]] void Refuse(CString const &text, Span const &where, std::string const &what, std::string const &hint) {
    std::wstring_view const all = View(text);
    std::wstring_view const before = all.substr(0, where.begin);
    std::size_t const lineBegin = before.rfind(L'\n') + 1; // 0 in the first line
    std::size_t const lineEnd = std::min(all.find_first_of(L"\r\n", where.begin), all.size());
    auto const line = static_cast<std::size_t>(std::count(before.begin(), before.end(), L'\n')) + 1;
    throw InputError(line, DiagnosisText(CString(all.substr(lineBegin, lineEnd - lineBegin)),
                                         {{where.begin - lineBegin, where.length}, what, hint}));
}

/// The text with blanks for the commas and line ends that separate its items, too.
CString WithBlanks(std::string const &text) {
    std::string blanks = text;
    std::replace_if(
        blanks.begin(), blanks.end(), [](char c) { return c == ',' || c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return WideOf(blanks);
}

/// Walks over the tokens of a text.
class RunReader {
public:
    explicit RunReader(std::string const &text) : m_shown(WideOf(text)), m_units(WithBlanks(text)) {}

    bool AtEnd() {
        SkipBlanks();
        return m_pos >= static_cast<std::uint64_t>(m_units.GetLength());
    }

    /// Whether the next token is of this type; if so, passes it.
    bool Pass(MNumericOptimizer::TokenType wanted) {
        SkipBlanks();
        std::uint64_t after = m_pos;
        std::uint64_t type = 0;
        std::uint64_t read = 0;
        if (!m_optimizer.GetToken(m_units.GetString(), after, type, read) || type != wanted)
            return false;
        m_begin = m_pos;
        m_pos = after;
        m_value = static_cast<std::int64_t>(read);
        return true;
    }

    long Number(char const *hint) {
        if (!Pass(MNumericOptimizer::kNumber)) {
            bool const atEnd = AtEnd();
            std::wstring_view const rest = View(m_units).substr(static_cast<std::size_t>(m_pos));
            bool const isNumber = rest.size() > 1 && IsDigit(rest[rest[0] == L'-']);
            RefuseHere(atEnd      ? "the text ends where a number is expected"
                       : isNumber ? "the number is too large"
                                  : "no number",
                       hint);
        }
        if (!std::in_range<long>(m_value))
            RefuseFrom(m_begin, "the number is too large", hint);
        return static_cast<long>(m_value);
    }

    [[noreturn]] void RefuseHere(std::string const &what, std::string const &hint) const {
        std::wstring_view const all = View(m_units);
        std::size_t const textEnd = all.find_last_not_of(L' ') + 1; // 0 when there is no text
        std::size_t const at = std::min(static_cast<std::size_t>(m_pos), textEnd);
        std::size_t const end = std::min(all.find(L' ', at), all.size());
        Refuse(m_shown, {at, std::max<std::size_t>(1, end - at)}, what, hint);
    }

    /// Refuses the item from `from` to here.
    [[noreturn]] void RefuseFrom(std::uint64_t from, std::string const &what, std::string const &hint) const {
        Refuse(m_shown, {static_cast<std::size_t>(from), static_cast<std::size_t>(m_pos - from)}, what, hint);
    }

    std::uint64_t LastBegin() const { return m_begin; }

private:
    void SkipBlanks() {
        m_pos = std::min(View(m_units).find_first_not_of(L' ', static_cast<std::size_t>(m_pos)), View(m_units).size());
    }

    CString m_shown;
    CString m_units;
    MNumericOptimizer m_optimizer;
    std::uint64_t m_pos = 0;
    std::uint64_t m_begin = 0;
    std::int64_t m_value = 0;
};

constexpr char const *kRunsHint = "runs are numbers and ranges such as 1to9by2 20";

/// How far apart two numbers are.
std::uint64_t Distance(long a, long b) {
    return a > b ? static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b)
                 : static_cast<std::uint64_t>(b) - static_cast<std::uint64_t>(a);
}

/// Appends the numbers of a range; false when that would be too many.
bool AppendRange(std::vector<long> &numbers, long first, long last, long step) {
    std::uint64_t const size = Distance(step, 0);
    std::uint64_t const steps = size == 0 ? 0 : Distance(first, last) / size;
    if (steps >= kMostRunNumbers - std::min(numbers.size(), kMostRunNumbers))
        return false;
    for (std::uint64_t i = 0; i <= steps; ++i) {
        std::uint64_t const moved = i * size;
        std::uint64_t const from = static_cast<std::uint64_t>(first);
        numbers.push_back(static_cast<long>(first <= last ? from + moved : from - moved));
    }
    return true;
}

/// The list as the library's array of numbers.
MArray<long> ArrayOf(std::vector<long> const &numbers) {
    MArray<long> array;
    array.Resize(numbers.size());
    std::copy(numbers.begin(), numbers.end(), array.begin());
    return array;
}

} // namespace

std::vector<long> ExpandRuns(std::string const &text) {
    RunReader reader(text);
    std::vector<long> numbers;
    while (!reader.AtEnd()) {
        long const first = reader.Number(kRunsHint);
        std::uint64_t const begin = reader.LastBegin();
        bool const isRange = reader.Pass(MNumericOptimizer::kTo);
        long const last = isRange ? reader.Number("a range is FIRSTtoLAST or FIRSTtoLASTbySTEP") : first;
        bool const hasStep = isRange && reader.Pass(MNumericOptimizer::kBy);
        long const step = hasStep ? reader.Number("a range is FIRSTtoLASTbySTEP") : 1;
        if (!AppendRange(numbers, first, last, step))
            reader.RefuseFrom(begin, "too many numbers", "a text may name up to 10,000,000 numbers");
    }
    return numbers;
}

std::vector<long> ListedNumbers(std::string const &text) {
    RunReader reader(text);
    std::vector<long> numbers;
    while (!reader.AtEnd())
        numbers.push_back(reader.Number("compress takes integers, separated by blanks, commas or line ends"));
    return numbers;
}

std::string CompressNumbers(std::vector<long> const &numbers) {
    MArray<long> array = ArrayOf(numbers);
    return Utf8Of(MNumericOptimizer().OptimizeUnsortedArray(array));
}

std::vector<long> SelectNumbers(std::vector<long> const &list, std::string const &text, bool keepOrder) {
    std::vector<long> ascending = list;
    std::sort(ascending.begin(), ascending.end());
    ascending.erase(std::unique(ascending.begin(), ascending.end()), ascending.end());
    MArray<long> array = ArrayOf(ascending);
    MArray<long> selected;
    CString const units = WithBlanks(text);
    MNumericOptimizer optimizer;
    int const read = keepOrder ? optimizer.SelectNumByStrKeepSeq(array, units.GetString(), selected, 1)
                               : optimizer.SelectNumByStr(array, units.GetString(), selected);
    if (!read) {
        ExpandRuns(text); // tells what is wrong
        Refuse(WideOf(text), {0, 1}, "the text cannot be read", kRunsHint);
    }
    return {selected.begin(), selected.end()};
}

} // namespace zvi::app
