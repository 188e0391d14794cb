// Any bytes as a settings file: what was read is written so that it reads back the same, and a changed value changes
// nothing else. Files are written, so let TMPDIR be in memory.

#include "apps/zvi/settings/EditSettings.h"

#include "zvi/core/MOptionRWImplFile.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/Paths.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace {

using zvi::lib::SettingsLine;
using Values = std::map<std::pair<CString, CString>, CString>;

void Require(bool isSo) {
    if (!isSo)
        std::abort();
}

std::filesystem::path const &Folder() {
    static std::filesystem::path const folder = [] {
        std::filesystem::path path =
            std::filesystem::temp_directory_path() / ("zvi_settings_fuzz_" + std::to_string(::getpid()));
        std::filesystem::create_directories(path);
        return path;
    }();
    return folder;
}

void Write(std::string_view bytes) {
    std::ofstream(Folder() / "s.cfg", std::ios::binary) << bytes;
}

Values Read() {
    Values values;
    zvi::lib::ReadSettings(zvi::host::LibraryPath(Folder() / "s.cfg"), [&](zvi::lib::SettingsPlace const &place) {
        // A header alone makes its category.
        bool const isValue = place.line.kind == SettingsLine::Kind::kValue;
        std::pair const key(CString(place.category), isValue ? CString(place.line.name) : CString(L"[header"));
        values[key] = isValue ? CString(place.line.value) : CString();
    });
    return values;
}

/// Half of a surrogate pair, which the first or last character of a line leaves behind when it is cut off, is no
/// character that a file could hold.
bool CanBeWritten(Values const &values) {
    auto const isKept = [](CString const &text) {
        std::wstring_view const units(text.GetString(), static_cast<std::size_t>(text.GetLength()));
        return zvi::app::KeptText(zvi::host::BytesOfWide(units)) == text;
    };
    return std::all_of(values.begin(), values.end(), [&isKept](auto const &entry) {
        return isKept(entry.first.first) && isKept(entry.first.second) && isKept(entry.second);
    });
}

/// With a header of the category with the empty name, which is there with its first value.
Values WithHeaders(Values values) {
    Values headers;
    for (auto const &[key, value] : values)
        headers[{key.first, L"[header"}] = CString();
    values.merge(headers);
    return values;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    std::string_view const bytes(reinterpret_cast<char const *>(data), size);
    CString const folder{std::wstring_view(zvi::host::LibraryPath(Folder()))};
    Write(bytes);
    Values const first = Read();
    { zvi::lib::MOptionRWImplFile const settings(folder, L"s.cfg"); }
    bool const isExact = CanBeWritten(first);
    Require(!isExact || Read() == WithHeaders(first));

    CString const category = zvi::app::KeptText(bytes.substr(0, size / 3));
    CString const keyword = zvi::app::KeptText(bytes.substr(size / 3, size / 3));
    CString const value = zvi::app::KeptText(bytes.substr(2 * (size / 3)));
    if (!zvi::app::WhyNotHeld(category, keyword, value).empty() || !isExact)
        return 0;
    Write(zvi::app::EditedSettings(bytes, category, keyword, value));
    Values expected = WithHeaders(first);
    expected[{category, keyword}] = value;
    Require(WithHeaders(Read()) == WithHeaders(expected));
    return 0;
}
