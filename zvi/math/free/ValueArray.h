#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MTArray.h"

// Smallest, largest and mean value of an array, and dropping repeated ones. For an MArray or a view of any storage.

namespace zvi::lib {

/// The smallest value; 0 for an empty array. A NaN is passed over, unless there is nothing else.
ZVI_API double GetMinValue(MTArray<double> const &values);
/// The same of an array.
ZVI_API double GetMinValue(MArray<double> const &values);
/// The same of whole numbers.
ZVI_API int GetMinValue(MTArray<int> const &values);
/// The same of an array of whole numbers.
ZVI_API int GetMinValue(MArray<int> const &values);

/// The largest value; 0 for an empty array. A NaN is passed over, unless there is nothing else.
ZVI_API double GetMaxValue(MTArray<double> const &values);
/// The same of an array.
ZVI_API double GetMaxValue(MArray<double> const &values);
/// The same of whole numbers.
ZVI_API int GetMaxValue(MTArray<int> const &values);
/// The same of an array of whole numbers.
ZVI_API int GetMaxValue(MArray<int> const &values);

/// The sum in order of the index, divided by the count; 0.0 for an empty array. A NaN makes the mean NaN.
ZVI_API double GetAvgValue(MTArray<double> const &values);
/// The same of an array.
ZVI_API double GetAvgValue(MArray<double> const &values);
/// The same of whole numbers.
ZVI_API double GetAvgValue(MTArray<int> const &values);
/// The same of an array of whole numbers.
ZVI_API double GetAvgValue(MArray<int> const &values);

/// Keeps the first of each value and drops its repetitions; the rest stays in order. NaNs are all kept. O(n log n).
ZVI_API void RemoveSameVal(MArray<int> &values);
/// The same; 0.0 and -0.0 are one value.
ZVI_API void RemoveSameVal(MArray<double> &values);
/// The same, where a value within `tol` (inclusive) of one that was kept earlier counts as its repetition. A negative
/// or NaN tolerance counts as 0.
ZVI_API void RemoveSameVal(MArray<double> &values, double tol);

} // namespace zvi::lib
