#include "zvi/spatial/MOcNode.h"

#include "zvi/spatial/OcSpaceDetail.h"
#include "zvi/spatial/tree/NodesDetail.h"
#include "zvi/spatial/tree/PoolsDetail.h"

namespace zvi::lib {

namespace {

using spatial::OcSpace;
using Of = spatial::Access<OcSpace>;
using Deletion = spatial::Deletion<OcSpace>;
using Insertion = spatial::Insertion<OcSpace>;
using Nodes = spatial::Nodes<OcSpace>;
using Search = spatial::Search<OcSpace>;

spatial::Extent<3> ExtentOf(MOcMBR3D const &mbr) {
    return spatial::ExtentOf<3>(mbr);
}

} // namespace

MOcNode::MOcNode(MOcTree *tree) : MOcNode(tree, nullptr) {}

MOcNode::MOcNode(MOcTree *tree, spatial::Stock<OcSpace> *stock)
    : m_pool(this, tree ? Of::MemoryOf(*tree) : nullptr, stock), m_tree(tree) {}

MOcNode::MOcNode(MOcNode const &other) : m_pool(this, other.m_pool.m_memory, nullptr) {
    *this = other;
}

MOcNode &MOcNode::operator=(MOcNode const &other) {
    if (this == &other)
        return *this;
    spatial::Pools<OcSpace>::Assign(m_pool, other.m_pool, other.m_pool.m_memory);
    m_region = other.m_region;
    m_parent = other.m_parent;
    m_tree = other.m_tree;
    m_firstInsert = other.m_firstInsert;
    Of::SetFamily(*this, Of::FamilyOf(other));
    return *this;
}

MOcNode::~MOcNode() {
    Nodes::Close(*this);
}

void MOcNode::InitClassMembers() {
    Nodes::InitClassMembers(*this);
}

int MOcNode::Insert(MOcObj *object) {
    return Insertion::Insert(*this, object);
}

int MOcNode::FirstInsert(MOcObj *object) {
    return Insertion::InsertAsFirst(*this, object);
}

int MOcNode::Insert(MOcObj *object, MOcMBR3D const &mbr) {
    return Insertion::InsertAt(*this, object, ExtentOf(mbr));
}

int MOcNode::InsertWithMBR(MOcObj *object, MOcMBR3D const &mbr) {
    return Insertion::InsertWithMBR(*this, object, ExtentOf(mbr));
}

int MOcNode::Delete(MOcObj *object) {
    return object ? Deletion::Delete(*this, object, Of::CurrentBox(*object), false) : -1;
}

int MOcNode::Delete(MOcObj *object, MOcMBR3D const &mbr, int anywhere) {
    return Deletion::Delete(*this, object, ExtentOf(mbr), anywhere != 0);
}

MOcNode *MOcNode::FindNodeContainingPoint(MOcPoint3D const &point) {
    return spatial::LeafContaining<OcSpace>(*this, {point.x, point.y, point.z});
}

int MOcNode::GetIntersectObjList(MOcMBR3D const &query, MList<MOcObj *> &list, int strict) {
    return Search(ExtentOf(query), list, nullptr, strict).In(*this);
}

int MOcNode::GetIntersectObjList(MOcMBR3D const &query, MList<MOcObj *> &list, MArray<int> const &types, int strict) {
    return Search(ExtentOf(query), list, &types, strict).In(*this);
}

void MOcNode::GetSplitRegion(MOcMBR3D *const regions) const {
    Nodes::GetSplitRegion(*this, regions);
}

void MOcNode::Distribute() {
    Insertion::Distribute(*this);
}

int MOcNode::Merge() {
    return spatial::Removal<OcSpace>::Merge(*this);
}

MOcNodeInfo const &MOcNode::GetOcNodeInfo() const {
    return Of::InfoOf(*this);
}

int MOcNode::GetChildNodeIndexContainingPoint(MOcPoint3D const &point) const {
    return Nodes::ChildContaining(*this, {point.x, point.y, point.z});
}

// A program that takes the address of these finds them in the library also where they are imported.
constexpr int MOcNode::kChildCount;

} // namespace zvi::lib
