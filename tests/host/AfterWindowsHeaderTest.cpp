// Public headers behind the host's own, whose names and macros they meet in every program for Windows.

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX // its macros come below, behind the standard library, which does not bear them
#endif
#include <windows.h>
#endif

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <limits>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <system_error>
#include <thread>
#include <unordered_map>
#include <vector>

#include <gtest/gtest.h>

// Every use of `max` in a public header stands in parentheses for the sake of these.
#define min(a, b) ((a) < (b) ? (a) : (b))
#define max(a, b) ((a) > (b) ? (a) : (b))

#include "zvi/zvi.h"

TEST(PublicHeaders, WorkBehindTheHostsOwn) {
    zvi::MArray<int> numbers;
    for (int i = 0; i < 3; ++i)
        numbers.PushBack(max(i, 1));
    numbers.Resize(5);
    EXPECT_EQ(numbers.Size(), 5u);
    CArray<CString> texts;
    texts.InsertAt(2, L"x");
    EXPECT_EQ(texts.GetSize(), 3);
    EXPECT_EQ(zvi::host::SendToMainWindow(1, 2, 3), 0);
}
