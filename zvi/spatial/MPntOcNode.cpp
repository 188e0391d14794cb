#include "zvi/spatial/MPntOcNode.h"

#include "zvi/spatial/MPntOcUtil.h"
#include "zvi/spatial/points/PointClusterDetail.h"
#include "zvi/spatial/tree/PrefetchDetail.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <new>

namespace zvi::lib {

namespace {

constexpr int kChildren = 8;

/// Part of a cube's diagonal, as its divisor, within which points are one cluster.
constexpr double kClusterDivisor = 20.0;

/// Bits of a child's number by which its cube lies in the high half of x, y and z; its points come by other ones.
constexpr unsigned kHighHalf[3] = {4, 2, 1};

} // namespace

/// A search for the points in a box.
struct MPntOcNode::BoxQuery {
    MVector<double, 3> const &low;
    MVector<double, 3> const &high;
    MList<MPntOcData *> &list;
};

MPntOcNode::MPntOcNode(MVector<double, 3> const &center, double halfSize, long capacity)
    : m_capacity(static_cast<std::int32_t>(
          std::clamp<long>(capacity, kLeastCapacity, std::numeric_limits<std::int32_t>::max()))),
      m_halfSize(halfSize), m_center(center) {}

MPntOcNode::MPntOcNode(MPntOcNode *parent, int index)
    : m_capacity(parent->m_capacity), m_level(static_cast<std::int16_t>(parent->m_level + 1)),
      m_index(static_cast<std::uint8_t>(index)), m_halfSize(parent->m_halfSize * 0.5),
      m_center(parent->CenterOfChild(index)), m_parent(parent) {}

MPntOcNode::~MPntOcNode() {
    DeleteChild();
    DropCluster();
}

int MPntOcNode::Insert(MPntOcData *data) {
    MPntOcNode *node = this;
    while (true) {
        if (node->IsLeafNode() != 0) {
            bool const hasRoom = node->m_points.Size() < static_cast<std::size_t>(node->m_capacity);
            if (hasRoom || node->m_level >= kDeepestLevel || node->CanSplit(data->position) == 0) {
                node->Append(data);
                return 1;
            }
            node->Split();
        }
        node = node->m_children[node->GetPntOcIdx(data->position)];
    }
}

void MPntOcNode::Append(MPntOcData *data) {
    if (m_points.Size() < static_cast<std::size_t>(m_capacity))
        DropCluster();
    m_positions.Reserve(1);
    m_points.PushBack(data);
    m_positions.PushBack(data->position);
    if (m_cluster)
        m_cluster->Add(data->position);
    if (m_points.Size() == 1)
        TellParents();
}

void MPntOcNode::RemoveAt(std::size_t place) {
    m_points.RemoveAt(place);
    m_positions.RemoveAt(place);
    if (m_points.Empty())
        TellParents();
}

/// Brings the bits of the nodes above up to date, as far as they change.
void MPntOcNode::TellParents() {
    for (MPntOcNode *node = this; node->m_parent; node = node->m_parent) {
        auto const bit = static_cast<std::uint8_t>(1u << node->m_index);
        bool const isOccupied = !node->m_points.Empty() || node->m_occupied != 0;
        if (isOccupied == ((node->m_parent->m_occupied & bit) != 0))
            return;
        node->m_parent->m_occupied ^= bit;
    }
}

void MPntOcNode::DropCluster() noexcept {
    delete m_cluster;
    m_cluster = nullptr;
}

int MPntOcNode::CanSplit(MVector<double, 3> const &point) {
    int child = kChildren;
    if (m_cluster)
        child = m_cluster->Child();
    else if (IsAllSameChild(child) == 0)
        return 1;
    if (GetPntOcIdx(point) != child)
        return 1;
    double const side = 2.0 * m_halfSize;
    double const limit = std::sqrt(3.0 * (side * side)) / kClusterDivisor;
    if (m_cluster && m_cluster->IsNear(point, limit))
        return 0;
    for (MVector<double, 3> const &position : m_positions) {
        if (spatial::Distance(position, point) >= limit)
            return 1;
    }
    // Without the memory for the bounds they are looked for again next time.
    if (m_cluster)
        m_cluster->Measure(m_positions);
    else
        m_cluster = new (std::nothrow) spatial::PointCluster(child, m_positions);
    return 0;
}

int MPntOcNode::IsAllSameChild(int &index) const {
    if (m_positions.Size() < 2)
        return 1;
    index = GetPntOcIdx(m_positions[0]);
    return std::all_of(m_positions.begin() + 1, m_positions.end(),
                       [&](MVector<double, 3> const &position) { return GetPntOcIdx(position) == index; })
               ? 1
               : 0;
}

MVector<double, 3> MPntOcNode::CenterOfChild(int index) const {
    double const offset = m_halfSize * 0.5;
    MVector<double, 3> center = m_center;
    for (std::size_t axis = 0; axis < 3; ++axis)
        center[axis] += (static_cast<unsigned>(index) & kHighHalf[axis]) != 0 ? offset : -offset;
    return center;
}

void MPntOcNode::Split() {
    auto *const children = std::allocator<MPntOcNode>().allocate(kChildren);
    for (int i = 0; i < kChildren; ++i)
        ::new (static_cast<void *>(children + i)) MPntOcNode(this, i);
    try {
        for (MPntOcData *const data : m_points)
            children[GetPntOcIdx(data->position)].Insert(data);
    } catch (...) {
        std::destroy_n(children, kChildren);
        std::allocator<MPntOcNode>().deallocate(children, kChildren);
        m_occupied = 0;
        throw;
    }
    for (int i = 0; i < kChildren; ++i)
        m_children[i] = children + i;
    m_points = MArray<MPntOcData *>();
    m_positions = MArray<MVector<double, 3>>();
    DropCluster();
}

void MPntOcNode::DeleteChild() {
    MPntOcNode *const children = m_children[0];
    if (!children)
        return;
    std::fill_n(m_children, kChildren, nullptr);
    m_occupied = 0;
    std::destroy_n(children, kChildren);
    std::allocator<MPntOcNode>().deallocate(children, kChildren);
}

int MPntOcNode::Merge() {
    int merged = 0;
    for (MPntOcNode *node = this; node && node->IsLeafNode() == 0; node = node->m_parent) {
        bool const hasPoints = std::any_of(node->m_children, node->m_children + kChildren,
                                           [](MPntOcNode const *child) { return !child->m_points.Empty(); });
        if (hasPoints)
            break;
        node->DeleteChild();
        node->TellParents();
        merged = 1;
    }
    return merged;
}

bool MPntOcNode::IsOutside(MVector<double, 3> const &point) const {
    MVector<double, 3> const reach(m_halfSize, m_halfSize, m_halfSize);
    return MPntOcUtil::IsContained(m_center - reach, m_center + reach, point) == 0;
}

int MPntOcNode::Delete(MPntOcData const *data) {
    MPntOcNode *node = this;
    while (!node->IsOutside(data->position)) {
        if (node->IsLeafNode() == 0) {
            node = node->m_children[node->GetPntOcIdx(data->position)];
            continue;
        }
        std::size_t place = node->m_points.Size();
        while (place > 0 && node->m_points[place - 1] != data)
            --place;
        if (place == 0)
            return 0;
        node->RemoveAt(place - 1);
        if (node->m_points.Empty() && node->m_parent)
            node->m_parent->Merge();
        return 1;
    }
    return 0;
}

long MPntOcNode::GetListInBox(MVector<double, 3> const &low, MVector<double, 3> const &high,
                              MList<MPntOcData *> &list) const {
    std::uint64_t const before = list.GetCount();
    BoxQuery query{low, high, list};
    ListInBox(query);
    return static_cast<long>(list.GetCount() - before);
}

/// A bit for each child that has points below it and whose cube meets the query.
unsigned MPntOcNode::ChildrenIn(BoxQuery const &query) const {
    MVector<double, 3> const lowest = CenterOfChild(0);
    MVector<double, 3> const highest = CenterOfChild(kChildren - 1);
    double const reach = m_halfSize * 0.5;
    // The children of the low and of the high half of each axis.
    constexpr unsigned kHigh[3] = {0b11110000, 0b11001100, 0b10101010};
    unsigned met = m_occupied;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        auto const meets = [&](double center) {
            return center - reach <= query.high[axis] && query.low[axis] <= center + reach;
        };
        met &= (meets(lowest[axis]) ? ~kHigh[axis] : 0u) | (meets(highest[axis]) ? kHigh[axis] : 0u);
    }
    return met;
}

