#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// What an application implements to say what the items of a `CTriangleSpatialIndex` are. The order of the virtual
/// operations is fixed, because client code is compiled against it.
class ZVI_API ICompTri {
public:
    /// Not 0 if the two triangles are within `tol` of each other.
    virtual int Compare(void *item1, void *item2, float tol) = 0;
    /// Called for two triangles for which `Compare` said so. A pair that shares several cells comes once for each.
    virtual void Report(void *item1, void *item2) = 0;
    /// Fills in three corners and the normal, three coordinates each. Not 0 if the triangle is to be written.
    virtual int GetTriangle(void *item, float *a, float *b, float *c, float *normal) = 0;

protected:
    /// For classes derived from it alone.
    ICompTri() = default;
    ICompTri(ICompTri const &) = default;
    ICompTri &operator=(ICompTri const &) = default;
    ~ICompTri() = default;
};

} // namespace zvi::lib
