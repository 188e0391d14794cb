#include "zvi/core/OptionAnalCtrl.h"

#include "zvi/core/LibraryOptionsDetail.h"

namespace zvi::lib {

int OptionAnalCtrl::InitOption() {
    m_values.sequence.Clear();
    m_values.UseMemory.SetData(L"UseMemory", 2.0);
    m_values.sequence.PushBack(&m_values.UseMemory);
    m_values.Singular.SetData(L"Singular", 1);
    m_values.sequence.PushBack(&m_values.Singular);
    m_values.OnlyMemory.SetData(L"OnlyMemory", 1);
    m_values.sequence.PushBack(&m_values.OnlyMemory);
    for (MOPTDATA *const option : m_values.sequence)
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
