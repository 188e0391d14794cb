// Text files by lines, message catalogues and logs. Lines are of 20 to 100 characters, one in sixteen with Korean and
// German; reading is measured for each byte of the file, writing for each line, which is flushed.

#include "zvi/host/CodePage.h"
#include "zvi/host/Paths.h"
#include "zvi/text/CTextFileWithBuffer.h"
#include "zvi/text/MMSGFunction.h"
#include "zvi/text/MWriteLog.h"

#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <codecvt>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <locale>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>

using namespace zvi;
using namespace zvi::lib;

namespace {

/// A file that is removed at the end.
class BenchFile {
public:
    explicit BenchFile(std::string const &content = {})
        : m_path(std::filesystem::temp_directory_path() / ("zvi_bench_text_" + std::to_string(::getpid()))) {
        std::ofstream(m_path, std::ios::binary) << content;
    }
    ~BenchFile() { std::filesystem::remove(m_path); }
    BenchFile(BenchFile const &) = delete;
    BenchFile &operator=(BenchFile const &) = delete;

    std::filesystem::path const &Native() const { return m_path; }
    std::wstring Path() const { return host::LibraryPath(m_path); }

private:
    std::filesystem::path m_path;
};

std::string Lines(std::size_t bytes) {
    std::mt19937 random(7);
    std::string text;
    while (text.size() < bytes) {
        if (random() % 16 == 0)
            text += "\xED\x95\x9C\xEA\xB8\x80 Gr\xC3\xB6\xC3\x9F"
                    "e ";
        for (std::size_t length = 20 + random() % 80; length > 0; --length)
            text += static_cast<char>('a' + random() % 26);
        text += '\n';
    }
    return text;
}

std::string Utf16(std::string const &utf8) {
    std::string bytes = "\xFF\xFE";
    for (wchar_t const unit : host::WideOfMulti(utf8, host::kUtf8CodePage)) {
        if (unit == L'\n')
            bytes.append("\r\0", 2);
        bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8 & 0xFF)};
    }
    return bytes;
}

