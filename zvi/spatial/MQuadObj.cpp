#include "zvi/spatial/MQuadObj.h"

#include "zvi/spatial/MQuadNode.h"

#include <typeinfo>

namespace zvi::lib {

namespace {

/// The low bits of the word that hold the type; the status stands above them.
constexpr std::uint32_t kTypeMask = 0x0fffffff;
constexpr int kStatusBits = 4;

} // namespace

MQuadObj::MQuadObj(MQuadObj const &other)
    : m_key(other.m_key), m_mbr(other.m_mbr), m_typeAndStatus(other.m_typeAndStatus) {}

MQuadObj &MQuadObj::operator=(MQuadObj const &other) {
    if (this == &other)
        return *this;
    LeaveWatch();
    m_key = other.m_key;
    m_mbr = other.m_mbr;
    m_typeAndStatus = other.m_typeAndStatus;
    return *this;
}

MQuadObj::~MQuadObj() {
    LeaveWatch();
}

void MQuadObj::SetKey(unsigned int key) {
    m_key = key;
}

unsigned int MQuadObj::GetKey() {
    return m_key;
}

void MQuadObj::SetMBR(MQuadMBR2D &mbr) {
    LeaveWatch();
    m_mbr = mbr;
}

MQuadMBR2D &MQuadObj::GetMBR() {
    LeaveWatch();
    m_unwatched = true;
    return m_mbr;
}

void MQuadObj::SetType(int type) {
    m_typeAndStatus = (m_typeAndStatus & ~kTypeMask) | (static_cast<std::uint32_t>(type) & kTypeMask);
}

int MQuadObj::GetType() {
    return static_cast<std::int32_t>(m_typeAndStatus << kStatusBits) >> kStatusBits;
}

/// A class of its own may answer another rectangle than the one stored here.
bool MQuadObj::IsOfThisClass() const {
    return typeid(*this) == typeid(MQuadObj);
}

/// The rectangle as the object answers it now. `GetMBR` is left to other classes, because it ends the trust.
MQuadMBR2D const &MQuadObj::CurrentRectangle() {
    return m_home || IsOfThisClass() ? m_mbr : GetMBR();
}

void MQuadObj::LeaveWatch() {
    if (m_home)
        m_home->StopWatching(this);
}

} // namespace zvi::lib
