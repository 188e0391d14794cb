// Any bytes as a profile report: sorted and shown, or refused with InputError; nothing else.

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/profile-report/ProfileTable.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    try {
        zvi::app::ProfileReport const report =
            zvi::app::ReadProfileReport(std::string_view(reinterpret_cast<char const *>(data), size));
        std::vector<zvi::app::ProfileRow> rows = report.rows;
        for (std::string const &key : zvi::app::ProfileSortKeys())
            zvi::app::SortProfileRows(rows, key);
        zvi::app::ProfileTable(report, rows);
        zvi::app::ProfileJson(report, rows);
    } catch (zvi::app::InputError const &) {
    }
    return 0;
}
