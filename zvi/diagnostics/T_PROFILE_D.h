#pragma once

#include <cstdint>

namespace zvi::lib {

/// What `MProfileMgr` knows of a name.
struct T_PROFILE_D {
    int id;             ///< given at the first call
    int count;          ///< measured calls; stays at the largest `int`
    std::int64_t ticks; ///< their sum, in ticks of `host::ReadCounter`
};

} // namespace zvi::lib
