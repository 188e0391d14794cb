#pragma once

#include <cstddef>

namespace zvi::lib::spatial {

/// Asks for the cache line of an address that is soon come to. Any address will do; nothing is read.
inline void Prefetch([[maybe_unused]] void const *address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

/// Asks for all cache lines of an object that begins at one.
template <typename T>
void PrefetchAll(T const *object) {
    constexpr std::size_t kCacheLine = 64;
    auto const *const bytes = reinterpret_cast<char const *>(object);
    for (std::size_t i = 0; i < sizeof(T); i += kCacheLine)
        Prefetch(bytes + i);
}

} // namespace zvi::lib::spatial
