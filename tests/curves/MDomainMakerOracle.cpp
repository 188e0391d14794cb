#include "tests/curves/MDomainMakerOracle.h"

#include "tests/curves/PolygonByDefinition.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <numbers>
#include <set>
#include <span>
#include <utility>

namespace zvi::lib::test {

namespace {

std::size_t U(int i) {
    return static_cast<std::size_t>(i);
}

double Angle(double dx, double dy) {
    double const perRadian = 180.0 / std::numbers::pi;
    if (dx == 0)
        return dy == 0 ? 0 : dy > 0 ? 90 : 270;
    if (dx > 0) {
        double const angle = Atan(dy / dx) * perRadian;
        return angle < 0 ? angle + 360 : angle;
    }
    return dx < 0 ? Atan(dy / dx) * perRadian + 180 : 0;
}

DM_VTEX Unit(DM_VTEX a, DM_VTEX b) {
    DM_VTEX v{b.x - a.x, b.y - a.y};
    double const length = std::sqrt(v.x * v.x + v.y * v.y);
    if (length < 1e-12)
        return v;
    return {v.x / length, v.y / length};
}

void Reverse(OracleLoop &loop) {
    std::reverse(loop.Vtex.begin(), loop.Vtex.end());
    std::reverse(loop.Curv.begin(), loop.Curv.end());
    std::reverse(loop.CurvDir.begin(), loop.CurvDir.end());
}

void EraseFront(std::vector<int> &values, std::size_t count) {
    values.erase(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(std::min(count, values.size())));
}

void MergeNeighbours(OracleLoop &loop) {
    for (std::size_t k = loop.Curv.size(); k-- > 1;) {
        if (loop.Curv[k] != loop.Curv[k - 1])
            continue;
        for (std::vector<int> *values : {&loop.Curv, &loop.CurvDir, &loop.Vtex}) {
            if (values->size() > k)
                values->erase(values->begin() + static_cast<std::ptrdiff_t>(k));
        }
    }
}

/// Gathers the curves, then the result.
class MDomainMakerOracle : public OracleResult {
public:
    void AddCurv(unsigned int id, DM_VTEX p1, DM_VTEX p2) {
        m_curvId.push_back(id);
        m_ends.push_back({0, 0});
        int const edge = static_cast<int>(m_ends.size()) - 1;
        m_ends.back().first = Find(p1);
        Attach(m_ends.back().first, edge);
        m_ends.back().second = Find(p2);
        Attach(m_ends.back().second, edge);
    }

    void AddCurvMidPoint(unsigned int id, std::span<DM_VTEX const> pts) {
        auto const found = std::find(m_curvId.begin(), m_curvId.end(), id);
        if (found == m_curvId.end() || pts.empty())
            return;
        std::size_t const e = static_cast<std::size_t>(found - m_curvId.begin());
        int const z = m_ends[e].second;
        int const n0 = static_cast<int>(vertices.size());
        vertices.insert(vertices.end(), pts.begin(), pts.end());
        int const nk = static_cast<int>(vertices.size()) - 1;
        m_edges.resize(vertices.size());
        m_ends[e].second = n0;
        m_edges[U(n0)].push_back(static_cast<int>(e));
        for (int n = n0; n <= nk; ++n) {
            int const added = static_cast<int>(m_ends.size());
            m_curvId.push_back(id);
            m_ends.push_back({n, n == nk ? z : n + 1});
            m_edges[U(n)].push_back(added);
            if (n < nk)
                m_edges[U(n) + 1].push_back(added);
        }
        auto &list = m_edges[U(z)];
        auto const old = std::find(list.rbegin(), list.rend(), static_cast<int>(e));
        *old = static_cast<int>(m_ends.size()) - 1;
    }

    void AddCurvedCurvOnce(unsigned int id, std::span<DM_VTEX const> pts) {
        if (pts.size() < 3)
            return;
        AddCurv(id, pts.front(), pts.back());
        AddCurvMidPoint(id, pts.subspan(1, pts.size() - 2));
    }

