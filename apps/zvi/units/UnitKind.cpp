#include "apps/zvi/units/UnitKind.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NumberText.h"

#include "zvi/units/UnitRecords.h"

namespace zvi::app {

int UnitKindNamed(std::string const &text) {
    std::optional<long long> const kind = ParseInteger(text);
    if (!kind || *kind < 1 || *kind >= lib::kUnitKindCount) {
        throw UsageError("a kind is a number from 1 to " + std::to_string(lib::kUnitKindCount - 1) + ", not '" + text +
                         "'; 'zvi units' lists them");
    }
    return static_cast<int>(*kind);
}

} // namespace zvi::app
