#include "zvi/curves/domains/VertexStarsDetail.h"

#include "zvi/core/MQSort.h"
#include "zvi/curves/domains/DomainRulesDetail.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zvi::lib::curves {

using base::Index;

namespace {

/// Angles that differ by more than this, on a scale of four to the full turn, are in the same order in degrees; the
/// rounding of either is far below it.
constexpr double kSurelyInOrder = 1e-9;

/// A direction whose square is not above this may have a length below `kNoDirection`, its rounding included.
constexpr double kLeastSquare = 4 * kNoDirection * kNoDirection;

/// Vertices with more edges than this are sorted by their angles in degrees at once.
constexpr std::size_t kFewEdges = 16;

/// Neighbours whose numbers differ by this part of the number of vertices on average are numbered as if by chance;
/// numbers by rows and columns differ by far less.
constexpr double kScattered = 0.05;
/// One vertex in so many is asked.
constexpr int kScatterSample = 16;

/// Grows with `DirectionAngle`, from 0 to 4, without an arc tangent. Not a number when there is no direction, or one
/// too long to add up.
double TurnOf(DM_VTEX const &direction) {
    double const length = std::abs(direction.x) + std::abs(direction.y);
    if (!(length < std::numeric_limits<double>::max()))
        return std::numeric_limits<double>::quiet_NaN();
    double const slope = direction.y / length;
    if (direction.x < 0.0)
        return 2.0 - slope;
    return slope < 0.0 ? 4.0 + slope : slope;
}

DM_VTEX Difference(DM_VTEX const &to, DM_VTEX const &from) {
    return {to.x - from.x, to.y - from.y};
}

/// An end of an edge and where it points.
struct Ray {
    double turn;
    DM_VTEX direction;
    VertexStars::EdgeEnd edgeEnd;
};

/// Inserts a ray among those before it, behind equal ones.
void InsertByTurn(Ray *rays, std::size_t count, Ray const &ray) {
    std::size_t at = count;
    for (; at > 0 && ray.turn < rays[at - 1].turn; --at)
        rays[at] = rays[at - 1];
    rays[at] = ray;
}

/// Whether no two neighbours are too close to tell their order from their turns.
bool AreSurelyInOrder(Ray const *rays, std::size_t count) {
    for (std::size_t i = 1; i < count; ++i) {
        if (!(rays[i].turn - rays[i - 1].turn > kSurelyInOrder))
            return false;
    }
    return true;
}

/// Whether two neighbours of directions about a vertex may run along one another. A direction without length stands
/// anywhere in the order, so with one of them nothing is known.
template <typename DirectionAt>
bool AnyNarrow(std::size_t count, DirectionAt directionAt) {
    DM_VTEX previous = directionAt(count - 1);
    double previousSquare = Dot(previous, previous);
    for (std::size_t i = 0; i < count; ++i) {
        DM_VTEX const direction = directionAt(i);
        double const square = Dot(direction, direction);
        double const dot = Dot(direction, previous);
        bool const isApart = dot <= 0.0 || dot * dot < kSurelyApart * kSurelyApart * square * previousSquare;
        if (!isApart || !(square > kLeastSquare))
            return true;
        previous = direction;
        previousSquare = square;
    }
    return false;
}

} // namespace

VertexStars::VertexStars(MArray<std::pair<int, int>> const &edgeVtex, MArray<MArray<int>> const &vtexEdges)
    : m_edgeCount(edgeVtex.Size()), m_firstEnd(vtexEdges.Size() + 1), m_isNarrow(vtexEdges.Size()) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < vtexEdges.Size(); ++i) {
        count += vtexEdges[i].Size();
        m_firstEnd[i + 1] = static_cast<int>(count);
    }
    m_ends.resize(count);
    EdgeEnd *edgeEnd = m_ends.data();
    for (std::size_t i = 0; i < vtexEdges.Size(); ++i) {
        int const vtex = static_cast<int>(i);
        for (int const edge : vtexEdges[i]) {
            auto const &[first, second] = edgeVtex[Index(edge)];
            bool const runsBack = first != vtex;
            *edgeEnd++ = {runsBack ? first : second, 2 * edge + (runsBack ? 1 : 0)};
        }
    }
}

void VertexStars::DropDuplicates() {
    std::vector<char> isDuplicate(m_edgeCount);
    std::vector<int> seenFrom(Index(VtexCount()), -1);
    bool isAny = false;
    for (int vtex = 0; vtex < VtexCount(); ++vtex) {
        for (EdgeEnd const *edgeEnd = begin(vtex); edgeEnd != end(vtex); ++edgeEnd) {
            if (isAny && isDuplicate[Index(edgeEnd->Edge())] != 0)
                continue;
            int &seen = seenFrom[Index(edgeEnd->far)];
            if (seen == vtex) {
                isDuplicate[Index(edgeEnd->Edge())] = 1;
                isAny = true;
            }
            seen = vtex;
        }
    }
    if (isAny)
        Drop(isDuplicate);
}

