#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MOptionData.h"
#include "zvi/core/OptionValues.h"

namespace zvi::lib {

/// Control values of an analysis, which the library keeps for the application and does not read. Category
/// "OPT_ANAL_CTRL".
class ZVI_API OptionAnalCtrl : public MOptionData {
public:
    /// The category, as `GetCategory` gives it.
    static constexpr wchar_t kCategory[] = L"OPT_ANAL_CTRL";

    /// The values of the group.
    struct Values {
        MArray<MOPTDATA *> sequence; ///< in the order of their registration
        MOPTDOUBLE UseMemory;        ///< 2 on every machine, however much memory it has
        MOPTBOOL Singular;           ///< 1
        MOPTBOOL OnlyMemory;         ///< 1
    };

    int InitOption() override;
    CString GetCategory() override;

    Values values; ///< in force
};

} // namespace zvi::lib
