#pragma once

#include "zvi/spatial/tree/RemovalDetail.h"
#include "zvi/spatial/tree/WatchDetail.h"

#include <cstddef>

namespace zvi::lib::spatial {

/// How objects are found to be taken out; nothing here needs memory.
template <typename Space>
struct Deletion {
    using Object = typename Space::Object;
    using Node = typename Space::Node;
    using Of = Access<Space>;
    using Box = Extent<Space::kDimension>;

    /// 0, or -1 when the box does not lie in the region (unless `anywhere`) or the object is not found.
    static int Delete(Node &node, Object *object, Box const &box, bool anywhere) {
        if (!object || (!anywhere && !Contains(Of::RegionOf(node), box)))
            return -1;
        // A watched object is in one place, which its box tells, so the search of the other children is spared.
        if (Of::HomeOf(*object) == &node) {
            auto const standing = Watch<Space>::Find(node, *object);
            if (standing.node) {
                Removal<Space>::TakeOut(*standing.node, standing.place);
                return 0;
            }
        }
        return DeleteSearching(node, *object, box);
    }

    /// Takes an object that is about to be destroyed out of everything below the node.
    static void Purge(Node &node, Object const &object) {
        for (auto at = Watch<Space>::FindAnywhere(node, object); at.node; at = Watch<Space>::FindAnywhere(node, object))
            Removal<Space>::TakeOut(*at.node, at.place);
    }

private:
    /// First where the box leads, then everywhere.
    static int DeleteSearching(Node &node, Object &object, Box const &box) {
        if (Family<Space> *const family = Of::FamilyOf(node)) {
            int const likely = PartContaining(family->region, box);
            if (likely != Family<Space>::kCount && Delete(family->Nodes()[likely], &object, box, false) != -1)
                return 0;
            for (int i = 0; i < Family<Space>::kCount; ++i) {
                if (i != likely && Delete(family->Nodes()[i], &object, box, true) != -1)
                    return 0;
            }
        }
        std::size_t const place = Of::StockOf(node).FindLast(&object);
        if (place == Stock<Space>::kNowhere)
            return -1;
        Removal<Space>::TakeOut(node, place);
        return 0;
    }
};

} // namespace zvi::lib::spatial
