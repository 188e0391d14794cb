#pragma once

#include "zvi/spatial/tree/RemovalDetail.h"
#include "zvi/spatial/tree/WayDetail.h"

#include <cstddef>

namespace zvi::lib::spatial {

/// Objects whose boxes nobody can have changed are trusted: a tree keeps codes of them and need not look at them. An
/// object reports what ends the trust (`Leave`) to its home, the node at which it was inserted. It has a home as long
/// as it stands in exactly one pool below it, with a code.
template <typename Space>
struct Watch {
    using Object = typename Space::Object;
    using Node = typename Space::Node;
    using Of = Access<Space>;
    using Box = Extent<Space::kDimension>;

    /// Where an object stands.
    struct Standing {
        Node *node = nullptr;
        std::size_t place = Stock<Space>::kNowhere;
    };

    /// Whether an object that comes under `home` is trusted from now on. One that is in a tree already, was changed in
    /// one, or has a class of its own is not: its code could grow stale unseen.
    static bool Start(Node &home, Object &object) noexcept {
        Leave(object);
        if (Of::IsUnwatched(object) || !Of::IsOfItsClass(object) || Space::StatusOf(object) != Space::kLiveStatus)
            return false;
        Of::HomeOf(object) = &home;
        return true;
    }

    /// The object may be changed unseen from now on, or comes to stand in a second place.
    static void Leave(Object &object) noexcept {
        Node *const home = Of::HomeOf(object);
        if (!home)
            return;
        Standing const standing = Find(*home, object);
        if (standing.node)
            Of::StockOf(*standing.node).Distrust(standing.place);
        if (standing.node && Of::FamilyOf(*standing.node))
            Of::FamilyOf(*standing.node)->bands.HoldEverything();
        Of::HomeOf(object) = nullptr;
        Of::IsUnwatched(object) = true;
    }

    /// No object below the node reports to anybody any more.
    static void LeaveAll(Node &node) noexcept {
        Stock<Space> const &stock = Of::StockOf(node);
        for (std::size_t i = 0; i < stock.End(); ++i) {
            if (stock.At(i) && stock.IsTrusted(i))
                Of::HomeOf(*stock.At(i)) = nullptr;
        }
        for (int i = 0; Of::FamilyOf(node) && i < Family<Space>::kCount; ++i)
            LeaveAll(*Of::ChildOf(node, i));
    }

    /// Where a watched object stands below its home. Its box leads there; the search of everything is for boxes on a
    /// border that doubling moved by a rounding.
    static Standing Find(Node &home, Object &object) noexcept {
        Box const box = Of::BoxOf(object);
        Way<Space> way(home);
        way.GoToward(box);
        Stock<Space> &stock = way.ToStock();
        stock.PrefetchAll();
        std::size_t const place = stock.Find(&object, Frame<Space::kDimension>(way.Region()).Encode(box));
        if (place != Stock<Space>::kNowhere)
            return {&way.ToNode(), place};
        return FindAnywhere(home, object);
    }

    static Standing FindAnywhere(Node &node, Object const &object) noexcept {
        std::size_t const place = Of::StockOf(node).FindLast(&object);
        if (place != Stock<Space>::kNowhere)
            return {&node, place};
        for (int i = 0; Of::FamilyOf(node) && i < Family<Space>::kCount; ++i) {
            if (Standing const standing = FindAnywhere(*Of::ChildOf(node, i), object); standing.node)
                return standing;
        }
        return {};
    }
};

} // namespace zvi::lib::spatial
