#include "zvi/host/internal/LargeMemory.h"

#include <sys/mman.h>

#include <cstdlib>
#include <limits>

namespace zvi::host {

void *AllocateLarge(std::size_t bytes) noexcept {
    if (bytes > std::numeric_limits<std::ptrdiff_t>::max() - kLargePage)
        return nullptr;
    std::size_t const size = (bytes + kLargePage - 1) / kLargePage * kLargePage;
    void *const memory = std::aligned_alloc(kLargePage, size);
#if defined(MADV_HUGEPAGE)
    // A wish: without large pages the memory is as good as any other.
    if (memory)
        static_cast<void>(::madvise(memory, size, MADV_HUGEPAGE));
#endif
    return memory;
}

void ReleaseLarge(void *memory) noexcept {
    std::free(memory);
}

} // namespace zvi::host
