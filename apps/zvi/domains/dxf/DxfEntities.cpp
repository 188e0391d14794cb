#include "apps/zvi/domains/dxf/DxfEntities.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Text.h"

#include <algorithm>
#include <numbers>
#include <span>
#include <string>
#include <utility>

namespace zvi::app {

namespace {

/// The groups of one record, looked up by code; the first of a code counts.
class Groups {
public:
    Groups(DxfDocument const &document, DxfRecord const &of)
        : m_record(of), m_pairs(std::span(document.pairs).subspan(of.first, of.count)) {}

    std::span<DxfPair const> All() const { return m_pairs; }

    DxfPair const *Find(int code) const {
        auto const found =
            std::find_if(m_pairs.begin(), m_pairs.end(), [code](DxfPair const &p) { return p.code == code; });
        return found == m_pairs.end() ? nullptr : &*found;
    }

    double Number(int code, double otherwise) const {
        DxfPair const *pair = Find(code);
        return pair ? NumberOf(*pair) : otherwise;
    }

    double Number(int code) const {
        DxfPair const *pair = Find(code);
        if (!pair)
            throw InputError(m_record.line, std::string(m_record.type) + " has no group " + std::to_string(code) +
                                                "; the file is damaged, export it again");
        return NumberOf(*pair);
    }

    int Integer(int code, int otherwise) const {
        DxfPair const *pair = Find(code);
        return pair ? IntegerOf(*pair) : otherwise;
    }

    std::string_view Text(int code) const {
        DxfPair const *pair = Find(code);
        return pair ? Trimmed(pair->value) : std::string_view();
    }

    /// The point whose x is in group `code`, y in `code` + 10 and z in `code` + 20; z may be missing.
    Point3 Point(int code) const { return {Number(code), Number(code + 10), Number(code + 20, 0.0)}; }

    Point3 Direction(int code, Point3 const &otherwise) const {
        return {Number(code, otherwise.x), Number(code + 10, otherwise.y), Number(code + 20, otherwise.z)};
    }

