#include "apps/zvi/common/StandardStreams.h"

#include <gtest/gtest.h>

#include <istream>
#include <ostream>
#include <string>
#include <thread>

#ifdef _WIN32
#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace zvi::app::test {

namespace {

/// The ends of a pipe, for reading and for writing. Both refuse instead of waiting.
struct ImpatientPipe {
    HostStream ends[2];

#ifdef _WIN32
    ImpatientPipe() {
        HANDLE handles[2] = {};
        DWORD mode = PIPE_READMODE_BYTE | PIPE_NOWAIT;
        EXPECT_TRUE(CreatePipe(&handles[0], &handles[1], nullptr, 4096));
        for (int i = 0; i < 2; ++i) {
            EXPECT_TRUE(SetNamedPipeHandleState(handles[i], &mode, nullptr, nullptr));
            ends[i] = reinterpret_cast<HostStream>(handles[i]);
        }
    }
    void Close(int end) const {
        CloseHandle(reinterpret_cast<HANDLE>(ends[end]));
    }
#else
    ImpatientPipe() {
        int descriptors[2] = {};
        EXPECT_EQ(pipe(descriptors), 0);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(fcntl(descriptors[i], F_SETFL, O_NONBLOCK), 0);
            ends[i] = descriptors[i];
        }
    }
    void Close(int end) const {
        close(static_cast<int>(ends[end]));
    }
#endif
};

} // namespace

TEST(StandardStreams, LoseNothingInAPipeThatRefusesToWait) {
    ImpatientPipe const pipe;
    std::string text;
    for (int i = 0; i < 200000; ++i)
        text.append(std::to_string(i)).append(i % 3 == 0 ? "\r\n" : "\n");
    std::thread writer([&] {
        StandardOutput buffer(pipe.ends[1]);
        std::ostream out(&buffer);
        out << text.substr(0, 100) << text.substr(100, 70000) << std::flush << text.substr(70100) << std::flush;
        EXPECT_TRUE(out.good()) << buffer.Failure().message();
        pipe.Close(1);
    });
    StandardInput buffer(pipe.ends[0]);
    std::istream in(&buffer);
    EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(in), {}) == text);
    writer.join();
    pipe.Close(0);
}

TEST(StandardStreams, TellThatTheReaderHasGone) {
#ifndef _WIN32
    auto *const handler = std::signal(SIGPIPE, SIG_IGN);
#endif
    ImpatientPipe const pipe;
    pipe.Close(0);
    EXPECT_EQ(WriteAll(pipe.ends[1], "nobody hears this"), std::errc::broken_pipe);
    pipe.Close(1);
#ifndef _WIN32
    std::signal(SIGPIPE, handler);
#endif
}

} // namespace zvi::app::test
