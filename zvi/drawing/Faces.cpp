#include "zvi/drawing/FacesDetail.h"

#include "zvi/drawing/NestingDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib::drawing {

namespace {

/// Takes walks apart where they come back to a place.
class LoopSplitter {
public:
    explicit LoopSplitter(PlanarMap const &map) : m_map(map), m_stackOfPlace(Index(map.Places().Count()), -1) {}

    std::vector<Loop> LoopsOf(HalfEdge first) {
        std::vector<Loop> loops;
        std::vector<HalfEdge> open;
        HalfEdge h = first;
        do {
            m_stackOfPlace[Index(m_map.Origin(h))] = static_cast<int>(open.size());
            open.push_back(h);
            if (int const begin = m_stackOfPlace[Index(m_map.Target(h))]; begin >= 0) {
                loops.push_back(MakeLoop({open.begin() + begin, open.end()}));
                open.resize(Index(begin));
            }
            h = m_map.Next(h);
        } while (!(h == first));
        assert(open.empty());
        return loops;
    }

private:
    Loop MakeLoop(std::vector<HalfEdge> halves) {
        auto first = halves.begin();
        for (auto h = halves.begin(); h != halves.end(); ++h) {
            m_stackOfPlace[Index(m_map.Origin(*h))] = -1;
            if (ComesFirst(BeginOf(m_map, *h), BeginOf(m_map, *first)))
                first = h;
        }
        std::rotate(halves.begin(), first, halves.end());
        double const area = AreaOf(m_map, halves);
        return {std::move(halves), area};
    }

    PlanarMap const &m_map;
    std::vector<int> m_stackOfPlace; ///< where the walk left each place, -1 when the place is not open
};

/// Orders loops by their places, then by their edges.
bool LoopComesFirst(PlanarMap const &map, Loop const &a, Loop const &b) {
    return std::lexicographical_compare(a.halves.begin(), a.halves.end(), b.halves.begin(), b.halves.end(),
                                        [&](HalfEdge h, HalfEdge other) {
                                            DrawingPoint const p = BeginOf(map, h), q = BeginOf(map, other);
                                            if (!(p == q))
                                                return ComesFirst(p, q);
                                            // Two faces may share two places and the edge between them differ: the one
                                            // that bulges less comes first.
                                            DrawingPoint const middle = PointAt(map.Edge(h).stretch, 0.5);
                                            DrawingPoint const otherMiddle = PointAt(map.Edge(other).stretch, 0.5);
                                            return !(middle == otherMiddle) && ComesFirst(middle, otherMiddle);
                                        });
}

/// The face that a walk bounds: of its loops the one that runs counter-clockwise is the border.
Face FaceOf(std::vector<Loop> loops) {
    Face face;
    auto const outer =
        std::max_element(loops.begin(), loops.end(), [](Loop const &a, Loop const &b) { return a.area < b.area; });
    face.outer = std::move(*outer);
    loops.erase(outer);
    face.holes = std::move(loops);
    return face;
}

} // namespace

std::vector<Face> FindFaces(PlanarMap const &map, double snap) {
    FaceWalks const walks = WalkFaces(map);
    LoopSplitter splitter(map);
    std::vector<int> const parents = NestOutsides(map, walks, snap);
    std::vector<int> faceOfWalk(walks.walks.size(), -1);
    std::vector<Face> faces;
    for (std::size_t w = 0; w < walks.walks.size(); ++w) {
        if (walks.walks[w].isOutside || !(walks.walks[w].area > 0.0))
            continue;
        faceOfWalk[w] = static_cast<int>(faces.size());
        faces.push_back(FaceOf(splitter.LoopsOf(walks.walks[w].first)));
    }
    for (std::size_t w = 0; w < walks.walks.size(); ++w) {
        if (parents[w] < 0 || faceOfWalk[Index(parents[w])] < 0)
            continue;
        std::vector<Loop> &holes = faces[Index(faceOfWalk[Index(parents[w])])].holes;
        for (Loop &loop : splitter.LoopsOf(walks.walks[w].first))
            holes.push_back(std::move(loop));
    }
    auto const comesFirst = [&](Loop const &a, Loop const &b) { return LoopComesFirst(map, a, b); };
    for (Face &face : faces)
        std::sort(face.holes.begin(), face.holes.end(), comesFirst);
    std::sort(faces.begin(), faces.end(), [&](Face const &a, Face const &b) { return comesFirst(a.outer, b.outer); });
    return faces;
}

} // namespace zvi::lib::drawing