    Point3 Extrusion() const { return Direction(210, {0.0, 0.0, 1.0}); }

private:
    DxfRecord const &m_record;
    std::span<DxfPair const> m_pairs;
};

/// Bits of group 70 of a POLYLINE; the first also of LWPOLYLINE and SPLINE.
constexpr int kClosedBit = 1;
constexpr int k3dBit = 8;
constexpr int kMeshBits = 16 | 64;

DxfShape ParseLine(Groups const &groups) {
    return DxfLine{groups.Point(10), groups.Point(11)};
}

DxfShape ParseCircle(Groups const &groups) {
    return DxfArc{groups.Point(10), groups.Number(40), 0.0, 360.0, groups.Extrusion()};
}

DxfShape ParseArc(Groups const &groups) {
    return DxfArc{groups.Point(10), groups.Number(40), groups.Number(50), groups.Number(51), groups.Extrusion()};
}

DxfShape ParseEllipse(Groups const &groups) {
    DxfEllipse ellipse;
    ellipse.center = groups.Point(10);
    ellipse.majorAxis = groups.Point(11);
    ellipse.ratio = groups.Number(40);
    ellipse.from = groups.Number(41, 0.0);
    ellipse.to = groups.Number(42, 2.0 * std::numbers::pi);
    ellipse.extrusion = groups.Extrusion();
    return ellipse;
}

DxfShape ParseLwPolyline(Groups const &groups) {
    DxfPolyline polyline;
    polyline.closed = (groups.Integer(70, 0) & kClosedBit) != 0;
    polyline.extrusion = groups.Extrusion();
    double const elevation = groups.Number(38, 0.0);
    for (DxfPair const &pair : groups.All()) {
        if (pair.code == 10)
            polyline.vertices.push_back({{NumberOf(pair), 0.0, elevation}, 0.0});
        else if (pair.code == 20 && !polyline.vertices.empty())
            polyline.vertices.back().at.y = NumberOf(pair);
        else if (pair.code == 42 && !polyline.vertices.empty())
            polyline.vertices.back().bulge = NumberOf(pair);
    }
    return polyline;
}

/// Sorts the points that a SPLINE spreads over groups x, x + 10, x + 20 into `points`.
void AddCoordinate(std::vector<Point3> &points, int axis, DxfPair const &pair) {
    double const value = NumberOf(pair);
    if (axis == 0)
        points.push_back({value, 0.0, 0.0});
    else if (!points.empty())
        (axis == 1 ? points.back().y : points.back().z) = value;
}

DxfShape ParseSpline(Groups const &groups) {
    Spline spline;
    spline.closed = (groups.Integer(70, 0) & kClosedBit) != 0;
    spline.degree = groups.Integer(71, 3);
    spline.startTangent = groups.Direction(12, {});
    spline.endTangent = groups.Direction(13, {});
    for (DxfPair const &pair : groups.All()) {
        switch (pair.code) {
        case 40:
            spline.knots.push_back(NumberOf(pair));
            break;
        case 41:
            spline.weights.push_back(NumberOf(pair));
            break;
        case 10:
        case 20:
        case 30:
            AddCoordinate(spline.controls, pair.code / 10 - 1, pair);
            break;
        case 11:
        case 21:
        case 31:
            AddCoordinate(spline.fitPoints, pair.code / 10 - 1, pair);
            break;
        default:
            break;
        }
    }
    return spline;
}

DxfShape ParseInsert(Groups const &groups) {
    DxfInsert insert;
    insert.block = groups.Text(2);
    insert.at = groups.Point(10);
    insert.scale = {groups.Number(41, 1.0), groups.Number(42, 1.0), groups.Number(43, 1.0)};
    insert.degrees = groups.Number(50, 0.0);
    insert.columns = std::max(1, groups.Integer(70, 1));
    insert.rows = std::max(1, groups.Integer(71, 1));
    insert.columnStep = groups.Number(44, 0.0);
    insert.rowStep = groups.Number(45, 0.0);
    insert.extrusion = groups.Extrusion();
    return insert;
}

/// The POLYLINE whose groups are given, still without its vertices.
DxfShape ParsePolylineHead(Groups const &groups) {
    int const flags = groups.Integer(70, 0);
    if ((flags & kMeshBits) != 0)
        return DxfMesh{};
    DxfPolyline polyline;
    polyline.closed = (flags & kClosedBit) != 0;
    if ((flags & k3dBit) == 0)
        polyline.extrusion = groups.Extrusion();
    return polyline;
}

/// Adds a VERTEX to its POLYLINE. Control points of a spline frame only shape the curve and are not on it.
void AddVertex(DxfPolyline &polyline, Groups const &groups) {
    constexpr int kFramePointBit = 16;
    if ((groups.Integer(70, 0) & kFramePointBit) == 0)
        polyline.vertices.push_back({groups.Point(10), groups.Number(42, 0.0)});
}

using ShapeParser = DxfShape (*)(Groups const &);

constexpr std::pair<std::string_view, ShapeParser> kShapeParsers[] = {
    {"LINE", ParseLine},
    {"ARC", ParseArc},
    {"CIRCLE", ParseCircle},
    {"LWPOLYLINE", ParseLwPolyline},
    {"POLYLINE", ParsePolylineHead},
    {"ELLIPSE", ParseEllipse},
    {"SPLINE", ParseSpline},
    {"INSERT", ParseInsert},
};

DxfShape ParseShape(std::string_view type, Groups const &groups) {
    for (auto const &[name, parse] : kShapeParsers) {
        if (name == type)
            return parse(groups);
    }
    return DxfNoCurve{};
}

DxfEntity ParseEntity(DxfRecord const &record, Groups const &groups) {
    DxfEntity entity;
    entity.type = record.type;
    entity.layer = groups.Find(8) ? groups.Text(8) : std::string_view("0");
    entity.handle = groups.Text(5);
    entity.line = record.line;
    entity.paperSpace = groups.Integer(67, 0) == 1;
    entity.invisible = groups.Integer(60, 0) == 1;
    entity.shape = ParseShape(record.type, groups);
    return entity;
}

/// The elevation of a plane POLYLINE stands in its head; its vertices may repeat it or leave it out.
void SetElevation(DxfEntity &polyline, Groups const &head) {
    if ((head.Integer(70, 0) & k3dBit) != 0)
        return;
    for (DxfVertex &vertex : std::get<DxfPolyline>(polyline.shape).vertices)
        vertex.at.z = head.Number(30, 0.0);
}

} // namespace

std::vector<DxfEntity> ParseDxfEntities(DxfDocument const &document, std::vector<DxfRecord> const &records) {
    std::vector<DxfEntity> entities;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i].type == "SEQEND")
            continue;
        Groups const head(document, records[i]);
        entities.push_back(ParseEntity(records[i], head));
        if (records[i].type != "POLYLINE")
            continue;
        auto *polyline = std::get_if<DxfPolyline>(&entities.back().shape);
        for (; i + 1 < records.size() && records[i + 1].type == "VERTEX"; ++i) {
            if (polyline)
                AddVertex(*polyline, Groups(document, records[i + 1]));
        }
        if (polyline)
            SetElevation(entities.back(), head);
    }
    return entities;
}

} // namespace zvi::app
