#include "apps/zvi/domains/model/ChordError.h"

#include <algorithm>
#include <cassert>

namespace zvi::app {

double ChordError::ForSize(double size) const {
    assert(!(size < 0.0));
    double error = absolute;
    if (!(error > 0.0))
        error = kRelativeChordError * size;
    if (!(absolute > 0.0) && tolerance > 0.0)
        error = std::min(error, kChordErrorOfTolerance * tolerance);
    return std::max(error, kSmallestChordError * size);
}

} // namespace zvi::app
