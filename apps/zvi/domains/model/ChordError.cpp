#include "apps/zvi/domains/model/ChordError.h"

#include <algorithm>

namespace zvi::app {

double ChordError::ForSize(double size) const {
    return absolute > 0.0 ? std::max(absolute, kSmallestChordError * size) : kRelativeChordError * size;
}

} // namespace zvi::app
