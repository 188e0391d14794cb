#include "zvi/diagnostics/Profiler.h"

#include "zvi/core/WideFormat.h"
#include "zvi/diagnostics/ScopeRecordsDetail.h"
#include "zvi/host/Counter.h"
#include "zvi/host/Files.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::lib {

namespace {

using diagnostics::ScopeRecord;
using diagnostics::ScopeRecords;

/// Smallest width of a column in characters.
constexpr std::size_t kColumnWidth = 12;

constexpr std::string_view kColumns[] = {"Function Name", "Percentage",      "Independent Work Time", "Unit Work Time",
                                         "Calls",         "Total Work Time", "Child Work Time"};

bool isAtEnd = false;

std::string Column(std::string_view text) {
    return std::string(kColumnWidth - std::min(text.size(), kColumnWidth), ' ').append(text);
}

std::string Column(double seconds) {
    std::wstring const text = FormatWide(L"%12lf", seconds);
    return {text.begin(), text.end()};
}

std::string Heading() {
    std::string line;
    for (std::string_view const column : kColumns)
        line += (line.empty() ? "" : ", ") + Column(column);
    return line + '\n';
}

std::string Row(std::string const &name, ScopeRecord const &record, double totalWorkTime) {
    double const independent = record.Independent();
    return Column(name) + ", " + Column(independent / totalWorkTime) + ", " + Column(independent) + ", " +
           Column(independent / record.calls) + ", " + Column(std::to_string(record.calls)) + ", " +
           Column(record.total) + ", " + Column(record.child) + '\n';
}

} // namespace

std::string diagnostics::ReportOf(ScopeRecords::Records const &records) {
    std::vector<ScopeRecords::Records::value_type const *> rows;
    double totalWorkTime = 0;
    for (auto const &entry : records) {
        rows.push_back(&entry);
        totalWorkTime = std::max(totalWorkTime, entry.second.total);
    }
    std::sort(rows.begin(), rows.end(), [](auto const *left, auto const *right) {
        double const leftTime = left->second.Independent();
        double const rightTime = right->second.Independent();
        return leftTime > rightTime || (leftTime == rightTime && left->first < right->first);
    });
    std::string text = "Total Work Time : " + Column(totalWorkTime) + '\n' + Heading();
    for (auto const *row : rows)
        text += Row(row->first, row->second, totalWorkTime);
    return text;
}

Profiler::Profiler() : m_frequency(host::CounterFrequency()) {
    if (m_frequency != 0)
        m_scopes = std::make_unique<ScopeRecords>();
}

Profiler::~Profiler() {
    isAtEnd = true;
    try {
        PrintResult();
    } catch (...) { // NOLINT(bugprone-empty-catch): a process that ends has nobody to tell
    }
}

Profiler &Profiler::GetInstance() {
    static Profiler profiler;
    return profiler;
}

Profiler *Profiler::Living() noexcept {
    try {
        return isAtEnd ? nullptr : &GetInstance();
    } catch (...) {
        return nullptr;
    }
}

void Profiler::StackPush(char const *name) noexcept {
    if (m_scopes)
        m_scopes->Push(name, host::ReadCounter);
}

void Profiler::StackPop() noexcept {
    if (m_scopes)
        m_scopes->Pop(m_frequency, host::ReadCounter);
}

void Profiler::PrintResult() {
    std::string const text = diagnostics::ReportOf(m_scopes ? m_scopes->All() : ScopeRecords::Records());
    std::FILE *const file = host::OpenStream(L"x:\\PROF.csv", "wt");
    if (!file)
        return;
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
    if (m_scopes)
        m_scopes->Drop();
}

std::uint64_t Profiler::myhash(char const *name) {
    return diagnostics::SignedFnv(name ? name : "");
}

} // namespace zvi::lib
