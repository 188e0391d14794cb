#include "tests/drawing/CoveredArea.h"

#include "tests/drawing/DrawingCurves.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace zvi::lib::test {

namespace {

using Real = long double;

constexpr Real kInfinite = std::numeric_limits<Real>::infinity();

/// The drawing is turned by this angle, as often as it takes until no line of it is nearer than the second to a wall.
constexpr double kTurn = 0.7297, kUpright = 1e-4;
constexpr int kTurns = 50;

/// Openings in a wall narrower than this share of the drawing are rounding, and so are regions of no more width.
constexpr Real kOpening = 1e-11L;

/// Far from the origin rounding counts as in a drawing of this share of the distance.
constexpr double kFarShare = 1e-3;

/// Ends of an arc that are nearer than this share of the drawing are one, and no longer tell whether it goes round once
/// they have been moved.
constexpr double kOneEnd = 4e-16;

/// Lines across gaps reach beyond them by this share of their length and of the drawing.
constexpr double kReach = 1e-3, kLeastReach = 1e-11;

/// Points of a circle that miss an arc of it by less than this share of the radius are on it.
constexpr double kOnCurve = 1e-12;

/// Ends nearer than the first share of the tolerance, as corners must be to a curve, meet for certain when nothing else
/// is nearer than the second.
constexpr double kClearlyNear = 0.1, kClearlyFar = 3.0;

struct Point {
    Real x = 0.0L, y = 0.0L;
};

/// A stretch of a curve that runs from left to right without turning back: a line, or the upper or lower part of a
/// circle (side 1 or -1).
struct Stretch {
    Real x0, y0, x1, y1;
    int side = 0;
    Real cx = 0.0L, cy = 0.0L, radius = 0.0L;
    bool isTip0 = true, isTip1 = true; ///< the curve ends there

    bool IsTipAt(Real x) const { return (isTip0 && x == x0) || (isTip1 && x == x1); }
    Real HeightAt(Real x) const {
        if (x <= x0 || x >= x1)
            return x <= x0 ? y0 : y1;
        if (side == 0)
            return y0 + (y1 - y0) * ((x - x0) / (x1 - x0));
        return cy + side * std::sqrt(std::max(0.0L, (radius - x + cx) * (radius + x - cx)));
    }
    /// Whether a point of what carries the stretch is on it.
    bool IsOn(Point p) const { return p.x >= x0 && p.x <= x1 && side * (p.y - cy) >= 0.0L; }
    /// How far a point above or below the stretch is off it, however steep that is.
    Real DistanceTo(Point p) const {
        if (side == 0)
            return std::fabs(p.y - HeightAt(p.x)) * (x1 - x0) / std::hypot(x1 - x0, y1 - y0);
        if (side * (p.y - cy) >= 0.0L)
            return std::fabs(std::hypot(p.x - cx, p.y - cy) - radius);
        return std::hypot(std::fabs(p.x - cx) - radius, p.y - cy);
    }
    /// The area between the stretch and its chord from `a` to `b`, positive above it.
    Real Bulge(Real a, Real ya, Real b, Real yb) const {
        if (side == 0)
            return 0.0L;
        Real const half = std::min(1.0L, std::hypot(b - a, yb - ya) / (2.0L * radius));
        Real const turn = 2.0L * std::asin(half);
        Real const small = turn * turn * turn / 6.0L * (1.0L - turn * turn / 20.0L);
        return side * 0.5L * radius * radius * (turn < 1e-4L ? small : turn - std::sin(turn));
    }
};

class Scan {
public:
    Scan(std::vector<DrawingCurve> const &someCurves, double tolerance, Gaps gaps) : m_curves(someCurves) {
        DrawingPoint const o = m_curves[0].type == DrawingCurveType::kLine ? m_curves[0].start : m_curves[0].center;
        double const far = SizeOf(m_curves);
        JoinOwnEnds(far);
        m_curves = Moved(m_curves, {0.0, false, 1.0, {-o.x, -o.y}});
        m_length = LengthOf(m_curves);
        m_size = SizeOf(m_curves) + kFarShare * far;
        if (gaps != Gaps::kAsDrawn)
            CloseGaps(tolerance, gaps);
        for (int i = 0; i < kTurns && std::any_of(m_curves.begin(), m_curves.end(),
                                                  [&](DrawingCurve const &c) { return IsUpright(c); });
             ++i)
            m_turn += kTurn;
        for (DrawingCurve const &c : m_curves)
            AddStretches(c);
        CutAtCrossings();
    }

