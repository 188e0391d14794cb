#pragma once

#include "tests/TemporaryFolder.h"

#include <regex>
#include <set>

namespace zvi::lib::test {

/// Lines of a report in any order, with "#" for each time in its column or at the end.
using ReportLines = std::multiset<std::string>;

/// A folder of the test that stands for the drives C: and X: as long as it lives.
struct ReportFolder : zvi::test::TemporaryFolder {
    ReportFolder() { SetRoots(Native()); }
    ~ReportFolder() { SetRoots({}); }

    static void SetRoots(std::filesystem::path const &folder) {
        host::SetDriveRoot(L'C', folder);
        host::SetDriveRoot(L'X', folder);
    }

    ReportLines Lines(char const *report) const {
        ReportLines lines;
        std::ifstream file(Native(report));
        for (std::string line; std::getline(file, line);)
            lines.insert(std::regex_replace(line, std::regex(" {4}[0-9]\\.[0-9]{6}|[0-9.]+(e-[0-9]+)?$"), "#"));
        return lines;
    }
};

} // namespace zvi::lib::test
