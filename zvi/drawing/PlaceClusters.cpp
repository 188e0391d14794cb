#include "zvi/drawing/PlaceClustersDetail.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Room is made for one more place for each so many, which are added later.
constexpr std::size_t kPlacesOfAdded = 16;

Box Around(Box const &a, Box const &b) {
    return {std::min(a.minX, b.minX), std::min(a.minY, b.minY), std::max(a.maxX, b.maxX), std::max(a.maxY, b.maxY)};
}

Box PointBox(DrawingPoint p) {
    return {p.x, p.y, p.x, p.y};
}

/// What the box of some points tells of the greatest distance between two of them.
enum class Verdict { kBelow, kNotBelow, kOpen };

Verdict JudgeByBox(Box const &box, double distance) {
    DrawingPoint const extent{box.maxX - box.minX, box.maxY - box.minY};
    if (!(std::max(extent.x, extent.y) < distance))
        return Verdict::kNotBelow;
    return Length(extent) < distance ? Verdict::kBelow : Verdict::kOpen;
}

} // namespace

PlaceClusters::PlaceClusters(std::vector<DrawingPoint> places) : m_places(std::move(places)) {
    std::size_t const count = m_places.size(), room = count + count / kPlacesOfAdded;
    m_places.reserve(room);
    m_parent.reserve(room);
    m_nextMember.reserve(room);
    m_parent.resize(count);
    m_nextMember.resize(count);
    std::iota(m_parent.begin(), m_parent.end(), 0);
    std::iota(m_nextMember.begin(), m_nextMember.end(), 0);
}

int PlaceClusters::Add(DrawingPoint p) {
    int const place = Count();
    m_places.push_back(p);
    m_parent.push_back(place);
    m_nextMember.push_back(place);
    if (!AreAllAlone())
        m_boxes.push_back(PointBox(p));
    return place;
}

int PlaceClusters::RootFrom(int place) const {
    for (;;) {
        int const parent = m_parent[Index(place)], above = m_parent[Index(parent)];
        if (above == parent)
            return parent;
        place = m_parent[Index(place)] = above;
    }
}

void PlaceClusters::Settle() {
    for (int place = 0; place < Count(); ++place)
        m_parent[Index(place)] = Root(place);
}

void PlaceClusters::ForgetMembers() {
    m_nextMember = std::vector<int>();
    m_boxes = std::vector<Box>();
}

Box PlaceClusters::BoxOf(int place) const {
    return AreAllAlone() ? PointBox(Position(place)) : m_boxes[Index(Root(place))];
}

bool PlaceClusters::Fit(int a, DrawingPoint p, double distance) const {
    switch (JudgeByBox(Around(BoxOf(a), PointBox(p)), distance)) {
    case Verdict::kBelow:
        return true;
    case Verdict::kNotBelow:
        return false;
    case Verdict::kOpen:
        break;
    }
    bool fits = true;
    ForEachMember(a, [&](int member) { fits = fits && Distance(Position(member), p) < distance; });
    return fits;
}

bool PlaceClusters::Fit(int a, int b, double distance) const {
    switch (JudgeByBox(Around(BoxOf(a), BoxOf(b)), distance)) {
    case Verdict::kBelow:
        return true;
    case Verdict::kNotBelow:
        return false;
    case Verdict::kOpen:
        break;
    }
    bool fits = true;
    ForEachMember(b, [&](int member) { fits = fits && Fit(a, Position(member), distance); });
    return fits;
}

void PlaceClusters::Unite(int a, int b) {
    int const root = std::min(Root(a), Root(b)), other = std::max(Root(a), Root(b));
    if (root == other)
        return;
    if (AreAllAlone()) {
        m_boxes.reserve(m_places.capacity());
        std::transform(m_places.begin(), m_places.end(), std::back_inserter(m_boxes), PointBox);
        m_areAllAlone = false;
    }
    m_parent[Index(other)] = root;
    m_boxes[Index(root)] = Around(m_boxes[Index(root)], m_boxes[Index(other)]);
    std::swap(m_nextMember[Index(root)], m_nextMember[Index(other)]);
}

} // namespace zvi::lib::drawing
