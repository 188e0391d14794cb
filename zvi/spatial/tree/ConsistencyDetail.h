#pragma once

#include "zvi/spatial/tree/AccessDetail.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace zvi::lib::spatial {

/// Whether a tree is as it says it is.
template <typename Space>
struct Consistency {
    using Object = typename Space::Object;
    using Node = typename Space::Node;
    using Tree = typename Space::Tree;
    using Of = Access<Space>;

    static bool Holds(Tree const &tree) {
        Node const *const root = Of::RootOf(tree);
        if (!root)
            return Of::KeysOf(tree).Empty();
        if (Of::ParentOf(*root))
            return false;
        std::unordered_set<Object const *> met;
        std::vector<Node const *> pending{root};
        while (!pending.empty()) {
            Node const &node = *pending.back();
            pending.pop_back();
            if (!Holds(node))
                return false;
            Stock<Space> const &stock = Of::StockOf(node);
            for (std::size_t i = 0; i < stock.End(); ++i)
                met.insert(stock.At(i));
            for (int i = 0; Of::FamilyOf(node) && i < Family<Space>::kCount; ++i)
                pending.push_back(Of::ChildOf(node, i));
        }
        return std::all_of(Of::KeysOf(tree).begin(), Of::KeysOf(tree).end(), [&](auto const &entry) {
            return Of::KeyOf(*entry.value) == entry.key && met.count(entry.value) != 0;
        });
    }

    /// Whether a walk from the root, each pool before the children, meets an object twice.
    static bool HasDuplicates(Tree const &tree, std::uint32_t binCount) {
        MHashMap<Object *, int> met;
        met.InitHashTable(binCount == 0 ? core::kSmallestBinCount : binCount, true);
        std::vector<Node const *> pending;
        if (Of::RootOf(tree))
            pending.push_back(Of::RootOf(tree));
        while (!pending.empty()) {
            Node const &node = *pending.back();
            pending.pop_back();
            Stock<Space> const &stock = Of::StockOf(node);
            for (std::size_t i = 0; i < stock.End(); ++i) {
                if (!stock.At(i))
                    continue;
                if (met.Lookup(stock.At(i)))
                    return true;
                met.SetAt(stock.At(i), 1);
            }
            for (int i = Of::FamilyOf(node) ? Family<Space>::kCount : 0; i-- > 0;)
                pending.push_back(Of::ChildOf(node, i));
        }
        return false;
    }

private:
    static bool Holds(Node const &node) {
        Stock<Space> const &stock = Of::StockOf(node);
        Family<Space> const *const family = Of::FamilyOf(node);
        Frame<Space::kDimension> const frame(Of::RegionOf(node));
        if (!stock.IsConsistent())
            return false;
        for (std::size_t i = 0; i < stock.End(); ++i) {
            Object *const object = stock.At(i);
            if (!object)
                continue;
            bool const isTrusted = stock.IsTrusted(i);
            auto const box = Of::BoxOf(*object);
            if (isTrusted && (!Of::HomeOf(*object) || stock.Codes()[i] != frame.Encode(box)))
                return false;
            if (family && family->bands.AreMissed(box))
                return false;
            if (stock.KnownCluster() && !stock.KnownCluster()->Holds(Of::RegionOf(node), box))
                return false;
        }
        for (int i = 0; family && i < Family<Space>::kCount; ++i) {
            if (!IsChild(node, *family, i))
                return false;
        }
        return true;
    }

    /// Whether a child is where it should be, and its family tells the truth of it.
    static bool IsChild(Node const &parent, Family<Space> const &family, int index) {
        Node const *const child = Of::ChildOf(parent, index);
        return child == family.Nodes() + index && Of::ParentOf(*child) == &parent &&
               Of::TreeOf(*child) == Of::TreeOf(parent) && &Of::StockOf(*child) == &family.stocks[index] &&
               family.families[index] == Of::FamilyOf(*child) &&
               IsSame(Of::RegionOf(*child), PartOf(family.region, index));
    }
};

} // namespace zvi::lib::spatial
