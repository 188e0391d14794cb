// The child program of the tests: does what its arguments say, one after the other. It knows nothing of the library.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include <fcntl.h>
#ifdef _WIN32
#include <io.h>
#include <process.h>
#include <share.h>
#else
#include <sys/file.h>
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;

using Words = std::vector<fs::path>;

void RunScript(Words const &words);

#ifdef _WIN32

/// Starts this program again with other words, which hold no blanks.
void Start(Words const &words) {
    std::vector<wchar_t const *> line = {L"child"};
    for (fs::path const &word : words)
        line.push_back(word.c_str());
    line.push_back(nullptr);
    _wspawnv(_P_NOWAIT, _wpgmptr, line.data());
}

/// Waits until nobody else does so, and has the file until this process ends.
void Hold(fs::path const &file) {
    while (!_wfsopen(file.c_str(), L"w", _SH_DENYRW))
        std::this_thread::yield();
}

#else

/// Goes on with these words in a process of its own.
void Start(Words const &words) {
    if (fork() == 0) {
        RunScript(words);
        std::exit(0);
    }
}

/// Waits until nobody else does so, and has the file until this process ends.
void Hold(fs::path const &file) {
    flock(open(file.c_str(), O_RDWR | O_CREAT, 0600), LOCK_EX);
}

/// The numbers of all that are open.
void Files() {
    for (int file = 0; file < 1024; ++file)
        if (fcntl(file, F_GETFD) >= 0)
            std::printf("%d\n", file);
}

#endif

void Write(std::string_view bytes, std::FILE *stream = stdout) {
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
}

void WriteBytes(std::string const &hexadecimal) {
    for (std::size_t i = 0; i < hexadecimal.size(); i += 2)
        std::putchar(std::stoi(hexadecimal.substr(i, 2), nullptr, 16));
    std::fflush(stdout);
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

/// Until a file is there, which may be never, or the folder that it would be in has gone.
void WaitFor(fs::path const &file) {
    std::error_code failure;
    while (!fs::exists(file) && !fs::current_path(failure).empty())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void RunScript(Words const &words) {
    auto at = words.begin();
    auto const next = [&] { return at != words.end() ? *at++ : fs::path(); };
    auto const text = [&] {
        std::u8string const word = next().u8string();
        return std::string(word.begin(), word.end());
    };
    // The words up to a lone semicolon.
    auto const rest = [&] {
        Words const some(at, std::find(at, words.end(), fs::path(";")));
        at += std::ssize(some);
        next();
        return some;
    };
    std::map<std::string, std::function<void()>> const commands = {
        {"bytes", [&] { WriteBytes(text()); }},
        {"errors", [&] { Write(text() + "\n", stderr); }},
        {"flood", [&] { Flood(std::stoll(text())); }},
        {"lines", [&] { Lines(std::stoi(text())); }},
        {"exit", [&] { std::exit(std::stoi(text())); }},
        {"close", [] { std::fclose(stdout), std::fclose(stderr); }},
        {"wait", [&] { WaitFor(next()); }},
        {"touch", [&] { std::ofstream(next()).put('.'); }},
        {"hold", [&] { Hold(next()); }},
        {"start", [&] { Start(rest()); }},
        {"input", [] { Write(std::getchar() == EOF ? "none\n" : "some\n"); }},
#ifdef _WIN32
        {"die", [] { _exit(137); }},
#else
        {"die", [] { raise(SIGKILL); }},
        {"files", Files},
#endif
        {"folder", [] { Write(fs::current_path().filename().string() + "\n"); }},
        {"word", [&] { Write(std::string("[").append(text()).append("]\n")); }},
        {"variable", [&] { Write(std::string(std::getenv(text().c_str())) + "\n"); }},
    };
    while (at != words.end())
        commands.at(text())();
}

} // namespace

#ifdef _WIN32
int wmain(int argc, wchar_t **argv) {
    _setmode(_fileno(stdout), _O_BINARY);
#else
int main(int argc, char **argv) { // NOLINT(bugprone-exception-escape): a wrong word ends the child, which its test sees
#endif
    RunScript({argv + 1, argv + argc});
    return 0;
}