    ScannedRegions Regions() {
        std::vector<Real> walls;
        for (Stretch const &s : m_stretches) {
            walls.push_back(s.x0);
            walls.push_back(s.x1);
        }
        std::sort(walls.begin(), walls.end());
        walls.erase(std::unique(walls.begin(), walls.end()), walls.end());
        std::sort(m_stretches.begin(), m_stretches.end(), [](auto const &a, auto const &b) { return a.x0 < b.x0; });
        std::vector<Cell> const outside{{-kInfinite, kInfinite, 0}};
        m_wall = outside;
        std::size_t next = 0;
        for (std::size_t w = 0; w + 1 < walls.size(); ++w) {
            std::erase_if(m_active, [&](auto const &s) { return s.second->x1 <= walls[w]; });
            for (; next < m_stretches.size() && m_stretches[next].x0 <= walls[w]; ++next)
                m_active.push_back({0.0L, &m_stretches[next]});
            AddSlab(walls[w], walls[w + 1]);
        }
        Unite(walls.empty() ? 0.0L : walls.back(), m_wall, outside);
        return Sum();
    }

private:
    /// A cell of a slab: what it has of the wall that is looked at, the region it belongs to, and what bounds it.
    struct Cell {
        Real low, high;
        int region;
        Stretch const *below = nullptr, *above = nullptr;
    };

    /// An arc whose ends are one goes round, or has no length.
    void JoinOwnEnds(double size) {
        for (DrawingCurve &c : m_curves) {
            if (c.type != DrawingCurveType::kArc || Distance(c.start, c.end) > kOneEnd * size)
                continue;
            c.type = IsOverHalf(c) ? DrawingCurveType::kCircle : DrawingCurveType::kLine;
            c.end = c.start;
        }
    }

    // Gaps.

    void CloseGaps(double tolerance, Gaps gaps) {
        std::vector<DrawingCurve> const drawn = m_curves;
        for (DrawingCurve const &c : drawn) {
            if (c.type != DrawingCurveType::kCircle)
                for (DrawingPoint const p : {c.start, c.end})
                    CloseGapsAt(drawn, &c, p, tolerance, gaps);
            if (gaps == Gaps::kAll)
                for (DrawingCurve const *d = &c + 1; d != drawn.data() + drawn.size(); ++d)
                    CloseWaist(c, *d, tolerance);
        }
    }

    void CloseGapsAt(std::vector<DrawingCurve> const &drawn, DrawingCurve const *own, DrawingPoint p, double tolerance,
                     Gaps gaps) {
        auto const isOpen = [&](DrawingCurve const &d) {
            double const distance = &d == own ? Distance(own->start, own->end) : DistanceTo(d, p);
            return distance > kClearlyNear * tolerance && distance < kClearlyFar * tolerance;
        };
        if (gaps == Gaps::kClear && std::any_of(drawn.begin(), drawn.end(), isOpen))
            return;
        for (DrawingCurve const &d : drawn) {
            if (&d == own) {
                Bridge(own->start, own->end, tolerance);
                continue;
            }
            Bridge(p, NearestOn(d, p), tolerance);
        }
    }

    static DrawingPoint NearestOn(DrawingCurve const &d, DrawingPoint p) {
        if (d.type == DrawingCurveType::kLine) {
            double const dx = d.end.x - d.start.x, dy = d.end.y - d.start.y;
            double const t = ((p.x - d.start.x) * dx + (p.y - d.start.y) * dy) / (dx * dx + dy * dy);
            return t >= 1.0 ? d.end : t > 0.0 ? DrawingPoint{d.start.x + t * dx, d.start.y + t * dy} : d.start;
        }
        double const t = d.radius / Distance(d.center, p);
        DrawingPoint const foot{d.center.x + t * (p.x - d.center.x), d.center.y + t * (p.y - d.center.y)};
        if (DistanceTo(d, foot) <= kOnCurve * d.radius)
            return foot;
        return Distance(p, d.start) < Distance(p, d.end) ? d.start : d.end;
    }

