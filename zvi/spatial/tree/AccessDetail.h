#pragma once

#include "zvi/spatial/tree/ExtentDetail.h"
#include "zvi/spatial/tree/FamilyDetail.h"

#include <cassert>
#include <typeinfo>

namespace zvi::lib::spatial {

/// The one way from what is neutral of dimension to the members of the public classes. `Space` names these classes and
/// says what differs: `QuadSpace` and `OcSpace`.
template <typename Space>
struct Access {
    static constexpr int kDimension = Space::kDimension;

    using Object = typename Space::Object;
    using Pool = typename Space::Pool;
    using Node = typename Space::Node;
    using Tree = typename Space::Tree;
    using Box = Extent<kDimension>;

    static Box BoxOf(Object const &object) { return ExtentOf<kDimension>(object.m_mbr); }
    /// The box as the object answers it now. A class of its own may answer another one than that which is stored. It
    /// alone is asked, because the question may end the trust.
    static Box CurrentBox(Object &object) {
        return object.m_home || IsOfItsClass(object) ? BoxOf(object) : ExtentOf<kDimension>(object.GetMBR());
    }
    static bool IsOfItsClass(Object const &object) { return typeid(object) == typeid(Object); }
    static auto &KeyOf(Object &object) { return object.m_key; }
    static Node *&HomeOf(Object &object) { return object.m_home; }
    static bool &IsUnwatched(Object &object) { return object.m_unwatched; }
    static void SetBox(Object &object, typename Space::PublicBox const &box) { object.m_mbr = box; }

    static Stock<Space> &StockOf(Pool const &pool) { return *pool.m_stock; }
    static Memory<Space> *MemoryOf(Pool const &pool) { return pool.m_memory; }

    static Box RegionOf(Node const &node) { return ExtentOf<kDimension>(node.m_region); }
    static void SetRegion(Node &node, Box const &region) {
        node.m_region = std::bit_cast<typename Space::PublicBox>(region);
    }
    static Node *&ParentOf(Node &node) { return node.m_parent; }
    static Node const *ParentOf(Node const &node) { return node.m_parent; }
    static Stock<Space> &StockOf(Node const &node) { return *node.m_pool.m_stock; }
    static Memory<Space> *MemoryOf(Node const &node) { return node.m_pool.m_memory; }
    static Tree *TreeOf(Node const &node) { return node.m_tree; }
    /// The settings of the tree, the default ones without a tree.
    static auto const &InfoOf(Node const &node) {
        static constexpr typename Space::Info kDefault;
        return node.m_tree ? node.m_tree->m_info : kDefault;
    }

    /// The family of the children, null in a leaf.
    static Family<Space> *FamilyOf(Node const &node) {
        return node.m_children[0] ? &Family<Space>::Of(node.m_children[0]) : nullptr;
    }
    static void SetFamily(Node &node, Family<Space> *family) {
        for (int i = 0; i < Family<Space>::kCount; ++i)
            node.m_children[i] = family ? family->Nodes() + i : nullptr;
        if (IsChild(node))
            SiblingsOf(node).families[&StockOf(node) - SiblingsOf(node).stocks] = family;
    }
    /// Whether the node is one of its parent's children; a copy of one is not.
    static bool IsChild(Node const &node) { return !node.m_pool.m_ownsStock; }
    /// The family that a child is in.
    static Family<Space> &SiblingsOf(Node const &node) {
        assert(IsChild(node) && node.m_parent && FamilyOf(*node.m_parent));
        return *FamilyOf(*node.m_parent);
    }
    /// A child by its number, 0 to below `Family::kCount`; null in a leaf.
    static Node *ChildOf(Node const &node, int index) {
        assert(index >= 0 && index < Family<Space>::kCount);
        return node.m_children[index];
    }

    /// Makes a child, by such a number, in its place.
    static void MakeChild(Family<Space> &family, int index, Node &parent) {
        assert(index >= 0 && index < Family<Space>::kCount);
        Node *const child =
            ::new (static_cast<void *>(family.Nodes() + index)) Node(parent.m_tree, &family.stocks[index]);
        child->m_parent = &parent;
        SetRegion(*child, PartOf(family.region, index));
    }

    static Node *&RootOf(Tree &tree) { return tree.m_root; }
    static Node *RootOf(Tree const &tree) { return tree.m_root; }
    static auto &KeysOf(Tree const &tree) { return *tree.m_objects; }
    static Memory<Space> *MemoryOf(Tree const &tree) { return tree.m_memory; }
};

} // namespace zvi::lib::spatial
