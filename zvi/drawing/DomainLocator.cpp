#include "zvi/drawing/DomainLocator.h"

#include "zvi/base/Buckets.h"
#include "zvi/base/CellGrid.h"
#include "zvi/drawing/RunsDetail.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <limits>
#include <numeric>
#include <span>
#include <tuple>
#include <utility>

namespace zvi::lib {

using namespace drawing;

namespace {

constexpr int kNoDomain = -1;

/// What lies to the left of a cell differs by height, because a border crosses that side.
constexpr int kMixed = -2;

/// Cells along one axis at most.
constexpr double kMostSteps = 4096.0;

/// Cells for each run: with more of them a query looks at fewer runs, with fewer of them it misses the cache less.
constexpr double kCellsOfRun = 2.0;

/// A piece of a border as it rises or falls, and the domains beside it.
struct BorderRun {
    double lowY = 0.0, highY = 0.0;
    double x = 0.0, y = 0.0; ///< of a line: its lower end; of an arc: the centre
    double slope = 0.0;      ///< of a line: dx / dy
    double radius = 0.0;     ///< of an arc: negative for its left half; 0 for a line
    int leftDomain = kNoDomain, rightDomain = kNoDomain;

    double XAt(double at) const {
        if (radius == 0.0)
            return x + slope * (at - y);
        double const v = at - y;
        return x + std::copysign(std::sqrt(std::max(0.0, (std::fabs(radius) - v) * (std::fabs(radius) + v))), radius);
    }
};

/// A level line, which no query meets; but what lies above it differs from what lies below.
struct Level {
    double y = 0.0;
    double left = 0.0, right = 0.0;
};

/// A part that is no level line.
BorderRun RunOf(Stretch const &s, Run const &part, int domain) {
    assert(part.lowY < part.highY);
    BorderRun run{part.lowY, part.highY, s.center.x, s.center.y, 0.0, s.radius * part.side};
    (part.upward ? run.leftDomain : run.rightDomain) = domain;
    if (s.isArc)
        return run;
    DrawingPoint const low = s.start.y < s.end.y ? s.start : s.end, high = s.start.y < s.end.y ? s.end : s.start;
    run.x = low.x;
    run.y = low.y;
    run.slope = (high.x - low.x) / (high.y - low.y);
    run.radius = 0.0;
    return run;
}

/// Makes one run of each two that are the same but for the domains, which lie on its two sides. The others keep their
/// order.
void JoinSides(std::vector<BorderRun> &runs) {
    auto const shape = [](BorderRun const &run) {
        return std::tie(run.lowY, run.x, run.highY, run.y, run.slope, run.radius);
    };
    std::vector<std::size_t> order(runs.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return shape(runs[a]) < shape(runs[b]); });
    std::vector<bool> isJoined(runs.size(), false);
    for (std::size_t i = 1; i < order.size(); ++i) {
        BorderRun &run = runs[order[i - 1]], &next = runs[order[i]];
        bool const isOnLeft = run.rightDomain == kNoDomain;
        if (isJoined[order[i - 1]] || shape(run) != shape(next) || isOnLeft == (next.rightDomain == kNoDomain))
            continue;
        (isOnLeft ? run.rightDomain : run.leftDomain) = isOnLeft ? next.rightDomain : next.leftDomain;
        isJoined[order[i]] = true;
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < runs.size(); ++i)
        if (!isJoined[i])
            runs[kept++] = runs[i];
    runs.resize(kept);
}

} // namespace

class DomainLocator::Grid {
public:
    explicit Grid(std::vector<DrawingDomain> const &domains) {
        for (std::size_t d = 0; d < domains.size(); ++d) {
            AddLoop(domains[d].outer, static_cast<int>(d));
            for (std::vector<DrawingPiece> const &hole : domains[d].holes)
                AddLoop(hole, static_cast<int>(d));
        }
        if (m_runs.empty())
            return;
        JoinSides(m_runs);
        Measure();
        Distribute();
        LookAtLeftSides();
        m_runs = {};
        m_levels = {};
    }

