#include "zvi/text/MMSGParser.h"

#include "zvi/core/WideNumber.h"
#include "zvi/text/MessageFile.h"
#include "zvi/text/MessageLine.h"
#include "zvi/text/TextEncoding.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace zvi::lib {

namespace {

constexpr wchar_t const *kDefaultFont = L"Tahoma";
constexpr int kDefaultFontSize = 8;

/// What a user reads in the place of a text that no catalogue holds: "KEY : a text that is not registered".
constexpr wchar_t const *kUnknownKey = L"%s : 미등록 문자열";

} // namespace

MMSGParser::MMSGParser() : m_font(kDefaultFont), m_fontSize(kDefaultFontSize) {}

MMSGParser::MMSGParser(MMSGParser const &other) = default;

MMSGParser &MMSGParser::operator=(MMSGParser const &other) = default;

MMSGParser::~MMSGParser() = default;

void MMSGParser::Clear() {
    m_entries.clear();
    m_paths.RemoveAll();
    m_loaded.clear();
}

void MMSGParser::AddPath(wchar_t const *path) {
    CString const added(path);
    if (std::find(m_paths.begin(), m_paths.end(), added) == m_paths.end())
        m_paths.Add(added);
}

bool MMSGParser::Load(int all) {
    if (!all && static_cast<std::size_t>(m_paths.GetSize()) == m_loaded.size())
        return true;
    std::vector<CString> work;
    std::copy_if(m_paths.begin(), m_paths.end(), std::back_inserter(work),
                 [&](CString const &path) { return all || !m_loaded.contains(path); });
    LoadFont();
    for (CString const &path : work) {
        // The message that such a file is not Unicode would reach nobody.
        if (!HasUnicodeMark(path))
            return false;
        LoadFile(path);
    }
    return true;
}

bool MMSGParser::LoadFile(CString const &path) {
    MessageFile file(path);
    if (!file.IsOpen())
        return false;
    CString line;
    MessageEntry entry;
    while (GetLine(file, line))
        if (ParseMessageLine(line, entry))
            m_entries.try_emplace(std::move(entry.key), std::move(entry.text));
    m_loaded.insert(path);
    return true;
}

bool MMSGParser::LoadFont() {
    if (!HasUnicodeMark(m_fontPath))
        return false;
    MessageFile file(m_fontPath);
    if (!file.IsOpen())
        return false;
    CString line;
    while (GetLine(file, line))
        TakeFontLine(line);
    return true;
}

/// Lines are not trimmed, deliberately: a CR in front of the line end stays in the name of the font.
void MMSGParser::TakeFontLine(CString const &line) {
    wchar_t const first = line.GetAt(0);
    if (line.IsEmpty() || first == L';' || first == L'/' || first == L'[')
        return;
    CString key = line.Left(line.Find(L'='));
    CString const value = line.Right(line.GetLength() - key.GetLength() - 1);
    key.MakeUpper();
    if (key.CompareNoCase(L"FONT") == 0)
        m_font = value;
    else if (key.CompareNoCase(L"SIZE") == 0)
        m_fontSize = WideToInt(value);
}

CString MMSGParser::GetValue(wchar_t const *key) const {
    auto const found = m_entries.find(CString(key));
    if (found != m_entries.end())
        return found->second;
    CString unknown;
    unknown.Format(kUnknownKey, key ? key : L"");
    return unknown;
}

bool MMSGParser::GetLine(MessageFile &file, CString &line) {
    return file.GetLine(line);
}

} // namespace zvi::lib
