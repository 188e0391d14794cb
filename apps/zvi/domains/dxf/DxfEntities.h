#pragma once

#include "apps/zvi/domains/dxf/DxfDocument.h"
#include "apps/zvi/domains/geometry/Affine.h"
#include "apps/zvi/domains/geometry/Spline.h"

#include <string_view>
#include <variant>
#include <vector>

namespace zvi::app {

/// Each shape is in the coordinates in which the format gives it: LINE, ELLIPSE, SPLINE and three-dimensional
/// polylines in those of the drawing (or block), the others in those of the entity, which FromExtrusion maps there.
struct DxfLine {
    Point3 start;
    Point3 end;
};

/// An ARC, or a CIRCLE as the arc from 0 to 360 degrees. Counter-clockwise; the angles are as written.
struct DxfArc {
    Point3 center;
    double radius = 0.0;
    double startDegrees = 0.0;
    double endDegrees = 360.0;
    Point3 extrusion{0.0, 0.0, 1.0};
};

/// A vertex and the bulge of the segment that leaves it: the tangent of a quarter of the arc's angle, positive
/// counter-clockwise, 0 for a straight segment.
struct DxfVertex {
    Point3 at;
    double bulge = 0.0;
};

/// LWPOLYLINE, or POLYLINE that is no mesh.
struct DxfPolyline {
    std::vector<DxfVertex> vertices;
    bool closed = false;
    Point3 extrusion{0.0, 0.0, 1.0};
};

/// From `from` to `to` (radians of the parameter, not of the angle) about `extrusion`.
struct DxfEllipse {
    Point3 center;
    Point3 majorAxis;
    double ratio = 1.0;
    double from = 0.0;
    double to = 0.0;
    Point3 extrusion{0.0, 0.0, 1.0};
};

/// A block drawn at `at`, scaled, turned, and repeated in rows and columns along its own turned axes.
struct DxfInsert {
    std::string_view block;
    Point3 at;
    Point3 scale{1.0, 1.0, 1.0};
    double degrees = 0.0;
    int columns = 1;
    int rows = 1;
    double columnStep = 0.0;
    double rowStep = 0.0;
    Point3 extrusion{0.0, 0.0, 1.0};
};

/// An entity that is no curve: text, hatches, dimensions, faces, ...
struct DxfNoCurve {};

/// A POLYLINE that is a mesh.
struct DxfMesh {};

using DxfShape = std::variant<DxfNoCurve, DxfMesh, DxfLine, DxfArc, DxfPolyline, DxfEllipse, Spline, DxfInsert>;

/// An entity with what every kind has.
struct DxfEntity {
    std::string_view type;
    std::string_view layer;
    std::string_view handle;
    std::size_t line = 0;
    bool paperSpace = false;
    bool invisible = false;
    DxfShape shape;
};

/// The entities of `records`, in their order. The VERTEX records of a POLYLINE become part of it; SEQEND is dropped.
/// Throws InputError, with the line, where a number is none or a group that the kind cannot do without is missing.
std::vector<DxfEntity> ParseDxfEntities(DxfDocument const &document, std::vector<DxfRecord> const &records);

} // namespace zvi::app
