#include "apps/zvi/common/Terminal.h"

#include "apps/zvi/common/StandardStreams.h"
#include "apps/zvi/common/windows/ConsoleBuffers.h"

#include <array>
#include <atomic>
#include <cassert>
#include <cwchar>
#include <iostream>

namespace zvi::app {

namespace {

/// Longest path that an interrupt can remove, its end included; the handler may not allocate.
constexpr std::size_t kLongestPath = 32768;

std::array<wchar_t, kLongestPath> pendingPath;
std::atomic<bool> hasPendingPath = false;

/// Runs on a thread of its own; the host ends the process behind it.
BOOL WINAPI TidyUp(DWORD) {
    if (hasPendingPath.load())
        DeleteFileW(pendingPath.data());
    return FALSE;
}

std::atomic<int> interruptCount = 0;
std::atomic<int> requestedEndStatus = 0;

/// The host ends the process some seconds after it was asked to close, whatever the answer.
BOOL WINAPI Count(DWORD event) {
    constexpr int kEnded = 143;
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)
        ++interruptCount;
    else
        requestedEndStatus = kEnded;
    return TRUE;
}

HANDLE HandleOf(int number) {
    return reinterpret_cast<HANDLE>(StandardStream(number));
}

bool IsConsole(int number) {
    DWORD mode = 0;
    return GetConsoleMode(HandleOf(number), &mode);
}

std::streambuf *OutputTo(int number) {
    DWORD mode = 0;
    HANDLE const handle = HandleOf(number);
    if (!GetConsoleMode(handle, &mode))
        return new StandardOutput(StandardStream(number));
    SetConsoleMode(handle, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    return new ConsoleOutput(handle);
}

} // namespace

// The buffers are never destroyed: the streams write what is left when the process ends.
void OpenStandardStreams() {
    if (IsConsole(0))
        std::cin.rdbuf(new ConsoleInput(HandleOf(0)));
    else
        std::cin.rdbuf(new StandardInput(StandardStream(0)));
    std::cin.exceptions(std::ios::badbit);
    std::cout.rdbuf(OutputTo(1));
    std::cerr.rdbuf(OutputTo(2));
}

bool IsTerminal(int stream) {
    assert(stream >= 0 && stream <= 2);
    DWORD mode = 0;
    if (!GetConsoleMode(HandleOf(stream), &mode))
        return false;
    return stream == 0 || (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

char const *EndOfInputKeys() {
    return "Ctrl-Z and Enter";
}

void InstallSignalHandlers() {
    SetConsoleCtrlHandler(TidyUp, TRUE);
}

void CountInterrupts() {
    SetConsoleCtrlHandler(Count, TRUE);
}

int InterruptCount() {
    return interruptCount;
}

int RequestedEndStatus() {
    return requestedEndStatus;
}

void RemoveOnInterrupt(std::filesystem::path const &path) {
    hasPendingPath.store(false);
    std::size_t const size = path.native().size();
    if (size > 0 && size < pendingPath.size()) {
        std::wmemcpy(pendingPath.data(), path.c_str(), size + 1);
        hasPendingPath.store(true);
    }
}

} // namespace zvi::app
