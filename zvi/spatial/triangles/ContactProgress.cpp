#include "zvi/spatial/triangles/ContactProgressDetail.h"

#include "zvi/interface/IProgressBar.h"
#include "zvi/text/MMSGFunction.h"

#include <cwchar>
#include <string_view>

namespace zvi::lib::spatial {

namespace {

constexpr wchar_t const *kProgressKey = L"IDS_CAE_COMMON_CADIMPORT_PROGRESS_CONTACT";

/// Whether the text has exactly one conversion and that is one of an `int`; "%%" is none.
bool IsFormatOfOneInt(std::wstring_view text) {
    int conversions = 0;
    for (std::size_t at = text.find(L'%'); at != std::wstring_view::npos; at = text.find(L'%', at + 1)) {
        at = text.find_first_not_of(L"-+ #0123456789.", at + 1);
        if (at == std::wstring_view::npos)
            return false;
        if (text[at] == L'%' && text[at - 1] == L'%')
            continue;
        if (std::wstring_view(L"diouxX").find(text[at]) == std::wstring_view::npos)
            return false;
        ++conversions;
    }
    return conversions == 1;
}

} // namespace

CString WithNumber(CString const &text, int number) {
    if (!IsFormatOfOneInt(text.GetString()))
        return text;
    CString formatted;
    formatted.Format(text.GetString(), number);
    return formatted;
}

int ContactProgress::Percentage(std::uint32_t cell) const {
    float const step = static_cast<float>(m_cellCount) * 0.01f;
    return static_cast<int>(static_cast<float>(cell + 1) / step);
}

void ContactProgress::Look(std::uint32_t cell) {
    int const percentage = Percentage(cell);
    if (percentage != m_shown) {
        m_shown = percentage;
        if (zvi_interface::IProgressBar *const bar = zvi_interface::IProgressBar::GetInstance()) {
            bar->SetText(WithNumber(MMSGFunction::GetValue(kProgressKey), percentage).GetString());
            bar->Refresh();
        }
    }
    // The percentage never falls, so the next change is found by halving.
    m_nextLook = m_cellCount;
    for (std::uint32_t same = cell; m_nextLook - same > 1;) {
        std::uint32_t const middle = same + (m_nextLook - same) / 2;
        (Percentage(middle) == percentage ? same : m_nextLook) = middle;
    }
}

} // namespace zvi::lib::spatial
