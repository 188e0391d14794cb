#include "zvi/host/Counter.h"

#include "zvi/host/windows/WindowsHeader.h"

namespace zvi::host {

std::int64_t ReadCounter() noexcept {
    LARGE_INTEGER ticks{};
    QueryPerformanceCounter(&ticks);
    return ticks.QuadPart;
}

std::int64_t CounterFrequency() noexcept {
    LARGE_INTEGER frequency{};
    return QueryPerformanceFrequency(&frequency) ? frequency.QuadPart : 0;
}

} // namespace zvi::host
