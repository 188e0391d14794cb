#pragma once

#include "zvi/curves/DomainRecords.h"

#include <vector>

namespace zvi::lib::test {

/// One call to the domain maker: a straight curve of two points, or a polyline fed by `AddCurvedCurvOnce`.
struct InputCurve {
    unsigned int id = 0;
    MArray<DM_VTEX> points;
    bool isMidPoints = false; ///< `points` go to `AddCurvMidPoint` instead
};

using CurveSet = std::vector<InputCurve>;

/// One closed loop of the oracle.
struct OracleLoop {
    std::vector<int> Vtex;
    std::vector<int> Curv;
    std::vector<int> CurvDir;
};

struct OracleSurf : OracleLoop {
    std::vector<OracleLoop> Holes;
};

struct OracleResult {
    std::vector<OracleSurf> surfs;
    std::vector<DM_VTEX> vertices;
    bool isAbandoned = false;    ///< some division exceeded its limit
    bool hasHungLoops = false;   ///< some division found a loop that hangs from its boundary
    bool hasBarredEdges = false; ///< some edge ran along a boundary
};

/// What the domain maker makes, done step by step with nothing remembered: every set is a `std::set`, every division
/// copies its domain and scans it from its first corner, every round rescans all candidates. Slow and plain.
OracleResult DomainsByDefinition(CurveSet const &curves);

} // namespace zvi::lib::test
