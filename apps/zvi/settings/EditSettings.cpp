#include "apps/zvi/settings/EditSettings.h"

#include "apps/zvi/common/WideText.h"

#include "zvi/core/ReadSettings.h"
#include "zvi/core/WideUnits.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/Files.h"

#include <algorithm>
#include <cassert>
#include <optional>

namespace zvi::app {

namespace {

using Kind = lib::SettingsLine::Kind;

bool HasOuterBlanks(CString const &text) {
    return !text.IsEmpty() && (lib::IsBlankUnit(text.GetAt(0)) || lib::IsBlankUnit(text.GetAt(text.GetLength() - 1)));
}

/// Where a line of a text lies.
struct Lines {
    std::string_view text;
    std::size_t start = 0;
    std::size_t end = 0;  ///< without its line end
    std::size_t next = 0; ///< start of the next one

    /// Goes to the next line; false at the end and before a line that is too long.
    bool Next() {
        if (next >= text.size())
            return false;
        std::size_t const found = text.find('\n', next);
        bool const isLast = found == text.npos;
        std::size_t const stop = isLast ? text.size() : found;
        std::size_t const stopOfText = !isLast && stop > next && text[stop - 1] == '\r' ? stop - 1 : stop;
        if (stopOfText - next > lib::kLongestSettingsLine)
            return false;
        start = next;
        end = stopOfText;
        next = isLast ? stop : stop + 1;
        return true;
    }
};

/// What an edit needs to know of a file.
struct Place {
    std::optional<Lines> value;         ///< the line that counts for the keyword
    std::optional<std::size_t> addHere; ///< behind the last line of the category
    std::size_t end = 0;                ///< behind the last line that the library reads
    bool endsBlank = true;              ///< whether nothing or an empty line is in front of that
};

Place Find(std::string_view text, CString const &category, CString const &keyword) {
    Place place;
    if (category.IsEmpty())
        place.addHere = 0;
    CString current;
    for (Lines lines{text}; lines.Next();) {
        CString const line = KeptText(text.substr(lines.start, lines.end - lines.start));
        lib::SettingsLine const read = lib::ReadSettingsLine(View(line));
        if (read.kind == Kind::kCategory)
            current = CString(read.name);
        if (read.kind != Kind::kNothing && current == category)
            place.addHere = lines.next;
        if (read.kind == Kind::kValue && current == category && CString(read.name) == keyword)
            place.value = lines;
        place.end = lines.next;
        place.endsBlank = read.kind == Kind::kNothing && lines.end == lines.start;
    }
    return place;
}

/// The line end that a text uses.
std::string LineEndOf(std::string_view text) {
    std::size_t const first = text.find('\n');
    if (first == text.npos)
        return std::string(host::LineEnd());
    return first != 0 && text[first - 1] == '\r' ? "\r\n" : "\n";
}

/// Puts whole lines into a text, at the start of a line or behind a last one without an end.
std::string WithLines(std::string_view text, std::size_t at, std::string const &lines) {
    std::string edited(text.substr(0, at));
    if (!edited.empty() && !edited.ends_with('\n'))
        edited += LineEndOf(text);
    return edited.append(lines).append(text.substr(at));
}

} // namespace

CString KeptText(std::string_view bytes) {
    std::wstring units(bytes.size(), L'\0');
    units.resize(host::WideOfBytes(bytes, units.data()));
    return CString(std::wstring_view(units));
}

std::string WhyNotHeld(CString const &category, CString const &keyword, CString const &value) {
    for (auto const &[name, text] :
         {std::pair("the category", category), {"the keyword", keyword}, {"the value", value}}) {
        if (text.Find(L'\n') >= 0)
            return std::string(name) + " holds a line end; write it in one line";
        if (HasOuterBlanks(text))
            return std::string(name) + " begins or ends with a blank, which would be lost; leave it out";
    }
    if (keyword.Find(L'=') >= 0)
        return "the keyword holds '=', which ends a keyword; use another character";
    if (keyword.GetAt(0) == L';' || keyword.GetAt(0) == L'[')
        return "a line that begins with ';' is a comment, and one with '[' a category; begin the keyword otherwise";
    std::string const limit = std::to_string(lib::kLongestSettingsLine) + " bytes; shorten it";
    if (lib::SettingsHeaderLine(category).empty())
        return "the category makes a line over " + limit;
    if (lib::SettingsValueLine(keyword, value).empty())
        return "keyword and value make a line over " + limit;
    return {};
}

std::string EditedSettings(std::string_view text, CString const &category, CString const &keyword,
                           CString const &value) {
    assert(WhyNotHeld(category, keyword, value).empty());
    std::string const line = lib::SettingsValueLine(keyword, value);
    std::string const lineEnd = LineEndOf(text);
    Place const place = Find(text, category, keyword);
    if (place.value)
        return std::string(text.substr(0, place.value->start)).append(line).append(text.substr(place.value->end));
    if (place.addHere)
        return WithLines(text, *place.addHere, line + lineEnd);
    std::string const parted = place.endsBlank ? "" : lineEnd;
    return WithLines(text, place.end, parted + lib::SettingsHeaderLine(category) + lineEnd + line + lineEnd);
}

} // namespace zvi::app
