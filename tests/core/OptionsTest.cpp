#include "zvi/core/MOptionDB.h"
#include "zvi/core/MOptionRWImplFile.h"
#include "zvi/core/MTolerance.h"
#include "zvi/core/OptionAnalCtrl.h"
#include "zvi/core/OptionGenTol.h"
#include "zvi/core/Utf8.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>

namespace zvi::lib::test {

namespace {

/// Storage in memory.
class Kept : public MOptionRW {
public:
    int ReadOption(std::vector<MOptionData *> &groups) override { return Move(groups, MOptionData::OPTION_READ); }
    int WriteOption(std::vector<MOptionData *> &groups) override { return Move(groups, MOptionData::OPTION_WRITE); }
    int GetCategoryData(CString category, OptionCategory **out) override {
        bool const isThere = categories.count(category) != 0;
        *out = &categories[category];
        return isThere ? 1 : 0;
    }

    std::map<CString, OptionCategory> categories;

private:
    int Move(std::vector<MOptionData *> const &groups, MOptionData::OPTION_IOTYPE ioType) {
        for (MOptionData *const group : groups)
            if (group)
                group->IOData(this, ioType);
        return 1;
    }
};

/// A tolerance seen by an object that is made before the library's sources may have been.
double const kSeenAtLoad = MTolerance::GetMergeTolerance();

template <typename Option>
void ExpectTexts(Option &option, std::initializer_list<std::pair<wchar_t const *, wchar_t const *>> rows) {
    for (auto const &[text, back] : rows) {
        CString given(text);
        option.SetType(given);
        EXPECT_EQ(option.GetType(), back) << Utf8Of(given);
    }
}

} // namespace

TEST(OptionValues, GoToTextsAndComeFromThem) {
    MOPTBOOL truth;
    ExpectTexts(truth, {{L"TRUE", L"TRUE"}, {L"true", L"FALSE"}, {L"True", L"FALSE"}, {L"1", L"FALSE"}});
    MOPTINT whole;
    ExpectTexts(whole, {{L"-12x", L"-12"}, {L"x", L"0"}});
    MOPTCHAR small;
    ExpectTexts(small, {{L"300", L"44"}, {L"200", L"-56"}, {L"-1", L"-1"}});
    MOPTDOUBLE number;
    ExpectTexts(number, {{L"0.0012345678", L"0.00123457  "}, {L"x", L"0           "}, {L"1e-10", L"1e-10       "}});
    MOPTFLOAT single;
    ExpectTexts(single, {{L"0.5", L"0.500000"}, {L"0.1", L"0.100000"}});
    MOPTSTRING text;
    ExpectTexts(text, {{L" a = b ", L" a = b "}});
    MOPTDATA none;
    ExpectTexts(none, {{L"x", L""}});
}

TEST(OptionValues, AreTheirValues) {
    MOPTBOOL truth;
    truth.SetData(L"key", 1);
    EXPECT_EQ(truth = 7, 7);
    EXPECT_TRUE(truth == 7);
    EXPECT_EQ(truth.GetType(), L"TRUE");
    MOPTDOUBLE number;
    number = 0.5;
    EXPECT_TRUE(number == 0.5 && number != 1 && number * 2 == 1.0);
    (number = 1) = 3;
    EXPECT_EQ(double{number}, 3.0);
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

TEST(MOptionData, MovesWhatItKnowsAndKeepsTheRest) {
    OptionAnalCtrl group;
    EXPECT_EQ(group.InitOption(), 1);
    ASSERT_EQ(group.Options().Size(), 3u);
    MOptionDB database;
    database.SetOptData(group.GetCategory(), &group);
    database.GetOptData(L"a null group");
    Kept kept;
    group.m_values.Singular = 0;
    database.ReadData(&kept);
    EXPECT_TRUE(group.m_values.Singular == 0) << "an absent category changes nothing";
    kept.categories[L"OPT_ANAL_CTRL"] = {{L"UseMemory", L"3.5"}, {L"Unknown", L"x"}};
    database.ReadData(&kept);
    EXPECT_TRUE(group.m_values.UseMemory == 3.5 && group.m_values.OnlyMemory == 1);
    database.WriteData(&kept);
    EXPECT_EQ(
        kept.categories[L"OPT_ANAL_CTRL"],
        (OptionCategory{
            {L"OnlyMemory", L"TRUE"}, {L"Singular", L"FALSE"}, {L"Unknown", L"x"}, {L"UseMemory", L"3.5         "}}));
}

TEST(MTolerance, SeesWhatWasReadAtOnce) {
    EXPECT_EQ(kSeenAtLoad, 0.001);
    EXPECT_EQ(MTolerance::GetRegardAsZero(), 1e-10);
    EXPECT_EQ(MTolerance::GetAngleTolerance(), 1.0);
    EXPECT_EQ(MTolerance::GetRegardAsZeroForPost(), 1e-12);
    Kept kept;
    kept.categories[L"OPT_GEN_TOLERENCE"] = {{L"RegardAsZero", L"1e-6"}};
    MOptionDB::Instance()->ReadData(&kept);
    EXPECT_EQ(MTolerance::GetRegardAsZero(), 1e-6);
    EXPECT_EQ(MTolerance::GetMergeTolerance(), 0.001);
    kept.categories[L"OPT_GEN_TOLERENCE"][L"RegardAsZero"] = L"none";
    MOptionDB::Instance()->ReadData(&kept);
    EXPECT_EQ(MTolerance::GetRegardAsZero(), 0.0);
    MOptionDB::Instance()->GetOptData(OptionGenTol::kCategory)->InitOption();
    EXPECT_EQ(MTolerance::GetRegardAsZero(), 1e-10);
}

TEST(MTolerance, EveryComparisonIsStrict) {
    struct Row {
        double a, b, t;
        int isLess, isLessOrEq, isEqual, isGreater, isGreaterOrEq;
    };
    double const kNone = std::numeric_limits<double>::quiet_NaN();
    for (Row const &row : std::initializer_list<Row>{
             {1.0, 1.5, 0.5, 0, 1, 0, 0, 0},
             {1.5, 1.0, 0.5, 0, 0, 0, 0, 1},
             {1.0, 1.0, 0.0, 0, 0, 0, 0, 0},
             {1.0, 1.0, 1e-10, 0, 1, 1, 0, 1},
             {1.0, 2.0, 0.5, 1, 1, 0, 0, 0},
             {2.0, 1.0, 0.5, 0, 0, 0, 1, 1},
             {kNone, 1.0, 0.5, 0, 0, 0, 0, 0},
         }) {
        EXPECT_EQ(MTolerance::IsLess(row.a, row.b, row.t), row.isLess);
        EXPECT_EQ(MTolerance::IsLessOrEQ(row.a, row.b, row.t), row.isLessOrEq);
        EXPECT_EQ(MTolerance::IsEqual(row.a, row.b, row.t), row.isEqual);
        EXPECT_EQ(MTolerance::IsGreater(row.a, row.b, row.t), row.isGreater);
        EXPECT_EQ(MTolerance::IsGreaterOrEQ(row.a, row.b, row.t), row.isGreaterOrEq);
    }
    EXPECT_EQ(MTolerance::IsZero(0.5, 0.5) + MTolerance::IsNotZero(0.5, 0.5), 0);
    EXPECT_EQ(MTolerance::IsZero(0.0, 0.0) + MTolerance::IsZero(0.0, -1.0), 0);
    EXPECT_EQ(MTolerance::IsZero(-0.25, 0.5) + MTolerance::IsNotZero(-1.0, 0.5), 2);
    EXPECT_EQ(MTolerance::IsZero(kNone, 1.0) + MTolerance::IsNotZero(kNone, 1.0), 0);
    double const p[] = {1, 2, 3};
    double const q[] = {4, 6, 3};
    EXPECT_EQ(MTolerance::IsSamePos(p, q, 5.0), 0);
    EXPECT_EQ(MTolerance::IsSamePos(p, q, 5.000001), 1);
}

} // namespace zvi::lib::test
