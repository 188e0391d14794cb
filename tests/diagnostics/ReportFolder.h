#pragma once

#include "tests/TemporaryFolder.h"

#include <algorithm>

namespace zvi::lib::test {

/// A folder of the test that stands for the drives C: and X: as long as it lives.
class ReportFolder {
public:
    ReportFolder() { SetRoots(m_folder.Native()); }
    ~ReportFolder() { SetRoots({}); }
    ReportFolder(ReportFolder const &) = delete;
    ReportFolder &operator=(ReportFolder const &) = delete;

    static void SetRoots(std::filesystem::path const &folder) {
        host::SetDriveRoot(L'C', folder);
        host::SetDriveRoot(L'X', folder);
    }

    std::filesystem::path Path() const { return m_folder.Native(); }

    /// What stands in a file, with LF at the ends of lines; empty when there is none.
    std::string Text(char const *file) const {
        std::string text = m_folder.Read(file);
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        return text;
    }

private:
    zvi::test::TemporaryFolder m_folder;
};

} // namespace zvi::lib::test
