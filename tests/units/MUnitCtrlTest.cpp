#include "zvi/units/MUnitCtrl.h"

#include "tests/Rows.h"
#include "zvi/host/Messages.h"
#include "zvi/interface/IUnitListener.h"

namespace zvi::lib::test {

namespace {

/// Force, length, mass, time, heat.
using Index = std::array<int, 5>;

Index AsArray(T_UNIT_INDEX const &index) {
    return {index.force, index.length, index.mass, index.time, index.heat};
}

Index CurrentIndex(MUnitCtrl const &units) {
    T_UNIT_INDEX index;
    units.GetUnitIndexCurrent(index);
    return AsArray(index);
}

/// What reaches the application, in order.
struct Notices : zvi_interface::IUnitListener {
    Notices() {
        AddListener(this);
        host::SetMainWindow([this](std::uint32_t message, std::uintptr_t first, std::intptr_t second) {
            EXPECT_EQ(message, _globalUIUpdateMessage);
            EXPECT_EQ(first, 0x27190000U);
            calls.emplace_back("window", reinterpret_cast<CDocument *>(second));
            return std::intptr_t{0};
        });
    }
    ~Notices() override { host::SetMainWindow({}); }
    void DoUnitChange(CDocument *document) override { calls.emplace_back("listener", document); }

    std::vector<std::pair<std::string, CDocument *>> calls;
};

} // namespace

TEST(MUnitCtrl, PresetsSelectTheirUnits) {
    for (auto const &[type, force, length, mass, time, heat, lengthFactor, heatFactor] :
         Rows<int, int, int, int, int, int, double, double>(
             "0  2 0 0 0 2  1 1; 1  2 2 0 0 2  1000 1; 2  2 0 1 0 2  1 1; 3  4 4 4 0 3  304.8 1055;"
             "4  0 1 0 0 2  10 1; 5  4 3 4 0 3  25.4 1055; 6  2 0 0 0 2  1 1; -7  2 0 0 0 2  1 1")) {
        SCOPED_TRACE(type);
        MUnitCtrl units(nullptr);
        units.Initialize(type);
        EXPECT_EQ(units.GetUnitSystemType(), type);
        EXPECT_EQ(CurrentIndex(units), (Index{force, length, mass, time, heat}));
        EXPECT_EQ(units.GetConvertFactorCurrent(1), lengthFactor);
        EXPECT_EQ(units.GetConvertFactorCurrent(37), heatFactor);
    }
}

TEST(MUnitCtrl, NeutralUnitTakesEffectWithTheNextInitialize) {
    MUnitCtrl units(nullptr);
    units.SetNeutralUnit(1);
    EXPECT_EQ(units.GetNeutralUnit(), 0);
    EXPECT_EQ(units.GetLengthConvertFactorForNeutralUnit(3), 25.4);
    units.SetNeutralUnit(2);
    units.SetNeutralUnit(3);
    units.Initialize(5);
    EXPECT_EQ(units.ConvertUnitLengthIn(2.0), 2.0 * 0.0254);
    EXPECT_EQ(units.GetLengthConvertFactorForNeutralUnit(5), 1e-06);
    EXPECT_EQ(units.GetLengthConvertFactorForNeutralUnit(6), 1.0);
    T_UNIT_INDEX index;
    units.GetUnitIndexDefault(index);
    EXPECT_EQ(AsArray(index), (Index{2, 2, 0, 0, 2}));
    units.SetNeutralUnit(0);
    EXPECT_EQ(units.ConvertUnitLengthIn(2.0), 2.0 * 0.0254);
    units.Initialize(4);
    EXPECT_EQ(units.ConvertUnitLengthIn(2.0), 20.0);
}

TEST(MUnitCtrl, TheDayIsKnownAndNotCounted) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    T_UNIT_NAMEFACT names;
    units.GetUnitNameCurrent(names);
    EXPECT_EQ(names.timeCount, 3);
    EXPECT_EQ(names.timeName[3], L"day");
    EXPECT_EQ(names.timeFactor[3], 86400);
    EXPECT_EQ(names.lengthCount, 6);
    EXPECT_EQ(names.lengthName[5], L"\u00B5m");
    EXPECT_EQ(names.heatCount, 5);
}

TEST(MUnitCtrl, AChangeMovesValuesFromThePreviousUnits) {
    MUnitCtrl units(nullptr);
    units.Initialize(2, 3, 0, 2);       // m, kN
    units.SetUnitSystemTypeLF(3, 4, 0); // in, lbf
    EXPECT_EQ(units.ConvertUnitLengthPrevious(1.0), 1000 / 25.4);
    EXPECT_EQ(units.ConvertUnitForcePrevious(2.0), 2000.0 / 4.448223);
    EXPECT_EQ(units.ConvertUnitDataPrevious(17, 3.0), (1000.0 / (1000.0 * 1000.0) * 3.0) / (4.448223 / (25.4 * 25.4)));
    // The mass that went with kN over the force unit of now, not over its mass.
    EXPECT_EQ(units.ConvertUnitMassPrevious(1.0), 1000.0 / 4.448223);
    EXPECT_EQ(units.ConvertUnitMassIn(1.0), 0.45359237);
    MVector<double, 3> v(1.0, 2.0, 3.0);
    units.ConvertUnitVectorIn(v);
    EXPECT_EQ(v, (MVector<double, 3>(25.4, 50.8, 3.0 * 25.4)));
    units.ConvertUnitVectorOut(v);
    units.ConvertUnitVectorPrevious(v);
    EXPECT_DOUBLE_EQ(v[1], 2000 / 25.4);
}

