#include "zvi/spatial/MQuadNode.h"

#include "zvi/base/SaturatedInt.h"
#include "zvi/host/CDC.h"
#include "zvi/spatial/MQuadTree.h"
#include "zvi/spatial/QuadCodeDetail.h"
#include "zvi/spatial/QuadFamilyDetail.h"
#include "zvi/spatial/QuadPoolIndexDetail.h"
#include "zvi/spatial/QuadPrefetchDetail.h"
#include "zvi/spatial/QuadrantFinderDetail.h"

#include <bit>

namespace zvi::lib {

/// A query under way. The bounds are those that `Intersect4QT` compares with, computed once.
struct MQuadNode::Hits {
    Hits(MQuadMBR2D const &query, MList<MQuadObj *> &found, MArray<int> const *wantedTypes, int strict)
        : list(found), types(wantedTypes) {
        double const t = strict == 0 ? MQuadMBR2D::kTouchTolerance : -MQuadMBR2D::kLeastOverlap;
        bounds = {query.minX - t, query.minY - t, t + query.maxX, t + query.maxY};
    }

    bool Misses(MQuadMBR2D const &mbr) const {
        bool const outside =
            (bounds.minX > mbr.maxX) | (bounds.minY > mbr.maxY) | (mbr.minX > bounds.maxX) | (mbr.minY > bounds.maxY);
        return outside;
    }

    bool Misses(spatial::QuadBands const &bands) const {
        bool const missesUpright = (bounds.minX > bands.maxX) | (bands.minX > bounds.maxX);
        bool const missesLevel = (bounds.minY > bands.maxY) | (bands.minY > bounds.maxY);
        return missesUpright & missesLevel;
    }

    /// A type beyond the array is not wanted.
    bool Wants(MQuadObj *object) const {
        if (!types)
            return true;
        int const type = object->GetType();
        return type >= 0 && static_cast<std::size_t>(type) < types->Size() &&
               (*types)[static_cast<std::size_t>(type)] != 0;
    }

    /// Adds the object if it is wanted and meets the query.
    void Try(MQuadObj *object, bool surelyMeets) {
        if (!Wants(object) || (!surelyMeets && Misses(object->CurrentRectangle())))
            return;
        list.AddTail(object);
        ++count;
    }

    MList<MQuadObj *> &list;
    MArray<int> const *types;
    MQuadMBR2D bounds;
    int count = 0;
};

/// A query's way down. The edges of the quadrants are worked out and the children are told by their families, so that
/// the way does not wait for the nodes.
struct MQuadNode::Way {
    explicit Way(MQuadNode const &start)
        : node(&start), children(start.m_children[0]), isQuartered(start.m_quartered != nullptr),
          finder(start.QuarteredRegion()) {}

    void Enter(unsigned int child) {
        spatial::QuadFamily const &family = spatial::QuadFamily::Of(children);
        node = children + child;
        children = family.children[child];
        isQuartered = family.isQuartered[child];
        finder.Enter(child);
        if (isQuartered) [[unlikely]]
            finder = spatial::QuadrantFinder(*node->m_quartered);
    }

    unsigned int ChildrenMet(Hits const &hits) const;

    MQuadNode const *node;
    MQuadNode const *children;
    bool isQuartered;
    spatial::QuadrantFinder finder;
};

/// A bit for each child whose region the query does not miss. The mid lines tell them, without touching the children
/// and without branches, except where the children's outer edges are not those of the region.
inline unsigned int MQuadNode::Way::ChildrenMet(Hits const &hits) const {
    constexpr unsigned int kLowX = 0b0101;
    constexpr unsigned int kHighX = 0b1010;
    constexpr unsigned int kLowY = 0b0011;
    constexpr unsigned int kHighY = 0b1100;
    if (!children)
        return 0;
    double const midX = finder.MidX();
    double const midY = finder.MidY();
    unsigned int const missed = (hits.bounds.minX > midX) * kLowX | (midX > hits.bounds.maxX) * kHighX |
                                (hits.bounds.minY > midY) * kLowY | (midY > hits.bounds.maxY) * kHighY;
    unsigned int met = ~missed & (kLowX | kHighX);
    for (int i = 0; isQuartered && i < kChildCount; ++i) {
        if (hits.Misses(children[i].m_region))
            met &= ~(1U << i);
    }
    return met;
}

inline void MQuadNode::AddHitsOfPool(Hits &hits) const {
    if (hits.Misses(m_pool.m_bands))
        return;
    auto const misses = [&](MQuadMBR2D const &box) { return hits.Misses(box); };
    spatial::QuadPoolIndex const *const index = m_pool.m_index.get();
    std::size_t const count = m_pool.m_count;
    if (count == 0 || (index && index->IsMissed(misses)))
        return;
    spatial::QuadCode const query = spatial::QuadFrame(m_region).EncodeQuery(hits.bounds);
    auto const visit = [&](MQuadObj *object, spatial::QuadCode code) {
        hits.Try(object, spatial::QuadFrame::SurelyMeets(code, query));
    };
    if (index) {
        index->Walk(query, misses, visit);
        return;
    }
    spatial::QuadCode const *const codes = m_pool.m_codes;
    MQuadObj *const *const objects = m_pool.Objects();
    for (std::size_t i = spatial::NextToMeet(codes, 0, count, query); i < count;
         i = spatial::NextToMeet(codes, i + 1, count, query))
        visit(objects[i], codes[i]);
}

int MQuadNode::GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, int strict) {
    Hits hits(query, list, nullptr, strict);
    if (!hits.Misses(m_region))
        CollectHits(Way(*this), hits);
    return hits.count;
}

