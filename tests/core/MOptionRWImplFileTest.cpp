#include "zvi/core/MOptionRWImplFile.h"

#include "tests/KilledWriter.h"
#include "tests/TemporaryFolder.h"
#include "zvi/core/MOptionDB.h"
#include "zvi/core/MTolerance.h"
#include "zvi/core/OptionAnalCtrl.h"
#include "zvi/host/Paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <random>

#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace fs = std::filesystem;

namespace zvi::lib::test {

namespace {

using zvi::test::HostText;

struct MOptionRWImplFileTest : testing::Test {
    /// The settings of s.cfg, which it writes again.
    MOptionRWImplFile Settings() const { return {CString(folder.Path().c_str()), L"s.cfg"}; }

    static OptionCategory &Category(MOptionRWImplFile &settings, wchar_t const *name) {
        OptionCategory *category = nullptr;
        settings.GetCategoryData(name, &category);
        return *category;
    }

    zvi::test::TemporaryFolder const folder;
};

/// A tolerance seen by an object that is made before the library's sources may have been.
double const kSeenAtLoad = MTolerance::GetMergeTolerance();

} // namespace

TEST_F(MOptionRWImplFileTest, ReadsWhatPeopleWriteAndWritesItInOrder) {
    std::string const longest = "k=" + std::string(1021, 'v');
    using Row = std::pair<std::string, std::string>;
    for (auto const &[read, written] : std::initializer_list<Row>{
             {"", ""},
             {"[ A ]\nx = 1\ny=2\n; note\nz", "[ A ]\n = \nx = 1\ny = 2\n\n"},
             {"=5\n[b]\n\n[a]\n", "[  ]\n = 5\n\n[ a ]\n\n[ b ]\n\n"},
             {"a = b = c\r\na=d\r\n\r\n", "[  ]\na = d\n\n"},
             {"[\nk=1", "[  ]\nk = 1\n\n"},
             {"[ABCx\n[AB\n[ABC]\n", "[ A ]\n\n[ ABC ]\n\n"},
             {" \t[ A B ] \n\tk e y \t=\t v a l  \n", "[ A B ]\nk e y = v a l\n\n"},
             {"[A]\nz 1\n[A]\nB = 2\nb = 3", "[ A ]\n = 1\nB = 2\nb = 3\n\n"},
             // A line of more than 1,023 bytes ends the reading; without the blanks that writing adds, one fits.
             {"a=1\n" + longest.substr(0, 1021) + "\n" + longest + "v\nc=3",
              "[  ]\na = 1\nk = " + longest.substr(2, 1019) + "\n\n"},
             {"a=1\r\n" + longest + "\r\nb=2\r\n" + longest + "v\r\n", "[  ]\na = 1\nb = 2\n" + longest + "\n\n"},
             {"k=gr\xC3\xB6\xC3\x9Fz\nl=\xFF\xC3", "[  ]\nk = gr\xC3\xB6\xC3\x9Fz\nl = \xFF\xC3\n\n"},
         }) {
#ifdef _WIN32
        if (read.find('\xFF') != std::string::npos)
            break; // for a system whose own encoding is UTF-8
#endif
        folder.Write("s.cfg", read);
        for (int again = 0; again < 2; ++again) {
            Settings();
            EXPECT_EQ(folder.Read("s.cfg"), HostText(written));
        }
    }
    std::string bytes(1 << 20, '\0');
    std::generate(bytes.begin(), bytes.end(), [random = std::mt19937()]() mutable { return char(random()); });
    folder.Write("s.cfg", bytes);
    Settings();
    std::string const written = folder.Read("s.cfg");
    Settings();
    EXPECT_EQ(folder.Read("s.cfg"), written) << "random bytes";
}

TEST_F(MOptionRWImplFileTest, BringsSettingsToTheGroupsInForceAndBack) {
    EXPECT_EQ(kSeenAtLoad, 0.001);
    EXPECT_EQ(MTolerance::GetRegardAsZero(), 1e-10);
    EXPECT_EQ(MTolerance::GetAngleTolerance(), 1.0);
    EXPECT_EQ(MTolerance::GetRegardAsZeroForPost(), 1e-12);
    MOptionDB &database = *MOptionDB::Instance();
    database.GetOptData(L"a null group");
    auto &control = dynamic_cast<OptionAnalCtrl &>(*database.GetOptData(OptionAnalCtrl::kCategory));
    control.values.Singular = 0;
    for (char const *text : {"", "[OPT_GEN_TOLERENCE]\nRegardAsZero = 1e-6\nAngleTolerance = none\nunknown = value\n"
                                 "[OPT_ANAL_CTRL]\nUseMemory = 3.5\n[MINE]\nkey = value\n"}) {
        folder.Write("s.cfg", text);
        MOptionRWImplFile settings = Settings();
        database.ReadData(&settings);
        bool const isGiven = *text != '\0';
        EXPECT_EQ(MTolerance::GetRegardAsZero(), isGiven ? 1e-6 : 1e-10);
        EXPECT_EQ(MTolerance::GetAngleTolerance(), isGiven ? 0.0 : 1.0);
        EXPECT_EQ(MTolerance::GetMergeTolerance(), 0.001);
        EXPECT_EQ(double{control.values.UseMemory}, isGiven ? 3.5 : 2.0);
        EXPECT_TRUE(control.values.Singular == 0 && control.values.OnlyMemory == 1);
        database.WriteData(&settings);
    }
    for (wchar_t const *name : {L"OPT_GEN_TOLERENCE", OptionAnalCtrl::kCategory})
        EXPECT_EQ(database.GetOptData(name)->InitOption(), 1);
    EXPECT_EQ(control.Options().Size() % 3, 0u);
    EXPECT_EQ(MTolerance::GetRegardAsZero(), 1e-10);
    database.RemoveOptData(L"a null group");
    EXPECT_EQ(folder.Read("s.cfg"),
              HostText("[ MINE ]\nkey = value\n\n"
                       "[ OPT_ANAL_CTRL ]\nOnlyMemory = TRUE\nSingular = FALSE\nUseMemory = 3.5         \n\n"
                       "[ OPT_GEN_TOLERENCE ]\nAngleTolerance = 0           \nPointMergeTolerance = 0.001       \n"
                       "RegardAsZero = 1e-06       \nRegardAsZeroForAnalysisResult = 1e-12       \n"
                       "unknown = value\n\n"));
}

TEST_F(MOptionRWImplFileTest, LeavesOutWhatNoLineHoldsAndAFileThatCannotBe) {
    {
        MOptionRWImplFile settings = Settings();
        OptionCategory *category = nullptr;
        for (int const isThere : {0, 1})
            EXPECT_EQ(settings.GetCategoryData(L"A", &category), isThere);
        *category = {{L"k", CString(L'v', 1022)}, {L"l", L"1"}};
        Category(settings, CString(L'C', 1022))[L"m"] = L"2";
    }
    EXPECT_EQ(folder.Read("s.cfg"), HostText("[ A ]\nl = 1\n\n"));
    fs::remove(folder.Native("s.cfg"));
    EXPECT_TRUE(MOptionRWImplFile(folder.Path("none").c_str(), L"s.cfg").Save());
    EXPECT_TRUE(folder.Names().empty()) << "no folder is made";
    fs::create_directory(folder.Native("s.cfg"));
    EXPECT_TRUE(Settings().Save());
    EXPECT_TRUE(fs::is_directory(folder.Native("s.cfg")));
}

#ifndef _WIN32

TEST_F(MOptionRWImplFileTest, TheDefaultFileIsMadeInTheDocumentsFolderOfTheUsersChoice) {
    std::string const home = std::getenv("HOME") ? std::getenv("HOME") : "";
    ::setenv("HOME", folder.Native().c_str(), 1);
    ::unsetenv("XDG_CONFIG_HOME");
    for (std::string const documents : {"Documents", "My $apers"}) {
        std::string const path = documents + "/Zorvi/Ormeline/TEKOSetting.cfg";
        EXPECT_EQ(MOptionRWImplFile::DefaultPath(), CString(std::wstring_view(folder.Path(path))));
        EXPECT_FALSE(fs::exists(folder.Native(documents))) << "asking makes nothing";
        {
            MOptionRWImplFile settings;
            EXPECT_TRUE(fs::exists(folder.Native(path)));
            EXPECT_EQ(folder.Read(path), "");
            Category(settings, L"A");
        }
        EXPECT_EQ(folder.Read(path), "[ A ]\n\n");
        fs::create_directory(folder.Native(".config"));
        folder.Write(".config/user-dirs.dirs", "# comment\n XDG_DOCUMENTS_DIR = \"$HOME/My \\$apers/\" # mine\n"
                                               "XDG_MUSIC_DIR=\"$HOME/Music\"\n");
    }
    ::setenv("HOME", folder.Native("none").c_str(), 1);
    EXPECT_EQ(host::DocumentsFolder(), L"");
    ::setenv("HOME", home.c_str(), 1);
}

TEST_F(MOptionRWImplFileTest, SurvivesTheEndOfItsWriterAtAnyMoment) {
    auto const write = [this](int generation) {
        MOptionRWImplFile settings = Settings();
        OptionCategory &category = Category(settings, L"A");
        for (wchar_t key = 0; key < 2000; ++key)
            category[CString(static_cast<wchar_t>(0x4E00 + key))].Format(L"%d", generation);
    };
    write(0);
    unsigned int wait = 0;
    for (int i = 1; i <= 200; ++i) {
        ASSERT_TRUE(zvi::test::IsKilledWhileItCalls(write, i, wait = (wait + 977) % 12000));
        MOptionRWImplFile settings = Settings();
        OptionCategory const &kept = Category(settings, L"A");
        ASSERT_EQ(kept.size(), 2000u);
        for (auto const &[key, value] : kept)
            ASSERT_EQ(value, kept.begin()->second) << "settings of one moment";
    }
    EXPECT_EQ(folder.Names().size(), 1u) << "nothing is left beside";
}

TEST_F(MOptionRWImplFileTest, AFullDiskLeavesTheOldSettings) {
    folder.Write("s.cfg", "[ A ]\nk = old\n\n");
    auto const write = [this] {
        // A limit of the file size fails a write like a full disk.
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit const limit{1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        MOptionRWImplFile settings = Settings();
        Category(settings, L"A")[L"k"] = CString(L'v', 1001);
        ::_exit(settings.Save() ? 0 : 1);
    };
    EXPECT_EXIT(write(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(folder.Read("s.cfg"), "[ A ]\nk = old\n\n");
    EXPECT_EQ(folder.Names().size(), 1u);
}

#endif

} // namespace zvi::lib::test
