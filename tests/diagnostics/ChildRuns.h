#pragma once

#include "zvi/diagnostics/MProcessMgr.h"
#include "zvi/host/Paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::lib::test {

using Texts = std::vector<std::string>;

inline std::wstring const kChildProgram = host::LibraryPath(std::filesystem::path(ZVI_TEST_CHILD).make_preferred());

/// Starts the child program in a folder, which is where its words look for files.
inline int RunChild(MProcessCommunicator *communicator, std::wstring const &words, std::wstring const &folder = L"",
                    CDocument *document = nullptr, int manyLines = 0) {
    return MProcessMgr::Instance()->Run(kChildProgram.c_str(), words.c_str(), folder.c_str(), 0, 77, communicator,
                                        manyLines, 0, document);
}

inline void Pass() {
    MProcessMgr::Instance()->OnTimer(nullptr, 0, MProcessMgr::kTimerId, 0);
}

inline void WaitAndPass() {
    MProcessMgr::Instance()->WaitForOutput(20);
    Pass();
}

/// Passes until it is so.
inline void PassUntil(std::function<bool()> const &isSo) {
    while (!isSo())
        WaitAndPass();
}

/// Keeps what it is told, of each unit its byte if it is an extended one, and "x*5000" for that many "x" at the start.
class Heard : public MProcessCommunicator {
public:
    explicit Heard(int selfDelete = 0) { SetSelfDelete(selfDelete); }

    void OnProcessMsg(wchar_t const *text) override {
        std::wstring_view const all = text;
        std::size_t const run = std::min(all.find_first_not_of(L'x'), all.size());
        bool const isLong = run > 1000;
        std::string told = isLong ? "x*" + std::to_string(run) : "";
        for (wchar_t const unit : all.substr(isLong ? run : 0))
            told += unit < 0x80 || unit >= 0xFF80 ? static_cast<char>(unit) : '?';
        texts.push_back(told);
        hasEnded = told.starts_with("!Exit:");
        startError = GetCurrentMsg()->startError;
        if (onMessage)
            onMessage(told);
    }

    /// All that the child says, from its start on.
    Texts const &ToTheEnd() {
        PassUntil([this] { return hasEnded; });
        return texts;
    }

    Texts texts;
    std::function<void(std::string const &)> onMessage;
    unsigned int startError = 0;
    bool hasEnded = false;
};

} // namespace zvi::lib::test
