#include "apps/zvi/common/CaretText.h"

#include "apps/zvi/common/WideText.h"

#include <algorithm>

namespace zvi::app {

namespace {

/// Most characters of a text that are shown around a caret, and how many of them before it.
constexpr std::size_t kMostShown = 70;
constexpr std::size_t kShownBefore = 50;

constexpr char const *kCut = "...";

} // namespace

std::string CaretText(CString const &typed, Span const &where) {
    std::wstring const shown = Printable(View(typed));
    std::size_t const at = std::min(where.begin, shown.size());
    std::size_t const begin = shown.size() > kMostShown && at > kShownBefore ? at - kShownBefore : 0;
    std::size_t const end = std::min(shown.size(), begin + kMostShown);
    std::string const lead = begin > 0 ? kCut : "";
    std::string text = "  " + lead + Utf8Of(shown.substr(begin, end - begin)) + (end < shown.size() ? kCut : "") + "\n";
    text += std::string(2 + lead.size() + Columns(shown.substr(begin, at - begin)), ' ') + "^";
    std::size_t const marked = std::min(where.length, end - std::min(end, at));
    std::size_t const columns = Columns(shown.substr(at, marked));
    return text + std::string(columns > 1 ? columns - 1 : 0, '~') + "\n";
}

std::string DiagnosisText(CString const &typed, Diagnosis const &diagnosis) {
    std::string text = diagnosis.what + "\n" + CaretText(typed, diagnosis.where);
    if (diagnosis.hint.empty()) {
        text.pop_back();
        return text;
    }
    return text + "  hint: " + diagnosis.hint;
}

} // namespace zvi::app
