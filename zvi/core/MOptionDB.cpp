#include "zvi/core/MOptionDB.h"

#include "zvi/core/LibraryOptionsDetail.h"
#include "zvi/core/OptionAnalCtrl.h"
#include "zvi/core/OptionGenTol.h"

#include <vector>

namespace zvi::lib {

namespace {

/// A registry that holds the library's own groups.
class LibraryOptions : public MOptionDB {
public:
    LibraryOptions() {
        OptionGenTol &tolerances = core::GeneralTolerances();
        SetOptData(tolerances.GetCategory(), &tolerances);
        OptionAnalCtrl &analysis = core::AnalysisControl();
        SetOptData(analysis.GetCategory(), &analysis);
    }
};

/// Makes the registry at load, wherever it is linked to, if nobody has before.
[[maybe_unused]] MOptionDB const *const kAtLoad = MOptionDB::Instance();

std::vector<MOptionData *> GroupsOf(std::map<CString, MOptionData *> const &byCategory) {
    std::vector<MOptionData *> groups;
    groups.reserve(byCategory.size());
    for (auto const &[category, group] : byCategory)
        groups.push_back(group);
    return groups;
}

} // namespace

MOptionDB *MOptionDB::Instance() {
    static LibraryOptions registry;
    return &registry;
}

MOptionDB::~MOptionDB() = default;

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is the one that callers know
MOptionData *MOptionDB::GetOptData(CString key) {
    return m_groups[key];
}

void MOptionDB::SetOptData(CString key, MOptionData *data) {
    m_groups.emplace(key, data);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is the one that callers know
void MOptionDB::RemoveOptData(CString key) {
    m_groups.erase(key);
}

void MOptionDB::Reserved() {}

void MOptionDB::ReadData(MOptionRW *rw) {
    std::vector<MOptionData *> groups = GroupsOf(m_groups);
    rw->ReadOption(groups);
}

void MOptionDB::WriteData(MOptionRW *rw) {
    std::vector<MOptionData *> groups = GroupsOf(m_groups);
    rw->WriteOption(groups);
}

} // namespace zvi::lib
