#pragma once

// Small values on which the members of MMathFunc compute. Loading before storing lets an output be an input.

#include <cmath>

namespace zvi::lib::math {

struct Vec3 {
    double x, y, z;
};

struct Vec2 {
    double x, y;
};

inline Vec3 Load3(double const *p) {
    return {p[0], p[1], p[2]};
}
inline Vec2 Load2(double const *p) {
    return {p[0], p[1]};
}

inline void Store(Vec3 v, double *out) {
    out[0] = v.x;
    out[1] = v.y;
    out[2] = v.z;
}

inline void Store(Vec2 v, double *out) {
    out[0] = v.x;
    out[1] = v.y;
}

inline Vec3 operator+(Vec3 a, Vec3 b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec2 operator+(Vec2 a, Vec2 b) {
    return {a.x + b.x, a.y + b.y};
}
inline Vec3 operator-(Vec3 a, Vec3 b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec2 operator-(Vec2 a, Vec2 b) {
    return {a.x - b.x, a.y - b.y};
}
inline Vec3 operator*(Vec3 v, double k) {
    return {v.x * k, v.y * k, v.z * k};
}
inline Vec2 operator*(Vec2 v, double k) {
    return {v.x * k, v.y * k};
}
inline Vec3 operator/(Vec3 v, double k) {
    return {v.x / k, v.y / k, v.z / k};
}
inline Vec2 operator/(Vec2 v, double k) {
    return {v.x / k, v.y / k};
}

inline double Dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline double Dot(Vec2 a, Vec2 b) {
    return a.x * b.x + a.y * b.y;
}

inline Vec3 Cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Cross(Vec2 a, Vec2 b) {
    return a.x * b.y - a.y * b.x;
}

inline double Length(Vec3 v) {
    return std::sqrt(Dot(v, v));
}
inline double Length(Vec2 v) {
    return std::sqrt(Dot(v, v));
}

/// Divided by the length; a zero vector becomes NaN.
inline Vec3 Unit(Vec3 v) {
    return v / Length(v);
}
inline Vec2 Unit(Vec2 v) {
    return v / Length(v);
}

} // namespace zvi::lib::math
