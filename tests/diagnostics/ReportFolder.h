#pragma once

#include "zvi/host/Paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace zvi::lib::test {

/// An empty folder that stands for the drives C: and X: as long as it lives.
class ReportFolder {
public:
    ReportFolder() {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
        SetRoots(m_folder);
    }
    ~ReportFolder() {
        SetRoots({});
        std::filesystem::remove_all(m_folder);
    }
    ReportFolder(ReportFolder const &) = delete;
    ReportFolder &operator=(ReportFolder const &) = delete;

    static void SetRoots(std::filesystem::path const &folder) {
        host::SetDriveRoot(L'C', folder);
        host::SetDriveRoot(L'X', folder);
    }

    std::filesystem::path const &Path() const { return m_folder; }

    /// What stands in a file, with LF at the ends of lines; empty when there is none.
    std::string Text(char const *file) const {
        std::ifstream stream(m_folder / file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::filesystem::path const m_folder = std::filesystem::temp_directory_path() / "zvi reports";
};

} // namespace zvi::lib::test
