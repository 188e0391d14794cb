#pragma once

#include <cassert>
#include <cstddef>

namespace zvi::lib::base {

/// A number that counts from 0 as an index. Numbers of vertices, edges and the like are int, so that -1 can say none;
/// that one is not an index.
constexpr std::size_t Index(int number) {
    assert(number >= 0);
    return static_cast<std::size_t>(number);
}

} // namespace zvi::lib::base
