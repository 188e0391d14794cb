#include "zvi/core/MOptionRWImplFile.h"

#include "tests/TemporaryFolder.h"
#include "zvi/core/MOptionDB.h"
#include "zvi/core/MTolerance.h"
#include "zvi/host/Files.h"
#include "zvi/host/Paths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <initializer_list>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace zvi::lib::test {

namespace {

using zvi::test::TemporaryFolder;

MOptionRWImplFile Settings(TemporaryFolder const &folder, char const *name = "s.cfg") {
    return MOptionRWImplFile(CString(std::wstring_view(folder.Path())),
                             CString(std::wstring_view(fs::path(name).wstring())));
}

OptionCategory Category(MOptionRWImplFile settings, wchar_t const *name) {
    OptionCategory *category = nullptr;
    settings.GetCategoryData(name, &category);
    return *category;
}

/// The text with this host's line ends.
std::string Written(std::string_view text) {
    std::string written;
    for (char const c : text)
        written += c == '\n' ? std::string(host::LineEnd()) : std::string(1, c);
    return written;
}

} // namespace

TEST(MOptionRWImplFile, ReadsWhatPeopleWriteAndWritesItInOrder) {
    struct Row {
        char const *read;
        char const *written;
    };
    for (Row const &row : std::initializer_list<Row>{
             {"", ""},
             {"[ A ]\nx = 1\ny=2\n; note\nz", "[ A ]\n = \nx = 1\ny = 2\n\n"},
             {"=5\n[b]\n\n[a]\n", "[  ]\n = 5\n\n[ a ]\n\n[ b ]\n\n"},
             {"a = b = c\r\na=d\r\n\r\n", "[  ]\na = d\n\n"},
             {"[\nk=1", "[  ]\nk = 1\n\n"},
             {"[ABCx\n[AB\n[ABC]\n", "[ A ]\n\n[ ABC ]\n\n"},
             {" \t[ A B ] \n\tk e y \t=\t v a l  \n", "[ A B ]\nk e y = v a l\n\n"},
             {"[A]\nz 1\n[A]\nB = 2\nb = 3", "[ A ]\n = 1\nB = 2\nb = 3\n\n"},
             {"k=gr\xC3\xB6\xC3\x9Fz\nl=\xFF\xC3", "[  ]\nk = gr\xC3\xB6\xC3\x9Fz\nl = \xFF\xC3\n\n"},
         }) {
        TemporaryFolder const folder;
        folder.Write("s.cfg", row.read);
        for (int again = 0; again < 2; ++again) {
            { MOptionRWImplFile const settings = Settings(folder); }
#ifdef _WIN32
            if (std::string_view(row.read).find('\xFF') != std::string_view::npos)
                break; // on a system whose own encoding is UTF-8
#endif
            EXPECT_EQ(folder.Read("s.cfg"), Written(row.written));
        }
    }
}

TEST(MOptionRWImplFile, ALineOver1023BytesEndsTheReading) {
    std::string const longest = "k=" + std::string(1021, 'v');
    for (char const *lineEnd : {"\n", "\r\n"}) {
        TemporaryFolder const folder;
        folder.Write("s.cfg", "a=1" + std::string(lineEnd) + longest + lineEnd + "b=2" + lineEnd + longest + "v" +
                                  lineEnd + "c=3");
        for (int again = 0; again < 2; ++again)
            EXPECT_EQ(Category(Settings(folder), L""),
                      (OptionCategory{{L"a", L"1"}, {L"b", L"2"}, {L"k", CString(L'v', 1021)}}));
    }
}

TEST(MOptionRWImplFile, LeavesOutWhatNoLineHolds) {
    TemporaryFolder const folder;
    {
        MOptionRWImplFile settings = Settings(folder);
        OptionCategory *category = nullptr;
        EXPECT_EQ(settings.GetCategoryData(L"A", &category), 0);
        EXPECT_EQ(settings.GetCategoryData(L"A", &category), 1);
        *category = {{L"k", CString(L'v', 1022)}, {L"l", L"1"}};
        EXPECT_EQ(settings.GetCategoryData(CString(L'C', 1022), &category), 0);
        (*category)[L"m"] = L"2";
    }
    EXPECT_EQ(folder.Read("s.cfg"), Written("[ A ]\nl = 1\n\n"));
}

TEST(MOptionRWImplFile, BringsASettingToTheToleranceInForce) {
    TemporaryFolder const folder;
    folder.Write("s.cfg", "[OPT_GEN_TOLERENCE]\nRegardAsZero = 1e-6\n[MINE]\nkey = value\n");
    {
        MOptionRWImplFile settings = Settings(folder);
        MOptionDB::Instance()->ReadData(&settings);
        EXPECT_EQ(MTolerance::GetRegardAsZero(), 1e-6);
        EXPECT_EQ(MTolerance::GetMergeTolerance(), 0.001);
        MOptionDB::Instance()->WriteData(&settings);
    }
    MOptionDB::Instance()->GetOptData(L"OPT_GEN_TOLERENCE")->InitOption();
    EXPECT_EQ(folder.Read("s.cfg"),
              Written("[ MINE ]\nkey = value\n\n"
                      "[ OPT_ANAL_CTRL ]\nOnlyMemory = TRUE\nSingular = TRUE\nUseMemory = 2           \n\n"
                      "[ OPT_GEN_TOLERENCE ]\nAngleTolerance = 1           \nPointMergeTolerance = 0.001       \n"
                      "RegardAsZero = 1e-06       \nRegardAsZeroForAnalysisResult = 1e-12       \n\n"));
}

