#include "zvi/core/CString.h"

#include "zvi/core/WideFormat.h"
#include "zvi/core/WideUnits.h"

#include <algorithm>
#include <cassert>
#include <cwchar>

using zvi::lib::AppendUnits;
using zvi::lib::AppendWide;
using zvi::lib::AreUnits;
using zvi::lib::IsBlankUnit;
using zvi::lib::LowerUnit;
using zvi::lib::UpperUnit;

namespace {

std::wstring_view ViewOf(wchar_t const *text) {
    return text ? std::wstring_view(text) : std::wstring_view();
}

std::wstring UnitsOf(std::wstring_view text) {
    std::wstring units;
    AppendWide(units, text);
    return units;
}

std::wstring UnitsOf(wchar_t character) {
    std::wstring units;
    AppendUnits(units, static_cast<std::uint32_t>(character));
    return units;
}

int PositionOf(std::size_t found) {
    return found == std::wstring::npos ? -1 : static_cast<int>(found);
}

int SignOf(int comparison) {
    return (comparison > 0) - (comparison < 0);
}

/// Replaces each `what` from the start on, and gives their number.
int ReplaceAll(std::wstring &text, std::wstring const &what, std::wstring const &with) {
    if (what.empty())
        return 0;
    int count = 0;
    std::wstring result;
    std::size_t done = 0;
    for (std::size_t at = text.find(what); at != std::wstring::npos; at = text.find(what, done)) {
        result.append(text, done, at - done);
        result.append(with);
        done = at + what.size();
        ++count;
    }
    if (count != 0) {
        result.append(text, done);
        text = std::move(result);
    }
    return count;
}

template <typename IsCut>
void CutLeft(std::wstring &text, IsCut isCut) {
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), isCut));
}

template <typename IsCut>
void CutRight(std::wstring &text, IsCut isCut) {
    text.erase(std::find_if_not(text.rbegin(), text.rend(), isCut).base(), text.end());
}

auto IsOneOf(std::wstring const &set) {
    return [&set](wchar_t unit) { return set.find(unit) != std::wstring::npos; };
}

} // namespace

CString::CString(wchar_t const *text) : m_text(UnitsOf(ViewOf(text))) {}

CString::CString(wchar_t const *text, int length) {
    if (text && length > 0)
        AppendWide(m_text, std::wstring_view(text, static_cast<std::size_t>(length)));
}

CString::CString(wchar_t character, int count) {
    std::wstring const units = UnitsOf(character);
    for (int i = 0; i < count; ++i)
        m_text.append(units);
}

CString::CString(std::wstring_view text) : m_text(UnitsOf(text)) {}

CString CString::OfUnits(std::wstring units) {
    assert(AreUnits(units));
    CString text;
    text.m_text = std::move(units);
    return text;
}

void CString::Swap(std::wstring &units) {
    assert(AreUnits(units));
    m_text.swap(units);
}

CString &CString::operator=(wchar_t const *text) {
    m_text = UnitsOf(ViewOf(text));
    return *this;
}

void CString::SetAt(int index, wchar_t character) {
    if (index >= 0 && index < GetLength())
        m_text.replace(static_cast<std::size_t>(index), 1, UnitsOf(character));
}

CString &CString::operator+=(CString const &text) {
    m_text.append(text.m_text);
    return *this;
}

CString &CString::operator+=(wchar_t const *text) {
    // A part of this text is free of wide characters, so it is appended in one step that minds the overlap.
    AppendWide(m_text, ViewOf(text));
    return *this;
}

CString &CString::operator+=(wchar_t character) {
    AppendUnits(m_text, static_cast<std::uint32_t>(character));
    return *this;
}

int CString::Compare(CString const &other) const {
    return SignOf(m_text.compare(other.m_text));
}

int CString::Compare(wchar_t const *other) const {
    std::wstring_view const view = ViewOf(other);
    return SignOf(!AreUnits(view) ? m_text.compare(UnitsOf(view)) : std::wstring_view(m_text).compare(view));
}