/// Time for each byte that was read, and that all units came.
void Finish(benchmark::State &state, std::size_t bytes, std::size_t units, std::size_t expected) {
    if (units != expected)
        state.SkipWithError("units are missing");
    state.counters["time/byte"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(bytes),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

std::size_t ReadByLines(BenchFile const &file) {
    CTextFileWithBuffer reader;
    reader.Open(file.Path().c_str(), CFile::kRead);
    std::size_t units = 0;
    CString line;
    while (reader.ReadLine(line))
        units += static_cast<std::size_t>(line.GetLength());
    return units;
}

void BM_MultiByteLinesZvi(benchmark::State &state) {
    std::string const text = Lines(static_cast<std::size_t>(state.range(0)));
    BenchFile const file(text);
    std::size_t const expected = host::WideOfMulti(text, host::kUtf8CodePage).size();
    std::size_t units = 0;
    for (auto _ : state)
        units = ReadByLines(file);
    auto const ends = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    Finish(state, text.size(), units, expected - ends);
}
BENCHMARK(BM_MultiByteLinesZvi)->Arg(10000000)->Arg(100000000)->Unit(benchmark::kMillisecond);

void BM_MultiByteLinesGetline(benchmark::State &state) {
    std::string const text = Lines(static_cast<std::size_t>(state.range(0)));
    BenchFile const file(text);
    std::setlocale(LC_CTYPE, "C.UTF-8");
    std::size_t units = 0;
    for (auto _ : state) {
        units = 0;
        std::ifstream stream(file.Native());
        std::string line;
        for (std::wstring wide; std::getline(stream, line); units += wide.size()) {
            wide.resize(line.size() + 1);
            char const *from = line.c_str();
            std::mbstate_t shift{};
            wide.resize(std::mbsrtowcs(wide.data(), &from, wide.size(), &shift));
        }
    }
    std::setlocale(LC_CTYPE, "C");
    Finish(state, text.size(), units, units);
}
BENCHMARK(BM_MultiByteLinesGetline)->Arg(10000000)->Arg(100000000)->Unit(benchmark::kMillisecond);

void BM_Utf16LinesZvi(benchmark::State &state) {
    std::string const bytes = Utf16(Lines(static_cast<std::size_t>(state.range(0)) / 2));
    BenchFile const file(bytes);
    std::size_t units = 0;
    for (auto _ : state)
        units = ReadByLines(file);
    Finish(state, bytes.size(), units, units);
}
BENCHMARK(BM_Utf16LinesZvi)->Arg(10000000)->Arg(100000000)->Unit(benchmark::kMillisecond);

std::locale Utf16Locale() {
    return {std::locale::classic(), new std::codecvt_utf16<wchar_t, 0xFFFF, std::little_endian>};
}

void BM_Utf16LinesGetline(benchmark::State &state) {
    std::string const bytes = Utf16(Lines(static_cast<std::size_t>(state.range(0)) / 2));
    BenchFile const file(bytes);
    std::size_t units = 0;
    for (auto _ : state) {
        std::wifstream stream;
        stream.imbue(Utf16Locale());
        stream.open(file.Native(), std::ios::binary);
        units = 0;
        for (std::wstring line; std::getline(stream, line);)
            units += line.size();
    }
    Finish(state, bytes.size(), units, units);
}
BENCHMARK(BM_Utf16LinesGetline)->Arg(10000000)->Arg(100000000)->Unit(benchmark::kMillisecond);

std::string CatalogueText(long entries) {
    std::string text;
    for (long i = 0; i < entries; ++i)
        text += "IDS_MESSAGE_" + std::to_string(i * 7919 % entries) + " = \"The text of message " + std::to_string(i) +
                "\\nin two lines\"\n";
    return text;
}

void FinishEntries(benchmark::State &state, bool isRight) {
    if (!isRight)
        state.SkipWithError("a text is missing");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_CatalogueZvi(benchmark::State &state) {
    BenchFile const file(Utf16(CatalogueText(state.range(0))));
    for (auto _ : state) {
        MMSGFunction::Reset();
        MMSGFunction::AddFile(file.Path().c_str());
        benchmark::DoNotOptimize(MMSGFunction::LoadFile());
    }
    FinishEntries(state, MMSGFunction::GetValue(L"IDS_MESSAGE_0") == L"The text of message 0\nin two lines");
    MMSGFunction::Reset();
}
BENCHMARK(BM_CatalogueZvi)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// What one would write without it: lines, a key and a text in an unordered map, no escapes.
void BM_CatalogueGetline(benchmark::State &state) {
    BenchFile const file(Utf16(CatalogueText(state.range(0))));
    std::unordered_map<std::wstring, std::wstring> texts;
    for (auto _ : state) {
        texts.clear();
        std::wifstream stream;
        stream.imbue(Utf16Locale());
        stream.open(file.Native(), std::ios::binary);
        stream.get();
        for (std::wstring line; std::getline(stream, line);) {
            std::size_t const end = line.find(L" = \"");
            if (end != std::wstring::npos)
                texts.emplace(line.substr(0, end), line.substr(end + 4, line.rfind(L'"') - end - 4));
        }
    }
    FinishEntries(state, texts[L"IDS_MESSAGE_0"] == L"The text of message 0\\nin two lines");
}
BENCHMARK(BM_CatalogueGetline)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

constexpr int kLogLines = 1000000;

void FinishLog(benchmark::State &state, BenchFile const &file, std::uintmax_t least) {
    if (std::filesystem::file_size(file.Native()) < least * kLogLines)
        state.SkipWithError("lines are missing");
    state.counters["time/line"] = benchmark::Counter(static_cast<double>(state.iterations()) * kLogLines,
                                                     benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_LogZvi(benchmark::State &state) {
    BenchFile const file;
    MWriteLog log;
    CString path(file.Path().c_str());
    CString const source(L"Solver");
    CString const text(L"iteration done, residual 1.25e-07");
    for (auto _ : state) {
        log.StartLog(path);
        for (int i = 0; i < kLogLines; ++i)
            log.WriteMsg(source, text);
        log.EndLog();
    }
    FinishLog(state, file, 52);
}
BENCHMARK(BM_LogZvi)->Unit(benchmark::kMillisecond)->Iterations(2);

void BM_LogFprintf(benchmark::State &state) {
    BenchFile const file;
    for (auto _ : state) {
        std::FILE *const stream = std::fopen(file.Native().c_str(), "w");
        for (int i = 0; i < kLogLines; ++i) {
            std::fprintf(stream, "[Message][%s] : %s\n", "Solver", "iteration done, residual 1.25e-07");
            std::fflush(stream);
        }
        std::fclose(stream);
    }
    FinishLog(state, file, 52);
}
BENCHMARK(BM_LogFprintf)->Unit(benchmark::kMillisecond)->Iterations(2);

void BM_LogSpdlog(benchmark::State &state) {
    BenchFile const file;
    for (auto _ : state) {
        spdlog::logger log("bench", std::make_shared<spdlog::sinks::basic_file_sink_st>(file.Native().string(), true));
        log.set_pattern("[Message]%v");
        log.flush_on(spdlog::level::info);
        for (int i = 0; i < kLogLines; ++i)
            log.info("[{}] : {}", "Solver", "iteration done, residual 1.25e-07");
    }
    FinishLog(state, file, 52);
}
BENCHMARK(BM_LogSpdlog)->Unit(benchmark::kMillisecond)->Iterations(2);

} // namespace
