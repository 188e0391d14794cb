#include "apps/zvi/common/typed/PlainSigns.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zvi::app {

namespace {

/// A sign, and what to type for it.
constexpr std::pair<wchar_t, wchar_t const *> kSignForms[] = {
    {0x00D7, L"*"},  {0x00B7, L"*"},  {0x22C5, L"*"},  {0x2217, L"*"},    {0x00F7, L"/"},  {0x2215, L"/"},
    {0x2212, L"-"},  {0x2013, L"-"},  {0x2014, L"-"},  {0x2010, L"-"},    {0x2011, L"-"},  {0x00B2, L"^2"},
    {0x00B3, L"^3"}, {0x2074, L"^4"}, {0x03C0, L"pi"}, {0x2220, L"<"},    {0x00B0, L""},   {0x3000, L" "},
    {0x00A0, L" "},  {0x202F, L" "},  {0x2009, L" "},  {0x221A, L"sqrt"}, {0x2026, L"to"}, {0x3001, L","},
};

/// The full-width forms of ASCII stand in its order behind this character.
constexpr wchar_t kFullWidth = 0xFF00;
constexpr wchar_t kLastFullWidth = 0xFF5E;

} // namespace

std::wstring PlainSigns(std::wstring const &text) {
    std::wstring plain;
    for (wchar_t const c : text) {
        auto const form = std::find_if(std::begin(kSignForms), std::end(kSignForms),
                                       [c](auto const &entry) { return entry.first == c; });
        if (form != std::end(kSignForms))
            plain += form->second;
        else
            plain += c > kFullWidth && c <= kLastFullWidth ? static_cast<wchar_t>(c - kFullWidth + L' ') : c;
    }
    return plain;
}

} // namespace zvi::app
