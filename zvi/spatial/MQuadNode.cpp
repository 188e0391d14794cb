#include "zvi/spatial/MQuadNode.h"

#include "zvi/base/SaturatedInt.h"
#include "zvi/host/CDC.h"
#include "zvi/spatial/QuadSpaceDetail.h"
#include "zvi/spatial/tree/NodesDetail.h"
#include "zvi/spatial/tree/PoolsDetail.h"

namespace zvi::lib {

namespace {

using spatial::QuadSpace;
using Of = spatial::Access<QuadSpace>;
using Deletion = spatial::Deletion<QuadSpace>;
using Insertion = spatial::Insertion<QuadSpace>;
using Nodes = spatial::Nodes<QuadSpace>;
using Search = spatial::Search<QuadSpace>;

spatial::Extent<2> ExtentOf(MQuadMBR2D const &mbr) {
    return spatial::ExtentOf<2>(mbr);
}

} // namespace

MQuadNode::MQuadNode(MQuadTree *tree) : MQuadNode(tree, nullptr) {}

MQuadNode::MQuadNode(MQuadTree *tree, spatial::Stock<QuadSpace> *stock)
    : m_pool(this, tree ? Of::MemoryOf(*tree) : nullptr, stock), m_tree(tree) {}

MQuadNode::MQuadNode(MQuadNode const &other) : m_pool(this, other.m_pool.m_memory, nullptr) {
    *this = other;
}

MQuadNode &MQuadNode::operator=(MQuadNode const &other) {
    if (this == &other)
        return *this;
    spatial::Pools<QuadSpace>::Assign(m_pool, other.m_pool, other.m_pool.m_memory);
    m_region = other.m_region;
    m_parent = other.m_parent;
    m_tree = other.m_tree;
    Of::SetFamily(*this, Of::FamilyOf(other));
    return *this;
}

MQuadNode::~MQuadNode() {
    Nodes::Close(*this);
}

void MQuadNode::InitClassMembers() {
    Nodes::InitClassMembers(*this);
}

int MQuadNode::Insert(MQuadObj *object) {
    return Insertion::Insert(*this, object);
}

int MQuadNode::Insert(MQuadObj *object, MQuadMBR2D const &mbr) {
    return Insertion::InsertAt(*this, object, ExtentOf(mbr));
}

int MQuadNode::InsertWithMBR(MQuadObj *object, MQuadMBR2D const &mbr) {
    return Insertion::InsertWithMBR(*this, object, ExtentOf(mbr));
}

int MQuadNode::Delete(MQuadObj *object) {
    return object ? Deletion::Delete(*this, object, Of::CurrentBox(*object), false) : -1;
}

int MQuadNode::Delete(MQuadObj *object, MQuadMBR2D const &mbr, int anywhere) {
    return Deletion::Delete(*this, object, ExtentOf(mbr), anywhere != 0);
}

MQuadNode *MQuadNode::FindNodeContainingPoint(MQuadPoint2D const &point) {
    return spatial::LeafContaining<QuadSpace>(*this, {point.x, point.y});
}

int MQuadNode::GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, int strict) {
    return Search(ExtentOf(query), list, nullptr, strict).In(*this);
}

int MQuadNode::GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, MArray<int> const &types,
                                   int strict) {
    return Search(ExtentOf(query), list, &types, strict).In(*this);
}

void MQuadNode::GetSplitRegion(MQuadMBR2D *const regions) const {
    Nodes::GetSplitRegion(*this, regions);
}

void MQuadNode::Distribute() {
    Insertion::Distribute(*this);
}

int MQuadNode::Merge() {
    return spatial::Removal<QuadSpace>::Merge(*this);
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

MQuadNodeInfo const &MQuadNode::GetQuadNodeInfo() const {
    return Of::InfoOf(*this);
}

int MQuadNode::GetChildNodeIndexContainingPoint(MQuadPoint2D const &point) const {
    return Nodes::ChildContaining(*this, {point.x, point.y});
}

// A program that takes the address of these finds them in the library also where they are imported.
constexpr int MQuadNode::kChildCount;

} // namespace zvi::lib
