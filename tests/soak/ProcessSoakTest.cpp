// Child programs under load and faults, with figures. Takes minutes, so it is no part of the tests:
// `cmake --build --preset release --target zvi_soak && build/release/tests/zvi_soak`.

#include "tests/TemporaryFolder.h"
#include "tests/diagnostics/ChildRuns.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string_view>

namespace zvi::lib::test {

namespace {

using zvi::test::TemporaryFolder;
using Clock = std::chrono::steady_clock;

/// Most memory that this process has had so far, in MB; 0 where the host does not tell.
double PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (double kilobytes = 0; word == "VmHWM:" && status >> kilobytes)
            return kilobytes / 1024;
    return 0;
}

/// Prints the time and the memory of a test at its end.
class Figures {
public:
    explicit Figures(char const *what) : m_what(what) {}
    ~Figures() {
        std::chrono::duration<double> const seconds = Clock::now() - m_start;
        std::printf("%-40s %7.2f s, peak %6.0f MB, %+.0f\n", m_what, seconds.count(), PeakMemory(),
                    PeakMemory() - m_before);
    }
    Figures(Figures const &) = delete;
    Figures &operator=(Figures const &) = delete;

private:
    char const *m_what;
    Clock::time_point m_start = Clock::now();
    double m_before = PeakMemory();
};

/// Counts what comes, and the lines among it that are the numbers from 0 on.
class Counter : public MProcessCommunicator {
public:
    Counter() { SetSelfDelete(0); }
    void OnProcessMsg(wchar_t const *text) override {
        std::string_view const line = GetCurrentMsg()->bytes;
        ++messages;
        bytes += line.size();
        hasEnded = line.empty();
        exit = text;
        if (line == std::to_string(count))
            ++count;
    }
    long messages = 0;
    long count = 0;
    std::size_t bytes = 0;
    bool hasEnded = false;
    std::wstring exit;
};

CDocument *DocumentAt(void *place) {
    return static_cast<CDocument *>(place);
}

} // namespace

TEST(ProcessSoak, AHundredChildrenAtOnce) {
    Figures const figures("100 children of 10,000 lines");
    TemporaryFolder const folder;
    constexpr int kLines = 10000;
    std::vector<std::unique_ptr<Counter>> children;
    std::wstring const words = Arguments({"wait", folder.Native("go"), "lines", std::to_string(kLines), "exit", "9"});
    for (int i = 0; i < 100; ++i) {
        children.push_back(std::make_unique<Counter>());
        ASSERT_EQ(RunChildOf(children.back().get(), words, nullptr, i % 2), 0);
    }
    Counter refused;
    EXPECT_EQ(RunChildOf(&refused, words), -4);
    folder.Write("go", "");
    for (std::unique_ptr<Counter> const &child : children) {
        PassUntil([&] { return child->hasEnded; });
        EXPECT_EQ(child->count, kLines);
        EXPECT_EQ(child->messages, kLines + 1);
        EXPECT_EQ(child->exit, L"!Exit:9");
    }
    EXPECT_EQ(RunChildOf(&refused, words), 0);
    PassUntil([&] { return refused.hasEnded; });
}

TEST(ProcessSoak, AMillionShortLinesOfAChildThatNobodyHearsAtFirst) {
    Figures const figures("1 s without a pass, 1,000,000 lines");
    Counter lines;
    ASSERT_EQ(RunChildOf(&lines, L"lines 1000000", nullptr, 1), 0);
    std::this_thread::sleep_for(std::chrono::seconds(1));
    EXPECT_EQ(lines.IsAlive(), 1);
    PassUntil([&] { return lines.hasEnded; });
    EXPECT_EQ(lines.count, 1000000);
    EXPECT_EQ(lines.messages, 1000001);
}

TEST(ProcessSoak, ChildrenThatEndInOddWays) {
    Figures const figures("200 children of each odd kind");
    TemporaryFolder const folder;
    struct Row {
        std::wstring words;
        std::vector<std::string> texts;
    };
    std::string const killed = "!Exit:137";
    Row const rows[] = {
        {L"", {"!Exit:0"}},                                           // dies at once
        {L"bytes 61 die", {"a\r", killed}},                           // is killed
        {L"bytes 61 close exit 5", {"a\r", "!Exit:5"}},               // closes its output and lives on
        {L"bytes 610A daemon wait over ; exit 6", {"a\r", "!Exit:6"}} // leaves a daemon behind
    };
    for (Row const &row : rows)
        for (int i = 0; i < 200; i += 50) {
            std::vector<std::unique_ptr<Heard>> children;
            for (int j = 0; j < 50; ++j) {
                children.push_back(std::make_unique<Heard>());
                ASSERT_EQ(MProcessMgr::Instance()->Run(ChildProgram().c_str(), row.words.c_str(), folder.Path().c_str(),
                                                       0, 77, children.back().get(), 0, 0, nullptr),
                          0);
            }
            for (std::unique_ptr<Heard> const &child : children) {
                PassUntil([&] { return child->hasEnded; });
                EXPECT_EQ(child->texts, row.texts);
            }
        }
    folder.Write("over", "");
    std::this_thread::sleep_for(std::chrono::seconds(1));
}

TEST(ProcessSoak, DocumentsAreClosedInTheMiddle) {
    Figures const figures("1,000 floods, document closed");
    char documents[10];
    for (int round = 0; round < 100; ++round) {
        std::vector<std::unique_ptr<Counter>> children;
        for (char &document : documents) {
            children.push_back(std::make_unique<Counter>());
            ASSERT_EQ(RunChildOf(children.back().get(), L"lines 100000000", DocumentAt(&document)), 0);
        }
        PassUntil([&] { return children[static_cast<std::size_t>(round % 10)]->messages > 500; });
        for (char &document : documents)
            MProcessMgr::Instance()->OnCloseDocument(DocumentAt(&document));
        for (std::unique_ptr<Counter> const &child : children)
            EXPECT_EQ(child->IsAlive(), 0);
    }
}

TEST(ProcessSoak, CommunicatorsAreDeletedInACallback) {
    Figures const figures("1,000 communicators deleted by their 7th");
    for (int i = 0; i < 1000; ++i) {
        auto *const heard = new Heard;
        int count = 0;
        heard->onMessage = [&, heard](std::string const &) {
            if (++count == 7)
                delete heard;
        };
        ASSERT_EQ(RunChildOf(heard, L"lines 1000"), 0);
        PassUntil([&] { return count == 7; });
        Pass();
        EXPECT_EQ(count, 7);
        if (i % 50 == 49) {
            EXPECT_EQ(AllOf(L"bytes 62").size(), 2u);
        }
    }
}

/// Last, since it takes the most memory.
TEST(ProcessSoak, AGigabyteWithoutALineEnd) {
    Figures const figures("1 GB without a line end");
    Counter sum;
    ASSERT_EQ(RunChildOf(&sum, L"flood 1000000000"), 0);
    PassUntil([&] { return sum.hasEnded; });
    EXPECT_EQ(sum.messages, 2);
    EXPECT_EQ(sum.bytes, 1000000000u);
}

} // namespace zvi::lib::test
