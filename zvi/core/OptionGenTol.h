#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MOptionData.h"
#include "zvi/core/OptionValues.h"

namespace zvi::lib {

/// The general tolerances, which `MTolerance` hands out. Category "OPT_GEN_TOLERENCE", spelled that way in the settings
/// files of users.
class ZVI_API OptionGenTol : public MOptionData {
public:
    /// The category, as `GetCategory` gives it.
    static constexpr wchar_t kCategory[] = L"OPT_GEN_TOLERENCE";

    /// The values of the group.
    struct Values {
        MArray<MOPTDATA *> sequence;              ///< in the order of their registration
        MOPTDOUBLE RegardAsZero;                  ///< a value below this in magnitude counts as zero; 1e-10
        MOPTDOUBLE PointMergeTolerance;           ///< two points closer than this are one; 0.001
        MOPTDOUBLE AngleTolerance;                ///< in whichever unit its user takes; 1
        MOPTDOUBLE RegardAsZeroForAnalysisResult; ///< as `RegardAsZero`, for results of an analysis; 1e-12
    };

    int InitOption() override;
    CString GetCategory() override;

    Values values; ///< in force
};

} // namespace zvi::lib
