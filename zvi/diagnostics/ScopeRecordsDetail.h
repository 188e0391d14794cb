#pragma once

#include "zvi/Export.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zvi::lib::diagnostics {

/// The sums of all scopes of one name, in seconds.
struct ScopeRecord {
    double total = 0;    ///< from the entry to the end of the profiler's work
    double overhead = 0; ///< the profiler's own part of `total`
    double child = 0;    ///< the part of `total` that scopes directly inside took
    int calls = 0;       ///< stays at the largest `int`

    double Independent() const { return total - child; }
};

/// FNV-1a over bytes that are sign-extended; the result in the arithmetic of 64 bits.
constexpr std::uint64_t SignedFnv(std::string_view name) {
    std::uint64_t hash = 2166136261u;
    for (char const character : name)
        hash = (hash ^ static_cast<std::uint64_t>(static_cast<signed char>(character))) * 16777619u;
    return hash;
}

/// The stack of open scopes and the records of closed ones. `Counter` is what gives the ticks of now.
class ScopeRecords {
public:
    struct NameHash {
        std::size_t operator()(std::string const &name) const { return static_cast<std::uint32_t>(SignedFnv(name)); }
    };
    using Records = std::unordered_map<std::string, ScopeRecord, NameHash>;

    ScopeRecords() : m_records(kBinCount) {}

    /// Opens a scope. The counter is read first and last, so that what lies between is known as overhead.
    /// Without memory the scope, and all that are opened inside it, are not recorded.
    template <typename Counter>
    void Push(char const *name, Counter counter) noexcept {
        if (m_lost > 0 || !MakeRoom()) {
            ++m_lost;
            return;
        }
        Scope &scope = m_scopes[m_depth];
        scope.entry = counter();
        if (!SetName(scope, name)) {
            ++m_lost;
            return;
        }
        ++m_depth;
        scope.afterPush = counter();
    }

    /// Closes the scope opened last; nothing without one.
    template <typename Counter>
    void Pop(std::int64_t frequency, Counter counter) noexcept {
        std::int64_t const begin = counter();
        if (m_lost > 0) {
            --m_lost;
            return;
        }
        if (m_depth == 0)
            return;
        Scope const &scope = m_scopes[--m_depth];
        ScopeRecord *const record = Called(scope.name);
        std::int64_t const end = counter();
        Add(scope, record, begin, end, static_cast<double>(frequency));
    }

    Records const &All() const { return m_records; }
    /// Drops the records; open scopes stay open.
    void Drop() { m_records.clear(); }

private:
    struct Scope {
        std::string name;
        std::int64_t entry;
        std::int64_t afterPush;
        double child;
    };

    static constexpr std::size_t kBinCount = 107;

    bool MakeRoom() noexcept {
        if (m_depth < m_scopes.size())
            return true;
        try {
            m_scopes.emplace_back();
            return true;
        } catch (...) {
            return false;
        }
    }

    static bool SetName(Scope &scope, char const *name) noexcept {
        try {
            scope.name = name ? name : "";
        } catch (...) {
            return false;
        }
        scope.child = 0;
        return true;
    }

    /// The record of a name with one call more; null when there is no memory for a new one.
    ScopeRecord *Called(std::string const &name) noexcept {
        try {
            ScopeRecord &record = m_records[name];
            if (record.calls < std::numeric_limits<int>::max())
                ++record.calls;
            return &record;
        } catch (...) {
            return nullptr;
        }
    }

    void Add(Scope const &scope, ScopeRecord *record, std::int64_t begin, std::int64_t end, double frequency) noexcept {
        double const duration = static_cast<double>(end - scope.entry) / frequency;
        if (record) {
            record->child += scope.child;
            record->overhead += static_cast<double>((scope.afterPush - begin) - scope.entry + end) / frequency;
            record->total += duration;
        }
        if (m_depth > 0)
            m_scopes[m_depth - 1].child += duration;
    }

    std::vector<Scope> m_scopes; // those below m_depth are open; the others keep their memory for the next
    std::size_t m_depth = 0;
    std::size_t m_lost = 0; // open scopes above them that are not recorded
    Records m_records;
};

/// The lines of `Profiler`'s report.
ZVI_API std::string ReportOf(ScopeRecords::Records const &records);

} // namespace zvi::lib::diagnostics
