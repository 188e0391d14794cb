#include "zvi/base/HashMix.h"
#include "zvi/core/MQSort.h"
#include "zvi/core/WideFormat.h"
#include "zvi/diagnostics/ProfileTablesDetail.h"

#include <algorithm>
#include <cassert>
#include <cwchar>
#include <iterator>

namespace zvi::lib::diagnostics {

namespace {

/// Bins of an empty table, so that programs with the usual some hundred names never rehash.
constexpr std::size_t kBinCount = 997;

bool IsBefore(T_PROFILE_D const &left, T_PROFILE_D const &right) {
    return MQSort::CompareInt64(&left, &right) < 0;
}

} // namespace

ProfileTables::ProfileTables() : m_names(kBinCount), m_labels(kBinCount) {}

ProfileTables::Recent &ProfileTables::RecentOf(wchar_t const *literal) {
    return m_recent[base::HighHalf(base::Mix(0, reinterpret_cast<std::uintptr_t>(literal))) % kRecentCount];
}

T_PROFILE_D *ProfileTables::Find(wchar_t const *name) {
    assert(name);
    Recent &recent = RecentOf(name);
    if (recent.literal == name && std::wcscmp(recent.record->name, name) == 0)
        return &recent.record->data;
    Record *const record = m_records.Lookup(CString(name));
    if (!record)
        return nullptr;
    recent = {name, record};
    return &record->data;
}

T_PROFILE_D *ProfileTables::Add(wchar_t const *file, int line, wchar_t const *name) {
    assert(name && !m_records.Lookup(CString(name)));
    int const id = static_cast<int>(m_names.size()) + 1;
    CString const label(FormatWide(L"%s(%d) %s", file, line, name));
    CString const key(name);
    m_records.SetAt(key, Record{{id, 0, 0}, nullptr});
    try {
        m_labels.insert_or_assign(id, label);
        m_names.insert_or_assign(id, key);
    } catch (...) {
        m_records.RemoveKey(key);
        throw;
    }
    auto &[text, record] = *std::prev(m_records.end());
    record.name = text.GetString();
    return &record.data;
}

CString ProfileTables::LabelOf(int id) const {
    auto const found = m_labels.find(id);
    return found == m_labels.end() ? CString() : found->second;
}

std::vector<T_PROFILE_D> ProfileTables::Records() const {
    std::vector<T_PROFILE_D> records;
    records.reserve(static_cast<std::size_t>(m_records.GetCount()));
    for (auto const &[name, record] : m_records)
        records.push_back(record.data);
    std::stable_sort(records.begin(), records.end(), IsBefore);
    return records;
}

std::vector<T_PROFILE_D> ProfileTables::Records(int const *ids, int count) const {
    std::vector<T_PROFILE_D> records;
    for (int i = 0; i < count; ++i) {
        auto const name = m_names.find(ids[i]);
        if (Record const *const record = name == m_names.end() ? nullptr : m_records.Lookup(name->second))
            records.push_back(record->data);
    }
    return records;
}

void ProfileTables::Clear() {
    m_recent.fill({});
    m_records.RemoveAll();
    m_names.clear();
    m_labels.clear();
}

void ProfileTables::Remove(int id) {
    m_recent.fill({});
    auto const name = m_names.find(id);
    if (name == m_names.end())
        return;
    m_records.RemoveKey(name->second);
    m_names.erase(name);
    m_labels.erase(id);
}

} // namespace zvi::lib::diagnostics
