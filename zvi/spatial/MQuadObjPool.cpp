#include "zvi/spatial/MQuadObjPool.h"

namespace zvi::lib {

MQuadObjPool::MQuadObjPool(MQuadObjPool const &other) : m_objects(other.m_objects) {
    m_notes.Reserve(m_objects.Size());
    for (std::size_t i = 0; i < m_objects.Size(); ++i)
        m_notes.PushBack(kNotTrusted);
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
    Append(object, kNotTrusted);
}

void MQuadObjPool::RemoveAt(int index) {
    if (index < 0 || index >= GetCount())
        return;
    auto const i = static_cast<std::size_t>(index);
    if (IsTrusted(m_notes[i]))
        m_objects[i]->m_home = nullptr;
    m_objects.RemoveAt(i);
    m_notes.RemoveAt(i);
}

int MQuadObjPool::FindFromLast(MQuadObj const *object) const {
    int i = GetCount() - 1;
    while (i >= 0 && m_objects[static_cast<std::size_t>(i)] != object)
        --i;
    return i;
}

void MQuadObjPool::Append(MQuadObj *object, MQuadMBR2D const &note) {
    if (!m_objects.Empty() && !IsTrusted(m_notes[0]))
        DropFirstUnlessLive();
    m_objects.PushBack(object);
    m_notes.PushBack(note);
}

void MQuadObjPool::DropFirstUnlessLive() {
    if (m_objects[0]->GetStatus() != kLiveStatus) {
        m_objects.RemoveAt(0);
        m_notes.RemoveAt(0);
    }
}

MQuadMBR2D MQuadObjPool::RectangleAt(std::size_t index) const {
    MQuadMBR2D const &note = m_notes[index];
    return IsTrusted(note) ? note : m_objects[index]->GetMBR();
}

void MQuadObjPool::Swap(MQuadObjPool &other) {
    m_objects.Swap(other.m_objects);
    m_notes.Swap(other.m_notes);
}

} // namespace zvi::lib
