#pragma once

#include "zvi/spatial/tree/AccessDetail.h"

#include <cstddef>
#include <memory>

namespace zvi::lib::spatial {

/// What leaves a pool or a node; nothing here needs memory.
template <typename Space>
struct Removal {
    using Object = typename Space::Object;
    using Node = typename Space::Node;
    using Of = Access<Space>;

    /// A watched object that leaves its pool has no home any more.
    static void TakeOut(Stock<Space> &stock, std::size_t place) noexcept {
        if (stock.IsTrusted(place))
            Of::HomeOf(*stock.At(place)) = nullptr;
        stock.RemoveAt(place);
    }

    /// The same from the pool of a node, which may leave empty leaves behind.
    static void TakeOut(Node &node, std::size_t place) noexcept {
        TakeOut(Of::StockOf(node), place);
        if (Of::StockOf(node).Count() == 0 && !Of::FamilyOf(node) && Of::ParentOf(node))
            Merge(*Of::ParentOf(node));
    }

    /// Removes children that are empty leaves, and goes on at the parent: 0, or -1 when there is nothing to remove.
    static int Merge(Node &node) noexcept {
        int result = -1;
        for (Node *at = &node; at && HasEmptyLeaves(*at); at = Of::ParentOf(*at)) {
            DeleteChild(*at);
            result = 0;
        }
        return result;
    }

    static void DeleteChild(Node &node) noexcept {
        Family<Space> *const family = Of::FamilyOf(node);
        if (!family)
            return;
        std::destroy_n(family->Nodes(), Family<Space>::kCount);
        Of::SetFamily(node, nullptr);
        GiveBack(Of::MemoryOf(node), family);
    }

    /// A family whose nodes are gone or were never made.
    static void GiveBack(Memory<Space> *memory, Family<Space> *family) noexcept {
        std::destroy_at(family);
        Memory<Space>::GiveBackFamily(memory, family);
    }

private:
    static bool HasEmptyLeaves(Node const &node) {
        Family<Space> const *const family = Of::FamilyOf(node);
        for (int i = 0; family && i < Family<Space>::kCount; ++i) {
            if (family->families[i] || family->stocks[i].Count() != 0)
                return false;
        }
        return family;
    }
};

} // namespace zvi::lib::spatial
