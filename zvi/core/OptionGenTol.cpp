#include "zvi/core/OptionGenTol.h"

#include "zvi/core/LibraryOptionsDetail.h"

namespace zvi::lib {

namespace {

struct Row {
    MOPTDOUBLE OptionGenTol::Values::*option;
    wchar_t const *keyword;
    double value;
};

constexpr Row kRows[] = {
    {&OptionGenTol::Values::RegardAsZero, L"RegardAsZero", 1e-10},
    {&OptionGenTol::Values::PointMergeTolerance, L"PointMergeTolerance", 0.001},
    {&OptionGenTol::Values::AngleTolerance, L"AngleTolerance", 1.0},
    {&OptionGenTol::Values::RegardAsZeroForAnalysisResult, L"RegardAsZeroForAnalysisResult", 1e-12},
};

} // namespace

int OptionGenTol::InitOption() {
    values.sequence.Clear();
    for (Row const &row : kRows) {
        MOPTDOUBLE &option = values.*row.option;
        option.SetData(row.keyword, row.value);
        values.sequence.PushBack(&option);
    }
    for (MOPTDATA *const option : values.sequence)
        RegOption(option);
    return 1;
}

CString OptionGenTol::GetCategory() {
    return kCategory;
}

OptionGenTol &core::GeneralTolerances() {
    static OptionGenTol group;
    static int const isMade = group.InitOption();
    static_cast<void>(isMade);
    return group;
}

} // namespace zvi::lib
