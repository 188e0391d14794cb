#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

namespace zvi::lib {

/// The special characters in texts that the user sees. Each stands in one place, here.
class ZVI_API MSpecialChar {
public:
    /// Which sign.
    enum Sign {
        kMicro,      ///< the micro sign, before a unit for its millionth part
        kDegree,     ///< the degree sign
        kTemperature ///< the sign of the temperature unit, the degree sign followed by C
    };

    /// The text of a sign; empty for a number that is none.
    static CString Get(Sign sign);
};

} // namespace zvi::lib
