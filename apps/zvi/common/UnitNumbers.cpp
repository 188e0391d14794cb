#include "apps/zvi/common/UnitNumbers.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NumberText.h"

#include "zvi/units/UnitRecords.h"
#include "zvi/units/UnitTables.h"

namespace zvi::app {

int UnitKindNamed(std::string const &text) {
    std::optional<long long> const kind = ParseInteger(text);
    if (!kind || *kind < 1 || *kind >= lib::kUnitKindCount)
        throw UsageError("a kind is a number from 1 to " + std::to_string(lib::kUnitKindCount - 1) + ", not '" + text +
                         "'; 'zvi units' lists them");
    return static_cast<int>(*kind);
}

int UnitSystemNamed(std::string const &text) {
    std::optional<long long> const number = ParseInteger(text);
    if (!number || *number < 0 || *number >= lib::kUnitSystemCount)
        throw UsageError("a unit system is a number from 0 to 5, not '" + text +
                         "'; 0: N mm, 1: N m, 2: N mm ton, 3: lbf ft, 4: kgf cm, 5: lbf in");
    return static_cast<int>(*number);
}

} // namespace zvi::app
