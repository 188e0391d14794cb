#include "zvi/spatial/MQuadObj.h"

#include "zvi/spatial/QuadSpaceDetail.h"
#include "zvi/spatial/tree/WatchDetail.h"

namespace zvi::lib {

namespace {

using Watch = spatial::Watch<spatial::QuadSpace>;

} // namespace

MQuadObj::MQuadObj(MQuadObj const &other)
    : m_key(other.m_key), m_mbr(other.m_mbr), m_typeAndStatus(other.m_typeAndStatus) {}

MQuadObj &MQuadObj::operator=(MQuadObj const &other) {
    if (this == &other)
        return *this;
    Watch::Leave(*this);
    m_key = other.m_key;
    m_mbr = other.m_mbr;
    m_typeAndStatus = other.m_typeAndStatus;
    return *this;
}

MQuadObj::~MQuadObj() {
    Watch::Leave(*this);
}

void MQuadObj::SetKey(unsigned int key) {
    m_key = key;
}

unsigned int MQuadObj::GetKey() {
    return m_key;
}

void MQuadObj::SetMBR(MQuadMBR2D &mbr) {
    Watch::Leave(*this);
    m_mbr = mbr;
}

MQuadMBR2D &MQuadObj::GetMBR() {
    Watch::Leave(*this);
    m_unwatched = true;
    return m_mbr;
}

void MQuadObj::SetType(int type) {
    m_typeAndStatus = spatial::WithType(m_typeAndStatus, type);
}

int MQuadObj::GetType() {
    return spatial::TypeOf(m_typeAndStatus);
}

} // namespace zvi::lib
