#include "zvi/spatial/MQuadTree.h"

#include "zvi/spatial/QuadMemoryDetail.h"

#include <algorithm>
#include <memory>
#include <unordered_set>
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

MQuadTree::MQuadTree() : MQuadTree(MQuadNodeInfo()) {}

MQuadTree::MQuadTree(double width, double height, int capacity) : MQuadTree(MQuadNodeInfo{width, height, capacity}) {}

MQuadTree::MQuadTree(MQuadNodeInfo const &info) : m_info(info), m_objects(nullptr), m_memory(nullptr) {
    auto memory = std::make_unique<spatial::QuadMemory>();
    m_objects = NewKeyMap();
    m_memory = memory.release();
}

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
    if (!object)
        return 0;
    if (!m_root)
        m_root = new MQuadNode(this);
    return m_root->Insert(object) == -1 ? 0 : 1;
}

int MQuadTree::Delete(unsigned int key) {
    MQuadObj **const found = m_objects->Lookup(key);
    if (!found)
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
    // The nodes go first: their objects then no longer report to them.
    delete m_root;
    m_root = nullptr;
    for (auto &entry : *m_objects)
        m_memory->Destroy(entry.value);
    m_objects->InitHashTable(kKeyBinCount, false);
}

void MQuadTree::Draw(CDC *dc) const {
    if (m_root)
        m_root->Draw(dc);
}

bool MQuadTree::IsConsistent() const {
    if (!m_root)
        return m_objects->Empty();
    if (m_root->m_parent || CheckDuplicatedItem() == 0)
        return false;
    std::unordered_set<MQuadObj const *> met;
    std::vector<MQuadNode const *> pending{m_root};
    while (!pending.empty()) {
        MQuadNode const &node = *pending.back();
        pending.pop_back();
        if (!node.IsConsistent())
            return false;
        for (int i = 0; i < node.GetPool().GetCount(); ++i)
            met.insert(node.GetPool().GetAt(i));
        for (int i = 0; !node.IsLeaf() && i < MQuadNode::kChildCount; ++i)
            pending.push_back(node.GetChild(i));
    }
    return std::all_of(m_objects->begin(), m_objects->end(), [&](auto const &entry) {
        return entry.value->m_key == entry.key && met.count(entry.value) != 0;
    });
}

/// 1 when no object stands in two places, else 0.
int MQuadTree::CheckDuplicatedItem() const {
    if (!m_root)
        return 1;
    auto const binCount = static_cast<unsigned int>(m_root->GetPool().GetCount()) + 1;
    MHashMap<MQuadObj *, int> met;
    met.InitHashTable(binCount == 0 ? core::kSmallestBinCount : binCount, true);
    std::vector<MQuadNode const *> pending{m_root};
    while (!pending.empty()) {
        MQuadNode const *const node = pending.back();
        pending.pop_back();
        for (int i = 0; i < node->GetPool().GetCount(); ++i) {
            MQuadObj *const object = node->GetPool().GetAt(i);
            if (met.Lookup(object))
                return 0;
            met.SetAt(object, 1);
        }
        for (int i = MQuadNode::kChildCount; !node->IsLeaf() && i-- > 0;)
            pending.push_back(node->GetChild(i));
    }
    return 1;
}

} // namespace zvi::lib
