#include "apps/zvi/common/UnitNumbers.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"

#include "zvi/units/UnitKinds.h"
#include "zvi/units/UnitRecords.h"
#include "zvi/units/UnitTables.h"

#include <optional>
#include <vector>

namespace zvi::app {

namespace {

std::vector<std::string> KindNames() {
    std::vector<std::string> names;
    for (int kind = 1; kind < lib::kUnitKindCount; ++kind) {
        if (lib::GetUnitKindName(kind)[0])
            names.emplace_back(lib::GetUnitKindName(kind));
    }
    return names;
}

} // namespace

int UnitKindNamed(std::string const &text) {
    if (int const kind = lib::FindUnitKind(text.c_str()))
        return kind;
    std::optional<long long> const kind = ParseInteger(text);
    if (kind && *kind >= 1 && *kind < lib::kUnitKindCount)
        return static_cast<int>(*kind);
    throw UsageError(Joined("a kind is a name such as stress, or a number from 1 to ",
                            std::to_string(lib::kUnitKindCount - 1), ", not '", text, "'; ",
                            DidYouMean(Lowered(text), KindNames(), "'zvi units' lists them")));
}

int UnitSystemNamed(std::string const &text) {
    std::optional<long long> const number = ParseInteger(text);
    if (!number || *number < 0 || *number >= lib::kUnitSystemCount)
        throw UsageError("a unit system is a number from 0 to 5, not '" + text +
                         "'; 0: N mm, 1: N m, 2: N mm ton, 3: lbf ft, 4: kgf cm, 5: lbf in");
    return static_cast<int>(*number);
}

} // namespace zvi::app
