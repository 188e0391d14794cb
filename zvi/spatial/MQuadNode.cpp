#include "zvi/spatial/MQuadNode.h"

#include "zvi/spatial/MQuadTree.h"
#include "zvi/spatial/QuadClusterDetail.h"
#include "zvi/spatial/QuadCodeDetail.h"
#include "zvi/spatial/QuadFamilyDetail.h"
#include "zvi/spatial/QuadMemoryDetail.h"
#include "zvi/spatial/QuadPrefetchDetail.h"
#include "zvi/spatial/QuadrantFinderDetail.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <memory>
#include <new>
#include <utility>

namespace zvi::lib {

namespace {

/// A leaf whose objects are nearer to the new one than its diagonal divided by this does not split for them.
constexpr double kClusterDivisor = 20.0;

/// Margin beside an object for which a leaf's region grows, in widths of the region.
constexpr double kGrowthMargin = 0.25;

/// Rounds after which a region that still does not contain the rectangle is taken as unable to: twice what the whole
/// range of `double` needs by doubling.
constexpr int kGrowthRounds = 4200;

bool IsFinite(MQuadMBR2D const &mbr) {
    return std::isfinite(mbr.minX) && std::isfinite(mbr.minY) && std::isfinite(mbr.maxX) && std::isfinite(mbr.maxY);
}

bool IsPoint(MQuadMBR2D const &region) {
    return region.minX == region.maxX && region.minY == region.maxY;
}

bool IsSame(MQuadMBR2D const &a, MQuadMBR2D const &b) {
    return a.minX == b.minX && a.minY == b.minY && a.maxX == b.maxX && a.maxY == b.maxY;
}

/// First quadrant that contains the rectangle, half-open; 4 when none does. The same answer as four tests against the
/// regions of `GetSplitRegion`.
int QuadrantContaining(MQuadMBR2D const &mbr, MQuadMBR2D const &region) {
    double const midX = (region.minX + region.maxX) * 0.5;
    double const midY = (region.minY + region.maxY) * 0.5;
    bool const lowX = mbr.minX >= region.minX && mbr.maxX < midX;
    bool const highX = mbr.minX >= midX && mbr.maxX < region.maxX;
    bool const lowY = mbr.minY >= region.minY && mbr.maxY < midY;
    bool const highY = mbr.minY >= midY && mbr.maxY < region.maxY;
    if (!((lowX | highX) & (lowY | highY)))
        return MQuadNode::kChildCount;
    return static_cast<int>(!lowX) + 2 * static_cast<int>(!lowY);
}

MQuadPoint2D LowerCorner(MQuadMBR2D const &mbr) {
    return {mbr.minX, mbr.minY};
}

MQuadPoint2D UpperCorner(MQuadMBR2D const &mbr) {
    return {mbr.maxX, mbr.maxY};
}

MQuadPoint2D Centre(MQuadMBR2D const &mbr) {
    return {(mbr.minX + mbr.maxX) * 0.5, (mbr.minY + mbr.maxY) * 0.5};
}

double Length(double x, double y) {
    return std::sqrt(x * x + y * y);
}

/// A region that its mid lines no longer divide in either direction; without this test, clusters at the limit of the
/// numbers would split for ever.
bool IsIndivisible(MQuadMBR2D const &region) {
    MQuadPoint2D const mid = Centre(region);
    bool const inX = region.minX < mid.x && mid.x < region.maxX;
    bool const inY = region.minY < mid.y && mid.y < region.maxY;
    return !inX && !inY;
}

void GrowDown(MQuadMBR2D &region, MQuadMBR2D const &mbr, double margin) {
    if (region.minX > mbr.minX)
        region.minX = mbr.minX - margin;
    if (region.minY > mbr.minY)
        region.minY = mbr.minY - margin;
    double const width = region.maxX - region.minX;
    double const height = region.maxY - region.minY;
    if (width > height)
        region.minY -= width - height;
    else
        region.minX -= height - width;
}

void GrowUp(MQuadMBR2D &region, MQuadMBR2D const &mbr, double margin) {
    if (mbr.maxX >= region.maxX)
        region.maxX = margin + mbr.maxX;
    if (mbr.maxY >= region.maxY)
        region.maxY = margin + mbr.maxY;
    double const width = region.maxX - region.minX;
    double const height = region.maxY - region.minY;
    if (width > height)
        region.maxY += width - height;
    else
        region.maxX += height - width;
}

constexpr std::align_val_t kNodeAlignment{alignof(MQuadNode)};

/// The settings of a node without a tree.
constexpr MQuadNodeInfo kDefaultInfo;

} // namespace

MQuadNodeInfo const &MQuadNode::GetQuadNodeInfo() const {
    return m_tree ? m_tree->GetInfo() : kDefaultInfo;
}

inline bool MQuadNode::HasRoom() const {
    return m_pool.GetCount() < (m_tree ? m_tree->GetInfo() : kDefaultInfo).capacity;
}

inline void MQuadNode::Place(MQuadObj *object, bool isTrusted) {
    spatial::QuadCode const code =
        isTrusted ? spatial::QuadFrame(m_region).Encode(object->m_mbr) : spatial::kUntrustedCode;
    m_pool.Append(object, code);
    if (IsLeaf())
        return;
    m_pool.AddToBands(code, object->m_mbr, QuarteredRegion());
    m_pool.IndexFor(m_region);
}

MQuadNode::MQuadNode(MQuadTree *tree) : m_pool(tree ? tree->m_memory : nullptr), m_tree(tree) {
    InitClassMembers();
}

MQuadNode::~MQuadNode() {
    if (!m_parent)
        StopWatchingAll();
    DeleteChild();
}

void MQuadNode::InitClassMembers() {
    SetChildren(nullptr);
    m_region = {};
    m_parent = nullptr;
    m_pool.m_bands = spatial::QuadBands::Everything();
    m_pool.Recode(m_region);
}

int MQuadNode::Insert(MQuadObj *object) {
    if (!object)
        return -1;
    MQuadMBR2D const mbr = object->CurrentRectangle();
    if (!IsFinite(mbr))
        return -1;
    if (IsPoint(m_region)) {
        MQuadNodeInfo const &info = GetQuadNodeInfo();
        double const halfWidth = info.width * 0.5;
        double const halfHeight = info.height * 0.5;
        m_region = {mbr.minX - halfWidth, mbr.minY - halfHeight, mbr.maxX + halfWidth, mbr.maxY + halfHeight};
        m_pool.Recode(m_region);
        bool const isTrusted = StartWatching(object);
        try {
            Place(object, isTrusted);
        } catch (...) {
            object->LeaveWatch();
            throw;
        }
        return 0;
    }
    if (mbr.IsContained4QT(m_region) == 0 && !GrowFromRoot(mbr))
        return -1;
    Descend(object, mbr, StartWatching(object));
    return 0;
}

int MQuadNode::Insert(MQuadObj *object, MQuadMBR2D const &mbr) {
    if (!object)
        return -1;
    Descend(object, mbr, StartWatchingAt(*this, object, mbr));
    return 0;
}

int MQuadNode::InsertWithMBR(MQuadObj *object, MQuadMBR2D const &mbr) {
    if (!object || !IsFinite(mbr) || !GrowToContain(mbr))
        return -1;
    Descend(object, mbr, StartWatchingAt(*this, object, mbr));
    return 0;
}

/// An object that comes under another rectangle than its own is not trusted.
bool MQuadNode::StartWatchingAt(MQuadNode &node, MQuadObj *object, MQuadMBR2D const &mbr) {
    if (!IsSame(object->CurrentRectangle(), mbr)) {
        object->LeaveWatch();
        object->m_unwatched = true;
    }
    return node.StartWatching(object);
}

/// A leaf with room grows softly; a full or inner node doubles.
bool MQuadNode::GrowFromRoot(MQuadMBR2D const &mbr) {
    if (IsLeaf() && HasRoom())
        return ExtendRegion(mbr);
    if (!CanDouble())
        return false;
    Extend(mbr);
    return GrowToContain(mbr);
}

bool MQuadNode::GrowToContain(MQuadMBR2D const &mbr) {
    while (mbr.IsContained4QT(m_region) == 0) {
        if (IsLeaf() && HasRoom())
            return ExtendRegion(mbr);
        if (!CanDouble())
            return false;
        Extend(mbr);
    }
    return true;
}

/// An object that could not be placed does not report to this node.
void MQuadNode::Descend(MQuadObj *object, MQuadMBR2D const &mbr, bool isTrusted) {
    try {
        MQuadNode *node = DescendToward(mbr);
        for (MQuadNode *next = node; next && next->IsLeaf() && !next->HasRoom();) {
            node = next;
            next = node->SplitFor(mbr);
            if (next)
                node = next;
        }
        node->Place(object, isTrusted);
    } catch (...) {
        object->LeaveWatch();
        throw;
    }
}

/// The leaf, or the inner node none of whose children contains the rectangle. The edges of the quadrants are worked out
/// on the way down and the children are told by their families, so that the way does not wait for the nodes.
MQuadNode *MQuadNode::DescendToward(MQuadMBR2D const &mbr) {
    MQuadNode *node = this;
    MQuadNode *children = m_children[0];
    spatial::QuadrantFinder finder(QuarteredRegion());
    while (children) {
        int const index = finder.Enter(mbr);
        if (index == kChildCount)
            return node;
        node = children + index;
        spatial::Prefetch(node);
        spatial::Prefetch(&node->m_pool.m_codes);
        spatial::QuadFamily const &family = spatial::QuadFamily::Of(children);
        children = family.children[index];
        if (family.isQuartered[index]) [[unlikely]]
            finder = spatial::QuadrantFinder(*node->m_quartered);
    }
    return node;
}

/// Splits a full leaf if that is of use for its objects or for the rectangle. A split that moves nothing is undone.
MQuadNode *MQuadNode::SplitFor(MQuadMBR2D const &mbr) {
    MQuadMBR2D regions[kChildCount];
    GetSplitRegion(regions);
    if (!CanSplit(mbr, regions))
        return nullptr;
    int const countBefore = m_pool.GetCount();
    Split(regions);
    int const index = GetChildNodeIndexContainingMBR(mbr);
    if (index != kChildCount)
        return m_children[index];
    if (m_pool.GetCount() == countBefore)
        DeleteChild();
    return nullptr;
}

bool MQuadNode::CanSplit(MQuadMBR2D const &mbr, MQuadMBR2D const *regions) {
    assert(IsLeaf());
    if (IsIndivisible(m_region))
        return false;
    int const own = GetChildNodeIndexContainingMBR(mbr, regions);
    // Fewer than two objects set no quadrant of their own; then distance alone decides.
    int common = own;
    if (m_pool.m_cluster)
        common = m_pool.m_cluster->quadrant;
    else if (!IsAllSameQuad(regions, common))
        return true;
    if (own != common || (own != kChildCount && IsMemberFarFrom(mbr)))
        return true;
    NoteCluster(own, mbr);
    return false;
}

/// The rectangle joins the objects of this overfull leaf, all of them in one quadrant.
void MQuadNode::NoteCluster(int quadrant, MQuadMBR2D const &mbr) {
    if (m_pool.m_hasUntrusted || m_pool.GetCount() < 2)
        return;
    if (!m_pool.m_cluster) {
        MQuadPoint2D const centre = Centre(mbr);
        m_pool.m_cluster = std::make_unique<spatial::QuadCluster>(
            spatial::QuadCluster{quadrant, {centre.x, centre.y, centre.x, centre.y}});
        for (std::uint32_t i = 0; i < m_pool.m_count; ++i)
            m_pool.m_cluster->Add(Centre(m_pool.Objects()[i]->m_mbr));
    }
    m_pool.m_cluster->Add(Centre(mbr));
}

bool MQuadNode::IsAllSameQuad(MQuadMBR2D const *regions, int &index) const {
    std::uint32_t const count = m_pool.m_count;
    if (count <= 1)
        return true;
    MQuadObj *const *const objects = m_pool.Objects();
    index = GetChildNodeIndexContainingMBR(objects[0]->CurrentRectangle(), regions);
    for (std::uint32_t i = 1; i < count; ++i) {
        if (GetChildNodeIndexContainingMBR(objects[i]->CurrentRectangle(), regions) != index)
            return false;
    }
    return true;
}

bool MQuadNode::IsMemberFarFrom(MQuadMBR2D const &mbr) const {
    double const diagonal = Length(m_region.maxX - m_region.minX, m_region.maxY - m_region.minY);
    double const clusterSize = diagonal / kClusterDivisor;
    MQuadPoint2D const centre = Centre(mbr);
    if (m_pool.m_cluster && m_pool.m_cluster->FarthestFrom(centre) < clusterSize)
        return false;
    for (std::uint32_t i = 0; i < m_pool.m_count; ++i) {
        MQuadPoint2D const other = Centre(m_pool.Objects()[i]->CurrentRectangle());
        if (Length(other.x - centre.x, other.y - centre.y) >= clusterSize)
            return true;
    }
    return false;
}

void MQuadNode::Split(MQuadMBR2D const *regions) {
    assert(IsLeaf());
    MakeChildren(regions);
    Distribute();
}

/// The former children, if any, have gone to another node.
void MQuadNode::MakeChildren(MQuadMBR2D const *regions) {
    void *const memory = m_tree ? m_tree->m_memory->TakeFamily() : ::operator new(spatial::kFamilySize, kNodeAlignment);
    MQuadNode *const nodes = (::new (memory) spatial::QuadFamily)->Nodes();
    for (int i = 0; i < kChildCount; ++i) {
        MQuadNode *const child = ::new (static_cast<void *>(nodes + i)) MQuadNode(m_tree);
        child->m_parent = this;
        child->m_region = regions[i];
    }
    SetChildren(nodes);
}

void MQuadNode::DeleteChild() {
    if (IsLeaf())
        return;
    MQuadNode *const nodes = m_children[0];
    std::destroy_n(nodes, kChildCount);
    spatial::QuadFamily *const family = &spatial::QuadFamily::Of(nodes);
    if (!m_tree)
        ::operator delete(family, kNodeAlignment);
    else
        m_tree->m_memory->GiveBackFamily(family);
    SetQuartered(nullptr);
    SetChildren(nullptr);
    m_pool.m_bands = spatial::QuadBands::Everything();
}

/// The four nodes from `first` on, or none for null, become the children.
void MQuadNode::SetChildren(MQuadNode *first) {
    for (int i = 0; i < kChildCount; ++i)
        m_children[i] = first ? first + i : nullptr;
    if (spatial::QuadFamily *const family = Family())
        family->children[this - m_parent->m_children[0]] = first;
}

void MQuadNode::SetQuartered(MQuadMBR2D const *quartered) {
    delete std::exchange(m_quartered, quartered);
    if (spatial::QuadFamily *const family = Family())
        family->isQuartered[this - m_parent->m_children[0]] = quartered != nullptr;
}

/// The family of this node; null for a root and for a copy, which has a parent but is none of its children.
spatial::QuadFamily *MQuadNode::Family() const {
    bool const isChild = m_parent && std::find(m_parent->m_children, std::end(m_parent->m_children), this) !=
                                         std::end(m_parent->m_children);
    return isChild ? &spatial::QuadFamily::Of(m_parent->m_children[0]) : nullptr;
}

void MQuadNode::Distribute() {
    if (IsLeaf())
        return;
    std::uint32_t const count = m_pool.m_count;
    MQuadObj **const objects = m_pool.Objects();
    spatial::QuadCode *const codes = m_pool.m_codes;
    std::uint32_t firstKept = count;
    m_pool.DropIndex();
    for (MQuadNode *child : m_children)
        child->m_pool.Reserve(count / 2);
    for (std::uint32_t i = 0; i < count; ++i)
        spatial::Prefetch(&objects[i]->m_mbr);
    for (std::uint32_t i = count; i-- > 0;) {
        int const index = GetChildNodeIndexContainingMBR(objects[i]->CurrentRectangle());
        if (index != kChildCount) {
            m_children[index]->Place(objects[i], codes[i] != spatial::kUntrustedCode);
        } else {
            --firstKept;
            objects[firstKept] = objects[i];
            codes[firstKept] = codes[i];
        }
    }
    m_pool.KeepFrom(firstKept);
    m_pool.BandsFor(QuarteredRegion());
}

void MQuadNode::GetSplitRegion(MQuadMBR2D *const regions) const {
    MQuadPoint2D const mid = Centre(m_region);
    regions[0] = {m_region.minX, m_region.minY, mid.x, mid.y};
    regions[1] = {mid.x, m_region.minY, m_region.maxX, mid.y};
    regions[2] = {m_region.minX, mid.y, mid.x, m_region.maxY};
    regions[3] = {mid.x, mid.y, m_region.maxX, m_region.maxY};
}

bool MQuadNode::ExtendRegion(MQuadMBR2D const &mbr) {
    int round = 0;
    for (; mbr.IsContained4QT(m_region) == 0 && round < kGrowthRounds; ++round) {
        double const margin = (m_region.maxX - m_region.minX) * kGrowthMargin;
        if (m_region.DoesContain4QT(LowerCorner(mbr)) == 0)
            GrowDown(m_region, mbr, margin);
        if (m_region.DoesContain4QT(UpperCorner(mbr)) == 0)
            GrowUp(m_region, mbr, margin);
    }
    m_pool.Recode(m_region);
    return round < kGrowthRounds;
}

/// A region without width or height never grows by doubling, and one beyond the numbers is no region.
bool MQuadNode::CanDouble() const {
    double const width = m_region.maxX - m_region.minX;
    double const height = m_region.maxY - m_region.minY;
    return width > 0.0 && height > 0.0 && std::isfinite(width) && std::isfinite(height);
}

void MQuadNode::Extend(MQuadMBR2D const &mbr) {
    if (m_region.DoesContain4QT(LowerCorner(mbr)) == 0)
        Extend(LowerCorner(mbr));
    if (m_region.DoesContain4QT(UpperCorner(mbr)) == 0)
        Extend(UpperCorner(mbr));
}

void MQuadNode::Extend(MQuadPoint2D const &point) {
    MQuadMBR2D const oldQuartered = QuarteredRegion();
    SetQuartered(nullptr);
    int corner = 0;
    ExtendQuadTreeRegion(point, corner);
    MQuadMBR2D regions[kChildCount];
    GetSplitRegion(regions);
    MQuadNode *const oldChildren = m_children[0];
    MakeChildren(regions);
    MQuadNode &heir = *m_children[corner];
    if (oldChildren)
        heir.AdoptChildren(oldChildren, oldQuartered);
    heir.m_pool.Swap(m_pool);
    m_pool.m_bands = spatial::QuadBands::Empty();
    heir.m_pool.Recode(heir.m_region);
}

void MQuadNode::AdoptChildren(MQuadNode *first, MQuadMBR2D const &quartered) {
    SetChildren(first);
    for (MQuadNode *child : m_children)
        child->m_parent = this;
    if (!IsSame(quartered, m_region))
        SetQuartered(new MQuadMBR2D(quartered));
}

void MQuadNode::ExtendQuadTreeRegion(MQuadPoint2D const &point, int &corner) {
    double const width = m_region.maxX - m_region.minX;
    double const height = m_region.maxY - m_region.minY;
    bool const towardLowX = point.x < m_region.minX;
    bool const towardHighY = point.y >= m_region.maxY;
    if (towardLowX)
        m_region.minX -= width;
    else
        m_region.maxX += width;
    if (towardHighY)
        m_region.maxY += height;
    else
        m_region.minY -= height;
    // The old region keeps the side from which the new one grew away.
    corner = (towardLowX ? 1 : 0) + (towardHighY ? 0 : 2);
}

int MQuadNode::GetChildNodeIndexContainingMBR(MQuadMBR2D const &mbr) const {
    return IsLeaf() ? kChildCount : QuadrantContaining(mbr, QuarteredRegion());
}

int MQuadNode::GetChildNodeIndexContainingMBR(MQuadMBR2D const &mbr, MQuadMBR2D const *regions) {
    int index = 0;
    while (index < kChildCount && mbr.IsContained4QT(regions[index]) == 0)
        ++index;
    return index;
}

int MQuadNode::GetChildNodeIndexContainingPoint(MQuadPoint2D const &point) const {
    if (IsLeaf())
        return kChildCount;
    int index = 0;
    while (index < kChildCount && m_children[index]->m_region.DoesContain4QT(point) == 0)
        ++index;
    return index;
}

int MQuadNode::Delete(MQuadObj *object) {
    return object ? Delete(object, object->CurrentRectangle(), 0) : -1;
}

int MQuadNode::Delete(MQuadObj *object, MQuadMBR2D const &mbr, int anywhere) {
    if (!object || (anywhere == 0 && mbr.IsContained4QT(m_region) == 0))
        return -1;
    // A watched object is in one place, which its rectangle tells, so the search of the other children is spared.
    if (object->m_home == this) {
        int index = -1;
        if (MQuadNode *const node = FindWatched(object, index)) {
            node->RemoveFromPool(index);
            return 0;
        }
    }
    return DeleteSearching(object, mbr);
}

int MQuadNode::DeleteSearching(MQuadObj *object, MQuadMBR2D const &mbr) {
    if (!IsLeaf()) {
        int const likely = GetChildNodeIndexContainingMBR(mbr);
        if (likely != kChildCount && m_children[likely]->Delete(object, mbr, 0) != -1)
            return 0;
        for (int i = 0; i < kChildCount; ++i) {
            if (i != likely && m_children[i]->Delete(object, mbr, 1) != -1)
                return 0;
        }
    }
    int const index = m_pool.FindFromLast(object);
    if (index < 0)
        return -1;
    RemoveFromPool(index);
    return 0;
}

void MQuadNode::RemoveFromPool(int index) {
    m_pool.RemoveAt(index);
    if (m_pool.IsEmpty() && IsLeaf() && m_parent)
        m_parent->Merge();
}

/// Whether the node, its pool and its children agree with one another; the children's own pools are not looked at.
bool MQuadNode::IsConsistent() const {
    spatial::QuadFrame const frame(m_region);
    for (std::uint32_t i = 0; i < m_pool.m_count; ++i) {
        MQuadObj const &object = *m_pool.Objects()[i];
        bool const isTrusted = m_pool.m_codes[i] != spatial::kUntrustedCode;
        if (isTrusted && (!object.m_home || m_pool.m_codes[i] != frame.Encode(object.m_mbr)))
            return false;
        if (!isTrusted && !m_pool.m_hasUntrusted)
            return false;
    }
    if (IsLeaf())
        return std::none_of(std::begin(m_children), std::end(m_children), [](MQuadNode const *child) { return child; });
    MQuadMBR2D const &region = QuarteredRegion();
    MQuadPoint2D const mid = Centre(region);
    MQuadMBR2D const quadrants[kChildCount] = {{region.minX, region.minY, mid.x, mid.y},
                                               {mid.x, region.minY, region.maxX, mid.y},
                                               {region.minX, mid.y, mid.x, region.maxY},
                                               {mid.x, mid.y, region.maxX, region.maxY}};
    for (int i = 0; i < kChildCount; ++i) {
        if (!IsChildConsistent(i, quadrants[i]))
            return false;
    }
    return true;
}

/// Whether a child is where it should be, and its family tells the truth of it.
bool MQuadNode::IsChildConsistent(int index, MQuadMBR2D const &quadrant) const {
    MQuadNode const &child = *m_children[index];
    spatial::QuadFamily const &family = spatial::QuadFamily::Of(m_children[0]);
    return &child == m_children[0] + index && child.m_parent == this && child.m_tree == m_tree &&
           IsSame(child.m_region, quadrant) && family.children[index] == child.m_children[0] &&
           family.isQuartered[index] == (child.m_quartered != nullptr);
}

int MQuadNode::Merge() {
    if (IsLeaf())
        return -1;
    for (MQuadNode const *child : m_children) {
        if (!child->IsLeaf() || !child->m_pool.IsEmpty())
            return -1;
    }
    DeleteChild();
    if (m_parent)
        m_parent->Merge();
    return 0;
}

// A program that takes the address of these finds them in the library also where they are imported.
constexpr int MQuadNode::kChildCount;

} // namespace zvi::lib