/// Appends the points of a leaf. Which of them are in the box nobody can foretell, so nothing branches before it is
/// known of many.
void MPntOcNode::ListLeaf(BoxQuery &query) const {
    constexpr std::size_t kAtOnce = 64;
    MVector<double, 3> const low = query.low;
    MVector<double, 3> const high = query.high;
    for (std::size_t begin = 0; begin < m_positions.Size(); begin += kAtOnce) {
        std::size_t const count = std::min(kAtOnce, m_positions.Size() - begin);
        MVector<double, 3> const *const positions = m_positions.Data() + begin;
        MPntOcData *const *const points = m_points.Data() + begin;
        std::array<std::uint8_t, kAtOnce> found;
        std::size_t foundCount = 0;
        for (std::size_t i = 0; i < count; ++i) {
            MVector<double, 3> const &p = positions[i];
            unsigned const isIn = unsigned{p[0] >= low[0]} & unsigned{p[0] <= high[0]} & unsigned{p[1] >= low[1]} &
                                  unsigned{p[1] <= high[1]} & unsigned{p[2] >= low[2]} & unsigned{p[2] <= high[2]};
            found[foundCount] = static_cast<std::uint8_t>(i);
            foundCount += isIn;
        }
        for (std::size_t i = 0; i < foundCount; ++i)
            query.list.AddTail(points[found[i]]);
    }
}

