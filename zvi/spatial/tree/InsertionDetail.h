#pragma once

#include "zvi/spatial/tree/GrowthDetail.h"
#include "zvi/spatial/tree/PrefetchDetail.h"
#include "zvi/spatial/tree/RemovalDetail.h"
#include "zvi/spatial/tree/WatchDetail.h"
#include "zvi/spatial/tree/WayDetail.h"

#include <array>
#include <cassert>
#include <cstddef>
#include <new>

namespace zvi::lib::spatial {

/// How objects come into a tree, and how the tree grows and splits for them. Memory is taken before anything is changed
/// with it: when it cannot be had, an object is not inserted, while the region may have grown and leaves may have
/// split.
template <typename Space>
struct Insertion {
    static constexpr int kDimension = Space::kDimension;
    /// As the number of a child: none.
    static constexpr int kNoChild = kPartCount<kDimension>;

    using Object = typename Space::Object;
    using Node = typename Space::Node;
    using Of = Access<Space>;
    using Box = Extent<kDimension>;

    /// Entry at the root: 0, or -1 for an object that the tree cannot take.
    static int Insert(Node &root, Object *object) {
        if (!object)
            return -1;
        if (Space::IsFresh(root))
            return InsertAsFirst(root, object);
        Box const box = Of::CurrentBox(*object);
        if (!IsFinite(box) || !GrowToContain(root, box))
            return -1;
        Descend(root, *object, box);
        return 0;
    }

    /// The region is made anew around the box, and the object goes into this pool. 0, or -1 without a change for an
    /// object that cannot be taken.
    static int InsertAsFirst(Node &node, Object *object) {
        if (!object || Of::ParentOf(node))
            return -1;
        Box const box = Of::CurrentBox(*object);
        if (!IsFinite(box))
            return -1;
        Of::StockOf(node).Reserve(Of::MemoryOf(node), 1);
        std::array<double, kDimension> const size = Space::InitialSizeOf(Of::InfoOf(node));
        Box region;
        for (int a = 0; a < kDimension; ++a) {
            double const half = size[a] * 0.5;
            region.min[a] = box.min[a] - half;
            region.max[a] = box.max[a] + half;
        }
        Of::SetRegion(node, region);
        Of::StockOf(node).Recode(region, Of::BoxOf);
        Space::MarkUsed(node);
        Place(Way<Space>(node), *object, box, Watch<Space>::Start(node, *object));
        return 0;
    }

    /// For a box that lies in the region of the node.
    static int InsertAt(Node &node, Object *object, Box const &box) {
        if (!object)
            return -1;
        DistrustUnlessAt(*object, box);
        Descend(node, *object, box);
        return 0;
    }

    static int InsertWithMBR(Node &node, Object *object, Box const &box) {
        if (!object || !IsFinite(box) || !GrowToContain(node, box))
            return -1;
        return InsertAt(node, object, box);
    }

    /// Moves each object of the pool, from last to first, into the first child that contains it.
    static void Distribute(Node &node) {
        Family<Space> *const family = Of::FamilyOf(node);
        if (!family)
            return;
        Stock<Space> &stock = Of::StockOf(node);
        for (std::size_t i = 0; i < stock.End(); ++i)
            Prefetch(stock.At(i));
        std::size_t counts[kNoChild + 1] = {};
        for (std::size_t i = 0; i < stock.End(); ++i) {
            if (Object *const object = stock.At(i))
                ++counts[PartContaining(family->region, Of::CurrentBox(*object))];
        }
        for (int i = 0; i < kNoChild; ++i) {
            if (counts[i] != 0)
                family->stocks[i].Reserve(Of::MemoryOf(node), counts[i]);
        }
        family->bands = {};
        stock.KeepIf([&](Object *object, Code<kDimension> code) {
            Box const box = Of::CurrentBox(*object);
            bool const isTrusted = code != kUntrustedCode;
            int const part = PartContaining(family->region, box);
            // A class of its own may answer another box now than when room was made for it.
            if (part == kNoChild || !family->stocks[part].HasRoom()) {
                AddToBands(*family, box, isTrusted);
                return true;
            }
            Way<Space> way(node);
            way.Enter(part);
            Place(way, *object, box, isTrusted);
            return false;
        });
        stock.Shrink(Of::MemoryOf(node));
    }

