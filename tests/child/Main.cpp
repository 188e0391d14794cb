// The child program of the tests: does what its arguments say, one after the other. It knows nothing of the library.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
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

#ifdef _WIN32

using Text = std::wstring;

std::string Utf8(Text const &text) {
    int const size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), size, nullptr, nullptr);
    return bytes;
}

/// Starts this program again with other arguments, in a console group of its own if it is to be a daemon.
void StartAgain(std::vector<Text> const &arguments, bool) {
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    Text line = L"\"" + Text(self) + L"\"";
    for (Text const &argument : arguments)
        line += L" \"" + argument + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started{};
    CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started);
}

void Die() {
    TerminateProcess(GetCurrentProcess(), 137);
}

/// Nobody else can remove the file until this process ends.
void Hold(fs::path const &file) {
    CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
}

std::string OpenFiles() {
    return "";
}

#else

using Text = std::string;

std::string const &Utf8(Text const &text) {
    return text;
}

void StartAgain(std::vector<Text> const &arguments, bool isDaemon) {
    if (fork() != 0)
        return;
    if (isDaemon)
        setsid();
    std::vector<char *> words{const_cast<char *>("child")};
    for (Text const &argument : arguments)
        words.push_back(const_cast<char *>(argument.c_str()));
    words.push_back(nullptr);
    execv("/proc/self/exe", words.data());
    _exit(127);
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

void Write(std::string_view bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

void WriteError(std::string const &text) {
    std::fputs(text.c_str(), stderr);
    std::fflush(stderr);
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
    std::string block;
    for (int i = 0; i < count; ++i) {
        block += std::to_string(i) + "\n";
        if (block.size() > (1 << 16) || i + 1 == count)
            Write(std::exchange(block, {}));
    }
}

[[noreturn]] void Hang() {
    while (true)
        std::this_thread::sleep_for(std::chrono::hours(1));
}

/// Until a file is there.
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

class Script {
public:
    explicit Script(std::vector<Text> words) : m_words(std::move(words)) {}

    int Run() {
        while (m_at < m_words.size())
            Do(Utf8(Next()));
        return m_exitCode;
    }

private:
    Text Next() { return m_at < m_words.size() ? m_words[m_at++] : Text(); }
    std::string NextText() { return Utf8(Next()); }
    /// The words up to a lone semicolon.
    std::vector<Text> Rest() {
        std::vector<Text> words;
        while (m_at < m_words.size() && Utf8(words.emplace_back(Next())) != ";")
            ;
        if (!words.empty() && Utf8(words.back()) == ";")
            words.pop_back();
        return words;
    }

    void Do(std::string const &what) {
        if (what == "bytes")
            Write(BytesOf(NextText()));
        else if (what == "errors")
            WriteError(NextText() + "\n");
        else if (what == "flood")
            Flood(std::stoll(NextText()));
        else if (what == "lines")
            Lines(std::stoi(NextText()));
        else if (what == "exit")
            m_exitCode = std::stoi(NextText());
        else if (what == "close")
            CloseOutput();
        else if (what == "wait")
            WaitFor(Next());
        else if (what == "touch")
            std::ofstream(fs::path(Next())).put('.');
        else if (what == "hold")
            Hold(Next());
        else if (what == "hang")
            Hang();
        else if (what == "die")
            Die();
        else if (what == "start" || what == "daemon")
            StartAgain(Rest(), what == "daemon");
        else
            Tell(what);
    }

    void Tell(std::string const &what) {
        if (what == "input")
            Write(std::to_string(CountInput()) + "\n");
        else if (what == "files")
            Write("files" + OpenFiles() + "\n");
        else if (what == "folder")
            Write(fs::current_path().filename().string() + "\n");
        else if (what == "variable")
            Write(std::string(std::getenv(NextText().c_str())) + "\n");
        else if (what == "words")
            for (Text const &word : Rest())
                Write(std::string("[").append(Utf8(word)).append("]\n"));
    }

    static void CloseOutput() {
        std::fclose(stdout);
        std::fclose(stderr);
    }

    std::vector<Text> m_words;
    std::size_t m_at = 0;
    int m_exitCode = 0;
};

} // namespace

#ifdef _WIN32
int wmain(int argc, wchar_t **argv) {
    _setmode(_fileno(stdout), _O_BINARY);
#else
int main(int argc, char **argv) {
#endif
    return Script({argv + 1, argv + argc}).Run();
}