    /// Where two curves pass one another they do so on the normal through the centres.
    void CloseWaist(DrawingCurve const &c, DrawingCurve const &d, double tolerance) {
        bool const isLine = d.type == DrawingCurveType::kLine;
        if (c.type == DrawingCurveType::kLine)
            return isLine ? void() : CloseWaist(d, c, tolerance);
        double const ux = isLine ? d.start.y - d.end.y : d.center.x - c.center.x;
        double const uy = isLine ? d.end.x - d.start.x : d.center.y - c.center.y;
        for (double const step : {-c.radius / std::hypot(ux, uy), c.radius / std::hypot(ux, uy)}) {
            DrawingPoint const p{c.center.x + step * ux, c.center.y + step * uy};
            if (DistanceTo(c, p) > tolerance || DistanceTo(d, p) > tolerance)
                continue;
            double const reach = kLeastReach * m_size / c.radius;
            Bridge({p.x - reach * step * ux, p.y - reach * step * uy},
                   {p.x + reach * step * ux, p.y + reach * step * uy}, tolerance + m_size);
            Bridge(p, NearestOn(d, p), tolerance);
        }
    }

    void Bridge(DrawingPoint p, DrawingPoint q, double tolerance) {
        double const distance = Distance(p, q);
        if (!(distance <= tolerance) || distance == 0.0)
            return;
        double const reach = kReach + kLeastReach * m_size / distance;
        m_curves.push_back(LineOf({p.x - reach * (q.x - p.x), p.y - reach * (q.y - p.y)},
                                  {q.x + reach * (q.x - p.x), q.y + reach * (q.y - p.y)}));
    }

    // Stretches.

    bool IsUpright(DrawingCurve const &c) const {
        Real const x = Real(c.end.x) - c.start.x, y = Real(c.end.y) - c.start.y;
        return c.type == DrawingCurveType::kLine &&
               std::fabs(std::cos(m_turn) * x - std::sin(m_turn) * y) < kUpright * std::hypot(x, y);
    }

    void AddStretches(DrawingCurve const &c) {
        Real const cosine = std::cos(m_turn), sine = std::sin(m_turn);
        auto const turned = [&](DrawingPoint p) {
            return std::pair(cosine * p.x - sine * p.y, sine * p.x + cosine * p.y);
        };
        auto const [ax, ay] = turned(c.clockwise ? c.end : c.start);
        auto const [bx, by] = turned(c.clockwise ? c.start : c.end);
        if (c.type == DrawingCurveType::kLine)
            return Add({ax, ay, bx, by});
        auto const [cx, cy] = turned(c.center);
        Real const r = c.radius;
        if (c.type == DrawingCurveType::kCircle) {
            Add({cx - r, cy, cx + r, cy, 1, cx, cy, r, false, false});
            return Add({cx - r, cy, cx + r, cy, -1, cx, cy, r, false, false});
        }
        // Counter-clockwise the upper half runs leftwards and the lower one rightwards.
        Real x = ax, y = ay;
        bool isFirst = true;
        for (bool isUpper = ay > cy, isLast = false; !isLast; isUpper = !isUpper, isFirst = false) {
            isLast = isUpper == (by > cy) && (isUpper ? bx <= x : bx >= x);
            Real const toX = isLast ? bx : isUpper ? cx - r : cx + r, toY = isLast ? by : cy;
            Add({x, y, toX, toY, isUpper ? 1 : -1, cx, cy, r, isFirst, isLast});
            x = toX;
            y = toY;
        }
    }

    void Add(Stretch s) {
        if (s.x0 > s.x1) {
            std::swap(s.x0, s.x1);
            std::swap(s.y0, s.y1);
            std::swap(s.isTip0, s.isTip1);
        }
        if (s.x0 < s.x1)
            m_stretches.push_back(s);
    }

