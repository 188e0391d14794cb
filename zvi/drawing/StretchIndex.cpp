#include "zvi/drawing/StretchIndexDetail.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib::drawing {

namespace {

/// Boxes crowd when each meets more than so many others on average.
constexpr double kCrowd = 512;

/// Fewer boxes than this never crowd.
constexpr std::size_t kFewest = 192;

/// Boxes that are looked at to tell whether all of them crowd.
constexpr std::size_t kSamples = 256;

/// Parts of a stretch of mean extent: this share of the root of what a box meets. Parts of one at most.
constexpr double kPartsOfRoot = 0.15, kMostParts = 128.0;

/// How many boxes each one meets, on average of some.
double CrowdOf(std::vector<Box> const &boxes, BoxIndex const &index) {
    if (boxes.size() < kFewest)
        return 0.0;
    std::vector<int> found;
    std::size_t const step = (boxes.size() + kSamples - 1) / kSamples;
    std::size_t looks = 0, meetings = 0;
    for (std::size_t i = 0; i < boxes.size(); i += step, ++looks) {
        index.Find(boxes[i], found);
        meetings += found.size();
    }
    return static_cast<double>(meetings) / static_cast<double>(looks);
}

/// Side of the square that covers as much as the box.
double ExtentOf(Box const &box) {
    return std::sqrt((box.maxX - box.minX) * (box.maxY - box.minY));
}

} // namespace

std::vector<Box> BoxesOf(std::vector<Stretch const *> const &stretches, double by, base::Workers const &workers) {
    std::vector<Box> boxes(stretches.size());
    workers.ForEach(stretches.size(), [&](std::size_t i) { boxes[i] = Grown(BoxOf(*stretches[i]), by); });
    return boxes;
}

std::vector<std::size_t> PartCounts(std::vector<Box> const &boxes, double partsOfMean) {
    double extents = 0.0;
    for (Box const &box : boxes)
        extents += ExtentOf(box);
    double const partsOfExtent = extents > 0.0 ? partsOfMean * static_cast<double>(boxes.size()) / extents : 0.0;
    std::vector<std::size_t> counts(boxes.size());
    std::transform(boxes.begin(), boxes.end(), counts.begin(), [&](Box const &box) {
        return static_cast<std::size_t>(std::clamp(std::ceil(ExtentOf(box) * partsOfExtent), 1.0, kMostParts));
    });
    return counts;
}

StretchIndex::StretchIndex(std::vector<Box> boxes, base::Workers const &workers)
    : m_boxes(std::move(boxes)), m_index(m_boxes, workers), m_crowd(CrowdOf(m_boxes, m_index)),
      m_order(m_index.Order()), m_ranks(m_boxes.size()) {
    for (std::size_t rank = 0; rank < m_ranks.size(); ++rank)
        m_ranks[Index(m_order[rank])] = static_cast<int>(rank);
}

StretchIndex::StretchIndex(std::vector<Stretch const *> const &stretches, double grown, base::Workers const &workers,
                           std::function<void(double)> const &tell, std::function<std::vector<int>()> const &groups)
    : StretchIndex(BoxesOf(stretches, grown, workers), workers) {
    if (tell)
        tell(m_crowd);
    if (DoBoxesCrowd()) {
        HoldParts(stretches, grown, workers);
        PackParts(groups ? groups() : std::vector<int>(), workers);
    }
}

StretchIndex StretchIndex::OfWholes(std::vector<Stretch const *> const &stretches, double grown,
                                    base::Workers const &workers) {
    return StretchIndex(BoxesOf(stretches, grown, workers), workers);
}

bool StretchIndex::DoBoxesCrowd() const {
    return m_crowd > kCrowd;
}

double StretchIndex::PartsOfMean() const {
    return kPartsOfRoot * std::sqrt(m_crowd);
}

void StretchIndex::HoldParts(std::vector<Stretch const *> const &stretches, double grown,
                             base::Workers const &workers) {
    std::vector<std::size_t> const counts = PartCounts(m_boxes, PartsOfMean());
    m_begins.assign(1, 0);
    for (std::size_t const count : counts)
        m_begins.push_back(m_begins.back() + count);
    std::vector<Box> parts(m_begins.back());
    m_owners.resize(parts.size());
    workers.ForEach(stretches.size(), [&](std::size_t i) {
        auto const count = static_cast<double>(counts[i]);
        for (std::size_t part = 0; part < counts[i]; ++part) {
            auto const k = static_cast<double>(part);
            parts[m_begins[i] + part] =
                counts[i] == 1 ? m_boxes[i] : Grown(BoxOf(PartOf(*stretches[i], k / count, (k + 1.0) / count)), grown);
            m_owners[m_begins[i] + part] = static_cast<int>(i);
        }
    });
    m_boxes = std::move(parts);
}

void StretchIndex::PackParts(std::vector<int> groups, base::Workers const &workers) {
    std::vector<int> groupsOfParts;
    if (!groups.empty())
        for (int const owner : m_owners)
            groupsOfParts.push_back(groups[Index(owner)]);
    m_index = BoxIndex(m_boxes, workers, groupsOfParts);
    m_groups = std::move(groups);
}

void StretchIndex::AddOwners(Box const &query, int passedOver, std::vector<int> &out, Search &search) const {
    search.isFound.resize(m_ranks.size(), false);
    m_index.Find(query, search.boxes, passedOver);
    for (int const box : search.boxes)
        if (int const owner = OwnerOf(box); !search.isFound[Index(owner)]) {
            search.isFound[Index(owner)] = true;
            out.push_back(owner);
        }
}

void StretchIndex::Arrange(std::vector<int> &stretches) const {
    std::sort(stretches.begin(), stretches.end(), [this](int a, int b) { return RankOf(a) < RankOf(b); });
    stretches.erase(std::unique(stretches.begin(), stretches.end()), stretches.end());
}

void StretchIndex::Find(Box const &query, std::vector<int> &out, Search &search, int passedOver) const {
    if (!IsCrowded()) {
        m_index.Find(query, out);
        return;
    }
    out.clear();
    AddOwners(query, passedOver, out, search);
    for (int const owner : out)
        search.isFound[Index(owner)] = false;
}

void StretchIndex::FindNear(int stretch, std::vector<int> &out, Search &search) const {
    if (!IsCrowded()) {
        m_index.Find(m_boxes[Index(stretch)], out);
        return;
    }
    out.clear();
    int const group = m_groups.empty() ? BoxIndex::kNoGroup : m_groups[Index(stretch)];
    for (std::size_t part = m_begins[Index(stretch)]; part < m_begins[Index(stretch) + 1]; ++part)
        AddOwners(m_boxes[part], group, out, search);
    for (int const owner : out)
        search.isFound[Index(owner)] = false;
}

} // namespace zvi::lib::drawing
