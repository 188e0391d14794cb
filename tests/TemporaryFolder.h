#pragma once

#include <gtest/gtest.h>

#include "zvi/host/Environment.h"
#include "zvi/host/Files.h"
#include "zvi/host/Paths.h"
#include "zvi/host/ProcessMemory.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::test {

/// The text with this host's line ends.
inline std::string HostText(std::string_view text) {
    std::string written;
    for (char const c : text)
        written += c == '\n' ? std::string(host::LineEnd()) : std::string(1, c);
    return written;
}

/// A folder for the files of one test: empty at first, and gone at the end.
class TemporaryFolder {
public:
    TemporaryFolder() : m_path(std::filesystem::temp_directory_path() / NameOfTest()) {
        std::filesystem::remove_all(m_path);
        std::filesystem::create_directories(m_path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(TemporaryFolder const &) = delete;
    TemporaryFolder &operator=(TemporaryFolder const &) = delete;

    /// A file in it, in the host's own form and in the library's.
    std::filesystem::path Native(std::filesystem::path const &name = {}) const { return m_path / name; }
    std::wstring Path(std::filesystem::path const &name = {}) const {
        return host::LibraryPath(name.empty() ? m_path : m_path / name);
    }

    void Write(std::filesystem::path const &name, std::string_view content) const {
        std::ofstream(Native(name), std::ios::binary) << content;
    }
    std::string Read(std::filesystem::path const &name) const {
        std::ifstream file(Native(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    /// Names of what is in it, in any order.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (std::filesystem::directory_entry const &entry : std::filesystem::directory_iterator(m_path))
            names.push_back(entry.path().filename().string());
        return names;
    }

private:
    /// No two tests that run side by side share it; a process that a test starts has that of its test.
    static std::string NameOfTest() {
        testing::TestInfo const *const test = testing::UnitTest::GetInstance()->current_test_info();
        return "zvi_" + ProcessOfTest() + '_' + test->test_suite_name() + '_' + test->name();
    }
    static std::string ProcessOfTest() {
        if (char const *const known = std::getenv("ZVI_PROCESS_OF_TEST"))
            return known;
        std::string const own = std::to_string(host::CurrentProcessId());
        host::SetEnvironmentPath(L"ZVI_PROCESS_OF_TEST", std::wstring(own.begin(), own.end()));
        return own;
    }

    std::filesystem::path m_path;
};

} // namespace zvi::test
