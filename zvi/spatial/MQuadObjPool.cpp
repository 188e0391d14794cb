#include "zvi/spatial/MQuadObjPool.h"

#include "zvi/spatial/QuadClusterDetail.h"
#include "zvi/spatial/QuadCodeDetail.h"
#include "zvi/spatial/QuadPoolIndexDetail.h"

#include <utility>

namespace zvi::lib {

namespace {

/// Objects from which on a pool is indexed; fewer are looked through faster than their boxes.
constexpr std::size_t kLeastIndexed = 16;

} // namespace

MQuadObjPool::MQuadObjPool() = default;

MQuadObjPool::MQuadObjPool(MQuadObjPool const &other)
    : m_objects(other.m_objects), m_codes(other.m_objects.Size()), m_hasUntrusted(!other.m_objects.Empty()) {
    static_assert(kUntrustedCode == 0, "the copy's codes are zeroed");
}

MQuadObjPool &MQuadObjPool::operator=(MQuadObjPool const &other) {
    if (this != &other) {
        MQuadObjPool copy(other);
        Swap(copy);
    }
    return *this;
}

MQuadObjPool::~MQuadObjPool() = default;

MQuadObj *MQuadObjPool::GetAt(int index) const {
    return index >= 0 && index < GetCount() ? m_objects[static_cast<std::size_t>(index)] : nullptr;
}

void MQuadObjPool::Add(MQuadObj *object) {
    Append(object, kUntrustedCode);
}

void MQuadObjPool::RemoveAt(int index) {
    if (index < 0 || index >= GetCount())
        return;
    auto const i = static_cast<std::size_t>(index);
    MQuadObj *const object = m_objects[i];
    if (m_codes[i] != kUntrustedCode) {
        object->m_home = nullptr;
        if (m_index != nullptr)
            m_index->Remove(object, object->m_mbr);
    } else {
        // It may stand here several times, and the index could not tell which one goes.
        DropIndex();
    }
    m_cluster.reset();
    m_objects.RemoveAt(i);
    m_codes.RemoveAt(i);
}

int MQuadObjPool::FindFromLast(MQuadObj const *object) const {
    int i = GetCount() - 1;
    while (i >= 0 && m_objects[static_cast<std::size_t>(i)] != object)
        --i;
    return i;
}

/// Place of an object with its code, -1 when it is absent.
int MQuadObjPool::FindTrusted(MQuadObj const *object, QuadCode code) const {
    int i = GetCount() - 1;
    while (i >= 0 &&
           !(m_codes[static_cast<std::size_t>(i)] == code && m_objects[static_cast<std::size_t>(i)] == object))
        --i;
    return i;
}

void MQuadObjPool::Append(MQuadObj *object, QuadCode code) {
    if (m_hasUntrusted)
        DropFirstUnlessLive();
    m_objects.PushBack(object);
    m_codes.PushBack(code);
    if (code == kUntrustedCode) {
        m_hasUntrusted = true;
        m_cluster.reset();
    }
    if (m_index == nullptr)
        return;
    if (code == kUntrustedCode)
        m_index->AddUntrusted(object);
    else
        m_index->Add(object, object->m_mbr, code);
}

void MQuadObjPool::Reserve(std::size_t count) {
    m_objects.Reserve(count);
    m_codes.Reserve(count);
}

void MQuadObjPool::DropFirstUnlessLive() {
    if (!m_objects.Empty() && m_codes[0] == kUntrustedCode && m_objects[0]->GetStatus() != kLiveStatus)
        RemoveAt(0);
}

/// The object at `index` is no longer watched.
void MQuadObjPool::Distrust(std::size_t index) {
    if (m_index != nullptr)
        m_index->Distrust(m_objects[index], m_objects[index]->m_mbr);
    m_codes[index] = kUntrustedCode;
    m_hasUntrusted = true;
    m_cluster.reset();
}

/// The region of the node has changed.
void MQuadObjPool::Recode(MQuadMBR2D const &region) {
    if (m_objects.Empty())
        return;
    DropIndex();
    QuadFrame const frame(region);
    for (std::size_t i = 0; i < m_objects.Size(); ++i) {
        if (m_codes[i] != kUntrustedCode)
            m_codes[i] = frame.Encode(m_objects[i]->m_mbr);
    }
}

/// Makes the index of a pool of many objects that straddle the mid lines of the region.
void MQuadObjPool::IndexFor(MQuadMBR2D const &region) {
    if (m_index != nullptr || m_objects.Size() < kLeastIndexed)
        return;
    m_index = std::make_unique<QuadPoolIndex>(region);
    for (std::size_t i = 0; i < m_objects.Size(); ++i) {
        if (m_codes[i] == kUntrustedCode)
            m_index->AddUntrusted(m_objects[i]);
        else
            m_index->Add(m_objects[i], m_objects[i]->m_mbr, m_codes[i]);
    }
}

void MQuadObjPool::DropIndex() {
    m_index.reset();
    m_cluster.reset();
}

void MQuadObjPool::Swap(MQuadObjPool &other) {
    m_objects.Swap(other.m_objects);
    m_codes.Swap(other.m_codes);
    m_index.swap(other.m_index);
    m_cluster.swap(other.m_cluster);
    std::swap(m_hasUntrusted, other.m_hasUntrusted);
}

} // namespace zvi::lib