    // Crossings.

    static int MeetLines(Stretch const &s, Stretch const &t, Point *p) {
        Real const m = (s.y1 - s.y0) / (s.x1 - s.x0), n = (t.y1 - t.y0) / (t.x1 - t.x0);
        p[0].x = s.x0 + (t.y0 - s.y0 + n * (s.x0 - t.x0)) / (m - n);
        p[0].y = s.HeightAt(p[0].x);
        return m == n ? 0 : 1;
    }
    /// With a gap between them that is rounding they touch.
    int MeetCircle(Stretch const &s, Stretch const &t, Point *p) const {
        Real const length = std::hypot(t.x1 - t.x0, t.y1 - t.y0);
        Real const ux = (t.x1 - t.x0) / length, uy = (t.y1 - t.y0) / length;
        Real const along = (s.cx - t.x0) * ux + (s.cy - t.y0) * uy, off = (s.cy - t.y0) * ux - (s.cx - t.x0) * uy;
        Real const squared = (s.radius - off) * (s.radius + off);
        Real const half = std::sqrt(std::max(0.0L, squared));
        p[0] = {t.x0 + (along - half) * ux, t.y0 + (along - half) * uy};
        p[1] = {t.x0 + (along + half) * ux, t.y0 + (along + half) * uy};
        return std::fabs(off) - s.radius > kOpening * m_size ? 0 : 2;
    }
    int MeetCircles(Stretch const &s, Stretch const &t, Point *p) const {
        Real const dx = t.cx - s.cx, dy = t.cy - s.cy, d = std::hypot(dx, dy);
        if (d == 0.0L)
            return 0;
        Real const along =
            std::clamp(0.5L * (d + (s.radius - t.radius) * (s.radius + t.radius) / d), -s.radius, s.radius);
        Real const squared = (s.radius - along) * (s.radius + along);
        Real const half = std::sqrt(std::max(0.0L, squared));
        p[0] = {s.cx + (along * dx - half * dy) / d, s.cy + (along * dy + half * dx) / d};
        p[1] = {s.cx + (along * dx + half * dy) / d, s.cy + (along * dy - half * dx) / d};
        Real const gap = std::max(d - s.radius - t.radius, std::fabs(s.radius - t.radius) - d);
        return gap > kOpening * m_size ? 0 : 2;
    }
    int Meet(Stretch const &s, Stretch const &t, Point *p) const {
        if (s.side != 0)
            return t.side != 0 ? MeetCircles(s, t, p) : MeetCircle(s, t, p);
        return t.side != 0 ? MeetCircle(t, s, p) : MeetLines(s, t, p);
    }

    void CutAtCrossings() {
        std::vector<std::vector<std::pair<Real, Real>>> cuts(m_stretches.size());
        for (std::size_t i = 0; i < m_stretches.size(); ++i)
            for (std::size_t j = 0; j < i; ++j) {
                Stretch const &s = m_stretches[i], &t = m_stretches[j];
                if (s.x1 < t.x0 || t.x1 < s.x0)
                    continue;
                Point p[2];
                for (int k = Meet(s, t, p) - 1; k >= 0; --k)
                    for (std::size_t const own : {i, j})
                        if (s.IsOn(p[k]) && t.IsOn(p[k]) && m_stretches[own].x0 < p[k].x &&
                            p[k].x < m_stretches[own].x1)
                            cuts[own].push_back({p[k].x, p[k].y});
            }
        for (std::size_t i = 0; i < cuts.size(); ++i) {
            std::sort(cuts[i].begin(), cuts[i].end());
            for (auto const &[x, y] : cuts[i]) {
                if (x == m_stretches[i].x0)
                    continue;
                Stretch left = m_stretches[i];
                left.x1 = m_stretches[i].x0 = x;
                left.y1 = m_stretches[i].y0 = y;
                left.isTip1 = m_stretches[i].isTip0 = false;
                m_stretches.push_back(left);
            }
        }
    }

    // Slabs and cells.

