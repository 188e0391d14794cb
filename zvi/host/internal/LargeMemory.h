#pragma once

#include "zvi/Export.h"

#include <cstddef>

namespace zvi::host {

/// Alignment of large memory in bytes: a large page of the usual machines.
inline constexpr std::size_t kLargePage = std::size_t{1} << 21;

/// For the library's own containers. Memory for data that is read here and there, on large pages where the machine has
/// some: finding the place of an address then costs little, however much memory there is. The size is rounded up to
/// whole large pages; memory that is never touched costs nothing. Aligned to `kLargePage`, contents undefined; null
/// when the memory cannot be had.
ZVI_API void *AllocateLarge(std::size_t bytes) noexcept;

/// Gives back what `AllocateLarge` gave; nothing for null.
ZVI_API void ReleaseLarge(void *memory) noexcept;

} // namespace zvi::host
