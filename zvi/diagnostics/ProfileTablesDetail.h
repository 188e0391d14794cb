#pragma once

#include "zvi/core/CMap.h"
#include "zvi/core/CString.h"
#include "zvi/diagnostics/T_PROFILE_D.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace zvi::lib::diagnostics {

/// What `MProfileMgr` has measured: the records by name, in the order of first use, and names and labels by id.
class ProfileTables {
public:
    ProfileTables();

    /// The record of a name, which is not null; null when there is none.
    T_PROFILE_D *Find(wchar_t const *name);
    /// Makes the record of a name that has none, without calls. All tables are as they were when memory cannot be had.
    T_PROFILE_D *Add(wchar_t const *file, int line, wchar_t const *name);

    /// The label of an id; empty when there is none.
    CString LabelOf(int id) const;
    /// All records by ascending id, those of one id in the order of first use.
    std::vector<T_PROFILE_D> Records() const;
    /// The records of the names of these ids, in this order.
    std::vector<T_PROFILE_D> Records(int const *ids, int count) const;

    void Clear();
    void Remove(int id);

private:
    /// Park and Miller's step (Communications of the ACM 31, 1988, p. 1192).
    struct IdHash {
        std::size_t operator()(int id) const {
            int const step = 16807 * (id % 127773) - 2836 * (id / 127773);
            return static_cast<std::size_t>(step < 0 ? step + 2147483647 : step);
        }
    };
    using TextsById = std::unordered_map<int, CString, IdHash>;

    struct Record {
        T_PROFILE_D data;
        wchar_t const *name; ///< in the key of this record
    };

    /// Where a literal led the last time. The text behind the pointer may be another one by now, so it is compared.
    struct Recent {
        wchar_t const *literal;
        Record *record;
    };
    static constexpr std::size_t kRecentCount = 256;

    Recent &RecentOf(wchar_t const *literal);

    CMap<CString, Record> m_records;
    TextsById m_names;
    TextsById m_labels;
    std::array<Recent, kRecentCount> m_recent{};
};

} // namespace zvi::lib::diagnostics