    void MakeDomain() {
        Prepare();
        std::vector<int> candidates;
        for (int v = 0; v < static_cast<int>(vertices.size()); ++v) {
            if (!m_dead.count(v))
                candidates.push_back(v);
        }
        std::stable_sort(candidates.begin(), candidates.end(),
                         [this](int u, int v) { return vertices[U(u)].x < vertices[U(v)].x; });
        Scan(candidates);
        Finish();
    }

private:
    using IntSet = std::set<int>;

    int Find(DM_VTEX const &p) {
        auto const last = m_xIndex.upper_bound(p.x + 0.0001);
        for (auto at = m_xIndex.lower_bound(p.x - 0.0001); at != last; ++at) {
            DM_VTEX const &v = vertices[U(at->second)];
            if (std::abs(v.x - p.x) < 0.0001 && std::abs(v.y - p.y) < 0.0001)
                return at->second;
        }
        vertices.push_back(p);
        m_xIndex.insert({p.x, static_cast<int>(vertices.size()) - 1});
        return static_cast<int>(vertices.size()) - 1;
    }

    void Attach(int vtex, int edge) {
        m_edges.resize(std::max(m_edges.size(), U(vtex) + 1));
        m_edges[U(vtex)].push_back(edge);
    }

    int Far(int edge, int vtex) const {
        auto const &[first, second] = m_ends[U(edge)];
        return first == vtex ? second : first;
    }

    void Prepare() {
        auto const key = [this](int edge) {
            auto const &[first, second] = m_ends[U(edge)];
            return std::minmax(first, second);
        };
        IntSet duplicates;
        for (auto const &list : m_edges) {
            for (std::size_t i = 0; i < list.size(); ++i) {
                for (std::size_t k = i + 1; k < list.size() && !duplicates.count(list[i]); ++k) {
                    if (key(list[i]) == key(list[k]))
                        duplicates.insert(list[k]);
                }
            }
        }
        for (auto &list : m_edges)
            std::erase_if(list, [&](int edge) { return duplicates.count(edge) > 0; });

        for (bool changed = true; changed;) {
            changed = false;
            for (auto &list : m_edges) {
                if (list.size() != 1)
                    continue;
                int const edge = list[0];
                std::erase(m_edges[U(m_ends[U(edge)].first)], edge);
                std::erase(m_edges[U(m_ends[U(edge)].second)], edge);
                m_curvId[U(edge)] = 0;
                changed = true;
            }
        }
        for (std::size_t v = 0; v < m_edges.size(); ++v) {
            auto &list = m_edges[v];
            if (list.empty())
                m_dead.insert(static_cast<int>(v));
            auto const angle = [&](int edge) {
                DM_VTEX const &far = vertices[U(Far(edge, static_cast<int>(v)))];
                return Angle(far.x - vertices[v].x, far.y - vertices[v].y);
            };
            std::stable_sort(list.begin(), list.end(),
                             [&](int e, int f) { return list.size() > 2 && angle(e) < angle(f); });
        }
    }

    void Scan(std::vector<int> const &candidates) {
        IntSet doneVtex;
        IntSet doneEdge;
        for (std::size_t at = 0; at < candidates.size();) {
            int const s = candidates[at++];
            if (doneVtex.count(s) || m_edges[U(s)].empty())
                continue;
            int const first = SteepestEdge(s);
            OracleLoop path;
            OracleSurf loop;
            int status = 0;
            if (!Walk(first, m_ends[U(first)].first != s, true, {}, path, loop, status, doneEdge))
                continue;
            AddToHoles(loop);
            std::vector<OracleSurf> const done = DivideInRounds(loop);
            surfs.insert(surfs.end(), done.begin(), done.end());
            for (OracleSurf const &surf : done) {
                std::vector<OracleLoop> loops = surf.Holes;
                loops.push_back(surf);
                for (OracleLoop const &l : loops) {
                    doneVtex.insert(l.Vtex.begin(), l.Vtex.end());
                    doneEdge.insert(l.Curv.begin(), l.Curv.end());
                }
            }
            BarStubs(doneEdge);
            if (!done.empty())
                at = 0;
        }
    }

