#include "zvi/core/MOptionRWImplFile.h"

#include "zvi/core/MOptionData.h"
#include "zvi/core/SettingsStreamDetail.h"
#include "zvi/host/Files.h"
#include "zvi/host/Paths.h"
#include "zvi/host/ReplaceContent.h"

#include <string>
#include <utility>

namespace zvi::lib {

namespace {

constexpr wchar_t kMaker[] = L"Zorvi";
constexpr wchar_t kProduct[] = L"Ormeline";
constexpr wchar_t kFileName[] = L"TEKOSetting.cfg";

std::wstring_view View(CString const &text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

/// A part of a text, which becomes a text of its own where that is to stand.
struct Part {
    std::wstring_view units;

    operator CString() const { return CString::OfUnits(std::wstring(units)); }
};

/// Files that the library has written are sorted. A later value takes the place of an earlier one.
void Store(OptionCategory &category, SettingsLine const &line) {
    std::size_t const before = category.size();
    auto const place = category.emplace_hint(category.end(), Part{line.name}, Part{line.value});
    if (category.size() == before)
        place->second = Part{line.value};
}

/// The program's folder with the backslash at its end.
CString ProgramFolder() {
    CString const program{std::wstring_view(host::ModulePath())};
    return program.Left(program.ReverseFind(L'\\') + 1);
}

CString MakerFolder(CString const &documents) {
    CString folder;
    folder.Format(L"%s\\%s", documents.GetString(), kMaker);
    return folder;
}

CString ProductFolder(CString const &documents) {
    CString folder;
    folder.Format(L"%s\\%s\\%s", documents.GetString(), kMaker, kProduct);
    return folder;
}

void MakeIfAbsent(CString const &folder) {
    if (!host::Exists(View(folder)))
        host::MakeFolder(View(folder));
}

/// The whole file; lines that do not fit are left out.
std::string SettingsText(std::map<CString, OptionCategory> const &categories) {
    std::string text;
    for (auto const &[name, values] : categories) {
        std::string const header = SettingsHeaderLine(name);
        if (header.empty())
            continue;
        text.append(header).append(host::LineEnd());
        for (auto const &[keyword, value] : values) {
            std::string const line = SettingsValueLine(keyword, value);
            if (!line.empty())
                text.append(line).append(host::LineEnd());
        }
        text.append(host::LineEnd());
    }
    return text;
}

} // namespace

MOptionRWImplFile::MOptionRWImplFile() {
    SetPathAndName(GetUserDocFolder(), kFileName);
    if (LoadData() == 0) {
        host::MakeFolder(View(m_folder));
        WriteData();
    }
}

MOptionRWImplFile::MOptionRWImplFile(CString folder, CString name) {
    SetPathAndName(std::move(folder), std::move(name));
    LoadData();
}

MOptionRWImplFile::~MOptionRWImplFile() {
    try {
        WriteData();
    } catch (std::bad_alloc const &) {
        // The file stays as it is.
    }
}

int MOptionRWImplFile::ReadOption(std::vector<MOptionData *> &groups) {
    for (MOptionData *const group : groups)
        if (group)
            group->IOData(this, MOptionData::OPTION_READ);
    return 1;
}

int MOptionRWImplFile::WriteOption(std::vector<MOptionData *> &groups) {
    for (MOptionData *const group : groups)
        if (group)
            group->IOData(this, MOptionData::OPTION_WRITE);
    WriteData();
    return 1;
}

int MOptionRWImplFile::GetCategoryData(CString category, OptionCategory **out) {
    auto const [place, isNew] = m_categories.try_emplace(category);
    *out = &place->second;
    return isNew ? 0 : 1;
}

std::error_code MOptionRWImplFile::Save() const {
    if (m_isUnread)
        return std::make_error_code(std::errc::io_error);
    return host::ReplaceContent(View(FullPath()), SettingsText(m_categories));
}

CString MOptionRWImplFile::DefaultPath() {
    CString const documents{std::wstring_view(host::DocumentsFolderName())};
    return (documents.IsEmpty() ? ProgramFolder() : ProductFolder(documents) + L"\\") + kFileName;
}

void MOptionRWImplFile::SetPathAndName(CString folder, CString name) {
    m_folder = std::move(folder);
    m_name = std::move(name);
}

int MOptionRWImplFile::LoadData() {
    OptionCategory *current = nullptr;
    auto const getLine = [this](std::istream &stream, CString &text) -> std::istream & {
        return GetLine(stream, text);
    };
    auto const take = [this, &current](SettingsPlace const &place) {
        if (!current || place.line.kind == SettingsLine::Kind::kCategory)
            current = &m_categories[CString(place.category)];
        if (place.line.kind == SettingsLine::Kind::kValue)
            Store(*current, place.line);
    };
    SettingsEnd const end = core::ReadSettingsBy(View(FullPath()), getLine, take, nullptr);
    m_isUnread = end == SettingsEnd::kUnread;
    return end == SettingsEnd::kDone || end == SettingsEnd::kLongLine ? 1 : 0;
}

void MOptionRWImplFile::WriteData() {
    static_cast<void>(Save());
}

std::istream &MOptionRWImplFile::GetLine(std::istream &stream, CString &text) {
    return core::GetSettingsLine(stream, m_line, text);
}

CString MOptionRWImplFile::GetUserDocFolder() {
    CString const documents{std::wstring_view(host::DocumentsFolder())};
    if (documents.IsEmpty())
        return ProgramFolder();
    MakeIfAbsent(MakerFolder(documents));
    MakeIfAbsent(ProductFolder(documents));
    return ProductFolder(documents);
}

CString MOptionRWImplFile::FullPath() const {
    // The program's folder brings a backslash of its own; two of them do no harm.
    CString path = m_folder.IsEmpty() ? ProgramFolder().TrimRight(L'\\') : m_folder;
    path += L"\\";
    path += m_name;
    return path;
}

} // namespace zvi::lib
