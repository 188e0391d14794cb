#include "apps/zvi/common/StandardStreams.h"

#include "apps/zvi/common/windows/WindowsHeader.h"

#include <algorithm>
#include <cassert>

namespace zvi::app {

namespace {

constexpr std::size_t kBytesAtOnce = std::size_t{1} << 30;

/// Milliseconds between two tries at a pipe that does not wait.
constexpr DWORD kPause = 5;

HANDLE HandleOf(HostStream stream) {
    return reinterpret_cast<HANDLE>(stream);
}

std::error_code FailureOf(DWORD error) {
    return {static_cast<int>(error), std::system_category()};
}

/// A pipe whose other end is closed, by the words that one hears before, while and after that is noticed.
bool IsOtherEndClosed(DWORD error) {
    return error == ERROR_BROKEN_PIPE || error == ERROR_NO_DATA || error == ERROR_PIPE_NOT_CONNECTED;
}

} // namespace

HostStream StandardStream(int number) {
    assert(number >= 0 && number <= 2);
    constexpr DWORD kNumbers[] = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    return reinterpret_cast<HostStream>(GetStdHandle(kNumbers[number]));
}

/// A pipe that does not wait takes nothing of what is larger than its room, and says that it went well.
std::error_code WriteAll(HostStream stream, std::string_view bytes) {
    std::size_t most = kBytesAtOnce;
    while (!bytes.empty()) {
        DWORD written = 0;
        std::size_t const count = std::min(bytes.size(), most);
        if (!WriteFile(HandleOf(stream), bytes.data(), static_cast<DWORD>(count), &written, nullptr)) {
            DWORD const error = GetLastError();
            return IsOtherEndClosed(error) ? std::make_error_code(std::errc::broken_pipe) : FailureOf(error);
        }
        bytes.remove_prefix(written);
        if (written == 0 && count == 1)
            Sleep(kPause);
        if (written == 0)
            most = std::max<std::size_t>(count / 2, 1);
        else if (written == count)
            most = std::min(kBytesAtOnce, 2 * count);
    }
    return {};
}

std::error_code ReadSome(HostStream stream, char *bytes, std::size_t &size) {
    assert(size > 0);
    auto const room = static_cast<DWORD>(std::min(size, kBytesAtOnce));
    DWORD count = 0;
    DWORD error = ERROR_SUCCESS;
    while (!ReadFile(HandleOf(stream), bytes, room, &count, nullptr) && (error = GetLastError()) == ERROR_NO_DATA)
        Sleep(kPause);
    size = count;
    bool const isDone =
        error == ERROR_SUCCESS || error == ERROR_MORE_DATA || error == ERROR_HANDLE_EOF || IsOtherEndClosed(error);
    return isDone ? std::error_code() : FailureOf(error);
}

} // namespace zvi::app
