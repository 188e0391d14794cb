#include "zvi/host/LocalTime.h"

#include "zvi/host/windows/WindowsHeader.h"

namespace zvi::host {

CalendarTime LocalTime() {
    SYSTEMTIME parts = {};
    ::GetLocalTime(&parts);
    return {parts.wYear, parts.wMonth, parts.wDay, parts.wHour, parts.wMinute, parts.wSecond};
}

} // namespace zvi::host
