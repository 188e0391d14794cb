#include "zvi/spatial/MOcTree.h"

#include "zvi/spatial/OcSpaceDetail.h"
#include "zvi/spatial/tree/ConsistencyDetail.h"
#include "zvi/spatial/tree/KeysDetail.h"

namespace zvi::lib {

namespace {

using spatial::OcSpace;
using Keys = spatial::Keys<OcSpace>;
using Consistency = spatial::Consistency<OcSpace>;

/// Type of an object that was given none.
constexpr int kNoType = -1;

} // namespace

MOcTree::MOcTree() : MOcTree(MOcNodeInfo()) {}

MOcTree::MOcTree(double sizeX, double sizeY, int capacity)
    : MOcTree(MOcNodeInfo{.sizeX = sizeX, .sizeY = sizeY, .capacity = capacity}) {}

MOcTree::MOcTree(MOcNodeInfo const &info) : m_info(info), m_objects(nullptr), m_memory(nullptr) {
    auto memory = std::make_unique<spatial::Memory<OcSpace>>();
    m_objects = Keys::NewMap().release();
    m_memory = memory.release();
}

MOcTree::~MOcTree() {
    Clear();
    delete m_objects;
    delete m_memory;
}

int MOcTree::Insert(std::uint64_t key, MOcMBR3D const &mbr) {
    return Keys::Insert(*this, key, kNoType, mbr);
}

int MOcTree::Insert(std::uint64_t key, int type, MOcMBR3D const &mbr) {
    return Keys::Insert(*this, key, type, mbr);
}

int MOcTree::Insert(MOcObj *object) {
    if (!object)
        return 0;
    if (!m_root)
        m_root = new MOcNode(this);
    return m_root->Insert(object) == -1 ? 0 : 1;
}

int MOcTree::Delete(std::uint64_t key) {
    return Keys::Delete(*this, key);
}

int MOcTree::Delete(MOcObj *object) {
    return m_root && object && m_root->Delete(object) == 0 ? 1 : 0;
}

int MOcTree::Exist(std::uint64_t key) const {
    return m_objects->Lookup(key) ? 1 : 0;
}

MOcObjPool *MOcTree::FindNode(MOcPoint3D const &point) const {
    MOcNode *const node = m_root ? m_root->FindNodeContainingPoint(point) : nullptr;
    return node ? &node->GetPool() : nullptr;
}

int MOcTree::GetIntersectObjList(MOcMBR3D const &query, MList<MOcObj *> &list, int strict) const {
    return m_root ? m_root->GetIntersectObjList(query, list, strict) : 0;
}

int MOcTree::GetIntersectObjList(MOcMBR3D const &query, MList<MOcObj *> &list, MArray<int> const &types,
                                 int strict) const {
    return m_root ? m_root->GetIntersectObjList(query, list, types, strict) : 0;
}

void MOcTree::Clear() {
    Keys::Clear(*this);
}

bool MOcTree::IsConsistent() const {
    return CheckDuplicatedItem() != 0 && Consistency::Holds(*this);
}

/// 1 when no object stands in two places, else 0.
int MOcTree::CheckDuplicatedItem() const {
    auto const binCount = static_cast<std::uint32_t>(m_objects->GetCount()) + 1;
    return Consistency::HasDuplicates(*this, binCount) ? 0 : 1;
}

} // namespace zvi::lib
