#include "zvi/spatial/MQuadObjPool.h"

#include "zvi/spatial/QuadClusterDetail.h"
#include "zvi/spatial/QuadCodeDetail.h"
#include "zvi/spatial/QuadMemoryDetail.h"
#include "zvi/spatial/QuadPoolIndexDetail.h"

#include <algorithm>
#include <bit>
#include <new>
#include <utility>

namespace zvi::lib {

namespace {

/// Objects from which on a pool is indexed; fewer are looked through faster than their boxes.
constexpr std::uint32_t kLeastIndexed = 16;

/// Objects that the first block of a pool has room for: three cache lines.
constexpr std::uint32_t kFewestEntries = 16;

/// Objects that a pool can hold: their number is an `int`.
constexpr std::size_t kMostEntries = std::size_t{1} << 30;

} // namespace

MQuadObjPool::MQuadObjPool() = default;

MQuadObjPool::MQuadObjPool(spatial::QuadMemory *memory) : m_memory(memory) {}

MQuadObjPool::MQuadObjPool(MQuadObjPool const &other) : m_hasUntrusted(!other.IsEmpty()) {
    Reserve(other.m_count);
    m_count = other.m_count;
    std::fill_n(m_codes, m_count, spatial::kUntrustedCode);
    std::copy_n(other.Objects(), m_count, Objects());
}

MQuadObjPool &MQuadObjPool::operator=(MQuadObjPool const &other) {
    if (this != &other) {
        MQuadObjPool copy(other);
        Swap(copy);
    }
    return *this;
}

MQuadObjPool::~MQuadObjPool() {
    ReleaseEntries();
}

MQuadObj *MQuadObjPool::GetAt(int index) const {
    return index >= 0 && index < GetCount() ? Objects()[index] : nullptr;
}

void MQuadObjPool::Add(MQuadObj *object) {
    Append(object, spatial::kUntrustedCode);
}

void MQuadObjPool::RemoveAt(int index) {
    if (index < 0 || index >= GetCount())
        return;
    auto const i = static_cast<std::size_t>(index);
    MQuadObj **const objects = Objects();
    MQuadObj *const object = objects[i];
    if (m_codes[i] != spatial::kUntrustedCode) {
        object->m_home = nullptr;
        if (m_index)
            m_index->Remove(object, object->m_mbr);
    } else {
        // It may stand here several times, and the index could not tell which one goes.
        DropIndex();
    }
    m_cluster.reset();
    std::copy(m_codes + i + 1, m_codes + m_count, m_codes + i);
    std::copy(objects + i + 1, objects + m_count, objects + i);
    --m_count;
}

int MQuadObjPool::FindFromLast(MQuadObj const *object) const {
    MQuadObj *const *const objects = Objects();
    int i = GetCount() - 1;
    while (i >= 0 && objects[i] != object)
        --i;
    return i;
}

/// Place of an object with its code, -1 when it is absent.
int MQuadObjPool::FindTrusted(MQuadObj const *object, spatial::QuadCode code) const {
    MQuadObj *const *const objects = Objects();
    int i = GetCount() - 1;
    while (i >= 0 && !(m_codes[i] == code && objects[i] == object))
        --i;
    return i;
}

void MQuadObjPool::Append(MQuadObj *object, spatial::QuadCode code) {
    if (m_hasUntrusted)
        DropFirstUnlessLive();
    if (m_count == m_capacity)
        Reserve(std::size_t{m_count} + 1);
    m_codes[m_count] = code;
    Objects()[m_count] = object;
    ++m_count;
    if (code == spatial::kUntrustedCode) {
        m_bands = spatial::QuadBands::Everything();
        m_hasUntrusted = true;
        m_cluster.reset();
    }
    if (!m_index)
        return;
    if (code == spatial::kUntrustedCode)
        m_index->AddUntrusted(object);
    else
        m_index->Add(object, object->m_mbr, code);
}

/// Room for `count` objects in all.
void MQuadObjPool::Reserve(std::size_t count) {
    if (count <= m_capacity)
        return;
    if (count > kMostEntries)
        throw std::bad_alloc();
    MoveTo(std::max(kFewestEntries, std::bit_ceil(static_cast<std::uint32_t>(count))));
}

/// Moves the objects and codes into a block for `capacity` of them.
void MQuadObjPool::MoveTo(std::uint32_t capacity) {
    MQuadObjPool moved(m_memory);
    moved.m_codes = static_cast<spatial::QuadCode *>(
        m_memory ? m_memory->TakeEntries(capacity) : ::operator new(spatial::QuadMemory::EntryBytes(capacity)));
    moved.m_capacity = capacity;
    std::copy_n(m_codes, m_count, moved.m_codes);
    std::copy_n(Objects(), m_count, moved.Objects());
    std::swap(m_codes, moved.m_codes);
    std::swap(m_capacity, moved.m_capacity);
}

void MQuadObjPool::ReleaseEntries() {
    if (!m_codes)
        return;
    if (!m_memory)
        ::operator delete(m_codes);
    else
        m_memory->GiveBackEntries(m_codes, m_capacity);
}

/// Drops all objects in front of `first` without a word to them, and the room for them.
void MQuadObjPool::KeepFrom(std::uint32_t first) {
    std::copy(m_codes + first, m_codes + m_count, m_codes);
    std::copy(Objects() + first, Objects() + m_count, Objects());
    m_count -= first;
    std::uint32_t const needed = std::max(kFewestEntries, std::bit_ceil(m_count));
    if (needed < m_capacity)
        MoveTo(needed);
}

void MQuadObjPool::DropFirstUnlessLive() {
    if (!IsEmpty() && m_codes[0] == spatial::kUntrustedCode && Objects()[0]->GetStatus() != spatial::kLiveStatus)
        RemoveAt(0);
}

/// The object at `index` is no longer watched.
void MQuadObjPool::Distrust(std::size_t index) {
    if (m_index)
        m_index->Distrust(Objects()[index], Objects()[index]->m_mbr);
    m_codes[index] = spatial::kUntrustedCode;
    m_bands = spatial::QuadBands::Everything();
    m_hasUntrusted = true;
    m_cluster.reset();
}

/// The region of the node has changed.
void MQuadObjPool::Recode(MQuadMBR2D const &region) {
    if (IsEmpty())
        return;
    DropIndex();
    spatial::QuadFrame const frame(region);
    for (std::uint32_t i = 0; i < m_count; ++i) {
        if (m_codes[i] != spatial::kUntrustedCode)
            m_codes[i] = frame.Encode(Objects()[i]->m_mbr);
    }
}

/// Widens the bands of an inner node for a new object, which lies across a mid line as a rule.
void MQuadObjPool::AddToBands(spatial::QuadCode code, MQuadMBR2D const &mbr, MQuadMBR2D const &quartered) {
    double const midX = (quartered.minX + quartered.maxX) * 0.5;
    double const midY = (quartered.minY + quartered.maxY) * 0.5;
    bool const crossesX = mbr.minX <= midX && midX <= mbr.maxX;
    bool const crossesY = mbr.minY <= midY && midY <= mbr.maxY;
    bool const isUpright = mbr.maxX - mbr.minX <= mbr.maxY - mbr.minY;
    if (code == spatial::kUntrustedCode || !(crossesX || crossesY)) {
        m_bands = spatial::QuadBands::Everything();
    } else if (crossesX && (isUpright || !crossesY)) {
        m_bands.minX = std::min(m_bands.minX, mbr.minX);
        m_bands.maxX = std::max(m_bands.maxX, mbr.maxX);
    } else {
        m_bands.minY = std::min(m_bands.minY, mbr.minY);
        m_bands.maxY = std::max(m_bands.maxY, mbr.maxY);
    }
}

/// Makes the bands anew for the objects of an inner node whose children are the quadrants of `quartered`.
void MQuadObjPool::BandsFor(MQuadMBR2D const &quartered) {
    m_bands = spatial::QuadBands::Empty();
    for (std::uint32_t i = 0; i < m_count; ++i)
        AddToBands(m_codes[i], Objects()[i]->m_mbr, quartered);
}

/// Makes the index of a pool of many objects that straddle the mid lines of the region.
void MQuadObjPool::IndexFor(MQuadMBR2D const &region) {
    if (m_index || m_count < kLeastIndexed)
        return;
    m_index = std::make_unique<spatial::QuadPoolIndex>(region);
    for (std::uint32_t i = 0; i < m_count; ++i) {
        MQuadObj *const object = Objects()[i];
        if (m_codes[i] == spatial::kUntrustedCode)
            m_index->AddUntrusted(object);
        else
            m_index->Add(object, object->m_mbr, m_codes[i]);
    }
}

void MQuadObjPool::DropIndex() {
    m_index.reset();
    m_cluster.reset();
}

void MQuadObjPool::Swap(MQuadObjPool &other) {
    std::swap(m_codes, other.m_codes);
    std::swap(m_count, other.m_count);
    std::swap(m_capacity, other.m_capacity);
    m_index.swap(other.m_index);
    std::swap(m_bands, other.m_bands);
    std::swap(m_memory, other.m_memory);
    m_cluster.swap(other.m_cluster);
    std::swap(m_hasUntrusted, other.m_hasUntrusted);
}

} // namespace zvi::lib
