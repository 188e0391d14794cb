#include "zvi/host/UserValuesDetail.h"

#include "zvi/host/CodePage.h"
#include "zvi/host/windows/WindowsHeader.h"

#include <cassert>

namespace zvi::host {

namespace {

constexpr wchar_t const *kKey = L"Software\\ZORVI\\TEST";

std::wstring Wide(std::string_view text) {
    return WideOfMulti(text, kUtf8CodePage);
}

} // namespace

std::string OwnUserValue(std::string_view name) {
    assert(IsUserValueName(name));
    std::wstring const wideName = Wide(name);
    std::wstring value(256, L'\0');
    // The value may grow between two calls.
    for (;;) {
        auto bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
        LSTATUS const status =
            RegGetValueW(HKEY_CURRENT_USER, kKey, wideName.c_str(), RRF_RT_REG_SZ, nullptr, value.data(), &bytes);
        if (status == ERROR_SUCCESS)
            return MultiOfWide(std::wstring_view(value).substr(0, value.find(L'\0')), kUtf8CodePage);
        if (status != ERROR_MORE_DATA)
            return {};
        value.resize(value.size() * 2);
    }
}

bool SetOwnUserValue(std::string_view name, std::string_view value) {
    assert(IsUserValueName(name) && value.find('\0') == value.npos);
    std::wstring const wideName = Wide(name);
    if (value.empty()) {
        LSTATUS const status = RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, wideName.c_str());
        return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
    }
    std::wstring const wideValue = Wide(value);
    auto const bytes = static_cast<DWORD>((wideValue.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CURRENT_USER, kKey, wideName.c_str(), REG_SZ, wideValue.c_str(), bytes) ==
           ERROR_SUCCESS;
}

} // namespace zvi::host
