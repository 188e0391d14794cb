#include "zvi/core/OptionAnalCtrl.h"

#include "zvi/core/LibraryOptionsDetail.h"

namespace zvi::lib {

int OptionAnalCtrl::InitOption() {
    values.sequence.Clear();
    values.UseMemory.SetData(L"UseMemory", 2.0);
    values.sequence.PushBack(&values.UseMemory);
    values.Singular.SetData(L"Singular", 1);
    values.sequence.PushBack(&values.Singular);
    values.OnlyMemory.SetData(L"OnlyMemory", 1);
    values.sequence.PushBack(&values.OnlyMemory);
    for (MOPTDATA *const option : values.sequence)
        RegOption(option);
    return 1;
}

CString OptionAnalCtrl::GetCategory() {
    return kCategory;
}

OptionAnalCtrl &core::AnalysisControl() {
    static OptionAnalCtrl group;
    static int const isMade = group.InitOption();
    static_cast<void>(isMade);
    return group;
}

} // namespace zvi::lib