    /// The edge that leaves the vertex with the smallest sine.
    int SteepestEdge(int s) const {
        int first = -1;
        double least = 0;
        for (int const edge : m_edges[U(s)]) {
            DM_VTEX const &far = vertices[U(Far(edge, s))];
            double const dx = far.x - vertices[U(s)].x;
            double const dy = far.y - vertices[U(s)].y;
            double const length = std::sqrt(dx * dx + dy * dy);
            double const sine = length == 0 ? dy : dy / length;
            if (first < 0 || sine < least) {
                first = edge;
                least = sine;
            }
        }
        return first;
    }

    void AddToHoles(OracleLoop const &loop) {
        DM_VTEX const middle = vertices[U(loop.Vtex[loop.Vtex.size() / 2])];
        auto const holder =
            std::find_if(surfs.begin(), surfs.end(), [&](OracleSurf const &s) { return IsIn(middle, s); });
        if (holder == surfs.end())
            return;
        holder->Holes.push_back(loop);
        Reverse(holder->Holes.back());
    }

    /// Nothing when there are too many to look at.
    std::vector<OracleSurf> DivideInRounds(OracleSurf const &loop) {
        std::size_t const limit = 10 * m_ends.size();
        std::size_t counter = 0;
        std::vector<OracleSurf> done;
        for (std::vector<OracleSurf> work{loop}, next; !work.empty(); work.swap(next), next.clear()) {
            for (OracleSurf const &surf : work) {
                if (++counter > limit) {
                    isAbandoned = true;
                    return {};
                }
                OracleSurf outA;
                OracleSurf outB;
                if (Divide(surf, outA, outB)) {
                    next.push_back(outA);
                    next.push_back(outB);
                } else {
                    done.push_back(surf);
                }
            }
        }
        return done;
    }

    /// Until nothing changes, bars the only edge of each vertex that is not barred.
    void BarStubs(IntSet &barred) const {
        for (bool changed = true; changed;) {
            changed = false;
            for (auto const &list : m_edges) {
                auto const isOpen = [&](int edge) { return !barred.count(edge); };
                if (std::count_if(list.begin(), list.end(), isOpen) == 1) {
                    barred.insert(*std::find_if(list.begin(), list.end(), isOpen));
                    changed = true;
                }
            }
        }
    }

    std::ptrdiff_t OpenCount(int v, IntSet const &barred) const {
        return std::count_if(m_edges[U(v)].begin(), m_edges[U(v)].end(), [&](int e) { return !barred.count(e); });
    }

    int Divide(OracleSurf const &surf, OracleSurf &outA, OracleSurf &outB) {
        IntSet barred;
        for (OracleLoop const &hole : surf.Holes)
            barred.insert(hole.Curv.begin(), hole.Curv.end());
        for (std::size_t i = 1; i < surf.Vtex.size(); ++i) {
            int const v = surf.Vtex[i % surf.Vtex.size()];
            int const in = surf.Curv[i - 1];
            int const out = surf.Curv[i % surf.Curv.size()];
            int const p = surf.Vtex[i - 1];
            if (OpenCount(v, barred) <= 2)
                continue;
            DM_VTEX const back = Unit(vertices[U(v)], vertices[U(p)]);
            DM_VTEX const ahead = Unit(vertices[U(v)], vertices[U(Far(out, v))]);
            for (int const e : m_edges[U(v)]) {
                DM_VTEX const d = Unit(vertices[U(v)], vertices[U(Far(e, v))]);
                bool const along = d.x * back.x + d.y * back.y >= 0.999999 || d.x * ahead.x + d.y * ahead.y >= 0.999999;
                if (e != in && e != out && along) {
                    barred.insert(e);
                    hasBarredEdges = true;
                }
            }
            int far = -1;
            int chord = -1;
            Next(in, m_ends[U(in)].first != p, far, chord, true, barred);
            if (chord == -1 || chord == out)
                continue;

            OracleLoop path;
            OracleSurf loop;
            int status = 0;
            if (!Walk(chord, m_ends[U(chord)].first != v, false, surf, path, loop, status, barred))
                return 0;
            path.CurvDir = Directions(path);
            if (status == 1)
                return Split(surf, path, outA, outB);
            hasHungLoops = true;
            Hang(surf, path, loop, barred, outA, outB);
            return 1;
        }
        return 0;
    }

