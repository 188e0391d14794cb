#include "tests/KilledWriter.h"
#include "tests/Rows.h"
#include "tests/TemporaryFolder.h"
#include "zvi/core/MOptionDB.h"
#include "zvi/core/MOptionRWImplFile.h"
#include "zvi/core/MTolerance.h"
#include "zvi/core/OptionAnalCtrl.h"
#include "zvi/core/OptionGenTol.h"
#include "zvi/core/OptionValues.h"
#include "zvi/core/Utf8.h"
#include "zvi/host/Paths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <initializer_list>
#include <limits>

#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace fs = std::filesystem;

namespace zvi::lib::test {

namespace {

using zvi::test::HostText;

template <typename Option>
void ExpectTexts(Option option, std::initializer_list<std::pair<wchar_t const *, wchar_t const *>> rows) {
    for (auto const &[text, back] : rows) {
        CString given(text);
        option.SetType(given);
        EXPECT_EQ(option.GetType(), back) << Utf8Of(given);
    }
}

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

TEST(OptionValues, GoToTextsAndComeFromThem) {
    ExpectTexts(MOPTBOOL(), {{L"TRUE", L"TRUE"}, {L"true", L"FALSE"}, {L"True", L"FALSE"}, {L"1", L"FALSE"}});
    ExpectTexts(MOPTINT(), {{L"-12x", L"-12"}, {L"x", L"0"}});
    ExpectTexts(MOPTCHAR(), {{L"300", L"44"}, {L"200", L"-56"}, {L"-1", L"-1"}});
    ExpectTexts(MOPTDOUBLE(),
                {{L"0.0012345678", L"0.00123457  "}, {L"x", L"0           "}, {L"1e-10", L"1e-10       "}});
    ExpectTexts(MOPTFLOAT(), {{L"0.5", L"0.500000"}, {L"0.1", L"0.100000"}});
    ExpectTexts(MOPTSTRING(), {{L" a = b ", L" a = b "}});
    ExpectTexts(MOPTDATA(), {{L"x", L""}});
}

TEST(OptionValues, AreTheirValues) {
    MOPTBOOL truth;
    truth.SetData(L"key", 1);
    EXPECT_EQ(truth = 7, 7);
    EXPECT_TRUE(truth == 7);
    EXPECT_EQ(truth.GetType(), L"TRUE");
    MOPTDOUBLE number;
    (number = 1) = 3;
    EXPECT_TRUE(number == 3 && number != 1 && number * 2 == 6.0);
    number = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(number == number);
    MOPTSTRING text;
    text.SetData(L"key", L"Value");
    MOPTSTRING const copy(text);
    text = L"other";
    EXPECT_TRUE(copy == L"Value" && copy != L"value" && text == L"other");
    EXPECT_EQ(MOPTSTRING(copy).GetKeyWord(), L"key");
}

TEST(MOptionDB, TheFirstGroupOfACategoryStays) {
    MOptionDB database;
    OptionGenTol first;
    OptionGenTol second;
    database.SetOptData(L"X", &first);
    database.SetOptData(L"X", &second);
    EXPECT_EQ(database.GetOptData(L"X"), &first);
    EXPECT_EQ(database.GetOptData(L"x"), nullptr);
    database.SetOptData(L"x", &second);
    EXPECT_EQ(database.GetOptData(L"x"), nullptr) << "asking has entered it";
    database.RemoveOptData(L"x");
    database.SetOptData(L"x", &second);
    EXPECT_EQ(MOptionDB(database).GetOptData(L"x"), &second);
}

TEST(MTolerance, EveryComparisonIsStrict) {
    // a, b, t, and whether a is less, not greater, equal, greater, not less; then of a - b: zero, not zero.
    for (auto const &[a, b, t, expected] : Rows<double, double, double, std::string>(
             "1 1.5 .5 0100000;  1.5 1 .5 0000100;  1 1 0 0000000;  1 1 1e-10 0110110;  1 2 .5 1100001;"
             "2 1 .5 0001101;  nan 1 .5 0000000;  1 1 -1 1001001;  1 1.25 .5 0110110")) {
        std::string given;
        for (int const is : {MTolerance::IsLess(a, b, t), MTolerance::IsLessOrEQ(a, b, t), MTolerance::IsEqual(a, b, t),
                             MTolerance::IsGreater(a, b, t), MTolerance::IsGreaterOrEQ(a, b, t),
                             MTolerance::IsZero(a - b, t), MTolerance::IsNotZero(a - b, t)})
            given += std::to_string(is);
        EXPECT_EQ(given, expected) << a << " " << b << " " << t;
    }
    double const p[] = {1, 2, 3};
    double const q[] = {4, 6, 3};
    EXPECT_EQ(MTolerance::IsSamePos(p, q, 5.0), 0);
    EXPECT_EQ(MTolerance::IsSamePos(p, q, 5.000001), 1);
}

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
             {"k=\xC2\xA0gr\xC3\xB6\xC3\x9Fz\nl=\xC0\xAF\xFF\xC3",
              "[  ]\nk = gr\xC3\xB6\xC3\x9Fz\nl = \xC0\xAF\xFF\xC3\n\n"},
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