    /// The part of the tree under a new node takes everything that stood here.
    static void Extend(Node &node, Spot<kDimension> const &point) {
        Box region = Of::RegionOf(node);
        int const corner = DoubleRegion(region, point);
        Family<Space> *const family = NewFamily(node, region);
        Box const before = Of::RegionOf(node);
        Of::SetRegion(node, region);
        Family<Space> *const former = Of::FamilyOf(node);
        Of::SetFamily(node, family);
        Node &heir = family->Nodes()[corner];
        Of::StockOf(heir).Swap(Of::StockOf(node));
        if (former) {
            Of::SetFamily(heir, former);
            for (int i = 0; i < kNoChild; ++i)
                Of::ParentOf(former->Nodes()[i]) = &heir;
        }
        if (!IsSame(Of::RegionOf(heir), before))
            Of::StockOf(heir).Recode(Of::RegionOf(heir), Of::BoxOf);
    }

private:
    /// A leaf whose objects are nearer to the new one than its diagonal divided by this does not split for them.
    static constexpr double kClusterDivisor = 20.0;

    /// An object that comes under another box than its own is not trusted.
    static void DistrustUnlessAt(Object &object, Box const &box) {
        if (IsSame(Of::CurrentBox(object), box))
            return;
        Watch<Space>::Leave(object);
        Of::IsUnwatched(object) = true;
    }

    static bool HasRoom(Stock<Space> const &stock, int capacity) { return static_cast<int>(stock.Count()) < capacity; }

    /// A leaf with room grows softly; a full or inner node doubles. The region of a child is a part of its parent's and
    /// does not grow.
    static bool GrowToContain(Node &node, Box const &box) {
        if (Of::ParentOf(node))
            return Contains(Of::RegionOf(node), box);
        for (Box region = Of::RegionOf(node); !Contains(region, box); region = Of::RegionOf(node)) {
            if (!Of::FamilyOf(node) && HasRoom(Of::StockOf(node), Of::InfoOf(node).capacity)) {
                if (!ExtendRegion(region, box))
                    return false;
                Of::SetRegion(node, region);
                Of::StockOf(node).Recode(region, Of::BoxOf);
                return true;
            }
            if (!CanDouble(region))
                return false;
            if (!Contains(region, LowerCorner(box)))
                Extend(node, LowerCorner(box));
            if (!Contains(Of::RegionOf(node), UpperCorner(box)))
                Extend(node, UpperCorner(box));
        }
        return true;
    }

    /// Puts an object where its box leads to below a node.
    static void Descend(Node &node, Object &object, Box const &box) {
        int const capacity = Of::InfoOf(node).capacity;
        Way<Space> way(node);
        way.GoToward(box);
        while (!way.family && !HasRoom(way.ToStock(), capacity) && SplitFor(way, box)) {
        }
        way.ToStock().Reserve(Of::MemoryOf(node), 1);
        Place(way, object, box, Watch<Space>::Start(node, object));
    }

    /// Room has been made for the object.
    static void Place(Way<Space> const &way, Object &object, Box const &box, bool isTrusted) noexcept {
        way.ToStock().Append(&object, isTrusted ? Frame<kDimension>(way.Region()).Encode(box) : kUntrustedCode);
        if (way.family)
            AddToBands(*way.family, box, isTrusted);
    }

    static void AddToBands(Family<Space> &family, Box const &box, bool isTrusted) {
        if (isTrusted)
            family.bands.Add(box, family.region);
        else
            family.bands.HoldEverything();
    }

