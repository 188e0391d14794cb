#include "apps/zvi/common/Terminal.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#ifdef _WIN32
#include <io.h>
#include <process.h>
#else
#include <unistd.h>
#endif

namespace zvi::app {

namespace {

/// Longest path that an interrupt can remove, its end included; the handler may not allocate.
constexpr std::size_t kLongestPath = 4096;

std::array<char, kLongestPath> pendingPath;
std::atomic<bool> hasPendingPath = false;
std::atomic<void (*)()> pendingAction = nullptr;

extern "C" void TidyAndEnd(int signal) {
    if (void (*const action)() = pendingAction.load())
        action();
    if (hasPendingPath.load()) {
#ifdef _WIN32
        std::remove(pendingPath.data());
#else
        unlink(pendingPath.data());
#endif
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

/// Handles the signal unless the one who started the program has it ignored, as for runs in the background.
void Handle(int signal) {
    if (std::signal(signal, TidyAndEnd) == SIG_IGN)
        std::signal(signal, SIG_IGN);
}

} // namespace

bool IsTerminal(int stream) {
#ifdef _WIN32
    return _isatty(stream) != 0;
#else
    return isatty(stream) != 0;
#endif
}

long ProcessNumber() {
#ifdef _WIN32
    return _getpid();
#else
    return getpid();
#endif
}

void InstallSignalHandlers() {
#ifndef _WIN32
    std::signal(SIGPIPE, SIG_IGN);
    Handle(SIGHUP);
#endif
    Handle(SIGINT);
    Handle(SIGTERM);
}

void RemoveOnInterrupt(std::string const &path) {
    hasPendingPath.store(false);
    if (!path.empty() && path.size() < pendingPath.size()) {
        std::memcpy(pendingPath.data(), path.c_str(), path.size() + 1);
        hasPendingPath.store(true);
    }
}

void CallOnInterrupt(void (*action)()) {
    pendingAction.store(action);
}

bool WantsColor(std::string const &choice, bool isTerminal) {
    if (choice != "auto")
        return choice == "always";
    char const *noColor = std::getenv("NO_COLOR");
    return isTerminal && !(noColor && *noColor);
}

} // namespace zvi::app
