#pragma once

#include "zvi/Export.h"

namespace zvi::host {

/// A moment of a calendar and a clock.
struct CalendarTime {
    int year;   ///< of the Gregorian calendar
    int month;  ///< 1 to 12
    int day;    ///< 1 to 31
    int hour;   ///< 0 to 23
    int minute; ///< 0 to 59
    int second; ///< 60 in a leap second
};

/// Now, in the time zone of the user.
ZVI_API CalendarTime LocalTime();

} // namespace zvi::host
