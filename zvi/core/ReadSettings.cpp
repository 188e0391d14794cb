#include "zvi/core/ReadSettings.h"

#include "zvi/core/SettingsStreamDetail.h"
#include "zvi/core/TextBufferDetail.h"
#include "zvi/core/WideUnits.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/Files.h"

namespace zvi::lib {

namespace {

std::wstring_view View(CString const &text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

/// As `IsBlankUnit`; most units are blanks or in the range that holds none.
bool IsBlank(wchar_t unit) {
    return unit == L' ' || ((unit < L' ' || unit >= 0x7F) && IsBlankUnit(unit));
}

std::wstring_view Trimmed(std::wstring_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string Bytes(CString const &text) {
    return host::BytesOfWide(View(text));
}

std::string Fitting(std::string line) {
    return line.size() <= kLongestSettingsLine ? std::move(line) : std::string();
}

} // namespace

SettingsLine ReadSettingsLine(std::wstring_view text) {
    std::wstring_view const line = Trimmed(text);
    if (line.empty() || line.front() == L';')
        return {};
    if (line.front() == L'[')
        return {SettingsLine::Kind::kCategory, Trimmed(line.substr(1, line.size() < 2 ? 0 : line.size() - 2)), {}};
    std::size_t const parted = line.find(L'=');
    if (parted == line.npos)
        return {SettingsLine::Kind::kValue, {}, Trimmed(line.substr(1))};
    return {SettingsLine::Kind::kValue, Trimmed(line.substr(0, parted)), Trimmed(line.substr(parted + 1))};
}

std::istream &core::GetSettingsLine(std::istream &stream, char (&buffer)[kLineBuffer], CString &text) {
    stream.getline(buffer, static_cast<std::streamsize>(kLineBuffer));
    auto const count = static_cast<std::size_t>(stream.gcount());
    // The line end is counted, and is not in the buffer.
    bool const hasLineEnd = count != 0 && !stream.eof() && !stream.fail();
    std::string_view const bytes(buffer, hasLineEnd ? count - 1 : count);
    // The text keeps its room from line to line.
    std::wstring units;
    text.Swap(units);
    units.resize(bytes.size());
    units.resize(host::WideOfBytes(bytes, units.data()));
    text.Swap(units);
    return stream;
}

SettingsEnd core::ReadSettingsBy(std::wstring_view path,
                                 std::function<std::istream &(std::istream &, CString &)> const &getLine,
                                 std::function<void(SettingsPlace const &)> const &visit, int *lastLine) {
    TextBuffer buffer(path);
    int number = 0;
    CString category;
    CString text;
    std::istream stream(&buffer);
    while (buffer.IsOpen() && getLine(stream, text)) {
        ++number;
        SettingsLine const line = ReadSettingsLine(View(text));
        if (line.kind == SettingsLine::Kind::kCategory)
            category = CString(line.name);
        if (line.kind != SettingsLine::Kind::kNothing)
            visit({line, View(category), number});
    }
    if (lastLine)
        *lastLine = number + (stream.eof() ? 0 : 1);
    if (!buffer.IsOpen())
        return host::Exists(path) ? SettingsEnd::kUnread : SettingsEnd::kNoFile;
    if (buffer.HasFailed())
        return SettingsEnd::kUnread;
    return stream.eof() ? SettingsEnd::kDone : SettingsEnd::kLongLine;
}

SettingsEnd ReadSettings(std::wstring_view path, std::function<void(SettingsPlace const &)> const &visit,
                         int *lastLine) {
    char buffer[core::kLineBuffer];
    auto const getLine = [&buffer](std::istream &stream, CString &text) -> std::istream & {
        return core::GetSettingsLine(stream, buffer, text);
    };
    return core::ReadSettingsBy(path, getLine, visit, lastLine);
}

std::string SettingsValueLine(CString const &keyword, CString const &value) {
    std::string const name = Bytes(keyword);
    std::string const text = Bytes(value);
    std::string line = name + " = " + text;
    return line.size() <= kLongestSettingsLine ? line : Fitting(name + '=' + text);
}

std::string SettingsHeaderLine(CString const &category) {
    std::string const name = Bytes(category);
    std::string line = "[ " + name + " ]";
    return line.size() <= kLongestSettingsLine ? line : Fitting('[' + name + ']');
}

} // namespace zvi::lib
