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

/// A pipe both of whose ends refuse instead of waiting.
class ImpatientPipe {
public:
#ifdef _WIN32
    ImpatientPipe() {
        HANDLE ends[2] = {};
        EXPECT_TRUE(CreatePipe(&ends[0], &ends[1], nullptr, 4096));
        for (int i = 0; i < 2; ++i) {
            DWORD mode = PIPE_READMODE_BYTE | PIPE_NOWAIT;
            EXPECT_TRUE(SetNamedPipeHandleState(ends[i], &mode, nullptr, nullptr));
            m_ends[i] = reinterpret_cast<HostStream>(ends[i]);
        }
    }
    void Close(int end) {
        if (m_ends[end] != -1)
            CloseHandle(reinterpret_cast<HANDLE>(m_ends[end]));
        m_ends[end] = -1;
    }
#else
    ImpatientPipe() {
        int ends[2] = {};
        EXPECT_EQ(pipe(ends), 0);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(fcntl(ends[i], F_SETFL, O_NONBLOCK), 0);
            m_ends[i] = ends[i];
        }
    }
    void Close(int end) {
        if (m_ends[end] != -1)
            close(static_cast<int>(m_ends[end]));
        m_ends[end] = -1;
    }
#endif
    ~ImpatientPipe() {
        Close(0);
        Close(1);
    }
    ImpatientPipe(ImpatientPipe const &) = delete;
    ImpatientPipe &operator=(ImpatientPipe const &) = delete;

    HostStream Reading() const {
        return m_ends[0];
    }
    HostStream Writing() const {
        return m_ends[1];
    }

private:
    HostStream m_ends[2] = {-1, -1};
};

} // namespace

TEST(StandardStreams, LoseNothingInAPipeThatRefusesToWait) {
    ImpatientPipe pipe;
    std::string text;
    for (int i = 0; i < 200000; ++i)
        text.append(std::to_string(i)).append(i % 3 == 0 ? "\r\n" : "\n");
    std::thread writer([&] {
        StandardOutput buffer(pipe.Writing());
        std::ostream out(&buffer);
        out << text.substr(0, 100) << text.substr(100, 70000) << std::flush << text.substr(70100) << std::flush;
        EXPECT_TRUE(out.good()) << buffer.Failure().message();
        pipe.Close(1);
    });
    StandardInput buffer(pipe.Reading());
    std::istream in(&buffer);
    EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(in), {}) == text);
    writer.join();
}

TEST(StandardStreams, TellThatTheReaderHasGone) {
#ifndef _WIN32
    auto *const handler = std::signal(SIGPIPE, SIG_IGN);
#endif
    ImpatientPipe pipe;
    pipe.Close(0);
    StandardOutput buffer(pipe.Writing());
    std::ostream out(&buffer);
    EXPECT_FALSE(out << "nobody hears this" << std::flush);
    EXPECT_EQ(buffer.Failure(), std::errc::broken_pipe);
#ifndef _WIN32
    std::signal(SIGPIPE, handler);
#endif
}

} // namespace zvi::app::test
