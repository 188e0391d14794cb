#include "zvi/drawing/SoundnessDetail.h"

#include "zvi/drawing/BoxIndexDetail.h"
#include "zvi/drawing/NestingDetail.h"
#include "zvi/drawing/RunsDetail.h"
#include "zvi/drawing/ShortestFirstDetail.h"

#include <algorithm>
#include <map>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Points that are looked at stand off their edge by this many clear distances; edges that are shorter or rounder than
/// so many have no room for that.
constexpr double kOff = 1.5, kRoomy = 4.0;

/// Parts of a curve meet where their fractions of it differ by no more than this.
constexpr double kSameFraction = 1e-9;

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

/// Whether two edges of the map share a part of their curve but for rounding.
bool SharesAnyFraction(PlanarMap const &map) {
    std::vector<std::array<double, 3>> parts;
    for (int e = 0; e < map.EdgeCount(); ++e)
        if (Stretch const &s = map.Edge(e).stretch; map.IsInMap(e) && !s.IsConnector())
            parts.push_back({static_cast<double>(s.curve), s.from, s.to});
    std::sort(parts.begin(), parts.end());
    return std::adjacent_find(parts.begin(), parts.end(), [](auto const &a, auto const &b) {
               return a[0] == b[0] && b[1] < a[2] - kSameFraction;
           }) != parts.end();
}

/// What the parts of a map enclose that stand in no face. One as thin as rounding is none.
double EnclosedArea(UsableCurves const &curves, Arrangement const &arranged, FaceWalks const &walks) {
    double const same = SameDistance(curves.tolerance, arranged.snap, curves.landmarks);
    std::vector<int> const around = NestOutsides(arranged.map, walks, arranged.snap, same,
                                                 kMovedInSnaps * arranged.snap, curves.landmarks, base::Workers());
    std::vector<int> const &partOf = walks.numbers->partOf;
    std::vector<int> outsideOf(partOf.size(), -1);
    for (std::size_t w = 0; w < walks.walks.size(); ++w)
        if (walks.walks[w].isOutside)
            outsideOf[Index(partOf[w])] = static_cast<int>(w);
    double area = 0.0;
    for (std::size_t w = 0; w < walks.walks.size(); ++w) {
        if (!walks.walks[w].isOutside)
            continue;
        int in = around[w];
        while (in >= 0 && walks.walks[Index(in)].area <= arranged.snap * walks.walks[Index(in)].perimeter)
            in = around[Index(outsideOf[Index(partOf[Index(in)])])];
        if (in < 0)
            area -= walks.walks[w].area;
    }
    return area;
}

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

bool IsNoFaceInsideOut(PlanarMap const &map, double snap) {
    std::vector<FaceWalk> const walks = WalkFaces(map, base::Workers()).walks;
    return std::all_of(walks.begin(), walks.end(),
                       [snap](FaceWalk const &walk) { return walk.isOutside || walk.area >= -snap * walk.perimeter; });
}

bool AreSimple(PlanarMap const &map, std::vector<Face> const &faces) {
    std::vector<int> lastLoopAt(Index(map.Places().Count()), -1);
    std::vector<bool> isOnLoop(2 * Index(map.EdgeCount()), false);
    int loops = 0;
    auto const isSimple = [&](Loop const &loop) {
        ++loops;
        return std::all_of(loop.halves.begin(), loop.halves.end(), [&](HalfEdge h) {
            bool const isNew = !isOnLoop[Index(h.number)];
            isOnLoop[Index(h.number)] = true;
            return isNew && std::exchange(lastLoopAt[Index(map.Origin(h))], loops) != loops;
        });
    };
    return !SharesAnyFraction(map) && std::all_of(faces.begin(), faces.end(), [&](Face const &face) {
        return face.outer.area > 0.0 && isSimple(face.outer) &&
               std::all_of(face.holes.begin(), face.holes.end(),
                           [&](Loop const &hole) { return hole.area <= 0.0 && isSimple(hole); });
    });
}

bool CoverWhatIsEnclosed(std::vector<Face> const &faces, UsableCurves const &curves, double tolerance,
                         bool keepDuplicates) {
    Arrangement const arranged = Arrange(curves, true, keepDuplicates, base::Workers());
    FaceWalks const walks = WalkFaces(arranged.map, base::Workers());
    double length = 0.0, covered = 0.0;
    for (FaceWalk const &walk : walks.walks)
        length += 0.5 * walk.perimeter;
    for (Face const &face : faces) {
        covered += face.outer.area;
        for (Loop const &hole : face.holes)
            covered += hole.area;
    }
    // Without length an infinite tolerance allows no number.
    return !(std::fabs(covered - EnclosedArea(curves, arranged, walks)) > tolerance * length);
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
