#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

class IPointSpatialIndex;

/// Base of the indexes of points: what owns one and hands it out by its interface.
class ZVI_API MPointSpatialIndex {
public:
    /// An index may be deleted through this class.
    virtual ~MPointSpatialIndex();
    /// This object as what it offers.
    virtual IPointSpatialIndex *GetInterface() = 0;

    /// The same for a pointer that may be null, which gives null.
    static IPointSpatialIndex *GetInterfaceST(MPointSpatialIndex *index) {
        return index ? index->GetInterface() : nullptr;
    }

protected:
    /// For classes derived from it alone.
    MPointSpatialIndex() = default;
    MPointSpatialIndex(MPointSpatialIndex const &) = default;
    MPointSpatialIndex &operator=(MPointSpatialIndex const &) = default;
};

} // namespace zvi::lib
