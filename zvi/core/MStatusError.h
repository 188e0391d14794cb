#pragma once

#include "zvi/Export.h"

#include <cstdint>
#include <stdexcept>

namespace zvi {

/// Status of a container that could not get memory, or whose block size does not fit 64 bits.
inline constexpr std::uint32_t kStatusOutOfMemory = 0x8007000EU;

/// Status of an unspecified failure: a bin count out of range, an operation on no node.
inline constexpr std::uint32_t kStatusUnspecifiedFailure = 0x80004005U;

/// A failure told by a 32-bit status code. `MHashMap` and `MList` raise it.
class ZVI_API MStatusError : public std::runtime_error {
public:
    /// The text of `what()` names the code in hexadecimal.
    explicit MStatusError(std::uint32_t status);
    ~MStatusError() override;

    /// The code, such as `kStatusOutOfMemory`.
    std::uint32_t Status() const { return m_status; }

private:
    std::uint32_t m_status;
};

/// Raises `MStatusError`; kept out of line so that the containers' fast paths stay small.
[[noreturn]] ZVI_API void RaiseStatus(std::uint32_t status);

} // namespace zvi