TEST(MUnitCtrl, InitializeWithTheStoredTypeLeavesFactorsOfOne) {
    MUnitCtrl units(nullptr);
    units.Initialize(4);
    units.Initialize(4);
    for (int const kind : {1, 2, 17, 51, 128})
        EXPECT_EQ(units.GetConvertFactorCurrent(kind), 1.0) << kind;
    EXPECT_EQ(units.GetConvertFactorTgtUnit(0, 1, 0, 0, 0, 1), 10.0);
}

TEST(MUnitCtrl, NoticeComesAfterTheChangeAndOnlyForAChange) {
    auto *const document = reinterpret_cast<CDocument *>(0x1234);
    MUnitCtrl units(document);
    EXPECT_EQ(units.GetDoc(), document);
    Notices notices;
    units.Initialize(0);
    EXPECT_TRUE(notices.calls.empty());
    for (int again = 0; again < 2; ++again) { // the second time nothing changes
        units.SetUnitSystemType(1, 1);
        EXPECT_EQ(notices.calls, (decltype(notices.calls){{"listener", document}, {"window", document}}));
        EXPECT_EQ(units.GetConvertFactorPrevious(1), 1.0);
    }
}

TEST(MUnitCtrl, SavedStatesComeBackInReverseAndLeaveTheLabels) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    units.SetUnitSystemType(1, 0);
    units.SaveUnitChangeFactor();
    units.SetUnitSystemType(3, 0);
    units.SaveUnitChangeFactor();
    units.SetUnitSystemType(5, 0);
    MUnitCtrl copy(units);

    units.RestoreUnitChangeFactor();
    EXPECT_EQ(units.GetConvertFactorCurrent(1), 304.8);
    EXPECT_EQ(units.GetConvertFactorPrevious(1), 1000);
    CString label;
    EXPECT_EQ(units.GetUnitSystem(1, label), 1);
    EXPECT_EQ(label, L"in");
    units.RestoreUnitChangeFactor();
    units.RestoreUnitChangeFactor();
    EXPECT_EQ(CurrentIndex(units), (Index{2, 2, 0, 0, 2}));
    EXPECT_EQ(units.GetConvertFactorCurrent(1), 1000);

    copy.RestoreUnitChangeFactor();
    EXPECT_EQ(copy.GetConvertFactorCurrent(1), 304.8);
    copy.Initialize(5, 2, 0, 2);
    copy.RestoreUnitChangeFactor();
    EXPECT_EQ(copy.GetConvertFactorCurrent(1), 0.001);
}

TEST(MUnitCtrl, MassAndWeightFollowTheForceUnit) {
    for (auto const &[force, length, weight, unfolded] : Rows<int, int, double, double>(
             "2 2 9.80665 1; 2 0 9.80665 1000; 3 1 9.80665 100; 3 3 9.80665 39.370079; 2 4 9.80665 3.28084;"
             "2 5 9.80665 1; 4 3 386.0886 1; 5 3 386.0886 1; 4 4 32.17405 1; 5 0 32.17405 1; 0 3 1 1; 1 0 1 1")) {
        SCOPED_TRACE(testing::Message() << force << ' ' << length);
        MUnitCtrl units(nullptr);
        units.Initialize(length, force, 0, 2);
        EXPECT_EQ(units.GetMassWeightFactor(), weight);
        EXPECT_EQ(units.ConvertMassToWeight(2.0), 2.0 * weight);
        EXPECT_EQ(units.ConvertWeightToMass(2.0), 2.0 / weight);
        EXPECT_EQ(units.UnfoldNewton(2.0), 2.0 * unfolded);
    }
}

TEST(MUnitCtrl, IndicesOutsideTheTablesCountAsOneWithoutAName) {
    MUnitCtrl units(nullptr);
    CString label(L"x");
    units.GetUnitSystemLength(label);
    EXPECT_TRUE(label.IsEmpty());
    for (int const index : {-1, 7, 10, 2147483647, -2147483647 - 1}) {
        units.Initialize(index, index, index, index);
        EXPECT_EQ(units.GetConvertFactorCurrent(17), 1.0);
        EXPECT_EQ(units.ConvertTgtUnitData2CurUnit(index, index, index, index, index, 41, 5.0), 5.0);
        EXPECT_EQ(units.GetUnitSystem(17, label), 1);
        EXPECT_EQ(label, L"/^2");
    }
}

} // namespace zvi::lib::test