    void Hang(OracleSurf const &surf, OracleLoop path, OracleSurf const &loop, IntSet const &barred, OracleSurf &outA,
              OracleSurf &outB) const {
        for (std::size_t k = path.Curv.size() - loop.Curv.size(); k-- > 0;) {
            if (OpenCount(path.Vtex[k], barred) > 2) {
                EraseFront(path.Vtex, k);
                EraseFront(path.Curv, k);
                EraseFront(path.CurvDir, k);
                break;
            }
        }
        outA = surf;
        outA.Holes.push_back(path);
        outB = loop;
        Reverse(outB);
    }

    int Split(OracleSurf const &surf, OracleLoop const &path, OracleSurf &outA, OracleSurf &outB) const {
        std::vector<int> const dirs = Directions(surf);
        int ia = -1;
        int ib = -1;
        int const n = static_cast<int>(surf.Curv.size());
        for (int k = 0; k < n; ++k) {
            auto const &[first, second] = m_ends[U(surf.Curv[U(k)])];
            int const start = dirs[U(k)] == 0 ? first : second;
            ia = start == path.Vtex.front() ? k : ia;
            ib = start == path.Vtex.back() ? k : ib;
        }
        if (ia < 0 || ib < 0)
            return 0;
        for (int k = 0; k < (ib - ia + n) % n; ++k)
            outA.Curv.push_back(surf.Curv[U((ia + k) % n)]);
        for (int k = 0; k < (ia - ib + n) % n; ++k)
            outB.Curv.push_back(surf.Curv[U((ib + k) % n)]);
        outA.Curv.insert(outA.Curv.end(), path.Curv.rbegin(), path.Curv.rend());
        outB.Curv.insert(outB.Curv.end(), path.Curv.begin(), path.Curv.end());
        for (OracleSurf *half : {&outA, &outB}) {
            half->CurvDir = Directions(*half);
            half->Vtex = Vertices(*half);
        }
        for (OracleLoop const &hole : surf.Holes) {
            bool const inA = IsIn(vertices[U(hole.Vtex[hole.Vtex.size() / 2])], static_cast<OracleLoop const &>(outA));
            (inA ? outA : outB).Holes.push_back(hole);
        }
        return 1;
    }

    int Walk(int edge, int reverse, bool ccw, OracleSurf const &boundary, OracleLoop &path, OracleLoop &loop,
             int &status, IntSet const &barred) const {
        IntSet const onBoundary(boundary.Vtex.begin(), boundary.Vtex.end());
        auto const [first, second] = m_ends[U(edge)];
        std::vector<int> V = reverse ? std::vector{second, first} : std::vector{first, second};
        std::vector<int> C{edge};
        if (onBoundary.count(V[1])) {
            status = 1;
            path.Vtex = V;
            path.Curv = C;
            return 1;
        }
        for (;;) {
            int const p = V[V.size() - 2];
            int next = -1;
            int nextEdge = -1;
            Next(C.back(), m_ends[U(C.back())].first != p, next, nextEdge, !ccw, barred);
            if (next == -1 || next == p)
                return 0;
            auto const k = std::find(V.begin(), V.end(), next) - V.begin();
            bool const inWalk = U(static_cast<int>(k)) < V.size();
            V.push_back(next);
            C.push_back(nextEdge);
            if (!inWalk && !onBoundary.count(next))
                continue;
            if (onBoundary.count(next))
                status = inWalk ? 2 : 1;
            if (inWalk) {
                loop.Vtex.assign(V.begin() + k, V.end());
                loop.Curv.assign(C.begin() + k, C.end());
            }
            path.Vtex = V;
            path.Curv = C;
            return 1;
        }
    }

    void Next(int edge, int reverse, int &vtex, int &next, bool clockwise, IntSet const &barred) const {
        vtex = next = -1;
        int const w = reverse ? m_ends[U(edge)].first : m_ends[U(edge)].second;
        std::vector<int> const &list = m_edges[U(w)];
        std::size_t const size = list.size();
        std::size_t at = static_cast<std::size_t>(std::find(list.begin(), list.end(), edge) - list.begin());
        if (at == size || size == 1)
            return;
        for (std::size_t step = 1; step < size; ++step) {
            at = clockwise ? (at + size - 1) % size : (at + 1) % size;
            if (barred.count(list[at]))
                continue;
            next = list[at];
            vtex = Far(next, w);
            return;
        }
    }

