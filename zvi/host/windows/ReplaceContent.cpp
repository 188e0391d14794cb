#include "zvi/host/ReplaceContent.h"

#include "zvi/host/Paths.h"
#include "zvi/host/windows/WindowsHeader.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <string>

namespace zvi::host {

namespace {

/// End of the name of a file that is going to be renamed over its target.
constexpr wchar_t kBesideSuffix[] = L".zvi-part";

std::error_code LastFailure() {
    return {static_cast<int>(::GetLastError()), std::system_category()};
}

/// An open file, which is closed at the end of its life.
class OpenFile {
public:
    OpenFile(std::wstring const &path, DWORD creation)
        : m_handle(::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, creation, FILE_ATTRIBUTE_NORMAL,
                                 nullptr)) {}
    ~OpenFile() {
        if (*this)
            ::CloseHandle(m_handle);
    }
    OpenFile(OpenFile const &) = delete;
    OpenFile &operator=(OpenFile const &) = delete;

    explicit operator bool() const { return m_handle != INVALID_HANDLE_VALUE; }

    std::error_code Write(std::string_view content) const {
        constexpr std::size_t kBytesAtOnce = std::size_t{1} << 30;
        while (!content.empty()) {
            DWORD written = 0;
            auto const count = static_cast<DWORD>(std::min(content.size(), kBytesAtOnce));
            if (!::WriteFile(m_handle, content.data(), count, &written, nullptr))
                return LastFailure();
            content.remove_prefix(written);
        }
        return {};
    }

    std::error_code SetSize(std::size_t size) const {
        LARGE_INTEGER end{};
        end.QuadPart = static_cast<LONGLONG>(size);
        LARGE_INTEGER const start{};
        bool const isDone = ::SetFilePointerEx(m_handle, end, nullptr, FILE_BEGIN) && ::SetEndOfFile(m_handle) &&
                            ::SetFilePointerEx(m_handle, start, nullptr, FILE_BEGIN);
        return isDone ? std::error_code() : LastFailure();
    }

    std::error_code BringToDisk() const { return ::FlushFileBuffers(m_handle) ? std::error_code() : LastFailure(); }

private:
    HANDLE m_handle;
};

/// Names such as NUL mean a device in every folder; the whole path tells.
bool IsDevice(std::wstring const &path) {
    constexpr wchar_t kDevices[] = L"\\\\.\\";
    std::wstring whole(path.size() + MAX_PATH, L'\0');
    DWORD const size = ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    return size > 0 && whole.starts_with(kDevices);
}

/// Where a link ends.
std::wstring FollowLinks(std::wstring const &path, DWORD attributes) {
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT))
        return path;
    HANDLE const file = ::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return path;
    std::wstring target(1 << 15, L'\0');
    DWORD const length =
        ::GetFinalPathNameByHandleW(file, target.data(), static_cast<DWORD>(target.size()), FILE_NAME_NORMALIZED);
    ::CloseHandle(file);
    target.resize(length < target.size() ? length : 0);
    return target.empty() ? path : target;
}

/// What nobody has open was left by a process that has ended; the host refuses to delete the others.
void RemoveLeftOvers(std::wstring const &target) {
    WIN32_FIND_DATAW data{};
    HANDLE const search = ::FindFirstFileW((target + L".*" + kBesideSuffix).c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        return;
    std::wstring const folder = target.substr(0, target.find_last_of(L"\\/:") + 1);
    do
        ::DeleteFileW((folder + data.cFileName).c_str());
    while (::FindNextFileW(search, &data));
    ::FindClose(search);
}

/// A name that no other writer has.
std::wstring NameBeside(std::wstring const &target) {
    static std::atomic<unsigned int> count = 0;
    return target + L'.' + std::to_wstring(::GetCurrentProcessId()) + L'.' + std::to_wstring(count++) + kBesideSuffix;
}

std::error_code FillBeside(std::wstring const &beside, std::string_view content, bool &isRefused) {
    OpenFile const file(beside, CREATE_ALWAYS);
    isRefused = !file;
    std::error_code failure = file ? file.Write(content) : LastFailure();
    return failure ? failure : file.BringToDisk();
}

/// A reader that has just the target open keeps it for a moment.
bool RenameOver(std::wstring const &beside, std::wstring const &target) {
    constexpr int kTries = 20;
    constexpr DWORD kPause = 10; // milliseconds
    for (int i = 0; i < kTries; ++i) {
        if (::MoveFileExW(beside.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return true;
        DWORD const failure = ::GetLastError();
        if (failure != ERROR_ACCESS_DENIED && failure != ERROR_SHARING_VIOLATION)
            return false;
        ::Sleep(kPause);
    }
    return false;
}

std::error_code WriteBeside(std::wstring const &target, DWORD attributes, std::string_view content, bool &isRefused) {
    RemoveLeftOvers(target);
    std::wstring const beside = NameBeside(target);
    std::error_code failure = FillBeside(beside, content, isRefused);
    if (!failure && attributes != INVALID_FILE_ATTRIBUTES)
        ::SetFileAttributesW(beside.c_str(), attributes);
    if (!failure && !RenameOver(beside, target)) {
        failure = LastFailure();
        isRefused = true;
    }
    if (failure)
        ::DeleteFileW(beside.c_str());
    return failure;
}

/// The room is had before anything is changed.
std::error_code WriteInPlace(std::wstring const &target, std::string_view content) {
    OpenFile const file(target, OPEN_EXISTING);
    if (!file)
        return LastFailure();
    std::error_code failure = file.SetSize(content.size());
    if (!failure)
        failure = file.Write(content);
    return failure ? failure : file.BringToDisk();
}

} // namespace

std::error_code ReplaceContent(std::wstring_view path, std::string_view content) {
    std::wstring const native = NativePath(path).native();
    if (native.empty())
        return std::make_error_code(std::errc::no_such_file_or_directory);
    if (IsDevice(native)) {
        OpenFile const device(native, OPEN_EXISTING);
        return device ? device.Write(content) : LastFailure();
    }
    DWORD const attributes = ::GetFileAttributesW(native.c_str());
    bool const isThere = attributes != INVALID_FILE_ATTRIBUTES;
    if (isThere && (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)))
        return std::make_error_code(attributes & FILE_ATTRIBUTE_DIRECTORY ? std::errc::is_a_directory
                                                                          : std::errc::permission_denied);
    std::wstring const target = FollowLinks(native, attributes);
    bool isRefused = false;
    std::error_code const failure =
        WriteBeside(target, isThere ? ::GetFileAttributesW(target.c_str()) : attributes, content, isRefused);
    return failure && isRefused && isThere ? WriteInPlace(target, content) : failure;
}

} // namespace zvi::host
