#include "zvi/spatial/MOcObj.h"

#include "zvi/spatial/OcSpaceDetail.h"
#include "zvi/spatial/tree/WatchDetail.h"

namespace zvi::lib {

namespace {

using Watch = spatial::Watch<spatial::OcSpace>;

} // namespace

MOcObj::MOcObj(MOcObj const &other) : m_key(other.m_key), m_mbr(other.m_mbr), m_type(other.m_type) {}

MOcObj &MOcObj::operator=(MOcObj const &other) {
    if (this == &other)
        return *this;
    Watch::Leave(*this);
    m_key = other.m_key;
    m_mbr = other.m_mbr;
    m_type = other.m_type;
    return *this;
}

MOcObj::~MOcObj() {
    Watch::Leave(*this);
}

void MOcObj::SetItr(std::uint64_t key) {
    m_key = key;
}

std::uint64_t MOcObj::GetItr() {
    return m_key;
}

void MOcObj::SetMBR(MOcMBR3D &mbr) {
    Watch::Leave(*this);
    m_mbr = mbr;
}

MOcMBR3D MOcObj::GetMBR() {
    return m_mbr;
}

void MOcObj::SetType(int type) {
    m_type.SetType(type);
}

int MOcObj::GetType() {
    return m_type.GetType();
}

} // namespace zvi::lib
