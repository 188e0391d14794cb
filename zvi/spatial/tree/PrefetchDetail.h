#pragma once

#include <cstddef>

namespace zvi::lib::spatial {

/// Asks for the cache line of an address that is soon come to. Any address will do; nothing is read.
inline void Prefetch([[maybe_unused]] void const *address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

/// Asks for the first cache lines of an array, or of one large thing. The rest is left to the machine, which sees that
/// one goes through it.
template <typename T>
void Prefetch(T const *first, std::size_t count) {
    constexpr std::size_t kCacheLine = 64;
    constexpr std::size_t kMostLines = 16;
    auto const *const bytes = reinterpret_cast<char const *>(first);
    std::size_t const end = count * sizeof(T) < kMostLines * kCacheLine ? count * sizeof(T) : kMostLines * kCacheLine;
    for (std::size_t i = 0; i < end; i += kCacheLine)
        Prefetch(bytes + i);
}

} // namespace zvi::lib::spatial
