#pragma once

#include <cstddef>

namespace zvi::lib::base {

/// Has the processor fetch a thing into its caches before it is looked at, where things are looked at in an order that
/// it cannot foresee. That takes time alone, and less of it.
template <typename Thing>
void Prefetch(Thing const &thing) {
#if defined(__GNUC__)
    constexpr std::size_t kCacheLine = 64;
    auto const *const bytes = reinterpret_cast<char const *>(&thing);
    for (std::size_t at = 0; at < sizeof(Thing); at += kCacheLine)
        __builtin_prefetch(bytes + at);
    __builtin_prefetch(bytes + sizeof(Thing) - 1);
#endif
}

} // namespace zvi::lib::base
