#include "zvi/spatial/MHHPointSpatialIndex.h"

#include "zvi/spatial/points/PointGridDetail.h"

#include <algorithm>
#include <array>

namespace zvi::lib {

namespace spatial {

/// Steps along x, y and z of the fine places, each a 1024th of the grid's axis.
using FineSteps = std::array<int, 3>;

struct FineHashPointNode {
    std::uint64_t value;
    std::uint32_t fineKey; ///< ten bits for each axis, x lowest
    FineHashPointNode *next;

    static constexpr int kBits = 10;
    static constexpr std::uint32_t kMask = (1u << kBits) - 1;

    FineSteps Steps() const {
        return {static_cast<int>(fineKey & kMask), static_cast<int>((fineKey >> kBits) & kMask),
                static_cast<int>((fineKey >> (2 * kBits)) & kMask)};
    }
};
static_assert(sizeof(FineHashPointNode) == 24);

class FineHashPointGrid : public PointGrid<FineHashPointNode> {
public:
    /// The fine place of a point by its offsets from the origin. Steps beyond the grid spill into the next axis.
    std::uint32_t FineKey(std::array<double, 3> const &offset) const {
        std::uint32_t key = 0;
        for (std::size_t axis = 3; axis-- > 0;)
            key = (key << FineHashPointNode::kBits) + static_cast<std::uint32_t>(Step(axis, offset[axis]));
        return key;
    }

    int Step(std::size_t axis, double offset) const { return base::CellStep(offset / m_fineSize[axis]); }

    std::array<double, 3> Offsets(double const *point) const {
        std::array<double, 3> const &origin = Block().origin;
        return {point[0] - origin[0], point[1] - origin[1], point[2] - origin[2]};
    }

    bool Lay(double const *minimum, double const *maximum, int division) {
        /// One part of 1024 of an axis, and the smallest one.
        constexpr double kFinePart = 0.0009765625;
        constexpr double kLeastFineSize = 1e-15;
        if (!PointGrid::Lay(minimum, maximum, division))
            return false;
        for (std::size_t axis = 0; axis < 3; ++axis)
            m_fineSize[axis] = std::max(Block().counts[axis] * Block().cellSize * kFinePart, kLeastFineSize);
        return true;
    }

private:
    std::array<double, 3> m_fineSize{};
};

namespace {

/// Fine places that the cube around a point meets, both ends included. They may lie beyond the grid.
struct FineRange {
    FineSteps low{};
    FineSteps high{};

    FineRange(FineHashPointGrid const &grid, double const *point, double tol) {
        std::array<double, 3> const offset = grid.Offsets(point);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            low[axis] = grid.Step(axis, offset[axis] - tol);
            high[axis] = grid.Step(axis, offset[axis] + tol);
        }
    }

    bool Holds(FineSteps const &steps) const {
        bool holds = true;
        for (std::size_t axis = 0; axis < 3; ++axis)
            holds &= low[axis] <= steps[axis] && steps[axis] <= high[axis];
        return holds;
    }
};

} // namespace

} // namespace spatial

namespace {

using spatial::FineHashPointGrid;
using spatial::FineHashPointNode;

} // namespace

MHHPointSpatialIndex::~MHHPointSpatialIndex() {
    delete m_grid;
}

IPointSpatialIndex *MHHPointSpatialIndex::GetInterface() {
    return this;
}

void MHHPointSpatialIndex::SetBoundaryAndDivision(double const *const minimum, double const *const maximum,
                                                  int division) {
    m_grid = FineHashPointGrid::Make<FineHashPointGrid>(minimum, maximum, division);
}

void MHHPointSpatialIndex::RemoveAll() {
    if (m_grid)
        m_grid->RemoveAll();
}

int MHHPointSpatialIndex::Insert(int i, int j, int k, std::uint64_t value) {
    if (!m_grid)
        return 0;
    double const size = m_grid->Block().cellSize;
    return m_grid->Push(m_grid->Block().Number(i, j, k), [&] {
        return FineHashPointNode{value, m_grid->FineKey({i * size, j * size, k * size}), nullptr};
    });
}

int MHHPointSpatialIndex::Insert(double const *const point, std::uint64_t value) {
    if (!m_grid)
        return 0;
    return m_grid->Push(m_grid->CellOf(point), [&] {
        return FineHashPointNode{value, m_grid->FineKey(m_grid->Offsets(point)), nullptr};
    });
}

int MHHPointSpatialIndex::Delete(double const *const point, std::uint64_t value) {
    FineHashPointNode **const head = m_grid ? m_grid->Chain(point) : nullptr;
    if (!head || !*head || (*head)->value != value)
        return 0;
    m_grid->Remove(head);
    return 1;
}

void MHHPointSpatialIndex::GetBoxIndexByTriangle(float const *const a, float const *const b, float const *const c,
                                                 int *const low, int *const high) const {
    spatial::CopyCellsOfTriangle(m_grid, {a, b, c}, low, high);
}

std::uint64_t MHHPointSpatialIndex::FindNearest(double const *const point, double tol, ICalcDist const *calc) const {
    if (!m_grid)
        return 0;
    /// The cube around the point reaches farther than `tol`; a search by fine places goes as far as this part of it.
    constexpr double kReach = 2.0;
    spatial::FineRange const fine(*m_grid, point, tol);
    return m_grid->Nearest(
        m_grid->CellsAround(point, tol), point, *calc,
        [&fine](FineHashPointNode const &node) { return fine.Holds(node.Steps()); }, tol * tol * kReach);
}

int MHHPointSpatialIndex::FindWithinTol(float const *const, double, MList<std::uint64_t> &, ICalcDist const *) const {
    return 0;
}

int MHHPointSpatialIndex::FindWithinTol(double const *const, double, MList<std::uint64_t> &, ICalcDist const *) const {
    return 0;
}

int MHHPointSpatialIndex::ExistDuplicate(double const *const, double, ICalcDist const *) const {
    return 0;
}

bool MHHPointSpatialIndex::IsConsistent() const {
    return !m_grid || m_grid->IsConsistent();
}

} // namespace zvi::lib
