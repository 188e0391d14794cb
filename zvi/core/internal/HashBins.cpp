#include "zvi/core/internal/HashBins.h"

#include "zvi/core/MStatusError.h"
#include "zvi/core/internal/HashBinCount.h"
#include "zvi/host/internal/LargeMemory.h"

#include <cassert>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace zvi::lib::core {

namespace {

bool AreLarge(std::uint32_t binCount) {
    return binCount >= host::kLargePage / sizeof(void *);
}

void *AllocateLargeBins(std::size_t bytes) {
    void *const bins = host::AllocateLarge(bytes);
    return bins ? std::memset(bins, 0, bytes) : nullptr;
}

} // namespace

void CheckBinCount(std::uint32_t binCount) {
    if (binCount == 0 || binCount >= kBinCountLimit)
        RaiseStatus(kStatusUnspecifiedFailure);
}

void *AllocateBins(std::uint32_t binCount) {
    assert(binCount != 0 && binCount < kBinCountLimit);
    void *const bins =
        AreLarge(binCount) ? AllocateLargeBins(binCount * sizeof(void *)) : std::calloc(binCount, sizeof(void *));
    if (!bins)
        RaiseStatus(kStatusOutOfMemory);
    return bins;
}

void ReleaseBins(void *bins, std::uint32_t binCount) noexcept {
    if (AreLarge(binCount))
        host::ReleaseLarge(bins);
    else
        std::free(bins);
}

} // namespace zvi::lib::core
