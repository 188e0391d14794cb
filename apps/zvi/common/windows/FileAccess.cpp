#include "apps/zvi/common/FileAccess.h"

#include "apps/zvi/common/StandardStreams.h"
#include "apps/zvi/common/windows/WindowsHeader.h"

#include <cwchar>

namespace zvi::app {

namespace {

std::error_code LastFailure() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

} // namespace

/// Names such as NUL mean a device in every folder; the whole path tells.
bool IsDevice(std::filesystem::path const &path) {
    constexpr wchar_t kDevices[] = L"\\\\.\\";
    std::wstring whole(path.native().size() + MAX_PATH, L'\0');
    DWORD const size = GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    return size > 0 && whole.starts_with(kDevices);
}

std::filesystem::path NameBeside(std::filesystem::path const &path) {
    return path.native() + L"." + std::to_wstring(GetCurrentProcessId()) + L".part";
}

std::error_code WriteContent(std::filesystem::path const &path, std::string_view content) {
    // Who shares deletion lets the interrupt remove the file while it is open.
    constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_DELETE;
    HANDLE const file =
        CreateFileW(path.c_str(), GENERIC_WRITE, kShared, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return LastFailure();
    std::error_code const failure = WriteAll(reinterpret_cast<HostStream>(file), content);
    return CloseHandle(file) || failure ? failure : LastFailure();
}

} // namespace zvi::app
