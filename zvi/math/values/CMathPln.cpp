#include "zvi/math/values/CMathPln.h"

#include <cmath>

namespace zvi::lib {

namespace {

/// Three points whose cross product is shorter than this span no plane; twice an area, in squared model units.
constexpr double kSmallestCrossProduct = 1e-6;

} // namespace

CMathPln::CMathPln(CMathPnt const &base, CMathVec const &normal) : m_base(base), m_normal(normal.Normalized()) {}

CMathPln::CMathPln(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3) {
    Set(p1, p2, p3);
}

CMathPln::CMathPln(double a, double b, double c, double d) {
    Set(a, b, c, d);
}

CMathPln::CMathPln(CMathPln const &other, double dist) {
    Set(other, dist);
}

void CMathPln::Set(CMathPnt const &base, CMathVec const &normal) {
    m_base = base;
    m_normal = normal;
}

void CMathPln::Set(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3) {
    CMathVec const normal = CMathVec(p1, p2).Crossed(CMathVec(p1, p3));
    if (normal.Magnitude() < kSmallestCrossProduct)
        return;
    m_normal = normal.Normalized();
    m_base = p1;
}

void CMathPln::Set(double a, double b, double c, double d) {
    m_normal = CMathVec(a, b, c).Normalized();
    double const sizeA = std::abs(a);
    double const sizeB = std::abs(b);
    double const sizeC = std::abs(c);
    if (sizeC >= sizeA && sizeC >= sizeB)
        m_base.Set(0.0, 0.0, -d / c);
    else if (sizeB >= sizeA)
        m_base.Set(0.0, -d / b, 0.0);
    else
        m_base.Set(-d / a, 0.0, 0.0);
}

void CMathPln::Set(CMathPln const &other, double dist) {
    *this = other;
    m_base.Transform(CMathVec(m_normal * dist));
}

void CMathPln::Coefficients(double &a, double &b, double &c, double &d) const {
    m_normal.Get(a, b, c);
    d = -(a * m_base.X() + b * m_base.Y() + c * m_base.Z());
}

double CMathPln::DistanceWithSign(CMathPnt const &p) const {
    return CMathVec(m_base, p) * m_normal;
}

double CMathPln::Distance(CMathPnt const &p) const {
    return std::abs(DistanceWithSign(p));
}

} // namespace zvi::lib
