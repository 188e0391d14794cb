#pragma once

#include <cassert>
#include <cstddef>
#include <span>

namespace zvi::lib::base {

/// Puts `count` things in the order of their buckets, those of one bucket in the order in which they are: a counting
/// sort (Knuth, The Art of Computer Programming, vol. 3, 5.2).
///
/// `bucketOf(i)` is the bucket of thing i, below the number of buckets, and is asked twice; `put(place, i)` stores it
/// at its place, 0 to count - 1. `begins` has one entry for each bucket and one more, all 0. It receives the place at
/// which each bucket begins; the last entry is `count`.
template <typename Place, typename BucketOf, typename Put>
void SortIntoBuckets(std::size_t count, std::span<Place> begins, BucketOf bucketOf, Put put) {
    for (std::size_t i = 0; i < count; ++i) {
        auto const bucket = static_cast<std::size_t>(bucketOf(i));
        assert(bucket + 1 < begins.size());
        ++begins[bucket];
    }
    Place end = 0;
    for (Place &place : begins)
        place = end += place;
    // From the last thing to the first: the end of each bucket moves down to its beginning.
    for (std::size_t i = count; i-- > 0;)
        put(static_cast<std::size_t>(--begins[static_cast<std::size_t>(bucketOf(i))]), i);
}

} // namespace zvi::lib::base
