#include "zvi/drawing/SoundnessDetail.h"

#include "zvi/drawing/BoxIndexDetail.h"
#include "zvi/drawing/RunsDetail.h"

#include <algorithm>
#include <map>

namespace zvi::lib::drawing {

namespace {

/// Points that are looked at stand off their edge by this many clear distances; edges that are shorter or rounder than
/// so many have no room for that.
constexpr double kOff = 1.5, kRoomy = 4.0;

/// Counts which faces hold a point.
class FaceCounter {
public:
    FaceCounter(PlanarMap const &map, std::vector<Face> const &faces, double snap)
        : m_map(map), m_snap(snap), m_faceOf(2 * Index(map.EdgeCount()), -1),
          m_index(Boxes(map, m_edges), base::Workers()) {
        for (std::size_t f = 0; f < faces.size(); ++f) {
            Note(faces[f].outer, static_cast<int>(f));
            for (Loop const &hole : faces[f].holes)
                Note(hole, static_cast<int>(f));
        }
    }

    /// Whether all edges but one keep so far from a point of that one.
    bool IsAlone(int edge, DrawingPoint p, double distance) {
        m_index.Find(Grown({p.x, p.y, p.x, p.y}, distance), m_found);
        return std::all_of(m_found.begin(), m_found.end(), [&](int i) {
            int const other = m_edges[Index(i)];
            return other == edge || DistanceTo(m_map.Edge(other).stretch, p) > distance;
        });
    }

    /// Whether the borders that run to the left of a point lead into this face once more than out of it, and as often
    /// into each other one as out of it.
    bool IsIn(int face, DrawingPoint p) {
        std::map<int, int> entered{{face, -1}};
        m_index.Find({-HUGE_VAL, p.y, p.x, p.y}, m_found);
        for (int const i : m_found) {
            int const edge = m_edges[Index(i)];
            Stretch const &s = m_map.Edge(edge).stretch;
            std::array<Run, 3> runs;
            for (int k = RunsOf(s, m_snap, runs); k-- > 0;)
                if (Run const &run = runs[Index(k)]; run.lowY <= p.y && p.y < run.highY && XAt(s, run, p.y) <= p.x) {
                    HalfEdge const along = HalfEdge::Along(edge);
                    ++entered[m_faceOf[Index((run.upward ? along.Twin() : along).number)]];
                    --entered[m_faceOf[Index((run.upward ? along : along.Twin()).number)]];
                }
        }
        entered.erase(-1);
        return std::all_of(entered.begin(), entered.end(), [](auto const &of) { return of.second == 0; });
    }

private:
    static std::vector<Box> Boxes(PlanarMap const &map, std::vector<int> &edges) {
        std::vector<Box> boxes;
        for (int e = 0; e < map.EdgeCount(); ++e)
            if (map.IsInMap(e)) {
                edges.push_back(e);
                boxes.push_back(BoxOf(map.Edge(e).stretch));
            }
        return boxes;
    }

    void Note(Loop const &loop, int face) {
        for (HalfEdge const h : loop.halves)
            m_faceOf[Index(h.number)] = face;
    }

    PlanarMap const &m_map;
    double m_snap;
    std::vector<int> m_faceOf; ///< of each half-edge, -1 for what lies outside of all
    std::vector<int> m_edges;  ///< those in the map
    BoxIndex m_index;
    std::vector<int> m_found;
};

HalfEdge LongestOf(PlanarMap const &map, Loop const &loop) {
    return *std::max_element(loop.halves.begin(), loop.halves.end(), [&](HalfEdge a, HalfEdge b) {
        return LengthOf(map.Edge(a).stretch) < LengthOf(map.Edge(b).stretch);
    });
}

/// The point that far to the left of the middle of a stretch.
DrawingPoint LeftOf(Stretch const &s, double distance) {
    DrawingPoint const middle = PointAt(s, 0.5);
    DrawingPoint const ahead = s.isArc ? Left(middle - s.center) * std::copysign(1.0, s.sweep) : s.end - s.start;
    return middle + Left(ahead) * (distance / Length(ahead));
}

bool IsRoomy(Stretch const &s, double clear) {
    return LengthOf(s) > kRoomy * clear && (!s.isArc || s.radius > kRoomy * clear);
}

} // namespace

bool IsSound(PlanarMap const &map, double snap) {
    FaceWalks const faces = WalkFaces(map, base::Workers());
    double areas = 0.0, length = 0.0;
    for (FaceWalk const &face : faces.walks) {
        areas += face.area;
        length += face.perimeter;
        if (!face.isOutside && !(face.area > 0.0))
            return false;
        for (HalfEdge const h : WalkFrom(map, face.first))
            if (!(EndOf(map, h) == BeginOf(map, map.Next(h))))
                return false;
    }
    return map.IsPlanar() && std::fabs(areas) <= snap * length;
}

bool AreApart(PlanarMap const &map, std::vector<Face> const &faces, double snap, double clear) {
    FaceCounter counter(map, faces, snap);
    auto const isSeen = [&](Loop const &loop, int face) {
        HalfEdge const h = LongestOf(map, loop);
        Stretch const s = h.IsReversed() ? Reversed(map.Edge(h).stretch) : map.Edge(h).stretch;
        return !IsRoomy(s, clear) || !counter.IsAlone(h.Edge(), PointAt(s, 0.5), (1.0 + kOff) * clear) ||
               counter.IsIn(face, LeftOf(s, kOff * clear));
    };
    for (int f = 0; f < static_cast<int>(faces.size()); ++f) {
        Face const &face = faces[Index(f)];
        if (!isSeen(face.outer, f) ||
            !std::all_of(face.holes.begin(), face.holes.end(), [&](Loop const &hole) { return isSeen(hole, f); }))
            return false;
    }
    return true;
}

} // namespace zvi::lib::drawing
