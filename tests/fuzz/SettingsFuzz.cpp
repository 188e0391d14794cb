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

/// Every value, and the header that makes its category.
Values Read(std::wstring const &path) {
    Values values;
    zvi::lib::ReadSettings(path, [&](zvi::lib::SettingsPlace const &place) {
        CString const category(place.category);
        values[{category, L"[header"}] = L"";
        if (place.line.kind == SettingsLine::Kind::kValue)
            values[{category, CString(place.line.name)}] = CString(place.line.value);
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
    zvi::fuzz::Check(!isExact || Read(path) == first);

    CString const category = zvi::app::KeptText(bytes.substr(0, size / 3));
    CString const keyword = zvi::app::KeptText(bytes.substr(size / 3, size / 3));
    CString const value = zvi::app::KeptText(bytes.substr(2 * (size / 3)));
    if (!zvi::app::WhyNotHeld(category, keyword, value).empty() || !isExact)
        return 0;
    std::string const edited = zvi::app::EditedSettings(bytes, category, keyword, value);
    zvi::fuzz::FileWith(reinterpret_cast<std::uint8_t const *>(edited.data()), edited.size());
    Values expected = first;
    expected[{category, L"[header"}] = L"";
    expected[{category, keyword}] = value;
    zvi::fuzz::Check(Read(path) == expected);
    return 0;
}
