#include "zvi/host/internal/LargeMemory.h"

#include <malloc.h>

#include <limits>

namespace zvi::host {

/// Large pages need a privilege here that programs seldom have.
void *AllocateLarge(std::size_t bytes) noexcept {
    if (bytes > std::numeric_limits<std::ptrdiff_t>::max() - kLargePage)
        return nullptr;
    return ::_aligned_malloc(bytes, kLargePage);
}

void ReleaseLarge(void *memory) noexcept {
    ::_aligned_free(memory);
}

} // namespace zvi::host
