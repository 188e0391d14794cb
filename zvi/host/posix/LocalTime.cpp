#include "zvi/host/LocalTime.h"

#include <time.h>

namespace zvi::host {

CalendarTime LocalTime() {
    time_t const now = ::time(nullptr);
    tm parts = {};
    if (!::localtime_r(&now, &parts))
        return {1970, 1, 1, 0, 0, 0};
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

} // namespace zvi::host