    /// Splits a full leaf if that is of use for its objects or for the box: whether the way goes on into a child, which
    /// it has entered then. A split that moves nothing is undone.
    static bool SplitFor(Way<Space> &way, Box const &box) {
        Stock<Space> &stock = way.ToStock();
        Node &node = way.ToNode();
        Box const region = way.Region();
        if (!CanSplit(stock, region, box))
            return false;
        std::size_t const before = stock.Count();
        Split(node, region);
        way.family = Of::FamilyOf(node);
        int const child = PartContaining(region, box);
        if (child != kNoChild) {
            way.Enter(child);
            return true;
        }
        if (stock.Count() == before) {
            Removal<Space>::DeleteChild(node);
            way.family = nullptr;
        }
        return false;
    }

    static bool CanSplit(Stock<Space> &stock, Box const &region, Box const &box) {
        if (IsIndivisible(region))
            return false;
        int const own = PartContaining(region, box);
        // Fewer than two objects set no part of their own; then distance alone decides.
        int common = own;
        if (stock.KnownCluster())
            common = stock.KnownCluster()->part;
        else if (!IsAllInOnePart(stock, region, common))
            return true;
        if (own != common || (own != kNoChild && IsMemberFarFrom(stock, region, box)))
            return true;
        NoteCluster(stock, own, box);
        return false;
    }

    static bool IsAllInOnePart(Stock<Space> const &stock, Box const &region, int &part) {
        if (stock.Count() <= 1)
            return true;
        bool isFirst = true;
        for (std::size_t i = 0; i < stock.End(); ++i) {
            if (!stock.At(i))
                continue;
            int const other = PartContaining(region, Of::CurrentBox(*stock.At(i)));
            if (isFirst)
                part = other;
            else if (other != part)
                return false;
            isFirst = false;
        }
        return true;
    }

    static bool IsMemberFarFrom(Stock<Space> const &stock, Box const &region, Box const &box) {
        double const clusterSize = Diagonal(region) / kClusterDivisor;
        Spot<kDimension> const centre = CentreOf(box);
        if (stock.KnownCluster() && stock.KnownCluster()->FarthestFrom(centre) < clusterSize)
            return false;
        for (std::size_t i = 0; i < stock.End(); ++i) {
            if (!stock.At(i))
                continue;
            Spot<kDimension> apart = CentreOf(Of::CurrentBox(*stock.At(i)));
            for (int a = 0; a < kDimension; ++a)
                apart[a] -= centre[a];
            if (Length(apart) >= clusterSize)
                return true;
        }
        return false;
    }

    /// The box joins the objects of this overfull leaf, all of them in one part.
    static void NoteCluster(Stock<Space> &stock, int part, Box const &box) {
        if (stock.HasUntrusted() || stock.Count() < 2)
            return;
        if (Cluster<kDimension> *const known = stock.KnownCluster())
            return known->Add(CentreOf(box));
        Cluster<kDimension> cluster(part, CentreOf(box));
        for (std::size_t i = 0; i < stock.End(); ++i) {
            if (stock.At(i))
                cluster.Add(CentreOf(Of::BoxOf(*stock.At(i))));
        }
        stock.Remember(cluster);
    }

    /// Gives a leaf with this region children, and them its objects.
    static void Split(Node &node, Box const &region) {
        assert(!Of::FamilyOf(node));
        Of::SetFamily(node, NewFamily(node, region));
        try {
            Distribute(node);
        } catch (...) {
            Removal<Space>::DeleteChild(node);
            throw;
        }
    }

    /// Children for the node, which does not know them yet.
    static Family<Space> *NewFamily(Node &node, Box const &region) {
        void *const memory = Memory<Space>::TakeFamily(Of::MemoryOf(node));
        if (!memory)
            throw std::bad_alloc();
        auto *const family = ::new (memory) Family<Space>(region);
        for (int i = 0; i < kNoChild; ++i)
            Of::MakeChild(*family, i, node);
        return family;
    }
};

} // namespace zvi::lib::spatial