TEST(MOptionRWImplFile, AFileThatCannotBeReadOrWrittenStaysAsItIs) {
    TemporaryFolder const folder;
    fs::create_directory(folder.Native("s.cfg"));
    {
        MOptionRWImplFile const settings = Settings(folder);
        EXPECT_TRUE(settings.Save());
    }
    EXPECT_TRUE(fs::is_directory(folder.Native("s.cfg")));
    {
        MOptionRWImplFile const settings(CString(std::wstring_view(folder.Path("none"))), L"s.cfg");
        EXPECT_TRUE(settings.Save());
    }
    EXPECT_EQ(folder.Names().size(), 1u) << "no folder is made";
}

TEST(MOptionRWImplFile, ReadsRandomBytesWithoutHarm) {
    TemporaryFolder const folder;
    std::string bytes(1 << 20, '\0');
    unsigned int state = 1;
    for (char &byte : bytes)
        byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    folder.Write("s.cfg", bytes);
    { MOptionRWImplFile const settings = Settings(folder); }
    std::string const once = folder.Read("s.cfg");
    { MOptionRWImplFile const settings = Settings(folder); }
    EXPECT_EQ(folder.Read("s.cfg"), once);
}

#ifndef _WIN32

TEST(MOptionRWImplFile, TheDefaultFileIsMadeWithItsFolders) {
    TemporaryFolder const folder;
    std::string const home = std::getenv("HOME") ? std::getenv("HOME") : "";
    ::setenv("HOME", folder.Native().c_str(), 1);
    EXPECT_EQ(MOptionRWImplFile::DefaultPath(),
              CString(std::wstring_view(folder.Path("Documents/Zorvi/Ormeline/TEKOSetting.cfg"))));
    EXPECT_TRUE(folder.Names().empty());
    {
        MOptionRWImplFile settings;
        EXPECT_EQ(folder.Read("Documents/Zorvi/Ormeline/TEKOSetting.cfg"), "");
        OptionCategory *category = nullptr;
        settings.GetCategoryData(L"A", &category);
    }
    EXPECT_EQ(folder.Read("Documents/Zorvi/Ormeline/TEKOSetting.cfg"), "[ A ]\n\n");
    ::setenv("HOME", home.c_str(), 1);
}

TEST(MOptionRWImplFile, SurvivesTheEndOfItsWriterAtAnyMoment) {
    TemporaryFolder const folder;
    constexpr int kWriters = 200;
    constexpr int kKeys = 2000;
    auto const write = [&folder](int generation) {
        MOptionRWImplFile settings = Settings(folder);
        OptionCategory *category = nullptr;
        settings.GetCategoryData(L"A", &category);
        CString value;
        value.Format(L"%d", generation);
        for (int i = 0; i < kKeys; ++i) {
            CString key;
            key.Format(L"key %d", i);
            (*category)[key] = value;
        }
    };
    write(0);
    unsigned int wait = 0;
    int ended = 0;
    for (int i = 1; i <= kWriters; ++i) {
        pid_t const writer = ::fork();
        ASSERT_GE(writer, 0);
        if (writer == 0)
            for (int generation = i;; ++generation)
                write(generation);
        ::usleep(wait = (wait + 977) % 12000);
        ::kill(writer, SIGKILL);
        int status = 0;
        ::waitpid(writer, &status, 0);
        ended += WIFSIGNALED(status) ? 1 : 0;
        OptionCategory const kept = Category(Settings(folder, "s.cfg"), L"A");
        ASSERT_EQ(kept.size(), static_cast<std::size_t>(kKeys));
        for (auto const &[key, value] : kept)
            ASSERT_EQ(value, kept.begin()->second) << "settings of one moment";
    }
    EXPECT_EQ(ended, kWriters);
    EXPECT_EQ(folder.Names().size(), 1u) << "nothing is left beside";
}

TEST(MOptionRWImplFile, AFullDiskLeavesTheOldSettings) {
    TemporaryFolder const folder;
    folder.Write("s.cfg", "[ A ]\nk = old\n\n");
    pid_t const writer = ::fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) {
        // A limit of the file size fails a write like a full disk.
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit const limit{1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        {
            MOptionRWImplFile settings = Settings(folder);
            OptionCategory *category = nullptr;
            settings.GetCategoryData(L"A", &category);
            for (int i = 0; i < 1000; ++i)
                (*category)[CString(L'k', i)] = L"new";
        }
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(writer, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.Read("s.cfg"), "[ A ]\nk = old\n\n");
    EXPECT_EQ(folder.Names().size(), 1u);
}

#endif

} // namespace zvi::lib::test
