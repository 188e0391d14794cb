#include "apps/zvi/common/Terminal.h"

#include "apps/zvi/common/StandardStreams.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <cassert>
#include <csignal>
#include <cstring>
#include <iostream>

namespace zvi::app {

namespace {

/// Longest path that an interrupt can remove, its end included; the handler may not allocate.
constexpr std::size_t kLongestPath = 4096;

std::array<char, kLongestPath> pendingPath;
std::atomic<bool> hasPendingPath = false;

extern "C" void TidyAndEnd(int signal) {
    if (hasPendingPath.load())
        unlink(pendingPath.data());
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

std::atomic<int> interruptCount = 0;
std::atomic<int> requestedEndStatus = 0;

extern "C" void Count(int signal) {
    constexpr int kSignalBase = 128;
    if (signal == SIGINT)
        ++interruptCount;
    else
        requestedEndStatus = kSignalBase + signal;
}

/// Handles the signal unless the one who started the program has it ignored, as for runs in the background.
void Handle(int signal, void (*handler)(int)) {
    if (std::signal(signal, handler) == SIG_IGN)
        std::signal(signal, SIG_IGN);
}

} // namespace

// Terminals speak UTF-8 here. The buffers are never destroyed: the streams write what is left when the process ends.
void OpenStandardStreams() {
    std::cin.rdbuf(new StandardInput(StandardStream(0)));
    std::cin.exceptions(std::ios::badbit);
    std::cout.rdbuf(new StandardOutput(StandardStream(1)));
    std::cerr.rdbuf(new StandardOutput(StandardStream(2)));
}

bool IsTerminal(int stream) {
    assert(stream >= 0 && stream <= 2);
    return isatty(stream) != 0;
}

char const *EndOfInputKeys() {
    return "Ctrl-D";
}

void InstallSignalHandlers() {
    std::signal(SIGPIPE, SIG_IGN);
    for (int const signal : {SIGHUP, SIGINT, SIGTERM})
        Handle(signal, TidyAndEnd);
}

void CountInterrupts() {
    for (int const signal : {SIGHUP, SIGINT, SIGTERM})
        Handle(signal, Count);
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
        std::memcpy(pendingPath.data(), path.c_str(), size + 1);
        hasPendingPath.store(true);
    }
}

} // namespace zvi::app
