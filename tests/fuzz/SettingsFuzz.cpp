// Any bytes as a settings file: what was read is written so that it reads back the same, and a changed value changes
// nothing else. Files are written, so let TMPDIR be in memory.

#include "apps/zvi/settings/EditSettings.h"
#include "tests/fuzz/FuzzFile.h"

#include "zvi/core/MOptionRWImplFile.h"
#include "zvi/host/CodePage.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace {

using zvi::lib::SettingsLine;
using Values = std::map<std::pair<CString, CString>, CString>;

Values Read(std::wstring const &path) {
    Values values;
    zvi::lib::ReadSettings(path, [&](zvi::lib::SettingsPlace const &place) {
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
    std::wstring const path = zvi::fuzz::FileWith(data, size);
    std::size_t const name = path.find_last_of(L'\\') + 1;
    Values const first = Read(path);
    {
        zvi::lib::MOptionRWImplFile const settings(CString(path.c_str(), static_cast<int>(name) - 1),
                                                   path.c_str() + name);
    }
    bool const isExact = CanBeWritten(first);
    zvi::fuzz::Check(!isExact || Read(path) == WithHeaders(first));

    CString const category = zvi::app::KeptText(bytes.substr(0, size / 3));
    CString const keyword = zvi::app::KeptText(bytes.substr(size / 3, size / 3));
    CString const value = zvi::app::KeptText(bytes.substr(2 * (size / 3)));
    if (!zvi::app::WhyNotHeld(category, keyword, value).empty() || !isExact)
        return 0;
    std::string const edited = zvi::app::EditedSettings(bytes, category, keyword, value);
    zvi::fuzz::FileWith(reinterpret_cast<std::uint8_t const *>(edited.data()), edited.size());
    Values expected = WithHeaders(first);
    expected[{category, keyword}] = value;
    zvi::fuzz::Check(WithHeaders(Read(path)) == WithHeaders(expected));
    return 0;
}
