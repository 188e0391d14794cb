#include "zvi/host/Messages.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace host = zvi::host;

TEST(Messages, ANameKeepsItsNumberAndSharesItWithNoOther) {
    std::vector<std::uint32_t> numbers;
    for (int i = 0; i < 50; ++i)
        numbers.push_back(host::RegisterMessage((L"messages test " + std::to_wstring(i)).c_str()));
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        EXPECT_GE(numbers[i], host::kFirstMessage);
        EXPECT_LE(numbers[i], host::kLastMessage);
        EXPECT_EQ(host::RegisterMessage((L"MESSAGES Test " + std::to_wstring(i)).c_str()), numbers[i]);
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_NE(numbers[i], numbers[j]);
    }
    EXPECT_EQ(host::RegisterMessage(nullptr), 0U);
    EXPECT_EQ(host::RegisterMessage(L""), 0U);
}

TEST(Messages, MainWindowAnswersAndMayReplaceItself) {
    EXPECT_EQ(host::SendToMainWindow(1, 2, 3), 0);
    host::SetMainWindow([](std::uint32_t message, std::uintptr_t first, std::intptr_t second) {
        host::SetMainWindow({});
        return static_cast<std::intptr_t>(message + first) * second;
    });
    EXPECT_EQ(host::SendToMainWindow(1, 2, 3), 9);
    EXPECT_EQ(host::SendToMainWindow(1, 2, 3), 0);
}
