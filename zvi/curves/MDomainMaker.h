#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MHashMap.h"
#include "zvi/curves/DomainRecords.h"

#include <memory>
#include <utility>

namespace zvi::lib {

namespace curves {
class CurvIdIndex;
class DomainScan;
class PlainDivision;
class VtexXIndex;
} // namespace curves

/// Turns a loose set of plane curves into closed domains with holes.
///
///     MDomainMaker maker;
///     maker.AddCurv(1, {0, 0}, {4, 0});
///     maker.AddCurv(2, {4, 0}, {4, 4});
///     maker.AddCurv(3, {4, 4}, {0, 0});
///     maker.MakeDomain();
///     maker.GetResultSurf()[0].Curv;   // 1, 2, 3 in some rotation
///
/// Every curve is a pair of end points under an id of the caller's; ends closer than `kVtexMergeTolerance` in x and y
/// become one vertex. Curved ones are refined with mid points. Curves meet in common vertices only: curves that cross
/// are not cut. `MakeDomain` runs once, after all curves were added; a second run starts from the reduced graph,
/// appends to the result, and maps the ids of the earlier domains once more.
///
/// Ids are positive and need not be unique; the id 0 cannot be told from a pruned edge, and ids of 2^31 and more come
/// back negative, because a domain lists them as `int`. The input operations report nothing.
///
/// An operation that runs out of memory raises, and adds no curve; vertices without curves may stay behind. A
/// `MakeDomain` that does leaves no domains and can be called again. An instance belongs to one caller at a time.
class ZVI_API MDomainMaker {
public:
    /// A maker without curves.
    MDomainMaker();
    /// Curves and domains of `other`; the copy shares nothing with it.
    MDomainMaker(MDomainMaker const &other);
    /// The same; when it runs out of memory, this maker stays as it was.
    MDomainMaker &operator=(MDomainMaker const &other);
    ~MDomainMaker();

    /// Adds one edge from `p1` to `p2`, each merged with the first vertex, by x and then by age, that is less than
    /// `kVtexMergeTolerance` away in both x and y. An edge whose ends merge stays until `MakeDomain` drops it.
    void AddCurv(unsigned int id, DM_VTEX p1, DM_VTEX p2);

    /// Splits the first edge that bears `id` at the points `pts`, in order from its first vertex to its second. The
    /// new vertices are never merged with others, so no other curve can meet them. Without such an edge, or without
    /// points, nothing happens.
    void AddCurvMidPoint(unsigned int id, zvi::MArray<DM_VTEX> &pts);

    /// Adds a curve given as a polyline; only its two ends can connect to other curves. Fewer than three points add
    /// nothing at all, not even a straight curve. When an earlier edge bears `id`, that one gets the mid points.
    void AddCurvedCurvOnce(unsigned int id, zvi::MArray<DM_VTEX> &pts);

    /// Finds the domains: drops duplicate and dangling edges, walks the outer boundary of each connected piece from
    /// its leftmost vertex, divides it along its inner chords until none is left, and records what lies inside a
    /// domain as its hole. Exact on graphs without cut vertices and bridges in which no edge runs along the x axis and
    /// no two edges of one vertex lie within a tenth of a degree; loops that touch in one vertex or hang by a tail may
    /// come out as spurious holes or stay undivided, and a chord almost along the border is passed over.
    /// n log n in the edges; where edges cross uncut the pieces they spoil are divided in rounds, which takes n squared
    /// and more.
    void MakeDomain();

    /// Replaces `out` by a deep copy of the domains.
    void GetResultSurf(zvi::MArray<DM_SURF> &out);
    /// The domains themselves.
    zvi::MArray<DM_SURF> &GetResultSurf();
    /// Replaces `out` by the coordinates that the vertex indices of the result refer to.
    void GetResultVtexCoord(zvi::MArray<DM_VTEX> &out);

    /// Whether the lists agree with one another: each edge stands in the lists of its two ends or in neither, a dead
    /// vertex has none, and the loops of the result have one vertex more than edges, all of them known. Time in
    /// proportion to all that is stored. A result that the caller has changed may fail it.
    bool IsConsistent() const;

private:
    friend class curves::DomainScan;
    friend class curves::PlainDivision;

    void Swap(MDomainMaker &other);
    int FindOrAddVtex(DM_VTEX const &point);

    /// Divides one domain at the first usable chord into `outA` and `outB`: 1 if divided, 0 if not.
    int Sub1_DivideDomain(DM_SURF &surf, DM_SURF &outA, DM_SURF &outB);
    /// Walks from `edge` until the walk closes or meets `boundary`. `path` gets the whole walk and `loop` the closed
    /// part; `status` is left alone for a walk that closed off the boundary, 1 for one that reached it, 2 for one that
    /// came back to it. 0, and nothing written, for a dead end.
    int Sub2_FindConnectedLoop(int edge, int reverse, bool ccw, const DM_SURF &boundary, DM_SURF &path, DM_SURF &loop,
                               int &status, zvi::MHashMap<int, int> *barred);
    /// The next edge at the far end of `edge`, and the vertex it leads to; -1 for both at a dead end.
    void Sub3_FindCCWVtexIdx(int edge, int reverse, int &nextVtex, int &nextEdge, bool clockwise,
                             zvi::MHashMap<int, int> *barred);
    /// Appends the far vertex of each edge of `vtex`, in the order of its list.
    void Util_GetConnectedVtexIdx(int vtex, zvi::MArray<int> &out);
    /// Appends the living vertices that `loop` encloses strictly.
    void Util_GetInnerVtexIdx(zvi::MArray<int> &loop, zvi::MArray<int> &out);
    /// Derives `CurvDir` from `Curv`.
    void Util_FillCurvDirArrayInSurf(DM_SURF &surf);
    /// Derives `Vtex` from `Curv` and `CurvDir`.
    void Util_FillVtexArrayInSurf(DM_SURF &surf);
    /// Whether the point lies in the loop, border included.
    int Util_IsPointInSurf(double x, double y, DM_SURF_SUB &loop);
    /// Whether the point lies in the domain: in its loop and in none of its holes.
    int Util_IsPointInSurf(double x, double y, DM_SURF &surf);
    /// Direction angle in degrees, from 0 to 360, which only a direction just below that of x can reach; 0 for no
    /// direction.
    double Util_CalcAngle(double dx, double dy);

    zvi::MHashMap<int, int> SpareMap;           ///< no operation fills it
    zvi::MHashMap<int, int> DeadVtex;           ///< vertices left with no edge
    std::unique_ptr<curves::VtexXIndex> XIndex; ///< x to vertex, for merging end points
    zvi::MArray<int> VtexTag;                   ///< one entry per vertex, always 0
    zvi::MArray<DM_VTEX> VtexCoord;             ///< coordinates of each vertex
    zvi::MArray<unsigned int> CurvId;           ///< the caller's id of each edge; 0 after pruning
    zvi::MArray<std::pair<int, int>> EdgeVtex;  ///< first and second vertex of each edge
    zvi::MArray<zvi::MArray<int>> VtexEdges;    ///< edges at each vertex
    zvi::MArray<DM_SURF> ResultSurf;            ///< finished domains

    std::unique_ptr<curves::CurvIdIndex> m_idIndex; ///< first edge of an id, for refining curves
};

} // namespace zvi::lib
