#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace zvi::lib::spatial {

/// A box of any dimension with its sides parallel to the axes: a copy of one of the public boxes, whose corners stand
/// in the same order. Containment is half-open: the lower faces belong to the box, the upper ones do not.
template <int dimension>
struct Extent {
    double min[dimension];
    double max[dimension];
};

/// A point of any dimension.
template <int dimension>
struct Spot {
    double at[dimension];

    double &operator[](int axis) { return at[axis]; }
    double operator[](int axis) const { return at[axis]; }
};

/// Numbers of the parts that mid planes cut a box into: bit a is set in the part that is high along axis a. As the
/// number of a part, `kPartCount` says that there is none.
template <int dimension>
inline constexpr int kPartCount = 1 << dimension;

/// The same box, of another type.
template <int dimension, typename Box>
Extent<dimension> ExtentOf(Box const &box) {
    return std::bit_cast<Extent<dimension>>(box);
}

/// The place that a mid plane has everywhere.
inline double Mid(double min, double max) {
    return (min + max) * 0.5;
}

/// Whether `inner` lies in `outer`.
template <int dimension>
bool Contains(Extent<dimension> const &outer, Extent<dimension> const &inner) {
    bool isWithin = true;
    for (int a = 0; a < dimension; ++a)
        isWithin = isWithin & (inner.min[a] >= outer.min[a]) & (inner.max[a] < outer.max[a]);
    return isWithin;
}

/// Whether the point lies in the box, as a box without a size does.
template <int dimension>
bool Contains(Extent<dimension> const &outer, Spot<dimension> const &point) {
    bool isWithin = true;
    for (int a = 0; a < dimension; ++a)
        isWithin = isWithin & (point[a] >= outer.min[a]) & (point[a] < outer.max[a]);
    return isWithin;
}

/// The first part of the region that contains the box, `kPartCount` when none does. Without branches: which part it is
/// cannot be foretold.
template <int dimension>
int PartContaining(Extent<dimension> const &region, Extent<dimension> const &box) {
    unsigned int part = 0;
    bool isWithin = true;
    for (int a = 0; a < dimension; ++a) {
        double const mid = Mid(region.min[a], region.max[a]);
        bool const isLow = (box.min[a] >= region.min[a]) & (box.max[a] < mid);
        bool const isHigh = (box.min[a] >= mid) & (box.max[a] < region.max[a]);
        isWithin = isWithin & (isLow | isHigh);
        part |= static_cast<unsigned int>(!isLow) << a;
    }
    return isWithin ? static_cast<int>(part) : kPartCount<dimension>;
}

/// A part of the region by its number.
template <int dimension>
Extent<dimension> PartOf(Extent<dimension> const &region, int part) {
    Extent<dimension> result;
    for (int a = 0; a < dimension; ++a) {
        double const mid = Mid(region.min[a], region.max[a]);
        bool const isHigh = (part >> a & 1) != 0;
        result.min[a] = isHigh ? mid : region.min[a];
        result.max[a] = isHigh ? region.max[a] : mid;
    }
    return result;
}

template <int dimension>
bool IsSame(Extent<dimension> const &left, Extent<dimension> const &right) {
    for (int a = 0; a < dimension; ++a) {
        if (left.min[a] != right.min[a] || left.max[a] != right.max[a])
            return false;
    }
    return true;
}

/// The box around both.
template <int dimension>
Extent<dimension> Around(Extent<dimension> const &left, Extent<dimension> const &right) {
    Extent<dimension> around;
    for (int a = 0; a < dimension; ++a) {
        around.min[a] = std::min(left.min[a], right.min[a]);
        around.max[a] = std::max(left.max[a], right.max[a]);
    }
    return around;
}

/// The box of what may be anywhere.
template <int dimension>
constexpr Extent<dimension> Everything() {
    Extent<dimension> box{};
    for (int a = 0; a < dimension; ++a) {
        box.min[a] = -std::numeric_limits<double>::infinity();
        box.max[a] = std::numeric_limits<double>::infinity();
    }
    return box;
}

/// The box that takes on the size of whatever it is widened by.
template <int dimension>
constexpr Extent<dimension> Nothing() {
    Extent<dimension> const all = Everything<dimension>();
    Extent<dimension> none{};
    std::copy_n(all.max, dimension, none.min);
    std::copy_n(all.min, dimension, none.max);
    return none;
}

template <int dimension>
bool IsFinite(Extent<dimension> const &box) {
    for (int a = 0; a < dimension; ++a) {
        if (!std::isfinite(box.min[a]) || !std::isfinite(box.max[a]))
            return false;
    }
    return true;
}

template <int dimension>
Spot<dimension> LowerCorner(Extent<dimension> const &box) {
    Spot<dimension> corner;
    std::copy_n(box.min, dimension, corner.at);
    return corner;
}

template <int dimension>
Spot<dimension> UpperCorner(Extent<dimension> const &box) {
    Spot<dimension> corner;
    std::copy_n(box.max, dimension, corner.at);
    return corner;
}

/// A box without a size.
template <int dimension>
Extent<dimension> BoxAt(Spot<dimension> const &point) {
    Extent<dimension> box;
    std::copy_n(point.at, dimension, box.min);
    std::copy_n(point.at, dimension, box.max);
    return box;
}

template <int dimension>
Spot<dimension> CentreOf(Extent<dimension> const &box) {
    Spot<dimension> centre;
    for (int a = 0; a < dimension; ++a)
        centre[a] = Mid(box.min[a], box.max[a]);
    return centre;
}

template <int dimension>
double Length(Spot<dimension> const &vector) {
    double sum = vector[0] * vector[0];
    for (int a = 1; a < dimension; ++a)
        sum += vector[a] * vector[a];
    return std::sqrt(sum);
}

template <int dimension>
double Diagonal(Extent<dimension> const &box) {
    Spot<dimension> sides;
    for (int a = 0; a < dimension; ++a)
        sides[a] = box.max[a] - box.min[a];
    return Length(sides);
}

} // namespace zvi::lib::spatial
