#include "zvi/spatial/MPointSpatialIndex.h"

namespace zvi::lib {

MPointSpatialIndex::~MPointSpatialIndex() = default;

} // namespace zvi::lib
