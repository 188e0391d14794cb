#include "zvi/spatial/QuadPoolIndexDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib::spatial {

namespace {

/// An object narrower than the region divided by this belongs to the strip of the mid line that it crosses.
constexpr double kStripDivisor = 16.0;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr MQuadMBR2D kEmptyBox = {kInfinity, kInfinity, -kInfinity, -kInfinity};

/// The box of objects that may be anywhere.
constexpr MQuadMBR2D kWholePlane = {-kInfinity, -kInfinity, kInfinity, kInfinity};

} // namespace

void QuadPoolGroup::Add(MQuadObj *object, QuadCode code, std::uint64_t rank) {
    auto const place = std::upper_bound(ranks.begin(), ranks.end(), rank) - ranks.begin();
    objects.PushBack(object);
    codes.PushBack(code);
    ranks.PushBack(rank);
    std::rotate(objects.begin() + place, objects.end() - 1, objects.end());
    std::rotate(codes.begin() + place, codes.end() - 1, codes.end());
    std::rotate(ranks.begin() + place, ranks.end() - 1, ranks.end());
}

void QuadPoolGroup::RemoveAt(std::size_t place) {
    objects.RemoveAt(place);
    codes.RemoveAt(place);
    ranks.RemoveAt(place);
}

std::size_t QuadPoolGroup::PlaceOf(MQuadObj const *object) const {
    auto const place = static_cast<std::size_t>(std::find(objects.begin(), objects.end(), object) - objects.begin());
    assert(place < objects.Size());
    return place;
}

QuadPoolIndex::QuadPoolIndex(MQuadMBR2D const &region)
    : m_boxes{kEmptyBox, kEmptyBox, kEmptyBox}, m_midX((region.minX + region.maxX) * 0.5),
      m_midY((region.minY + region.maxY) * 0.5), m_narrowWidth((region.maxX - region.minX) / kStripDivisor),
      m_narrowHeight((region.maxY - region.minY) / kStripDivisor) {}

QuadPoolIndex::Group QuadPoolIndex::GroupOf(MQuadMBR2D const &mbr) const {
    if (mbr.minX <= m_midX && m_midX <= mbr.maxX && mbr.maxX - mbr.minX <= m_narrowWidth)
        return kAcrossVertical;
    if (mbr.minY <= m_midY && m_midY <= mbr.maxY && mbr.maxY - mbr.minY <= m_narrowHeight)
        return kAcrossHorizontal;
    return kOther;
}

void QuadPoolIndex::Add(MQuadObj *object, MQuadMBR2D const &mbr, QuadCode code) {
    Group const group = GroupOf(mbr);
    MQuadMBR2D &box = m_boxes[group];
    box = {std::min(box.minX, mbr.minX), std::min(box.minY, mbr.minY), std::max(box.maxX, mbr.maxX),
           std::max(box.maxY, mbr.maxY)};
    m_groups[group].Add(object, code, m_nextRank++);
}

void QuadPoolIndex::AddUntrusted(MQuadObj *object) {
    m_boxes[kOther] = kWholePlane;
    m_groups[kOther].Add(object, kUntrustedCode, m_nextRank++);
}

void QuadPoolIndex::Remove(MQuadObj const *object, MQuadMBR2D const &mbr) {
    QuadPoolGroup &group = m_groups[GroupOf(mbr)];
    group.RemoveAt(group.PlaceOf(object));
}

void QuadPoolIndex::Distrust(MQuadObj *object, MQuadMBR2D const &mbr) {
    QuadPoolGroup &group = m_groups[GroupOf(mbr)];
    std::size_t const place = group.PlaceOf(object);
    std::uint64_t const rank = group.ranks[place];
    group.RemoveAt(place);
    m_boxes[kOther] = kWholePlane;
    m_groups[kOther].Add(object, kUntrustedCode, rank);
}

} // namespace zvi::lib::spatial
