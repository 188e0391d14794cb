#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstring>
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

#if defined(__GNUC__) && defined(__SSE2__)
/// Coordinates along the first two axes, compared at once.
using Pair = double __attribute__((vector_size(16)));

inline Pair PairAt(double const *coordinates) {
    Pair pair;
    std::memcpy(&pair, coordinates, sizeof pair);
    return pair;
}
#endif

/// A bit for each axis along which `holds(left, right)` of the coordinates.
template <int dimension, typename Holds>
unsigned int AxesWhere(double const *left, double const *right, Holds holds) {
    unsigned int axes = 0;
    int first = 0;
#if defined(__GNUC__) && defined(__SSE2__)
    auto const pair = std::bit_cast<Pair>(holds(PairAt(left), PairAt(right)));
    axes = static_cast<unsigned int>(__builtin_ia32_movmskpd(pair));
    first = 2;
#endif
    for (int a = first; a < dimension; ++a)
        axes |= static_cast<unsigned int>(holds(left[a], right[a])) << a;
    return axes;
}

/// The axes along which one coordinate is below another.
template <int dimension>
unsigned int Below(double const *left, double const *right) {
    return AxesWhere<dimension>(left, right, [](auto const &l, auto const &r) { return l < r; });
}

/// Likewise, below another or the same.
template <int dimension>
unsigned int NotAbove(double const *left, double const *right) {
    return AxesWhere<dimension>(left, right, [](auto const &l, auto const &r) { return l <= r; });
}

/// All axes.
template <int dimension>
inline constexpr unsigned int kAllAxes = kPartCount<dimension> - 1;

/// Whether `inner` lies in `outer`.
template <int dimension>
bool Contains(Extent<dimension> const &outer, Extent<dimension> const &inner) {
    return (NotAbove<dimension>(outer.min, inner.min) & Below<dimension>(inner.max, outer.max)) == kAllAxes<dimension>;
}

/// Whether the point lies in the box, as a box without a size does.
template <int dimension>
bool Contains(Extent<dimension> const &outer, Spot<dimension> const &point) {
    return (NotAbove<dimension>(outer.min, point.at) & Below<dimension>(point.at, outer.max)) == kAllAxes<dimension>;
}

template <int dimension>
Spot<dimension> CentreOf(Extent<dimension> const &box) {
    Spot<dimension> centre;
    for (int a = 0; a < dimension; ++a)
        centre[a] = Mid(box.min[a], box.max[a]);
    return centre;
}

/// The first part of the region that contains the box, `kPartCount` when none does. Without branches: which part it is
/// cannot be foretold.
template <int dimension>
[[gnu::always_inline]] inline int PartContaining(Extent<dimension> const &region, Extent<dimension> const &box) {
    Spot<dimension> const mid = CentreOf(region);
    unsigned int const isLow = NotAbove<dimension>(region.min, box.min) & Below<dimension>(box.max, mid.at);
    unsigned int const isHigh = NotAbove<dimension>(mid.at, box.min) & Below<dimension>(box.max, region.max);
    bool const isWithin = (isLow | isHigh) == kAllAxes<dimension>;
    return isWithin ? static_cast<int>(kAllAxes<dimension> & ~isLow) : kPartCount<dimension>;
}

/// A part of the region by its number, below `kPartCount`. Without branches as well.
template <int dimension>
Extent<dimension> PartOf(Extent<dimension> const &region, int part) {
    assert(part >= 0 && part < kPartCount<dimension>);
    Extent<dimension> result;
    for (int a = 0; a < dimension; ++a) {
        double const planes[] = {region.min[a], Mid(region.min[a], region.max[a]), region.max[a]};
        int const high = part >> a & 1;
        result.min[a] = planes[high];
        result.max[a] = planes[high + 1];
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
