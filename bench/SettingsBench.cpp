// A settings file of 100,000 lines: read with every category and keyword in a map, beside GLib's key file and Boost's
// property tree. 98 values in each category, sorted as the library writes them.

#include "zvi/core/MOptionRWImplFile.h"
#include "zvi/host/Paths.h"

#include <benchmark/benchmark.h>
#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <glib.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

using namespace zvi;
using namespace zvi::lib;

namespace {

constexpr int kValues = 98;

/// A file of so many lines, which is removed at the end.
class SettingsFile {
public:
    explicit SettingsFile(long lines)
        : m_folder(std::filesystem::temp_directory_path()), m_categories(static_cast<int>(lines / (kValues + 2))) {
        std::ofstream file(Path());
        for (int c = 0; c < m_categories; ++c) {
            file << "[ " << Category(c) << " ]\n";
            for (int k = 0; k < kValues; ++k)
                file << Keyword(k) << " = " << 1.37 * k + c << '\n';
            file << '\n';
        }
    }
    ~SettingsFile() { std::filesystem::remove(Path()); }
    SettingsFile(SettingsFile const &) = delete;
    SettingsFile &operator=(SettingsFile const &) = delete;

    std::filesystem::path Path() const { return m_folder / ("zvi_bench_" + std::to_string(::getpid()) + ".cfg"); }
    std::string LastCategory() const { return Category(m_categories - 1); }
    static std::string LastKeyword() { return Keyword(kValues - 1); }

private:
    static std::string Category(int number) { return Numbered("CATEGORY_%05d", number); }
    static std::string Keyword(int number) { return Numbered("Keyword%03d", number); }
    static std::string Numbered(char const *format, int number) {
        char text[32];
        std::snprintf(text, sizeof text, format, number);
        return text;
    }

    std::filesystem::path m_folder;
    int m_categories;
};

void SetRate(benchmark::State &state) {
    state.counters["time/line"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

CString Wide(std::string const &text) {
    return CString(std::wstring_view(std::wstring(text.begin(), text.end())));
}

void BM_SettingsZvi(benchmark::State &state) {
    SettingsFile const file(state.range(0));
    std::wstring const path = host::LibraryPath(file.Path());
    CString const folder(path.c_str(), static_cast<int>(path.find_last_of(L'\\')));
    CString const name(path.c_str() + path.find_last_of(L'\\') + 1);
    std::size_t values = 0;
    for (auto _ : state) {
        auto *const settings = new MOptionRWImplFile(folder, name);
        state.PauseTiming();
        OptionCategory *category = nullptr;
        if (settings->GetCategoryData(Wide(file.LastCategory()), &category) == 1)
            values = category->size();
        delete settings;
        state.ResumeTiming();
    }
    if (values != kValues)
        state.SkipWithError("not read");
    SetRate(state);
}
BENCHMARK(BM_SettingsZvi)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_SettingsGlib(benchmark::State &state) {
    SettingsFile const file(state.range(0));
    bool isRead = false;
    for (auto _ : state) {
        GKeyFile *const settings = g_key_file_new();
        g_key_file_load_from_file(settings, file.Path().c_str(), G_KEY_FILE_NONE, nullptr);
        state.PauseTiming();
        // The header is "[ NAME ]", blanks included.
        std::string const group = ' ' + file.LastCategory() + ' ';
        isRead = g_key_file_has_key(settings, group.c_str(), SettingsFile::LastKeyword().c_str(), nullptr);
        g_key_file_free(settings);
        state.ResumeTiming();
    }
    if (!isRead)
        state.SkipWithError("not read");
    SetRate(state);
}
BENCHMARK(BM_SettingsGlib)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_SettingsBoost(benchmark::State &state) {
    SettingsFile const file(state.range(0));
    std::size_t values = 0;
    for (auto _ : state) {
        auto *const settings = new boost::property_tree::ptree;
        boost::property_tree::read_ini(file.Path().string(), *settings);
        state.PauseTiming();
        values = settings->back().second.size();
        delete settings;
        state.ResumeTiming();
    }
    if (values != kValues)
        state.SkipWithError("not read");
    SetRate(state);
}
BENCHMARK(BM_SettingsBoost)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// With the new file brought to the disk.
void BM_SettingsWriteZvi(benchmark::State &state) {
    SettingsFile const file(state.range(0));
    std::wstring const path = host::LibraryPath(file.Path());
    MOptionRWImplFile const settings(CString(path.c_str(), static_cast<int>(path.find_last_of(L'\\'))),
                                     CString(path.c_str() + path.find_last_of(L'\\') + 1));
    for (auto _ : state)
        if (settings.Save())
            state.SkipWithError("not written");
    SetRate(state);
}
BENCHMARK(BM_SettingsWriteZvi)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
