#pragma once

#include "zvi/base/Index.h"
#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"
#include "zvi/curves/domains/DomainGraphDetail.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace zvi::lib::curves {

/// Divides a loop into domains with the very result of `MDomainMaker::Sub1_DivideDomain` applied in rounds, but without
/// its rescans: time grows with the edges inside the loop, not with the divisions times the length of the rim.
///
/// Every loop that comes up is a simple cycle: a chord walk stops at the first vertex that it or the boundary has been
/// at. So a loop is a ring of half-edges, and a division relinks two rings at the ends of the chord. The ring that is
/// shorter gets the new number, so an edge is renumbered at most log2(n) times.
///
/// A corner is named by the half-edge that leaves it. Its sector is what lies clockwise between the incoming and the
/// outgoing edge: there the next chord begins. A corner whose sector holds no edge, and at which no edge can run along
/// the boundary, never gives a chord and never bars an edge, in this loop or in any later one that has the same corner.
/// The open corners are all others; they are linked in the order in which the scan meets them, from the corner after
/// the loop's start to the start itself. A scan of the open corners therefore does what a scan of all corners does.
///
/// When a chord from corner a ends at b, the open corners behind a and before b go to the right loop (which starts at
/// a), those behind b, going round to a, to the left one (which starts at b), each followed by the corners along the
/// chord. That needs b to be an open corner behind a. It is so when the chord arrives through the sector of b: the
/// sector is then not empty, and had the scan passed b before, every edge in it would be barred, and barred edges are
/// not walked.
///
/// What this does not cover is left to the plain operations by the answer `kUnproven`: a chord that arrives from
/// outside the sector (curves that cross uncut, loops that were walked clockwise) and a half-edge or a hole edge that
/// two loops would share.
class LoopDivider {
public:
    enum class Outcome {
        kDivided,   ///< the domains were appended
        kAbandoned, ///< there were more domains to look at than the limit allows
        kUnproven   ///< the plain operations have to do it; nothing was appended
    };

    explicit LoopDivider(DomainGraph const &graph);

    /// Divides the loop that `halfEdges` run along, head to tail, starting at the origin of the first.
    Outcome Divide(std::vector<int> const &halfEdges, MArray<DM_SURF> &domains);
    /// After a division: visits half-edges that cover every edge of its domains and their holes, and whose origins are
    /// all their nodes.
    template <typename Visit>
    void VisitUsed(Visit visit) const {
        for (Entry const &entry : m_entries)
            visit(entry.half);
        for (int const half : m_holeHalves)
            visit(half);
    }

private:
    /// Where a half-edge stands in the loop that runs along it.
    struct Link {
        int next;
        int previous;
        int nextOpen;
        int previousOpen;
    };

    struct Visited {
        std::uint32_t walk = 0; ///< the last walk that was at the node
        int index = 0;          ///< where the node stands in that walk
    };

    struct Loop {
        int start;     ///< the half-edge that leaves the first vertex
        int firstOpen; ///< first open corner in the order of the scan; -1 for none
        int firstHole; ///< -1 for none
        int lastHole;
        bool hasDirections; ///< whether the directions were filled by a division
    };

    struct Hole {
        DM_SURF_SUB lists;
        int middle; ///< the node in the middle of the list
        int owner;  ///< the loop that has the hole
        int next;   ///< the next hole of that loop; -1 at the end
    };

    /// A step of a finished loop as the result tells it.
    struct Entry {
        int half;
        int vtex;
        int edgeAndSide;
    };

    /// A loop that stays whole.
    struct Domain {
        int loop;
        std::size_t firstEntry;
    };

    /// Open corners in the order of the scan while they are being collected.
    struct OpenList {
        int first = -1;
        int last = -1;
    };

    enum class Step { kWhole, kDivided, kUnproven };

    Link &At(int half) { return m_links[base::Index(half)]; }
    Link const &At(int half) const { return m_links[base::Index(half)]; }
    int LoopOf(int half) const { return m_loopOf[base::Index(half)]; }

    Outcome DivideInRounds();
    int AddLoop(std::vector<int> const &halfEdges);
    void Join(int half, int next);
    void SetLoop(int half, int loop);
    int CornerOn(int node, int loop) const;

    bool IsOpen(int half) const;
    bool IsBarring(int half) const;
    bool IsInSector(int corner, int half) const;
    void Append(OpenList &list, int half);
    void AppendIfOpen(OpenList &list, int half);
    void AppendRun(OpenList &list, int first, int end);
    int Close(OpenList const &list);

    Step DivideOnce(int loop, int &outA, int &outB);
    int FindChord(int loop, int corner);
    template <typename Visit>
    void VisitAlongBoundary(int corner, Visit visit) const;
    bool IsBarred(int half, int loop) const;
    Step FollowChord(int loop, int corner, int chord, int &outA, int &outB);
    Step Split(int loop, int cornerA, int cornerB, int &outA, int &outB);
    void LinkChord(int cornerA, int cornerB, int right, int left);
    bool IsLeftShorter(int cornerA, int cornerB) const;
    void SplitOpenCorners(int cornerA, int cornerB, OpenList &right, OpenList &left);
    void ShareHoles(int firstHole, int right, int left);
    void AppendHole(int hole, int owner);
    Step Hang(int loop, std::size_t loopAt, int &outA, int &outB);
    std::size_t TailStart(int loop, std::size_t loopAt) const;
    void RecordLoop(int loop);
    void AppendDomains(MArray<DM_SURF> &domains);
    void Forget();

    DomainGraph const &m_graph;
    std::vector<int> m_loopOf; ///< by half-edge: the loop that runs along it; -1 for none
    std::vector<Link> m_links; ///< by half-edge
    std::vector<Loop> m_loops;
    std::vector<int> m_round; ///< the loops to divide in this round
    std::vector<int> m_nextRound;
    std::vector<Domain> m_domains; ///< the loops that stay whole
    std::vector<Entry> m_entries;  ///< of all of them
    DM_SURF_SUB m_lists;           ///< of one of them
    std::vector<Hole> m_holes;
    std::vector<int> m_holeOfEdge;         ///< the hole that has the edge; -1 for none
    std::vector<std::uint32_t> m_barredAt; ///< by edge: the last scan in which it was barred
    std::uint32_t m_scan = 0;
    bool m_anyBarred = false;       ///< whether the present scan has barred an edge
    std::vector<Visited> m_visited; ///< by node
    std::uint32_t m_walkNumber = 0;
    std::vector<int> m_walk;                           ///< the half-edges of the present chord walk
    std::vector<int> m_holeHalves;                     ///< the half-edges of the holes
    std::unordered_map<std::uint64_t, int> m_cornerOn; ///< corners at nodes with many edges, by node and loop
};

} // namespace zvi::lib::curves
