#include "apps/zvi/domains/output/TextTable.h"

#include <algorithm>
#include <cassert>

namespace zvi::app {

std::string TextTable(std::vector<std::vector<std::string>> const &rows, bool endsInText, bool color) {
    assert(!rows.empty() && !rows.front().empty());
    std::size_t const columns = rows.front().size();
    std::vector<std::size_t> widths(columns, 0);
    for (auto const &row : rows) {
        assert(row.size() == columns);
        for (std::size_t i = 0; i < columns - (endsInText ? 1 : 0); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    std::string table;
    for (auto const &row : rows) {
        bool const isBold = color && &row == &rows.front();
        table += isBold ? "\x1B[1m" : "";
        for (std::size_t i = 0; i < columns; ++i) {
            table += i == 0 ? "" : "  ";
            table += std::string(widths[i] - std::min(widths[i], row[i].size()), ' ') + row[i];
        }
        table += isBold ? "\x1B[0m\n" : "\n";
    }
    return table;
}

} // namespace zvi::app