    int DomainAt(DrawingPoint p) const {
        if (m_runsOfCells.empty() || !(p.x >= m_box.minX) || !(p.x <= m_box.maxX) || !(p.y >= m_box.minY) ||
            !(p.y <= m_box.maxY))
            return kNoDomain;
        return DomainFrom(ColumnOf(p.x), RowOf(p.y), p);
    }

private:
    struct Cell {
        std::size_t begin = 0;  ///< of its runs
        int leftOf = kNoDomain; ///< the domain that all of its left side lies in, kNoDomain or kMixed
    };

    void AddLoop(std::vector<DrawingPiece> const &loop, int domain) {
        for (DrawingPiece const &piece : loop) {
            Stretch const s = StretchOf(piece);
            std::array<Run, 3> parts;
            int const count = RunsOf(s, 0.0, parts);
            for (int i = 0; i < count; ++i)
                if (Run const &part = parts[Index(i)]; part.lowY < part.highY)
                    m_runs.push_back(RunOf(s, part, domain));
                else
                    m_levels.push_back({part.lowY, std::min(s.start.x, s.end.x), std::max(s.start.x, s.end.x)});
        }
    }

    /// The box of all, what rounding means in it, and the cells, about as wide as high.
    void Measure() {
        m_box = {HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
        for (BorderRun const &run : m_runs) {
            auto const [left, right] = WidthOf(run, run.lowY, run.highY);
            m_box.minX = std::min(m_box.minX, left);
            m_box.maxX = std::max(m_box.maxX, right);
            m_box.minY = std::min(m_box.minY, run.lowY);
            m_box.maxY = std::max(m_box.maxY, run.highY);
        }
        m_rounding = kRounding * std::max({std::fabs(m_box.minX), std::fabs(m_box.maxX), std::fabs(m_box.minY),
                                           std::fabs(m_box.maxY)});
        double const width = m_box.maxX - m_box.minX + m_rounding, height = m_box.maxY - m_box.minY + m_rounding;
        double const count = std::ceil(kCellsOfRun * static_cast<double>(m_runs.size()));
        m_columns = std::clamp(std::ceil(std::sqrt(count * (width / height))), 1.0, std::min(count, kMostSteps));
        m_rows = std::clamp(std::ceil(count / m_columns), 1.0, kMostSteps);
        m_width = width / m_columns;
        m_height = height / m_rows;
        m_columnsOfUnit = std::min(1.0 / m_width, std::numeric_limits<double>::max());
        m_rowsOfUnit = std::min(1.0 / m_height, std::numeric_limits<double>::max());
    }

    /// How far to the left and to the right a run reaches between two heights inside it. Arcs bulge only at the height
    /// of their centre; at their top and bottom they reach the middle, which rounding of the height would miss.
    static std::pair<double, double> WidthOf(BorderRun const &run, double low, double high) {
        auto [left, right] = std::minmax({run.XAt(low), run.XAt(high)});
        double const radius = std::fabs(run.radius);
        if (radius > 0.0 && std::max(run.y - low, high - run.y) >= radius * (1.0 - kRounding)) {
            left = std::min(left, run.x);
            right = std::max(right, run.x);
        }
        if (radius > 0.0 && low <= run.y && run.y <= high) {
            left = std::min(left, run.x + run.radius);
            right = std::max(right, run.x + run.radius);
        }
        return {left, right};
    }

    double ColumnOf(double x) const {
        return std::clamp(base::Floor((x - m_box.minX) * m_columnsOfUnit), 0.0, m_columns - 1.0);
    }
    double RowOf(double y) const { return std::clamp(base::Floor((y - m_box.minY) * m_rowsOfUnit), 0.0, m_rows - 1.0); }
    std::size_t CellAt(double column, double row) const {
        assert(column >= 0.0 && column < m_columns && row >= 0.0 && row < m_rows);
        return static_cast<std::size_t>(row * m_columns + column);
    }
    double LeftSideOf(double column) const { return m_box.minX + column * m_width; }

    /// Calls `look(cell, isLeftSideCrossed)` for the cells that a run comes near.
    template <typename Look>
    void ForEachCell(BorderRun const &run, Look look) const {
        double const first = RowOf(run.lowY), last = RowOf(run.highY);
        for (double row = first; row <= last; row += 1.0) {
            double const bottom = m_box.minY + row * m_height;
            double const low = std::clamp(bottom - m_rounding, run.lowY, run.highY);
            double const high = std::clamp(bottom + m_height + m_rounding, run.lowY, run.highY);
            auto const [left, right] = WidthOf(run, low, high);
            double const begin = ColumnOf(left - m_rounding), end = ColumnOf(right + m_rounding);
            for (double column = begin; column <= end; column += 1.0)
                look(CellAt(column, row), left - m_rounding < LeftSideOf(column));
        }
    }

    /// Calls `look(cell)` for the cells whose left side a level crosses.
    template <typename Look>
    void ForEachCellOf(Level const &level, Look look) const {
        double const first = RowOf(level.y - m_rounding), last = RowOf(level.y + m_rounding);
        double const end = ColumnOf(level.right + m_rounding);
        for (double row = first; row <= last; row += 1.0)
            for (double column = ColumnOf(level.left - m_rounding); column <= end; column += 1.0)
                if (level.left - m_rounding < LeftSideOf(column))
                    look(CellAt(column, row));
    }

    /// Gives each cell the runs that come near it.
    void Distribute() {
        std::size_t const cells = CellAt(m_columns - 1.0, m_rows - 1.0) + 1;
        m_cells.assign(cells + 1, {});
        std::vector<std::pair<std::size_t, int>> visits; // cell, run
        for (std::size_t i = 0; i < m_runs.size(); ++i)
            ForEachCell(m_runs[i], [&](std::size_t cell, bool isLeftSideCrossed) {
                visits.emplace_back(cell, static_cast<int>(i));
                if (isLeftSideCrossed)
                    m_cells[cell].leftOf = kMixed;
            });
        for (Level const &level : m_levels)
            ForEachCellOf(level, [&](std::size_t cell) { m_cells[cell].leftOf = kMixed; });
        std::vector<std::size_t> begins(cells + 1, 0);
        m_runsOfCells.resize(visits.size());
        base::SortIntoBuckets(
            visits.size(), std::span(begins), [&](std::size_t i) { return visits[i].first; },
            [&](std::size_t place, std::size_t i) { m_runsOfCells[place] = m_runs[Index(visits[i].second)]; });
        for (std::size_t cell = 0; cell <= cells; ++cell)
            m_cells[cell].begin = begins[cell];
    }

    /// What lies to the left of each cell, where that is one domain or none, from left to right.
    void LookAtLeftSides() {
        for (double row = 0.0; row < m_rows; row += 1.0)
            for (double column = 1.0; column < m_columns; column += 1.0)
                if (int &left = m_cells[CellAt(column, row)].leftOf; left != kMixed)
                    left = DomainFrom(column - 1.0, row, {LeftSideOf(column), m_box.minY + (row + 0.5) * m_height});
    }

    std::span<BorderRun const> RunsOfCell(std::size_t cell) const {
        return std::span(m_runsOfCells).subspan(m_cells[cell].begin, m_cells[cell + 1].begin - m_cells[cell].begin);
    }

    /// The domain at a point, seen from a column of cells on to the left: that of the nearest border, if it lies on its
    /// right and the cell has no more to say about it.
    int DomainFrom(double column, double row, DrawingPoint p) const {
        for (double at = column; at >= 0.0; at -= 1.0) {
            std::size_t const cell = CellAt(at, row);
            double const from = LeftSideOf(at) - m_rounding;
            if (BorderRun const *const nearest = NearestLeftOf(p, from, RunsOfCell(cell)))
                return nearest->rightDomain != kNoDomain &&
                               IsEnteredOnce(nearest->rightDomain, p, from, RunsOfCell(cell))
                           ? nearest->rightDomain
                           : CountedFrom(column, row, p);
            if (m_cells[cell].leftOf != kMixed)
                return m_cells[cell].leftOf;
        }
        return kNoDomain;
    }

    /// The run that passes nearest to the left of `p`, from `from` on, or null. Of two borders in one place that with
    /// the domain on its right.
    static BorderRun const *NearestLeftOf(DrawingPoint p, double from, std::span<BorderRun const> runs) {
        BorderRun const *nearest = nullptr;
        double farthest = from;
        for (BorderRun const &run : runs)
            if (run.lowY <= p.y && p.y < run.highY)
                if (double const x = run.XAt(p.y);
                    x <= p.x && (x > farthest || (x == farthest && (!nearest || run.rightDomain != kNoDomain)))) {
                    nearest = &run;
                    farthest = x;
                }
        return nearest;
    }

    /// Whether what is seen of the borders of a domain leads into it once more than out of it.
    static bool IsEnteredOnce(int domain, DrawingPoint p, double from, std::span<BorderRun const> runs) {
        int entered = 0;
        for (BorderRun const &run : runs)
            if ((run.leftDomain == domain || run.rightDomain == domain) && run.lowY <= p.y && p.y < run.highY)
                if (double const x = run.XAt(p.y); x <= p.x && x >= from)
                    entered += (run.rightDomain == domain ? 1 : 0) - (run.leftDomain == domain ? 1 : 0);
        return entered == 1;
    }

    /// The domain that is entered once more than it is left, by all borders up to where it is known what lies there.
    /// It is that even where borders that nearly touch have changed places.
    int CountedFrom(double column, double row, DrawingPoint p) const {
        std::vector<std::pair<int, int>> entered; // domain, how often
        auto const count = [&](int domain, int by) {
            if (domain == kNoDomain)
                return;
            auto const known =
                std::find_if(entered.begin(), entered.end(), [&](auto const &e) { return e.first == domain; });
            if (known == entered.end())
                entered.emplace_back(domain, by);
            else
                known->second += by;
        };
        double right = HUGE_VAL; // each run counts in one cell
        for (; column >= 0.0; column -= 1.0) {
            std::size_t const cell = CellAt(column, row);
            double const left = column > 0.0 ? LeftSideOf(column) : -HUGE_VAL;
            for (BorderRun const &run : RunsOfCell(cell))
                if (run.lowY <= p.y && p.y < run.highY)
                    if (double const x = run.XAt(p.y); x <= p.x && left <= x && x < right) {
                        count(run.leftDomain, -1);
                        count(run.rightDomain, 1);
                    }
            right = left;
            if (m_cells[cell].leftOf == kMixed)
                continue;
            count(m_cells[cell].leftOf, 1);
            break;
        }
        auto const holder = std::find_if(entered.begin(), entered.end(), [](auto const &e) { return e.second > 0; });
        return holder == entered.end() ? kNoDomain : holder->first;
    }

    std::vector<BorderRun> m_runs; ///< until the cells have them
    std::vector<Level> m_levels;   ///< likewise
    Box m_box;
    double m_rounding = 0.0;
    double m_columns = 0.0, m_rows = 0.0;
    double m_width = 0.0, m_height = 0.0; ///< of a cell
    double m_columnsOfUnit = 0.0, m_rowsOfUnit = 0.0;
    std::vector<Cell> m_cells; ///< row by row, and one more
    std::vector<BorderRun> m_runsOfCells;
};

DomainLocator::DomainLocator(std::vector<DrawingDomain> const &domains) : m_grid(std::make_unique<Grid>(domains)) {}
DomainLocator::~DomainLocator() = default;
DomainLocator::DomainLocator(DomainLocator &&other) noexcept = default;
DomainLocator &DomainLocator::operator=(DomainLocator &&other) noexcept = default;

int DomainLocator::DomainAt(DrawingPoint p) const {
    return m_grid ? m_grid->DomainAt(p) : kNoDomain;
}

} // namespace zvi::lib
