#include "zvi/spatial/MQuadObjPool.h"

#include "zvi/spatial/QuadSpaceDetail.h"
#include "zvi/spatial/tree/PoolsDetail.h"

namespace zvi::lib {

namespace {

using Pools = spatial::Pools<spatial::QuadSpace>;

} // namespace

MQuadObjPool::MQuadObjPool() : MQuadObjPool(nullptr, nullptr, nullptr) {}

MQuadObjPool::MQuadObjPool(MQuadNode *node, spatial::Memory<spatial::QuadSpace> *memory,
                           spatial::Stock<spatial::QuadSpace> *stock)
    : m_node(node) {
    Pools::Open(*this, memory, stock);
}

MQuadObjPool::MQuadObjPool(MQuadObjPool const &other) : MQuadObjPool() {
    Pools::Assign(*this, other, m_memory);
}

MQuadObjPool &MQuadObjPool::operator=(MQuadObjPool const &other) {
    if (this != &other)
        Pools::Assign(*this, other, m_memory);
    return *this;
}

MQuadObjPool::~MQuadObjPool() {
    Pools::Close(*this);
}

int MQuadObjPool::GetCount() const {
    return Pools::Count(*this);
}

MQuadObj *MQuadObjPool::GetAt(int index) const {
    return Pools::At(*this, index);
}

void MQuadObjPool::Add(MQuadObj *object) {
    Pools::Add(*this, object);
}

void MQuadObjPool::RemoveAt(int index) {
    Pools::RemoveAt(*this, index);
}

int MQuadObjPool::FindFromLast(MQuadObj const *object) const {
    return Pools::FindFromLast(*this, object);
}

} // namespace zvi::lib
