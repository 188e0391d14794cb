#include "apps/zvi/eval/hints/FailedText.h"

#include <cassert>
#include <regex>

namespace zvi::app {

bool FailedText::MayNameMany() const {
    static std::wregex const manyDigits(L"\\d{6}");
    return typed.find_first_of(L"Tt@") != kNowhere && std::regex_search(typed, manyDigits);
}

wchar_t FailedText::Before(std::size_t index, wchar_t const *passedOver) const {
    return index == 0 ? L'\0' : At(typed.find_last_not_of(passedOver, index - 1));
}

Span FailedText::SpanOfLine(Span const &inLine) const {
    assert(inLine.length > 0 && inLine.End() <= outcome.sources.size());
    auto const begin = static_cast<std::size_t>(outcome.sources[inLine.begin]);
    auto const last = static_cast<std::size_t>(outcome.sources[inLine.End() - 1]);
    return {begin, last >= begin ? last - begin + 1 : 1};
}

std::wstring_view FailedText::Culprit() const {
    assert(0 <= outcome.fault.begin && outcome.fault.begin <= outcome.fault.end);
    auto const begin = static_cast<std::size_t>(outcome.fault.begin);
    return std::wstring_view(line).substr(begin, static_cast<std::size_t>(outcome.fault.end) - begin);
}

Span FailedText::CulpritSpan() const {
    return Culprit().empty() ? Span{Place(), 1}
                             : SpanOfLine({static_cast<std::size_t>(outcome.fault.begin), Culprit().size()});
}

EvalOutcome FailedText::Other(std::wstring_view text, EvalMode mode) const {
    return Evaluate(CString(text), {.mode = mode, .unitSystem = {}, .variables = settings.variables});
}

std::optional<double> FailedText::ValueOf(std::wstring_view text, EvalMode mode) const {
    EvalOutcome const other = Other(text, mode);
    bool const one = other.parsed && other.groups.size() == 1 && other.groups[0].size() == 1;
    return one ? std::optional(other.groups[0][0]) : std::nullopt;
}

} // namespace zvi::app
