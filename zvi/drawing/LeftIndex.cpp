#include "zvi/drawing/LeftIndexDetail.h"

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <array>
#include <bit>

namespace zvi::lib::drawing {

namespace {

/// How often the parts of an arc become half as long at most.
constexpr std::size_t kMostHalvings = 8;

/// A part of a stretch.
struct Part {
    Box box;
    int owner = 0;
};

/// Points of the circle of radius 1 at a quarter turn from the rightmost one, and each at half the angle of the one
/// before it.
std::array<DrawingPoint, kMostHalvings> TowardsRight() {
    std::array<DrawingPoint, kMostHalvings> points;
    double angle = 0.5 * kPi;
    for (DrawingPoint &p : points) {
        p = {Cos(angle), Sin(angle)};
        angle *= 0.5;
    }
    points[0].x = 0.0;
    return points;
}

/// Cuts stretches into parts.
class PartCutter {
public:
    explicit PartCutter(double grown) : m_grown(grown) {}

    void Cut(Stretch const &s, int owner, Box const &whole, std::size_t count, std::vector<Part> &parts) const {
        if (count == 1)
            parts.push_back({whole, owner});
        else if (s.isArc)
            CutArc(s, owner, whole, count, parts);
        else
            CutLine(s, owner, count, parts);
    }

private:
    void CutLine(Stretch const &s, int owner, std::size_t count, std::vector<Part> &parts) const {
        auto const steps = static_cast<double>(count);
        for (std::size_t i = 0; i < count; ++i) {
            auto const k = static_cast<double>(i);
            parts.push_back({Grown(BoxOf(PartOf(s, k / steps, (k + 1.0) / steps)), m_grown), owner});
        }
    }

    /// The parts of its circle that come into the box of an arc.
    void CutArc(Stretch const &s, int owner, Box const &whole, std::size_t count, std::vector<Part> &parts) const {
        std::size_t const last = std::min(static_cast<std::size_t>(std::bit_width(count)), kMostHalvings - 1);
        auto const add = [&](double x0, double y0, double x1, double y1) {
            Box const box = Grown({s.center.x + s.radius * std::min(x0, x1), s.center.y + s.radius * std::min(y0, y1),
                                   s.center.x + s.radius * std::max(x0, x1), s.center.y + s.radius * std::max(y0, y1)},
                                  m_grown + s.radius * kRounding);
            if (Meet(box, whole))
                parts.push_back({{std::max(box.minX, whole.minX), std::max(box.minY, whole.minY),
                                  std::min(box.maxX, whole.maxX), std::min(box.maxY, whole.maxY)},
                                 owner});
        };
        for (double const side : {-1.0, 1.0}) {
            for (std::size_t i = 0; i < last; ++i)
                for (double const up : {-1.0, 1.0})
                    add(side * m_points[i].x, up * m_points[i].y, side * m_points[i + 1].x, up * m_points[i + 1].y);
            add(side * m_points[last].x, -m_points[last].y, side, m_points[last].y);
        }
    }

    double m_grown;
    std::array<DrawingPoint, kMostHalvings> m_points = TowardsRight();
};

std::vector<Part> PartsOf(std::vector<Stretch> const &stretches, double partsOfMean, double grown,
                          base::Workers const &workers) {
    std::vector<Box> wholes(stretches.size());
    workers.ForEach(wholes.size(), [&](std::size_t i) { wholes[i] = Grown(BoxOf(stretches[i]), grown); });
    std::vector<std::size_t> const counts = PartCounts(wholes, partsOfMean);
    PartCutter const cutter(grown);
    return workers.Collect<Part>(stretches.size(), [&](std::size_t i, std::vector<Part> &parts) {
        cutter.Cut(stretches[i], static_cast<int>(i), wholes[i], counts[i], parts);
    });
}

} // namespace

LeftIndex::LeftIndex(std::vector<Stretch> const &stretches, double partsOfMean, double grown,
                     base::Workers const &workers)
    : m_index({}, workers) {
    std::vector<Box> boxes;
    for (Part const &part : PartsOf(stretches, partsOfMean, grown, workers)) {
        boxes.push_back(part.box);
        m_owners.push_back(part.owner);
    }
    m_index = BoxIndex(boxes, workers);
}

void LeftIndex::Find(Box const &query, std::vector<int> &out) const {
    m_index.Find(query, out);
    for (int &found : out)
        found = m_owners[Index(found)];
}

} // namespace zvi::lib::drawing
