#include "zvi/curves/domains/CurvIdIndexDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib::curves {

namespace {

/// An entry of the map costs as much as a search that looks at so many entries.
constexpr std::size_t kSearchedPerEntry = 64;

} // namespace

int CurvIdIndex::FindFirst(MArray<unsigned int> const &ids, unsigned int id) {
    if (m_searched <= kSearchedPerEntry * ids.Size()) {
        unsigned int const *const found = std::find(ids.begin(), ids.end(), id);
        m_searched += static_cast<std::size_t>(found - ids.begin());
        return found == ids.end() ? -1 : static_cast<int>(found - ids.begin());
    }
    assert(m_seen <= ids.Size()); // the list only grew
    for (; m_seen < ids.Size(); ++m_seen) {
        if (m_seen == 0 || ids[m_seen] != ids[m_seen - 1])
            m_first.try_emplace(ids[m_seen], static_cast<int>(m_seen));
    }
    auto const found = m_first.find(id);
    return found == m_first.end() ? -1 : found->second;
}

void CurvIdIndex::Forget() {
    m_first.clear();
    m_seen = 0;
    m_searched = 0;
}

} // namespace zvi::lib::curves
