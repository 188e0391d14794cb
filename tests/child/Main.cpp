// The child program of the tests: does what its arguments say, one after the other. It knows nothing of the library.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>

#include <csignal>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;

using Words = std::vector<fs::path>;

int RunScript(Words const &words);

#ifdef _WIN32

/// Starts this program again with other words.
void Start(Words const &words, bool) {
    std::wstring line = L"child";
    for (fs::path const &word : words)
        line += L" \"" + word.native() + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started{};
    CreateProcessW(_wpgmptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started);
}

void Die() {
    TerminateProcess(GetCurrentProcess(), 137);
}

/// Nobody else can remove the file until this process ends.
void Hold(fs::path const &file) {
    CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
}

#else

/// Goes on with these words in a process of its own, and in a session of its own if it is to be a daemon.
void Start(Words const &words, bool isDaemon) {
    if (fork() != 0)
        return;
    if (isDaemon)
        setsid();
    std::exit(RunScript(words));
}

void Die() {
    raise(SIGKILL);
}

/// Nobody else can lock the file until this process ends.
void Hold(fs::path const &file) {
    std::FILE *const stream = std::fopen(file.c_str(), "w");
    flock(fileno(stream), LOCK_EX);
}

std::string OpenFiles() {
    std::string list;
    for (int file = 0; file < 1024; ++file)
        if (fcntl(file, F_GETFD) >= 0)
            list.append(" ").append(std::to_string(file));
    return list;
}

#endif

std::string Utf8(fs::path const &word) {
    std::u8string const text = word.u8string();
    return {text.begin(), text.end()};
}

void Write(std::string_view bytes, std::FILE *stream = stdout) {
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
}

std::string BytesOf(std::string const &hexadecimal) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hexadecimal.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hexadecimal.substr(i, 2), nullptr, 16));
    return bytes;
}

void Flood(long long count) {
    std::string const block(1 << 20, 'x');
    for (; count > 0; count -= static_cast<long long>(block.size()))
        Write(std::string_view(block).substr(0, static_cast<std::size_t>(count)));
}

void Lines(int count) {
    for (int i = 0; i < count; ++i)
        std::printf("%d\n", i);
    std::fflush(stdout);
}

/// Until a file is there, which may be never.
void WaitFor(fs::path const &file) {
    while (!fs::exists(file))
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

int CountInput() {
    int count = 0;
    while (std::getchar() != EOF)
        ++count;
    return count;
}

int RunScript(Words const &words) {
    int exitCode = 0;
    auto at = words.begin();
    auto const next = [&] { return at != words.end() ? *at++ : fs::path(); };
    auto const text = [&] { return Utf8(next()); };
    // The words up to a lone semicolon.
    auto const rest = [&] {
        Words const some(at, std::find(at, words.end(), fs::path(";")));
        at += std::ssize(some);
        next();
        return some;
    };
    std::map<std::string, std::function<void()>> const commands = {
        {"bytes", [&] { Write(BytesOf(text())); }},
        {"errors", [&] { Write(text() + "\n", stderr); }},
        {"flood", [&] { Flood(std::stoll(text())); }},
        {"lines", [&] { Lines(std::stoi(text())); }},
        {"exit", [&] { exitCode = std::stoi(text()); }},
        {"close", [] { std::fclose(stdout), std::fclose(stderr); }},
        {"wait", [&] { WaitFor(next()); }},
        {"touch", [&] { std::ofstream(next()).put('.'); }},
        {"hold", [&] { Hold(next()); }},
        {"die", Die},
        {"start", [&] { Start(rest(), false); }},
        {"daemon", [&] { Start(rest(), true); }},
        {"input", [] { Write(std::to_string(CountInput()) + "\n"); }},
#ifndef _WIN32
        {"files", [] { Write("files" + OpenFiles() + "\n"); }},
#endif
        {"folder", [] { Write(fs::current_path().filename().string() + "\n"); }},
        {"word", [&] { Write(std::string("[").append(text()).append("]\n")); }},
        {"variable", [&] { Write(std::string(std::getenv(text().c_str())) + "\n"); }},
    };
    while (at != words.end())
        commands.at(text())();
    return exitCode;
}

} // namespace

#ifdef _WIN32
int wmain(int argc, wchar_t **argv) try {
    _setmode(_fileno(stdout), _O_BINARY);
#else
int main(int argc, char **argv) try {
#endif
    return RunScript({argv + 1, argv + argc});
} catch (std::exception const &error) {
    std::fputs(error.what(), stderr);
    return 2;
}
