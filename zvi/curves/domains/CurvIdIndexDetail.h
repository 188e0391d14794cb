#pragma once

#include "zvi/core/MArray.h"

#include <cstddef>
#include <unordered_map>

namespace zvi::lib::curves {

/// Finds the first entry of a growing list of curve ids that equals an id.
///
/// It answers like a search from the start, and searches so at first. When searches have cost more than a hash map of
/// the ids would, it keeps one, so that the refinement of many curves stays linear in their number.
class CurvIdIndex {
public:
    /// Index of the first entry equal to `id`; -1 if there is none. Since the last call the list may have grown; after
    /// any other change `Forget` comes first.
    int FindFirst(MArray<unsigned int> const &ids, unsigned int id);

    void Forget();

private:
    std::unordered_map<unsigned int, int> m_first; ///< by id
    std::size_t m_seen = 0;                        ///< so many entries are in the map
    std::size_t m_searched = 0;                    ///< so many entries were looked at by searches
};

} // namespace zvi::lib::curves