std::vector<int> VertexStars::DropDangling() {
    std::vector<int> dropped;
    std::vector<int> loose;
    for (int vtex = 0; vtex < VtexCount(); ++vtex) {
        if (Degree(vtex) == 1)
            loose.push_back(vtex);
    }
    if (loose.empty())
        return dropped;
    std::vector<int> degree(Index(VtexCount()));
    for (int vtex = 0; vtex < VtexCount(); ++vtex)
        degree[Index(vtex)] = Degree(vtex);
    std::vector<char> isDangling(m_edgeCount);
    while (!loose.empty()) {
        int const vtex = loose.back();
        loose.pop_back();
        if (degree[Index(vtex)] != 1)
            continue;
        auto const isLeft = [&](EdgeEnd const &edgeEnd) { return isDangling[Index(edgeEnd.Edge())] == 0; };
        EdgeEnd const &last = *std::find_if(begin(vtex), end(vtex), isLeft);
        isDangling[Index(last.Edge())] = 1;
        dropped.push_back(last.Edge());
        for (int const side : {vtex, last.far}) {
            if (--degree[Index(side)] == 1)
                loose.push_back(side);
        }
    }
    Drop(isDangling);
    return dropped;
}

void VertexStars::Drop(std::vector<char> const &isDropped) {
    std::size_t kept = 0;
    std::size_t at = 0;
    for (std::size_t vtex = 0; vtex + 1 < m_firstEnd.size(); ++vtex) {
        std::size_t const behind = Index(m_firstEnd[vtex + 1]);
        m_firstEnd[vtex] = static_cast<int>(kept);
        for (; at < behind; ++at) {
            if (isDropped[Index(m_ends[at].Edge())] == 0)
                m_ends[kept++] = m_ends[at];
        }
    }
    m_firstEnd.back() = static_cast<int>(kept);
    m_ends.resize(kept);
    m_isAnyDropped = true;
}

void VertexStars::SortByAngle(MArray<DM_VTEX> const &coordinates) {
    for (int vtex = 0; vtex < VtexCount(); ++vtex) {
        if (Degree(vtex) > 2)
            m_isNarrow[Index(vtex)] = SortAt(vtex, coordinates) ? 1 : 0;
    }
}

/// Sorts about one vertex; whether two of its edges may run along one another.
bool VertexStars::SortAt(int vtex, MArray<DM_VTEX> const &coordinates) {
    EdgeEnd *const ends = m_ends.data() + m_firstEnd[Index(vtex)];
    std::size_t const count = Index(Degree(vtex));
    DM_VTEX const at = coordinates[Index(vtex)];
    if (count <= kFewEdges) {
        Ray rays[kFewEdges];
        for (std::size_t i = 0; i < count; ++i) {
            DM_VTEX const direction = Difference(coordinates[Index(ends[i].far)], at);
            InsertByTurn(rays, i, {TurnOf(direction), direction, ends[i]});
        }
        if (AreSurelyInOrder(rays, count)) {
            for (std::size_t i = 0; i < count; ++i)
                ends[i] = rays[i].edgeEnd;
            return AnyNarrow(count, [&](std::size_t i) { return rays[i].direction; });
        }
    }
    SortByDegrees(vtex, coordinates);
    return AnyNarrow(count, [&](std::size_t i) { return Difference(coordinates[Index(ends[i].far)], at); });
}

void VertexStars::SortByDegrees(int vtex, MArray<DM_VTEX> const &coordinates) {
    EdgeEnd *const ends = m_ends.data() + m_firstEnd[Index(vtex)];
    std::vector<EdgeEnd> const before(begin(vtex), end(vtex));
    std::vector<int> places;
    std::vector<double> angles;
    for (EdgeEnd const &edgeEnd : before) {
        DM_VTEX const direction = Difference(coordinates[Index(edgeEnd.far)], coordinates[Index(vtex)]);
        places.push_back(static_cast<int>(places.size()));
        angles.push_back(DirectionAngle(direction.x, direction.y));
    }
    MQSort::QSortDblWithIndex(places.data(), angles.data(), places.size());
    for (std::size_t i = 0; i < before.size(); ++i)
        ends[i] = before[Index(places[i])];
}

void VertexStars::CopyTo(MArray<MArray<int>> &vtexEdges) const {
    for (int vtex = 0; vtex < VtexCount(); ++vtex) {
        if (!m_isAnyDropped && Degree(vtex) <= 2)
            continue;
        MArray<int> &edges = vtexEdges[Index(vtex)];
        edges.Resize(Index(Degree(vtex)));
        int *to = edges.Data();
        for (EdgeEnd const *edgeEnd = begin(vtex); edgeEnd != end(vtex); ++edgeEnd)
            *to++ = edgeEnd->Edge();
    }
}

bool VertexStars::IsScattered() const {
    double sum = 0;
    double count = 0;
    for (int vtex = 0; vtex < VtexCount(); vtex += kScatterSample) {
        for (EdgeEnd const *edgeEnd = begin(vtex); edgeEnd != end(vtex); ++edgeEnd, ++count)
            sum += std::abs(edgeEnd->far - vtex);
    }
    return sum > kScattered * static_cast<double>(VtexCount()) * count;
}

double DirectionAngle(double dx, double dy) {
    return std::isnan(dx) ? 0.0 : MMathFunc::GetAngle(dx, dy);
}

} // namespace zvi::lib::curves
