#include "zvi/math/free/ValueArray.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <unordered_set>

namespace zvi::lib {

namespace {

/// The value that `isBetter` prefers to all others. A NaN gives way to any number and to nothing else.
template <class T, class IsBetter>
T PickValue(T const *first, T const *last, IsBetter isBetter) {
    if (first == last)
        return T();
    T best = *first;
    for (T const *value = first + 1; value != last; ++value) {
        if (isBetter(*value, best) || best != best) // NOLINT(misc-redundant-expression): not equal to itself is NaN
            best = *value;
    }
    return best;
}

template <class T>
T MinOf(T const *first, T const *last) {
    return PickValue(first, last, [](T a, T b) { return a < b; });
}

template <class T>
T MaxOf(T const *first, T const *last) {
    return PickValue(first, last, [](T a, T b) { return a > b; });
}

template <class T>
double MeanOf(T const *first, T const *last) {
    if (first == last)
        return 0.0;
    double sum = 0.0;
    for (T const *value = first; value != last; ++value)
        sum += *value;
    return sum / static_cast<double>(last - first);
}

/// Moves the values that `isNew` accepts to the front, in order, and cuts off the rest.
template <class T, class IsNew>
void KeepNew(MArray<T> &values, IsNew isNew) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < values.Size(); ++i) {
        if (isNew(values[i]))
            values[kept++] = values[i];
    }
    values.Resize(kept);
}

} // namespace

double GetMinValue(MTArray<double> const &values) {
    return MinOf<double>(values.begin(), values.end());
}

double GetMinValue(MArray<double> const &values) {
    return MinOf<double>(values.begin(), values.end());
}

int GetMinValue(MTArray<int> const &values) {
    return MinOf<int>(values.begin(), values.end());
}

int GetMinValue(MArray<int> const &values) {
    return MinOf<int>(values.begin(), values.end());
}

double GetMaxValue(MTArray<double> const &values) {
    return MaxOf<double>(values.begin(), values.end());
}

double GetMaxValue(MArray<double> const &values) {
    return MaxOf<double>(values.begin(), values.end());
}

int GetMaxValue(MTArray<int> const &values) {
    return MaxOf<int>(values.begin(), values.end());
}

int GetMaxValue(MArray<int> const &values) {
    return MaxOf<int>(values.begin(), values.end());
}

double GetAvgValue(MTArray<double> const &values) {
    return MeanOf<double>(values.begin(), values.end());
}

double GetAvgValue(MArray<double> const &values) {
    return MeanOf<double>(values.begin(), values.end());
}

double GetAvgValue(MTArray<int> const &values) {
    return MeanOf<int>(values.begin(), values.end());
}

double GetAvgValue(MArray<int> const &values) {
    return MeanOf<int>(values.begin(), values.end());
}

void RemoveSameVal(MArray<int> &values) {
    std::unordered_set<int> seen;
    KeepNew(values, [&seen](int value) { return seen.insert(value).second; });
}

void RemoveSameVal(MArray<double> &values) {
    RemoveSameVal(values, 0.0);
}

void RemoveSameVal(MArray<double> &values, double tol) {
    double const reach = tol > 0.0 ? tol : 0.0;
    std::set<double> kept;
    KeepNew(values, [&kept, reach](double value) {
        if (std::isnan(value))
            return true;
        auto const nearest = kept.lower_bound(value - reach);
        if (nearest != kept.end() && *nearest <= value + reach)
            return false;
        kept.insert(value);
        return true;
    });
}

} // namespace zvi::lib
