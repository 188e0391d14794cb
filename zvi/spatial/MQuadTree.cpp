#include "zvi/spatial/MQuadTree.h"

#include "zvi/spatial/QuadSpaceDetail.h"
#include "zvi/spatial/tree/ConsistencyDetail.h"
#include "zvi/spatial/tree/KeysDetail.h"

namespace zvi::lib {

namespace {

using spatial::QuadSpace;
using Keys = spatial::Keys<QuadSpace>;
using Consistency = spatial::Consistency<QuadSpace>;

/// Type of an object that was given none.
constexpr int kNoType = -1;

} // namespace

MQuadTree::MQuadTree() : MQuadTree(MQuadNodeInfo()) {}

MQuadTree::MQuadTree(double width, double height, int capacity) : MQuadTree(MQuadNodeInfo{width, height, capacity}) {}

MQuadTree::MQuadTree(MQuadNodeInfo const &info) : m_info(info), m_objects(nullptr), m_memory(nullptr) {
    auto memory = std::make_unique<spatial::Memory<QuadSpace>>();
    m_objects = Keys::NewMap().release();
    m_memory = memory.release();
}

MQuadTree::~MQuadTree() {
    Clear();
    delete m_objects;
    delete m_memory;
}

int MQuadTree::Insert(unsigned int key, MQuadMBR2D const &mbr) {
    return Keys::Insert(*this, key, kNoType, mbr);
}

int MQuadTree::Insert(unsigned int key, int type, MQuadMBR2D const &mbr) {
    return Keys::Insert(*this, key, type, mbr);
}

int MQuadTree::Insert(MQuadObj *object) {
    if (!object)
        return 0;
    if (!m_root)
        m_root = new MQuadNode(this);
    return m_root->Insert(object) == -1 ? 0 : 1;
}

int MQuadTree::Delete(unsigned int key) {
    return Keys::Delete(*this, key);
}

int MQuadTree::Delete(MQuadObj *object) {
    return m_root && object && m_root->Delete(object) == 0 ? 1 : 0;
}

int MQuadTree::Exist(unsigned int key) const {
    return m_objects->Lookup(key) ? 1 : 0;
}

MQuadObjPool *MQuadTree::FindNode(MQuadPoint2D const &point) const {
    MQuadNode *const node = m_root ? m_root->FindNodeContainingPoint(point) : nullptr;
    return node ? &node->GetPool() : nullptr;
}

int MQuadTree::GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, int strict) const {
    return m_root ? m_root->GetIntersectObjList(query, list, strict) : 0;
}

int MQuadTree::GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, MArray<int> const &types,
                                   int strict) const {
    return m_root ? m_root->GetIntersectObjList(query, list, types, strict) : 0;
}

void MQuadTree::Clear() {
    Keys::Clear(*this);
}

void MQuadTree::Draw(CDC *dc) const {
    if (m_root)
        m_root->Draw(dc);
}

bool MQuadTree::IsConsistent() const {
    return CheckDuplicatedItem() != 0 && Consistency::Holds(*this);
}

/// 1 when no object stands in two places, else 0.
int MQuadTree::CheckDuplicatedItem() const {
    auto const rootCount = m_root ? static_cast<std::uint32_t>(m_root->GetPool().GetCount()) : 0;
    return Consistency::HasDuplicates(*this, rootCount + 1) ? 0 : 1;
}

} // namespace zvi::lib
