// Child programs: short runs from start to last line, beside popen and posix_spawn; and the cost of the parse step a
// byte, beside a plain split into lines.

#include "tests/diagnostics/ParsedOutput.h"

#include "zvi/diagnostics/MProcessMgr.h"
#include "zvi/host/Paths.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using zvi::lib::MProcessCommunicator;
using zvi::lib::MProcessMgr;

constexpr char const *kProgram = "/bin/echo";

/// Counts what it is told.
struct Counter : MProcessCommunicator {
    Counter() { SetSelfDelete(0); }
    void OnProcessMsg(wchar_t const *text) override {
        ++messages;
        units += GetCurrentMsg()->length;
        hasEnded = hasEnded || std::wcsncmp(text, L"!Exit:", 6) == 0;
    }
    long messages = 0;
    std::size_t units = 0;
    bool hasEnded = false;
};

void RunToEnd(Counter &counter, char const *program, wchar_t const *arguments) {
    MProcessMgr *const manager = MProcessMgr::Instance();
    manager->Run(zvi::host::LibraryPath(program).c_str(), arguments, L"", 0, 1, &counter, 1, 0, nullptr);
    while (!counter.hasEnded) {
        manager->WaitForOutput(1000);
        manager->OnTimer(nullptr, 0, MProcessMgr::kTimerId, 0);
    }
}

void BM_ShortRun(benchmark::State &state) {
    for (auto _ : state) {
        Counter counter;
        RunToEnd(counter, kProgram, L"hello");
        if (counter.messages != 2)
            state.SkipWithError("a line is missing");
    }
}

void BM_ShortRun_popen(benchmark::State &state) {
    for (auto _ : state) {
        std::FILE *const pipe = popen("exec /bin/echo hello", "r");
        std::array<char, 100> line{};
        if (!std::fgets(line.data(), line.size(), pipe))
            state.SkipWithError("a line is missing");
        pclose(pipe);
    }
}

void BM_ShortRun_posix_spawn(benchmark::State &state) {
    for (auto _ : state) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            state.SkipWithError("there is no pipe");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], 1);
        char program[] = "/bin/echo";
        char word[] = "hello";
        char *words[] = {program, word, nullptr};
        pid_t child = 0;
        posix_spawn(&child, program, &actions, nullptr, words, environ);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        std::array<char, 100> line{};
        ssize_t total = 0;
        for (ssize_t count = 1; count > 0; total += count)
            count = read(ends[0], line.data(), line.size());
        close(ends[0]);
        waitpid(child, nullptr, 0);
        if (total != 6)
            state.SkipWithError("a line is missing");
    }
}

/// 16 MB of lines of 1 to 120 characters that end in CR LF, in parts as a full ring holds them.
std::string const &Lines() {
    static std::string const kLines = [] {
        std::string lines;
        for (unsigned int i = 1; lines.size() < 16'000'000; i = i * 1664525 + 1013904223)
            lines.append(1 + (i >> 16) % 120, 'x').append("\r\n");
        return lines;
    }();
    return kLines;
}

constexpr std::size_t kRing = 4095;

/// The parse step: ring to the text of each message.
void BM_ParseStep(benchmark::State &state) {
    using namespace zvi::lib;
    std::size_t units = 0;
    for (auto _ : state) {
        diagnostics::ProcessParser parser;
        diagnostics::ProcessMessages messages;
        std::string unfinished;
        std::wstring text;
        T_PROCESS_MSG about;
        for (std::size_t at = 0, read = 1; read > 0; at += read) {
            read = parser.Read(std::string_view(Lines()).substr(at, kRing), unfinished, 1000, false, messages);
            for (; messages.HasNext(); units += text.size())
                messages.TakeNext(text, about);
            messages.Clear();
        }
    }
    benchmark::DoNotOptimize(units);
    state.SetBytesProcessed(static_cast<std::int64_t>(Lines().size()) * state.iterations());
}

/// The same bytes as one narrow string a line.
void BM_ParseStep_split(benchmark::State &state) {
    std::size_t units = 0;
    for (auto _ : state)
        for (std::size_t at = 0, end = 0; (end = Lines().find('\n', at)) != std::string::npos; at = end + 1) {
            std::string const line(Lines(), at, end - at);
            benchmark::DoNotOptimize(line.data());
            units += line.size();
        }
    benchmark::DoNotOptimize(units);
    state.SetBytesProcessed(static_cast<std::int64_t>(Lines().size()) * state.iterations());
}

/// All the bytes from a child to the communicator, of which the parse step is a part.
constexpr long kLines = 1'000'000;

void BM_Output(benchmark::State &state) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        Counter counter;
        RunToEnd(counter, "/usr/bin/seq", L"1000000 1999999");
        if (counter.messages != kLines + 1)
            state.SkipWithError("a line is missing");
        bytes += counter.units;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}

/// The same through popen and a read of lines.
void BM_Output_getline(benchmark::State &state) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::FILE *const pipe = popen("exec /usr/bin/seq 1000000 1999999", "r");
        char *line = nullptr;
        std::size_t room = 0;
        long lines = 0;
        for (ssize_t size; (size = getline(&line, &room, pipe)) > 0; ++lines)
            bytes += static_cast<std::size_t>(size);
        std::free(line);
        pclose(pipe);
        if (lines != kLines)
            state.SkipWithError("a line is missing");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}

BENCHMARK(BM_ShortRun)->Unit(benchmark::kMicrosecond)->UseRealTime()->Iterations(1000);
BENCHMARK(BM_ShortRun_popen)->Unit(benchmark::kMicrosecond)->UseRealTime()->Iterations(1000);
BENCHMARK(BM_ShortRun_posix_spawn)->Unit(benchmark::kMicrosecond)->UseRealTime()->Iterations(1000);
BENCHMARK(BM_ParseStep)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParseStep_split)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Output)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Output_getline)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
