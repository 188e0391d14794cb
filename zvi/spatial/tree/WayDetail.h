#pragma once

#include "zvi/spatial/tree/AccessDetail.h"
#include "zvi/spatial/tree/PrefetchDetail.h"

#include <cassert>

namespace zvi::lib::spatial {

/// A place in the tree that is come to from above, by the families alone.
template <typename Space>
class Way {
public:
    static constexpr int kDimension = Space::kDimension;

    using Node = typename Space::Node;
    using Of = Access<Space>;

    explicit Way(Node &start) : family(Of::FamilyOf(start)), m_start(&start) {}

    /// Goes on into a child, of which there are some, by its number.
    void Enter(int child) {
        assert(family && child >= 0 && child < Family<Space>::kCount);
        m_siblings = family;
        m_child = child;
        family = family->families[child];
        if (family)
            Prefetch(family, 1);
    }

    /// Goes on to the leaf, or to the inner node none of whose children contains the box.
    void GoToward(Extent<kDimension> const &box) {
        while (family) {
            int const child = PartContaining(family->region, box);
            if (child == kPartCount<kDimension>)
                return;
            Enter(child);
        }
    }

    Node &ToNode() const { return m_siblings ? m_siblings->Nodes()[m_child] : *m_start; }
    Stock<Space> &ToStock() const { return m_siblings ? m_siblings->stocks[m_child] : Of::StockOf(*m_start); }
    Extent<kDimension> Region() const {
        return m_siblings ? PartOf(m_siblings->region, m_child) : Of::RegionOf(*m_start);
    }

    Family<Space> *family; ///< of the children, null in a leaf

private:
    Node *m_start;
    /// The family of the node, once the way has left its start.
    Family<Space> *m_siblings = nullptr;
    int m_child = 0;
};

} // namespace zvi::lib::spatial
