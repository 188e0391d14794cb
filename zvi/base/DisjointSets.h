#pragma once

#include "zvi/base/Index.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <vector>

namespace zvi::lib::base {

/// Sets of the numbers from 0 up to a count, not including it, that grow together.
class DisjointSets {
public:
    explicit DisjointSets(std::size_t count) : m_parent(count) { std::iota(m_parent.begin(), m_parent.end(), 0); }

    /// The smallest number of the set.
    int Find(int i) {
        assert(Index(i) < m_parent.size());
        while (m_parent[Index(i)] != i)
            i = m_parent[Index(i)] = m_parent[Index(m_parent[Index(i)])];
        return i;
    }
    /// Returns whether the two were in different sets.
    bool Unite(int a, int b) {
        int const rootOfA = Find(a), rootOfB = Find(b);
        m_parent[Index(std::max(rootOfA, rootOfB))] = std::min(rootOfA, rootOfB);
        return rootOfA != rootOfB;
    }

private:
    std::vector<int> m_parent;
};

} // namespace zvi::lib::base