void MPntOcNode::ListInBox(BoxQuery &query) const {
    if (IsLeafNode() != 0) {
        ListLeaf(query);
        return;
    }
    unsigned const met = ChildrenIn(query);
    for (int i = 0; i < kChildren; ++i) {
        if ((met >> i & 1u) != 0)
            spatial::Prefetch(m_children[i], 1);
    }
    for (int i = 0; i < kChildren; ++i) {
        if ((met >> i & 1u) != 0)
            m_children[i]->ListInBox(query);
    }
}

bool MPntOcNode::IsConsistent() const {
    if (m_points.Size() != m_positions.Size())
        return false;
    for (std::size_t i = 0; i < m_points.Size(); ++i) {
        auto const isSame = [](double a, double b) { return a == b || (a != a && b != b); };
        if (!m_points[i] ||
            !std::equal(m_positions[i].begin(), m_positions[i].end(), m_points[i]->position.begin(), isSame))
            return false;
    }
    if (IsLeafNode() != 0)
        return m_occupied == 0 && std::count(m_children, m_children + kChildren, nullptr) == kChildren;
    for (int i = 0; i < kChildren; ++i) {
        MPntOcNode const *const child = m_children[i];
        bool const isOccupied = child && (!child->m_points.Empty() || child->m_occupied != 0);
        if (!child || child->m_parent != this || child->m_level != m_level + 1 || child->m_index != i ||
            child->m_capacity != m_capacity || isOccupied != ((m_occupied >> i & 1) != 0) || !child->IsConsistent())
            return false;
    }
    return m_points.Empty() && !m_cluster;
}

} // namespace zvi::lib