int CString::CompareNoCase(CString const &other) const {
    std::size_t const common = std::min(m_text.size(), other.m_text.size());
    for (std::size_t i = 0; i < common; ++i) {
        wchar_t const left = LowerUnit(m_text[i]);
        wchar_t const right = LowerUnit(other.m_text[i]);
        if (left != right)
            return left < right ? -1 : 1;
    }
    return (m_text.size() > common) - (other.m_text.size() > common);
}

CString CString::Left(int count) const {
    return Mid(0, count);
}

CString CString::Right(int count) const {
    return count >= GetLength() ? *this : Mid(GetLength() - std::max(count, 0));
}

CString CString::Mid(int first) const {
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
    CString result;
    auto const from = static_cast<std::size_t>(std::max(first, 0));
    if (from < m_text.size() && count > 0)
        result.m_text.assign(m_text, from, static_cast<std::size_t>(count));
    return result;
}

int CString::Find(wchar_t character, int start) const {
    if (start < 0)
        return -1;
    return PositionOf(m_text.find(UnitsOf(character), static_cast<std::size_t>(start)));
}

int CString::Find(wchar_t const *text, int start) const {
    if (start < 0)
        return -1;
    return PositionOf(m_text.find(UnitsOf(ViewOf(text)), static_cast<std::size_t>(start)));
}

int CString::ReverseFind(wchar_t character) const {
    return PositionOf(m_text.rfind(UnitsOf(character)));
}

CString &CString::Trim() {
    return TrimRight().TrimLeft();
}

CString &CString::Trim(wchar_t character) {
    return TrimRight(character).TrimLeft(character);
}

CString &CString::Trim(wchar_t const *characters) {
    // Kept aside, because the set may lie in this very text.
    std::wstring const set = UnitsOf(ViewOf(characters));
    CutRight(m_text, IsOneOf(set));
    CutLeft(m_text, IsOneOf(set));
    return *this;
}

CString &CString::TrimLeft() {
    CutLeft(m_text, IsBlankUnit);
    return *this;
}

CString &CString::TrimLeft(wchar_t character) {
    CutLeft(m_text, IsOneOf(UnitsOf(character)));
    return *this;
}

CString &CString::TrimLeft(wchar_t const *characters) {
    std::wstring const set = UnitsOf(ViewOf(characters));
    CutLeft(m_text, IsOneOf(set));
    return *this;
}

CString &CString::TrimRight() {
    CutRight(m_text, IsBlankUnit);
    return *this;
}

CString &CString::TrimRight(wchar_t character) {
    CutRight(m_text, IsOneOf(UnitsOf(character)));
    return *this;
}

CString &CString::TrimRight(wchar_t const *characters) {
    std::wstring const set = UnitsOf(ViewOf(characters));
    CutRight(m_text, IsOneOf(set));
    return *this;
}

int CString::Replace(wchar_t what, wchar_t with) {
    return what == with ? 0 : ReplaceAll(m_text, UnitsOf(what), UnitsOf(with));
}

int CString::Replace(wchar_t const *what, wchar_t const *with) {
    return ReplaceAll(m_text, UnitsOf(ViewOf(what)), UnitsOf(ViewOf(with)));
}

int CString::Remove(wchar_t character) {
    return ReplaceAll(m_text, UnitsOf(character), std::wstring());
}

CString &CString::MakeUpper() {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), UpperUnit);
    return *this;
}

CString &CString::MakeLower() {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), LowerUnit);
    return *this;
}

void CString::Format(wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormat(wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    AppendFormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(wchar_t const *format, std::va_list arguments) {
    m_text = zvi::lib::FormatWideV(format, arguments);
}

void CString::AppendFormatV(wchar_t const *format, std::va_list arguments) {
    m_text += zvi::lib::FormatWideV(format, arguments);
}
