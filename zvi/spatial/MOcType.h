#pragma once

#include "zvi/Export.h"

#include <cstdint>

namespace zvi::lib {

/// A word with a 28-bit signed type in its low bits and a 4-bit status in its high bits.
struct ZVI_API MOcType {
    /// Type -1, status 1.
    std::uint32_t word = 0x1fffffff;

    /// Keeps the low 28 bits of `type`; the status stays.
    void SetType(int type);
    /// The type, from -2^27 to 2^27 - 1.
    int GetType() const;
    /// The status, from 0 to 15.
    std::uint32_t GetStatus() const;
};

} // namespace zvi::lib
