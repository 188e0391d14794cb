#pragma once

#include "zvi/curves/DomainRecords.h"

#include <cstddef>
#include <map>
#include <set>
#include <span>
#include <utility>
#include <vector>

namespace zvi::lib::test {

/// One closed loop of the oracle.
struct OracleLoop {
    std::vector<int> Vtex;
    std::vector<int> Curv;
    std::vector<int> CurvDir;
};

struct OracleSurf : OracleLoop {
    std::vector<OracleLoop> Holes;
};

/// The domain maker done step by step with nothing remembered: every set is a `std::set`, every division copies its
/// domain and scans it from its first corner, every round rescans all candidates. Slow and plain, for comparison.
class MDomainMakerOracle {
public:
    void AddCurv(unsigned int id, DM_VTEX p1, DM_VTEX p2);
    void AddCurvMidPoint(unsigned int id, std::span<DM_VTEX const> pts);
    void AddCurvedCurvOnce(unsigned int id, std::span<DM_VTEX const> pts);
    void MakeDomain();

    std::vector<OracleSurf> Surfs;
    std::vector<DM_VTEX> Coord;
    std::vector<unsigned int> CurvId;
    bool Abandoned = false;   ///< some division exceeded its limit
    bool LoopsHung = false;   ///< some division found a loop that hangs from its boundary
    bool EdgesBarred = false; ///< some edge ran along a boundary

private:
    using IntSet = std::set<int>;

    int Find(DM_VTEX const &p);
    void Attach(int vtex, int edge);
    int Far(int edge, int vtex) const;
    void Prepare();
    void Scan(std::vector<int> const &candidates);
    int SteepestEdge(int s) const;
    void AddToHoles(OracleLoop const &loop);
    std::vector<OracleSurf> DivideInRounds(OracleSurf const &loop);
    void BarStubs(IntSet &barred) const;
    std::ptrdiff_t OpenCount(int v, IntSet const &barred) const;
    int Divide(OracleSurf const &surf, OracleSurf &outA, OracleSurf &outB);
    void Hang(OracleSurf const &surf, OracleLoop path, OracleSurf const &loop, IntSet const &barred, OracleSurf &outA,
              OracleSurf &outB) const;
    int Split(OracleSurf const &surf, OracleLoop const &path, OracleSurf &outA, OracleSurf &outB) const;
    int Walk(int edge, int reverse, bool ccw, OracleSurf const &boundary, OracleLoop &path, OracleLoop &loop,
             int &status, IntSet const &barred) const;
    void Next(int edge, int reverse, int &vtex, int &next, bool clockwise, IntSet const &barred) const;
    std::vector<int> Directions(OracleLoop const &loop) const;
    std::vector<int> Vertices(OracleLoop const &loop) const;
    bool IsIn(DM_VTEX const &p, OracleLoop const &loop) const;
    bool IsIn(DM_VTEX const &p, OracleSurf const &surf) const;
    void Finish();

    IntSet m_dead;
    std::multimap<double, int> m_xIndex;
    std::vector<std::pair<int, int>> m_ends;
    std::vector<std::vector<int>> m_edges;
};

} // namespace zvi::lib::test
