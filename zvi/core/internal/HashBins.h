#pragma once

#include "zvi/Export.h"

#include <concepts>
#include <cstdint>
#include <type_traits>

namespace zvi::lib::core {

/// Keys of `MHashMap`: whole numbers, enumerations and pointers.
template <typename K>
concept HashKey = std::integral<K> || std::is_enum_v<K> || std::is_pointer_v<K>;

/// The value of a key cut to 32 bits; of a pointer, the low half of the address.
template <HashKey K>
std::uint32_t HashOf(K key) {
    if constexpr (std::is_pointer_v<K>)
        return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(key));
    else
        return static_cast<std::uint32_t>(key);
}

/// Raises `kStatusUnspecifiedFailure` when a table cannot have so many bins: 0, or `kBinCountLimit` and more.
ZVI_API void CheckBinCount(std::uint32_t binCount);

/// Memory for `binCount` bin heads, a number that `CheckBinCount` lets pass, all null; the arrays of large tables ask
/// for large pages. Raises `kStatusOutOfMemory`.
ZVI_API void *AllocateBins(std::uint32_t binCount);

/// Gives back the memory of `binCount` heads; nothing for null.
ZVI_API void ReleaseBins(void *bins, std::uint32_t binCount) noexcept;

} // namespace zvi::lib::core
