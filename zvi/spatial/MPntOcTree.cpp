#include "zvi/spatial/MPntOcTree.h"

#include "zvi/spatial/MPntOcNode.h"

#include <algorithm>
#include <exception>
#include <new>

namespace zvi::lib {

namespace {

/// Bytes of a chunk of records: little for a small tree, and yet two thousand of them.
constexpr long kRecordChunkSize = 0x10000;

using Records = MHashMap<std::uint64_t, MPntOcData *>;

/// Removes a key without a rehash, which could fail.
void Forget(Records &records, std::uint64_t key) {
    records.LockRehash();
    records.RemoveKey(key);
    records.UnlockRehash();
}

} // namespace

MPntOcTree::MPntOcTree(double halfSize, long capacity) : MPntOcTree({}, halfSize, capacity) {}

MPntOcTree::MPntOcTree(MVector<double, 3> const &center, double halfSize, long capacity)
    : m_records(sizeof(MPntOcData), kRecordChunkSize) {
    m_data.InitHashTable(kKeyBinCount, false);
    m_root = new MPntOcNode(center, halfSize, capacity);
}

MPntOcTree::~MPntOcTree() {
    Clear();
}

int MPntOcTree::Insert(std::uint64_t key, MVector<double, 3> const &position) {
    if (!m_root || m_data.Lookup(key))
        return 0;
    auto *const record = ::new (m_records.Alloc()) MPntOcData{key, position};
    try {
        m_data.SetAt(key, record);
        return m_root->Insert(record);
    } catch (...) {
        // The key may be in though an error was raised: a rehash comes after it.
        Forget(m_data, key);
        m_records.Free(record);
        throw;
    }
}

int MPntOcTree::Delete(std::uint64_t key) {
    MPntOcData *record = nullptr;
    if (!m_root || !m_data.Lookup(key, record) || m_root->Delete(record) == 0)
        return 0;
    try {
        m_data.RemoveKey(key);
    } catch (std::exception const &) {
        // The key has gone; only a smaller table could not be had.
    }
    m_records.Free(record);
    return 1;
}

int MPntOcTree::Exist(std::uint64_t key) const {
    return m_data.Lookup(key) ? 1 : 0;
}

void MPntOcTree::Clear() {
    m_data.RemoveAll();
    m_records.FreeAllMem();
    delete m_root;
    m_root = nullptr;
}

long MPntOcTree::GetListInBox(MVector<double, 3> const &low, MVector<double, 3> const &high,
                              MList<MPntOcData *> &list) const {
    return m_root ? m_root->GetListInBox(low, high, list) : 0;
}

long MPntOcTree::GetListNearestPnt(MVector<double, 3> const &point, double distance, MList<MPntOcData *> &list) const {
    MVector<double, 3> const reach(distance, distance, distance);
    return GetListInBox(point - reach, point + reach, list);
}

/// Takes the points of the subtree out of `records`; false when one of them is not there under its key.
bool MPntOcTree::TakesOut(MPntOcNode const &node, Records &records) {
    for (MPntOcData const *const data : node.m_points) {
        MPntOcData *const *const record = records.Lookup(data->key);
        if (!record || *record != data)
            return false;
        records.RemoveKey(data->key);
    }
    return node.IsLeafNode() != 0 ||
           std::all_of(node.m_children, node.m_children + std::size(node.m_children),
                       [&records](MPntOcNode const *child) { return TakesOut(*child, records); });
}

bool MPntOcTree::IsConsistent() const {
    if (!m_data.IsConsistent() || !m_records.IsConsistent())
        return false;
    if (!m_root)
        return m_data.Empty();
    Records records(m_data);
    return !m_root->m_parent && m_root->IsConsistent() && TakesOut(*m_root, records);
}

} // namespace zvi::lib
