#pragma once

#include "zvi/diagnostics/MProcessMgr.h"
#include "zvi/host/CommandLine.h"
#include "zvi/host/Paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace zvi::lib::test {

/// The child program, in the library's form.
inline std::wstring ChildProgram() {
    return host::LibraryPath(std::filesystem::path(ZVI_TEST_CHILD).make_preferred());
}

/// Words as one string of arguments.
inline std::wstring Arguments(std::vector<std::filesystem::path> const &words) {
    std::wstring line;
    for (std::filesystem::path const &word : words)
        line += (line.empty() ? L"" : L" ") + host::QuotedArgument(word.native());
    return line;
}

/// Keeps what it is told; "?" stands for a unit beyond ASCII.
class Heard : public MProcessCommunicator {
public:
    explicit Heard(int selfDelete = 0) { SetSelfDelete(selfDelete); }

    void OnProcessMsg(wchar_t const *text) override {
        texts.emplace_back();
        for (; *text != L'\0'; ++text)
            texts.back() += *text < 0x80 ? static_cast<char>(*text) : '?';
        if (texts.back().starts_with("!Exit:")) {
            startError = GetCurrentMsg()->startError;
            hasEnded = true;
        }
        if (onMessage)
            onMessage(texts.back());
    }

    std::vector<std::string> texts;
    std::function<void(std::string const &)> onMessage;
    unsigned int startError = 0;
    bool hasEnded = false;
};

inline int RunChildOf(MProcessCommunicator *communicator, std::wstring const &arguments, CDocument *document = nullptr,
                      int manyLines = 0) {
    return MProcessMgr::Instance()->Run(ChildProgram().c_str(), arguments.c_str(), L"", 0, 77, communicator, manyLines,
                                        0, document);
}

inline void Pass() {
    MProcessMgr::Instance()->OnTimer(nullptr, 0, MProcessMgr::kTimerId, 0);
}

/// Passes until it is so.
inline void PassUntil(std::function<bool()> const &isSo) {
    while (!isSo()) {
        MProcessMgr::Instance()->WaitForOutput(20);
        Pass();
    }
}

/// What a child says from its start to its end.
inline std::vector<std::string> AllOf(std::wstring const &arguments) {
    Heard heard;
    EXPECT_EQ(RunChildOf(&heard, arguments), 0);
    PassUntil([&] { return heard.hasEnded; });
    return heard.texts;
}

} // namespace zvi::lib::test
