#include "zvi/host/MessageBoxDetail.h"

#include "zvi/host/CodePage.h"
#include "zvi/host/windows/WindowsHeader.h"

#include <string>

namespace zvi::host {

namespace {

/// UTF-8, or wide where it is a console.
void WriteToStandardError(std::wstring const &line) {
    HANDLE const error = ::GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    DWORD written = 0;
    if (::GetConsoleMode(error, &mode)) {
        ::WriteConsoleW(error, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
        return;
    }
    std::string const bytes = MultiOfWide(line, kUtf8CodePage);
    ::WriteFile(error, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

/// Whether the process has a desktop that a user sees, which services have not.
bool HasDesktop() {
    USEROBJECTFLAGS flags = {};
    HWINSTA const station = ::GetProcessWindowStation();
    return station && ::GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof flags, nullptr) &&
           (flags.dwFlags & WSF_VISIBLE);
}

} // namespace

void ShowSystemMessage(wchar_t const *text) {
    if (!HasDesktop() || ::MessageBoxW(nullptr, text, L"", MB_OK) == 0)
        WriteToStandardError(std::wstring(text) + L"\n");
}

} // namespace zvi::host
