#include "zvi/spatial/MQuadTree.h"

#include "zvi/spatial/QuadMemoryDetail.h"

#include <memory>
#include <vector>

namespace zvi::lib {

namespace {

/// Type of an object that was given none.
constexpr int kNoType = -1;

MHashMap<unsigned int, MQuadObj *> *NewKeyMap() {
    auto map = std::make_unique<MHashMap<unsigned int, MQuadObj *>>();
    map->InitHashTable(MQuadTree::kKeyBinCount, false);
    return map.release();
}

} // namespace

MQuadTree::MQuadTree() : m_objects(NewKeyMap()), m_memory(new spatial::QuadMemory) {}

MQuadTree::MQuadTree(double width, double height, int capacity)
    : m_info{width, height, capacity}, m_objects(NewKeyMap()), m_memory(new spatial::QuadMemory) {}

MQuadTree::~MQuadTree() {
    Clear();
    delete m_objects;
    delete m_memory;
}

int MQuadTree::Insert(unsigned int key, MQuadMBR2D const &mbr) {
    return InsertOwned(key, kNoType, mbr);
}

int MQuadTree::Insert(unsigned int key, int type, MQuadMBR2D const &mbr) {
    return InsertOwned(key, type, mbr);
}

int MQuadTree::InsertOwned(unsigned int key, int type, MQuadMBR2D const &mbr) {
    if (Exist(key) != 0)
        return 0;
    MQuadObj *const object = m_memory->Make();
    object->m_key = key;
    object->m_mbr = mbr;
    object->SetType(type);
    if (Insert(object) == 0) {
        m_memory->Destroy(object);
        return 0;
    }
    m_objects->SetAt(key, object);
    return 1;
}

int MQuadTree::Insert(MQuadObj *object) {
    if (object == nullptr)
        return 0;
    if (m_root == nullptr)
        m_root = new MQuadNode(this);
    return m_root->Insert(object) == -1 ? 0 : 1;
}

int MQuadTree::Delete(unsigned int key) {
    MQuadObj **const found = m_objects->Lookup(key);
    if (found == nullptr)
        return 0;
    MQuadObj *const object = *found;
    int const result = Delete(object);
    if (result == 0)
        m_root->Purge(object);
    m_memory->Destroy(object);
    m_objects->RemoveKey(key);
    return result;
}

int MQuadTree::Delete(MQuadObj *object) {
    return m_root != nullptr && object != nullptr && m_root->Delete(object) == 0 ? 1 : 0;
}

int MQuadTree::Exist(unsigned int key) const {
    return m_objects->Lookup(key) != nullptr ? 1 : 0;
}

MQuadObjPool *MQuadTree::FindNode(MQuadPoint2D const &point) const {
    MQuadNode *const node = m_root == nullptr ? nullptr : m_root->FindNodeContainingPoint(point);
    return node == nullptr ? nullptr : &node->GetPool();
}

int MQuadTree::GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, int strict) const {
    return m_root == nullptr ? 0 : m_root->GetIntersectObjList(query, list, strict);
}

int MQuadTree::GetIntersectObjList(MQuadMBR2D const &query, MList<MQuadObj *> &list, MArray<int> const &types,
                                   int strict) const {
    return m_root == nullptr ? 0 : m_root->GetIntersectObjList(query, list, types, strict);
}

void MQuadTree::Clear() {
    // The nodes go first: their objects then no longer report to them.
    delete m_root;
    m_root = nullptr;
    for (auto &entry : *m_objects)
        m_memory->Destroy(entry.value);
    m_objects->InitHashTable(kKeyBinCount, false);
}

void MQuadTree::Draw(CDC *dc) const {
    if (m_root != nullptr)
        m_root->Draw(dc);
}

/// 1 when no object stands in two places, else 0.
int MQuadTree::CheckDuplicatedItem() const {
    if (m_root == nullptr)
        return 1;
    auto const binCount = static_cast<unsigned int>(m_root->GetPool().GetCount()) + 1;
    MHashMap<MQuadObj *, int> met;
    met.InitHashTable(binCount == 0 ? kSmallestBinCount : binCount, true);
    std::vector<MQuadNode const *> pending{m_root};
    while (!pending.empty()) {
        MQuadNode const *const node = pending.back();
        pending.pop_back();
        for (int i = 0; i < node->GetPool().GetCount(); ++i) {
            MQuadObj *const object = node->GetPool().GetAt(i);
            if (met.Lookup(object) != nullptr)
                return 0;
            met.SetAt(object, 1);
        }
        for (int i = MQuadNode::kChildCount; !node->IsLeaf() && i-- > 0;)
            pending.push_back(node->GetChild(i));
    }
    return 1;
}

} // namespace zvi::lib
