#include "apps/zvi/eval/hints/FailedText.h"

#include "apps/zvi/common/WideText.h"

namespace zvi::app {

std::string FailedText::Typed(Span const &span) const {
    return Utf8Of(Part(typed, span));
}

Span FailedText::SpanOfLine(std::size_t from, std::size_t to) const {
    auto const begin = static_cast<std::size_t>(outcome.sources[from]);
    auto const last = static_cast<std::size_t>(outcome.sources[to - 1]);
    return {begin, last >= begin ? last - begin + 1 : 1};
}

std::wstring_view FailedText::Culprit() const {
    auto const begin = static_cast<std::size_t>(outcome.fault.begin);
    return Part(line, {begin, static_cast<std::size_t>(outcome.fault.end) - begin});
}

Span FailedText::CulpritSpan() const {
    auto const begin = static_cast<std::size_t>(outcome.fault.begin);
    return Culprit().empty() ? Span{Place(), 1} : SpanOfLine(begin, begin + Culprit().size());
}

EvalOutcome FailedText::Other(std::wstring_view text, EvalMode mode) const {
    EvalSettings other = settings;
    other.mode = mode;
    other.unitSystem.reset();
    return Evaluate(CString(text), other);
}

std::optional<double> FailedText::ValueOf(std::wstring_view text, EvalMode mode) const {
    EvalOutcome const other = Other(text, mode);
    bool const one = other.parsed && other.groups.size() == 1 && other.groups[0].size() == 1;
    return one ? std::optional(other.groups[0][0]) : std::nullopt;
}

} // namespace zvi::app
