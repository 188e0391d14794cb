#include "zvi/core/OptionValues.h"

#include "zvi/core/NarrowNumber.h"
#include "zvi/host/CodePage.h"

#include <string>

namespace {

constexpr wchar_t kTrue[] = L"TRUE";
constexpr wchar_t kFalse[] = L"FALSE";

std::string Narrow(CString const &text) {
    std::wstring_view const units(text.GetString(), static_cast<std::size_t>(text.GetLength()));
    return zvi::host::MultiOfWide(units, zvi::host::kSystemCodePage);
}

int IntOf(CString const &text) {
    return zvi::lib::NarrowToInt(Narrow(text).c_str());
}

double DoubleOf(CString const &text) {
    return zvi::lib::NarrowToDouble(Narrow(text).c_str());
}

template <typename T>
CString Formatted(wchar_t const *format, T value) {
    CString text;
    text.Format(format, value);
    return text;
}

} // namespace

void MOPTBOOL::SetType(CString &text) {
    m_value = text == kTrue ? 1 : 0;
}

CString MOPTBOOL::GetType() {
    return m_value != 0 ? kTrue : kFalse;
}

void MOPTINT::SetType(CString &text) {
    m_value = IntOf(text);
}

CString MOPTINT::GetType() {
    return Formatted(L"%d", m_value);
}

void MOPTCHAR::SetType(CString &text) {
    m_value = static_cast<char>(IntOf(text) & 0xFF);
}

CString MOPTCHAR::GetType() {
    return Formatted(L"%d", int{static_cast<signed char>(m_value)});
}

void MOPTDOUBLE::SetType(CString &text) {
    m_value = DoubleOf(text);
}

CString MOPTDOUBLE::GetType() {
    return Formatted(L"%-12g", m_value);
}

void MOPTFLOAT::SetType(CString &text) {
    m_value = static_cast<float>(DoubleOf(text));
}

CString MOPTFLOAT::GetType() {
    return Formatted(L"%f", static_cast<double>(m_value));
}

void MOPTSTRING::SetType(CString &text) {
    m_value = text;
}

CString MOPTSTRING::GetType() {
    return m_value;
}
