#include "zvi/math/values/CMathPnt.h"

#include "zvi/math/values/CMathPln.h"
#include "zvi/math/values/CMathVec.h"

#include <cmath>

namespace zvi::lib {

namespace {

/// A coordinate above it, in absolute value, makes a point not null; model units.
constexpr double kNullCoordinate = 1e-10;
/// A translation shorter than this does not move a point; model units.
constexpr double kShortestTranslation = 1e-10;
/// An apex this near to a leg's end in each coordinate has no angle; model units.
constexpr double kApexOnLeg = 1e-6;

} // namespace

CMathPnt::CMathPnt(double x, double y, double z) : m_xyz{x, y, z} {}

CMathPnt::CMathPnt(double const *xyz) : m_xyz{xyz[0], xyz[1], xyz[2]} {}

CMathPnt::CMathPnt(CMathPnt const &p1, CMathPnt const &p2) {
    SetCenter(p1, p2);
}

CMathPnt::CMathPnt(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3) {
    SetCenter(p1, p2, p3);
}

CMathPnt::CMathPnt(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3, CMathPnt const &p4) {
    SetCenter(p1, p2, p3, p4);
}

void CMathPnt::Set(double x, double y, double z) {
    m_xyz[0] = x;
    m_xyz[1] = y;
    m_xyz[2] = z;
}

void CMathPnt::Set(double const *xyz) {
    Set(xyz[0], xyz[1], xyz[2]);
}

void CMathPnt::Set(int index, double value) {
    m_xyz[index] = value;
}

void CMathPnt::Get(double &x, double &y, double &z) const {
    x = m_xyz[0];
    y = m_xyz[1];
    z = m_xyz[2];
}

void CMathPnt::Nullify() {
    Set(0.0, 0.0, 0.0);
}

int CMathPnt::IsNull() const {
    for (double coordinate : m_xyz) {
        if (std::abs(coordinate) > kNullCoordinate)
            return 0;
    }
    return 1;
}

void CMathPnt::SetCenter(CMathPnt const &p1, CMathPnt const &p2) {
    for (int i = 0; i < 3; ++i)
        m_xyz[i] = (p1.m_xyz[i] + p2.m_xyz[i]) * 0.5;
}

void CMathPnt::SetCenter(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3) {
    for (int i = 0; i < 3; ++i)
        m_xyz[i] = (p1.m_xyz[i] + p2.m_xyz[i] + p3.m_xyz[i]) / 3.0;
}

void CMathPnt::SetCenter(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3, CMathPnt const &p4) {
    for (int i = 0; i < 3; ++i)
        m_xyz[i] = (p1.m_xyz[i] + p2.m_xyz[i] + p3.m_xyz[i] + p4.m_xyz[i]) * 0.25;
}

void CMathPnt::BaryCenter(double alpha, CMathPnt const &p, double beta) {
    for (int i = 0; i < 3; ++i)
        m_xyz[i] = (alpha * m_xyz[i] + beta * p.m_xyz[i]) / (alpha + beta);
}

int CMathPnt::IsEqual(CMathPnt const &other, double tol) const {
    for (int i = 0; i < 3; ++i) {
        if (!(std::abs(m_xyz[i] - other.m_xyz[i]) <= tol))
            return 0;
    }
    return 1;
}

double CMathPnt::Distance(CMathPnt const &other) const {
    return std::sqrt(SquareDistance(other));
}

double CMathPnt::SquareDistance(CMathPnt const &other) const {
    double const dx = m_xyz[0] - other.m_xyz[0];
    double const dy = m_xyz[1] - other.m_xyz[1];
    double const dz = m_xyz[2] - other.m_xyz[2];
    return dx * dx + dy * dy + dz * dz;
}

double CMathPnt::GetAngle(CMathPnt const &p1, CMathPnt const &p2, int inRadians) const {
    if (IsEqual(p1, kApexOnLeg) || IsEqual(p2, kApexOnLeg))
        return 0.0;
    return CMathVec(*this, p1).Angle(CMathVec(*this, p2), inRadians);
}

CMathPnt CMathPnt::Added(CMathPnt const &other) const {
    CMathPnt result(*this);
    result += other;
    return result;
}

CMathPnt CMathPnt::Subtracted(CMathPnt const &other) const {
    CMathPnt result(*this);
    result -= other;
    return result;
}

CMathPnt CMathPnt::Multiplied(double factor) const {
    CMathPnt result(*this);
    result *= factor;
    return result;
}

CMathPnt CMathPnt::Divided(double divisor) const {
    CMathPnt result(*this);
    result /= divisor;
    return result;
}

CMathPnt &CMathPnt::operator+=(CMathPnt const &other) {
    for (int i = 0; i < 3; ++i)
        m_xyz[i] += other.m_xyz[i];
    return *this;
}

CMathPnt &CMathPnt::operator-=(CMathPnt const &other) {
    for (int i = 0; i < 3; ++i)
        m_xyz[i] -= other.m_xyz[i];
    return *this;
}

CMathPnt &CMathPnt::operator*=(double factor) {
    for (double &coordinate : m_xyz)
        coordinate *= factor;
    return *this;
}

CMathPnt &CMathPnt::operator/=(double divisor) {
    for (double &coordinate : m_xyz)
        coordinate /= divisor;
    return *this;
}

void CMathPnt::Transform(CMathVec const &translation) {
    if (translation.Magnitude() < kShortestTranslation)
        return;
    *this += translation;
}

CMathPnt CMathPnt::Transformed(CMathVec const &translation) const {
    CMathPnt result(*this);
    result.Transform(translation);
    return result;
}

void CMathPnt::Project(CMathPln const &plane) {
    *this = Projected(plane);
}

CMathPnt CMathPnt::Projected(CMathPln const &plane) const {
    double const dist = plane.DistanceWithSign(*this);
    return Transformed(CMathVec(plane.GetNormal().Reversed() * dist));
}

} // namespace zvi::lib