int MQuadNode::GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, MArray<int> const &types,
                                   int strict) {
    Hits hits(query, list, &types, strict);
    if (!hits.Misses(m_region))
        CollectHits(Way(*this), hits);
    return hits.count;
}

/// For a query that does not miss the region of the way's node. As long as the query meets one child alone, the way
/// goes on before the pools are looked at, so that the nodes on it are fetched all at once.
void MQuadNode::CollectHits(Way way, Hits &hits) {
    constexpr std::size_t kLongestPath = 16;
    MQuadNode const *path[kLongestPath] = {way.node};
    std::size_t length = 1;
    unsigned int met = way.ChildrenMet(hits);
    while (std::has_single_bit(met) && length < kLongestPath) {
        way.Enter(static_cast<unsigned int>(std::countr_zero(met)));
        spatial::PrefetchAll(way.node);
        path[length++] = way.node;
        met = way.ChildrenMet(hits);
    }
    for (unsigned int rest = met; rest != 0; rest &= rest - 1)
        spatial::PrefetchAll(way.children + std::countr_zero(rest));
    for (std::size_t i = 0; i < length; ++i)
        path[i]->AddHitsOfPool(hits);
    for (; met != 0; met &= met - 1) {
        Way branch = way;
        branch.Enter(static_cast<unsigned int>(std::countr_zero(met)));
        CollectHits(branch, hits);
    }
}

MQuadNode *MQuadNode::FindNodeContainingPoint(MQuadPoint2D const &point) {
    if (m_region.DoesContain4QT(point) == 0)
        return nullptr;
    MQuadNode *node = this;
    while (!node->IsLeaf()) {
        int const index = node->GetChildNodeIndexContainingPoint(point);
        if (index == kChildCount)
            return nullptr;
        node = node->m_children[index];
    }
    return node;
}

void MQuadNode::Draw(CDC *dc) {
    if (!dc)
        return;
    if (!IsLeaf()) {
        for (MQuadNode *child : m_children)
            child->Draw(dc);
        return;
    }
    void *const brush = dc->SelectHollowBrush();
    dc->Rectangle(base::SaturatedInt(m_region.minX), base::SaturatedInt(m_region.minY),
                  base::SaturatedInt(m_region.maxX), base::SaturatedInt(m_region.maxY));
    dc->SelectBrush(brush);
}

/// Whether an object that comes under this node is trusted from now on. One that is in a tree already, was changed in
/// one, or has a class of its own is not: its code could grow stale unseen.
bool MQuadNode::StartWatching(MQuadObj *object) {
    if (object->m_home)
        object->LeaveWatch();
    if (object->m_unwatched || !object->IsOfThisClass() || object->GetStatus() != spatial::kLiveStatus)
        return false;
    object->m_home = this;
    return true;
}

/// The node whose pool holds a watched object, with its place there. Its rectangle leads to it; the search of the whole
/// subtree is for rectangles on a border that doubling moved by a rounding.
MQuadNode *MQuadNode::FindWatched(MQuadObj const *object, int &index) {
    MQuadNode *node = DescendToward(object->m_mbr);
    for (; node; node = node == this ? nullptr : node->m_parent) {
        index = node->m_pool.FindTrusted(object, spatial::QuadFrame(node->m_region).Encode(object->m_mbr));
        if (index >= 0)
            return node;
    }
    return FindAnywhere(object, index);
}

MQuadNode *MQuadNode::FindAnywhere(MQuadObj const *object, int &index) {
    index = m_pool.FindFromLast(object);
    if (index >= 0)
        return this;
    if (IsLeaf())
        return nullptr;
    for (MQuadNode *child : m_children) {
        if (MQuadNode *const node = child->FindAnywhere(object, index))
            return node;
    }
    return nullptr;
}

/// Takes an object that is about to be destroyed out of the subtree, wherever it is.
void MQuadNode::Purge(MQuadObj const *object) {
    int index = -1;
    while (MQuadNode *const node = FindAnywhere(object, index))
        node->RemoveFromPool(index);
}

void MQuadNode::StopWatching(MQuadObj *object) {
    int index = -1;
    if (MQuadNode *const node = FindWatched(object, index))
        node->m_pool.Distrust(static_cast<std::size_t>(index));
    object->m_home = nullptr;
    object->m_unwatched = true;
}

void MQuadNode::StopWatchingAll() {
    for (std::uint32_t i = 0; i < m_pool.m_count; ++i) {
        if (m_pool.m_codes[i] != spatial::kUntrustedCode)
            m_pool.Objects()[i]->m_home = nullptr;
    }
    if (IsLeaf())
        return;
    for (MQuadNode *child : m_children)
        child->StopWatchingAll();
}

} // namespace zvi::lib
