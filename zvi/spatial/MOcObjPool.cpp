#include "zvi/spatial/MOcObjPool.h"

#include "zvi/spatial/OcSpaceDetail.h"
#include "zvi/spatial/tree/PoolsDetail.h"

namespace zvi::lib {

namespace {

using Pools = spatial::Pools<spatial::OcSpace>;

} // namespace

MOcObjPool::MOcObjPool() : MOcObjPool(nullptr, nullptr, nullptr) {}

MOcObjPool::MOcObjPool(MOcNode *node, spatial::Memory<spatial::OcSpace> *memory,
                       spatial::Stock<spatial::OcSpace> *stock)
    : m_node(node) {
    Pools::Open(*this, memory, stock);
}

MOcObjPool::MOcObjPool(MOcObjPool const &other) : MOcObjPool() {
    Pools::Assign(*this, other, m_memory);
}

MOcObjPool &MOcObjPool::operator=(MOcObjPool const &other) {
    if (this != &other)
        Pools::Assign(*this, other, m_memory);
    return *this;
}

MOcObjPool::~MOcObjPool() {
    Pools::Close(*this);
}

int MOcObjPool::GetCount() const {
    return Pools::Count(*this);
}

MOcObj *MOcObjPool::GetAt(int index) const {
    return Pools::At(*this, index);
}

void MOcObjPool::Add(MOcObj *object) {
    Pools::Add(*this, object);
}

void MOcObjPool::RemoveAt(int index) {
    Pools::RemoveAt(*this, index);
}

int MOcObjPool::FindFromLast(MOcObj const *object) const {
    return Pools::FindFromLast(*this, object);
}

} // namespace zvi::lib