    std::vector<int> Directions(OracleLoop const &loop) const {
        std::vector<int> dirs;
        std::size_t const n = loop.Curv.size();
        auto const ends = [&](std::size_t k) { return m_ends[U(loop.Curv[k])]; };
        auto const has = [](std::pair<int, int> edge, int v) { return edge.first == v || edge.second == v; };
        if (n == 1)
            return {ends(0).first == loop.Vtex[0] ? 0 : 1};
        if (n == 2 && std::minmax(ends(0).first, ends(0).second) == std::minmax(ends(1).first, ends(1).second))
            return {0, ends(0).first == ends(1).first ? 1 : 0};
        for (std::size_t k = 0; k + 1 < n; ++k)
            dirs.push_back(has(ends(k + 1), ends(k).first) ? 1 : 0);
        dirs.push_back(has(ends(n - 2), ends(n - 1).first) ? 0 : 1);
        return dirs;
    }

    std::vector<int> Vertices(OracleLoop const &loop) const {
        std::vector<int> ends;
        for (std::size_t k = 0; k < loop.Curv.size(); ++k) {
            auto const &[first, second] = m_ends[U(loop.Curv[k])];
            ends.push_back(loop.CurvDir[k] == 0 ? first : second);
            if (k + 1 == loop.Curv.size())
                ends.push_back(loop.CurvDir[k] == 0 ? second : first);
        }
        return ends;
    }

    bool IsIn(DM_VTEX const &p, OracleLoop const &loop) const {
        Polygon polygon;
        std::size_t const count = loop.Vtex.size() - (loop.Vtex.front() == loop.Vtex.back() ? 1 : 0);
        for (std::size_t k = 0; k < count; ++k)
            polygon.PushBack({vertices[U(loop.Vtex[k])].x, vertices[U(loop.Vtex[k])].y});
        return ContainsByDefinition({p.x, p.y}, polygon, 1) == 1;
    }

    bool IsIn(DM_VTEX const &p, OracleSurf const &surf) const {
        auto const holds = [&](OracleLoop const &hole) { return IsIn(p, hole); };
        return IsIn(p, static_cast<OracleLoop const &>(surf)) &&
               std::none_of(surf.Holes.begin(), surf.Holes.end(), holds);
    }

    void Finish() {
        auto const mapIds = [this](OracleLoop &loop) {
            for (int &entry : loop.Curv)
                entry = static_cast<int>(m_curvId[U(entry)]);
        };
        for (OracleSurf &surf : surfs) {
            mapIds(surf);
            for (OracleLoop &hole : surf.Holes) {
                auto const a = std::find(hole.Vtex.begin(), hole.Vtex.end(), hole.Vtex.back()) - hole.Vtex.begin();
                if (U(static_cast<int>(a)) + 1 == hole.Vtex.size())
                    continue;
                for (std::vector<int> *values : {&hole.Vtex, &hole.Curv, &hole.CurvDir})
                    EraseFront(*values, U(static_cast<int>(a)));
                mapIds(hole);
                MergeNeighbours(hole);
            }
            MergeNeighbours(surf);
        }
    }

    std::vector<unsigned int> m_curvId;
    IntSet m_dead;
    std::multimap<double, int> m_xIndex;
    std::vector<std::pair<int, int>> m_ends;
    std::vector<std::vector<int>> m_edges;
};

} // namespace

OracleResult DomainsByDefinition(CurveSet const &curves) {
    MDomainMakerOracle oracle;
    for (auto const &[id, points, isMidPoints] : curves) {
        if (isMidPoints)
            oracle.AddCurvMidPoint(id, points);
        else if (points.Size() == 2)
            oracle.AddCurv(id, points[0], points[1]);
        else
            oracle.AddCurvedCurvOnce(id, points);
    }
    oracle.MakeDomain();
    return oracle;
}

} // namespace zvi::lib::test