    void AddSlab(Real a, Real b) {
        for (auto &[height, s] : m_active)
            height = s->HeightAt(0.5L * (a + b));
        std::sort(m_active.begin(), m_active.end());
        std::vector<Cell> left{{-kInfinite, kInfinite, 0}}, right = left;
        for (std::size_t i = 0; i < m_active.size(); ++i) {
            Stretch const &s = *m_active[i].second;
            Real const ya = s.HeightAt(a), yb = s.HeightAt(b);
            left.back().high = ya;
            right.back().high = yb;
            left.back().above = right.back().above = &s;
            int const region = i + 1 == m_active.size() ? 0 : NewRegion();
            left.push_back({ya, kInfinite, region, &s});
            right.push_back({yb, kInfinite, region, &s});
            Real const under = 0.5L * (b - a) * (ya + yb) + s.Bulge(a, ya, b, yb);
            m_area[Index(region)] -= under;
            m_area[Index(left[i].region)] += under;
        }
        Unite(a, m_wall, left);
        m_wall.swap(right);
    }

    int NewRegion() {
        m_link.push_back(static_cast<int>(m_link.size()));
        m_area.push_back(0.0L);
        return m_link.back();
    }

    /// The regions of two slabs are one where their cells share more of the wall at `x` between them than rounding.
    void Unite(Real x, std::vector<Cell> const &left, std::vector<Cell> const &right) {
        for (std::size_t i = 0, j = 0; i < left.size() && j < right.size();) {
            Cell const &a = left[i], &b = right[j];
            Point const low{x, std::max(a.low, b.low)}, high{x, std::min(a.high, b.high)};
            Stretch const *const below = a.low > b.low ? a.below : b.below;
            Stretch const *const above = a.high < b.high ? a.above : b.above;
            Real const width = !below || !above ? high.y - low.y : Opening(x, *below, low, *above, high);
            if (high.y > low.y && width > kOpening * m_size)
                m_link[Index(Root(a.region))] = Root(b.region);
            a.high < b.high ? ++i : ++j;
        }
    }

    /// How wide the opening is between two stretches that pass or end above one another: before the tip of one as far
    /// as that is from the other.
    static Real Opening(Real x, Stretch const &below, Point low, Stretch const &above, Point high) {
        Real const fromBelow = below.DistanceTo(high), fromAbove = above.DistanceTo(low);
        if (above.IsTipAt(x) != below.IsTipAt(x))
            return above.IsTipAt(x) ? fromBelow : fromAbove;
        return std::min(fromBelow, fromAbove);
    }

    int Root(int region) {
        while (m_link[Index(region)] != region)
            region = m_link[Index(region)] = m_link[Index(m_link[Index(region)])];
        return region;
    }

    ScannedRegions Sum() {
        std::vector<Real> sums(m_link.size(), 0.0L);
        for (std::size_t i = 0; i < m_link.size(); ++i)
            sums[Index(Root(static_cast<int>(i)))] += m_area[i];
        ScannedRegions regions;
        sums[Index(Root(0))] = 0.0L;
        for (Real const sum : sums) {
            double const area = static_cast<double>(std::max(sum, 0.0L));
            bool const isThin = sum <= kOpening * m_size * m_length;
            (isThin ? regions.thin : regions.total) += area;
            if (!isThin)
                regions.areas.push_back(area);
        }
        std::sort(regions.areas.rbegin(), regions.areas.rend());
        return regions;
    }

    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }

    std::vector<DrawingCurve> m_curves;
    Real m_turn = kTurn;
    double m_length = 0.0;
    double m_size = 0.0; ///< what rounding is a share of
    std::vector<Stretch> m_stretches;
    std::vector<std::pair<Real, Stretch const *>> m_active; ///< from the lowest to the highest in a slab
    std::vector<Cell> m_wall;
    std::vector<int> m_link{0}; ///< of cells to regions; 0 is the outside
    std::vector<Real> m_area{0.0L};
};

} // namespace

ScannedRegions ScanRegions(std::vector<DrawingCurve> const &curves, double tolerance, Gaps gaps) {
    return curves.empty() ? ScannedRegions{} : Scan(curves, tolerance, gaps).Regions();
}

} // namespace zvi::lib::test
