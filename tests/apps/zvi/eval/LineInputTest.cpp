// The prompt on a terminal of its own. The console of Windows edits lines before the program sees them.
#ifndef _WIN32

#include <gtest/gtest.h>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace zvi::app::test {

namespace {

/// Waits until the program reads keys instead of lines: it shows its prompt a little before.
void AwaitKeys(int terminal, int patience) {
    termios settings{};
    while (patience-- > 0 && tcgetattr(terminal, &settings) == 0 && (settings.c_lflag & ICANON) != 0)
        poll(nullptr, 0, 1);
}

/// Types a line, or keys that end one, each time the prompt shows, and gives all that the terminal gets to see.
std::string Session(std::initializer_list<std::string> const &lines) {
    int terminal = -1;
    pid_t const child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        setenv("TERM", "xterm", 1);
        setenv("LC_ALL", "C", 1);
        setenv("EDITRC", "/dev/null", 1);
        setenv("ASAN_OPTIONS", "detect_leaks=0", 1); // libedit keeps the names of keys that are bound to functions
        execl(ZVI_PROGRAM, ZVI_PROGRAM, "eval", nullptr);
        _exit(127);
    }
    constexpr int kPatience = 60'000; // milliseconds; a hanging prompt ends the test
    std::string seen;
    auto next = lines.begin();
    pollfd waiting{terminal, POLLIN, 0};
    char buffer[256];
    for (std::size_t told = 0; poll(&waiting, 1, kPatience) > 0;) {
        ssize_t const count = read(terminal, buffer, sizeof buffer);
        if (count <= 0)
            break;
        seen.append(buffer, static_cast<std::size_t>(count));
        std::size_t const prompt = seen.find("zvi> ", told);
        if (prompt == std::string::npos || next == lines.end())
            continue;
        told = seen.size();
        AwaitKeys(terminal, kPatience);
        EXPECT_EQ(write(terminal, next->data(), next->size()), static_cast<ssize_t>(next->size()));
        ++next;
    }
    close(terminal);
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << seen;
    return seen;
}

} // namespace

TEST(LineInput, EditsTheLineAndBringsEarlierOnesBack) {
    std::string const left = "\x1B[D";
    std::string const up = "\x1B[A";
    std::string const seen =
        Session({"1+2" + left + left + left + "30*\r", up + "+0.5\r", "h\u00E9\x7F=4\r", "junk\x03", "20*h\r", "\x04"});
    for (char const *answer : {"\n32\r", "\n32.5\r", "\nh = 4\r", "^C", "\n80\r"})
        EXPECT_NE(seen.find(answer), std::string::npos) << answer << " in\n" << seen;
}

} // namespace zvi::app::test

#endif
