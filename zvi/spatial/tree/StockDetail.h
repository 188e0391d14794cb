#pragma once

#include "zvi/spatial/tree/ClusterDetail.h"
#include "zvi/spatial/tree/CodeDetail.h"
#include "zvi/spatial/tree/LongIndexDetail.h"
#include "zvi/spatial/tree/MemoryDetail.h"
#include "zvi/spatial/tree/PrefetchDetail.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <utility>

namespace zvi::lib::spatial {

template <typename Space>
struct Access;

/// What stands behind a pool: its objects in the order in which they came, each with its code, and what follows from
/// them.
///
/// The one invariant of all that is remembered of a node (`IsConsistent` of the tree tests it): whatever is not
/// `kUntrustedCode` here is the code of the object's present box in the frame of the node's region; a cluster, an index
/// and the bands of the node's family hold for all objects of the pool; and a family has those of its nodes'
/// children. Each change of a pool goes through this class, which keeps it.
///
/// In a long pool an object that leaves makes a hole, a null pointer, so that those behind it need not move.
template <typename Space>
class Stock {
public:
    using Object = typename Space::Object;
    using Word = Code<Space::kDimension>;
    using Box = Extent<Space::kDimension>;
    using Index = LongIndex<Space>;

    Stock() = default;
    Stock(Stock const &) = delete;
    Stock &operator=(Stock const &) = delete;

    /// Objects in the pool.
    std::size_t Count() const { return m_count - (m_extras ? m_extras->holes : 0); }
    /// Places up to the last object, holes included.
    std::size_t End() const { return m_count; }
    Word const *Codes() const { return m_codes; }
    /// The object at a place in front of the end; null in a hole.
    Object *At(std::size_t place) const {
        assert(place < m_count);
        return Objects()[place];
    }
    Object *const *Objects() const { return reinterpret_cast<Object *const *>(m_codes + Capacity()); }
    bool HasUntrusted() const { return m_hasUntrusted; }
    bool IsTrusted(std::size_t place) const {
        assert(place < m_count);
        return m_codes[place] != kUntrustedCode;
    }

    /// Asks for the memory of a short pool.
    void PrefetchAll() const {
        Prefetch(m_codes, m_count);
        Prefetch(Objects(), m_count);
    }

    /// Room for `more` objects. When the memory cannot be had, nothing changes.
    void Reserve(Memory<Space> *memory, std::size_t more) {
        if (m_codes && more <= Capacity() - m_count) [[likely]]
            return;
        std::size_t const needed = m_count + more;
        if (needed > kMostPlaces)
            throw std::bad_alloc();
        std::size_t const capacity = std::max(kFewestPlaces, std::bit_ceil(needed));
        void *const block = Memory<Space>::TakeEntries(memory, capacity);
        if (!block)
            throw std::bad_alloc();
        MoveTo(memory, block, capacity);
    }

    bool HasRoom() const { return m_count < Capacity(); }

    /// For an object that room has been made for. A first object whose status is not 1 leaves the pool before that.
    void Append(Object *object, Word code) noexcept {
        if (m_hasUntrusted)
            DropFirstUnlessLive();
        Put(object, code);
    }

    /// The same, whatever the first object is.
    void Put(Object *object, Word code) noexcept {
        assert(HasRoom());
        m_codes[m_count] = code;
        MutableObjects()[m_count] = object;
        ++m_count;
        if (code == kUntrustedCode)
            MeetUntrusted();
    }

    /// Takes out what is at a place in front of the end, and no hole.
    void RemoveAt(std::size_t place) noexcept {
        assert(At(place));
        if (m_extras && m_extras->index && place < m_extras->index->Covered()) {
            MutableObjects()[place] = nullptr;
            if (++m_extras->holes > m_count / 2)
                Compact();
        } else {
            Object **const objects = MutableObjects();
            std::copy(m_codes + place + 1, m_codes + m_count, m_codes + place);
            std::copy(objects + place + 1, objects + m_count, objects + place);
            --m_count;
        }
        if (m_extras && m_extras->cluster)
            --m_extras->cluster->count;
    }

    /// Place of a trusted object with its code, `kNowhere` when it is absent.
    std::size_t Find(Object const *object, Word code) noexcept {
        std::size_t covered = 0;
        Object *const *const objects = Objects();
        if (Index *const index = IndexIfLong()) {
            std::size_t const found =
                index->Find(Access<Space>::BoxOf(*object), [&](std::size_t place) { return objects[place] == object; });
            if (found != Index::kNone)
                return found;
            covered = index->Covered();
        }
        for (std::size_t i = m_count; i-- > covered;) {
            if (m_codes[i] == code && objects[i] == object)
                return i;
        }
        return kNowhere;
    }

    /// The last place of the object, `kNowhere` when it is absent.
    std::size_t FindLast(Object const *object) const noexcept {
        Object *const *const objects = Objects();
        std::size_t i = m_count;
        while (i > 0 && objects[i - 1] != object)
            --i;
        return i == 0 ? kNowhere : i - 1;
    }

    /// The box of the object may change unseen from now on.
    void Distrust(std::size_t place) noexcept {
        if (m_extras && m_extras->index && place < m_extras->index->Covered())
            m_extras->index->Distrust(Access<Space>::BoxOf(*At(place)), place);
        m_codes[place] = kUntrustedCode;
        MeetUntrusted();
    }

    /// The region of the node has changed; `boxOf(object)` is the box of a trusted one.
    template <typename BoxOf>
    void Recode(Box const &region, BoxOf boxOf) noexcept {
        if (m_count == 0)
            return;
        Forget();
        Frame<Space::kDimension> const frame(region);
        for (std::size_t i = 0; i < m_count; ++i) {
            if (IsTrusted(i))
                m_codes[i] = frame.Encode(boxOf(*At(i)));
        }
    }

    /// Closes the holes. What was remembered of the places is forgotten.
    void Compact() noexcept {
        if (!m_extras || m_extras->holes == 0)
            return;
        KeepIf([](Object const *, Word) { return true; });
    }

    /// Keeps the objects for which `keeps(object, code)`, asked from the last to the first, in their order.
    template <typename Keeps>
    void KeepIf(Keeps keeps) {
        Object **const objects = MutableObjects();
        std::size_t first = m_count;
        for (std::size_t i = m_count; i-- > 0;) {
            if (objects[i] && keeps(objects[i], m_codes[i])) {
                --first;
                objects[first] = objects[i];
                m_codes[first] = m_codes[i];
            }
        }
        std::copy(m_codes + first, m_codes + m_count, m_codes);
        std::copy(objects + first, objects + m_count, objects);
        m_count -= static_cast<std::uint32_t>(first);
        Forget();
    }

    /// Gives back room that is not needed, if a smaller block can be had.
    void Shrink(Memory<Space> *memory) noexcept {
        std::size_t const capacity = std::max(kFewestPlaces, std::bit_ceil(std::size_t{m_count}));
        if (!m_codes || capacity >= Capacity())
            return;
        if (void *const block = Memory<Space>::TakeEntries(memory, capacity))
            MoveTo(memory, block, capacity);
    }

    /// All objects and codes of `other`, and what is remembered of them.
    void Swap(Stock &other) noexcept {
        std::swap(m_codes, other.m_codes);
        std::swap(m_count, other.m_count);
        std::swap(m_capacityBits, other.m_capacityBits);
        std::swap(m_hasUntrusted, other.m_hasUntrusted);
        std::swap(m_extras, other.m_extras);
    }

    /// Forgets all objects and gives back their block.
    void Release(Memory<Space> *memory) noexcept {
        if (m_codes)
            Memory<Space>::GiveBackEntries(memory, m_codes, Capacity());
        m_codes = nullptr;
        m_count = 0;
        m_hasUntrusted = false;
        m_extras.reset();
    }

    /// The cluster that all objects form, null when none is known. An object that came without joining it ends it.
    Cluster<Space::kDimension> *KnownCluster() const {
        bool const isKnown = m_extras && m_extras->cluster && m_extras->cluster->count == Count() && Count() > 1;
        return isKnown ? &*m_extras->cluster : nullptr;
    }

    /// Remembers a cluster, which may count an object that is about to come, if there is memory for that and nothing in
    /// it can move unseen.
    void Remember(Cluster<Space::kDimension> const &cluster) noexcept {
        if (!m_hasUntrusted && MakeExtras())
            m_extras->cluster = cluster;
    }

    /// The index of a pool that is too long to be looked through, made anew when many objects have come since. Null for
    /// a short one, and without memory.
    Index *IndexIfLong() noexcept {
        if (m_count < kLeastLong) [[likely]]
            return nullptr;
        if (m_extras && m_extras->index && m_count - m_extras->index->Covered() < LongestTail())
            return m_extras->index.get();
        return MakeIndex();
    }

    /// Whether what it remembers is true of its objects; codes are for the caller to test.
    bool IsConsistent() const {
        std::size_t holes = 0;
        bool meetsUntrusted = false;
        for (std::size_t i = 0; i < m_count; ++i) {
            holes += At(i) ? 0 : 1;
            meetsUntrusted = meetsUntrusted || (At(i) && !IsTrusted(i));
        }
        if (holes != (m_extras ? m_extras->holes : 0) || (meetsUntrusted && (!m_hasUntrusted || KnownCluster())))
            return false;
        return !m_extras || !m_extras->index ||
               m_extras->index->IsConsistent([this](std::size_t place) { return KnownBox(place); },
                                             [this](std::size_t place) { return !At(place); });
    }

    static constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

private:
    /// What few pools have.
    struct Extras {
        std::optional<Cluster<Space::kDimension>> cluster; ///< of an overfull leaf
        std::unique_ptr<Index> index;                      ///< of a long pool
        std::size_t holes = 0;
    };

    /// Places of the first block: one cache line of codes in the plane.
    static constexpr std::size_t kFewestPlaces = 16;
    /// The number of objects is an `int`.
    static constexpr std::size_t kMostPlaces = std::size_t{1} << 30;
    /// Objects from which on an index is worth its making.
    static constexpr std::size_t kLeastLong = 512;

    std::size_t Capacity() const { return m_codes ? std::size_t{1} << m_capacityBits : 0; }
    Object **MutableObjects() { return const_cast<Object **>(Objects()); }
    std::size_t LongestTail() const { return std::max(kLeastLong, m_count / std::size_t{4}); }

    /// The box of an object, or one that holds everything where that is not known.
    Box KnownBox(std::size_t place) const {
        return IsTrusted(place) ? Access<Space>::BoxOf(*At(place)) : Everything<Space::kDimension>();
    }

    void MoveTo(Memory<Space> *memory, void *block, std::size_t capacity) noexcept {
        auto *const codes = static_cast<Word *>(block);
        std::copy_n(m_codes, m_count, codes);
        std::copy_n(Objects(), m_count, reinterpret_cast<Object **>(codes + capacity));
        if (m_codes)
            Memory<Space>::GiveBackEntries(memory, m_codes, Capacity());
        m_codes = codes;
        m_capacityBits = static_cast<std::uint8_t>(std::countr_zero(capacity));
    }

    void DropFirstUnlessLive() noexcept {
        std::size_t first = 0;
        while (first < m_count && !At(first))
            ++first;
        if (first < m_count && !IsTrusted(first) && Space::StatusOf(*At(first)) != Space::kLiveStatus)
            RemoveAt(first);
    }

    void MeetUntrusted() noexcept {
        m_hasUntrusted = true;
        if (m_extras)
            m_extras->cluster.reset();
    }

    /// What was remembered no longer holds.
    void Forget() noexcept { m_extras.reset(); }

    bool MakeExtras() noexcept {
        if (!m_extras)
            m_extras.reset(new (std::nothrow) Extras);
        return m_extras != nullptr;
    }

    Index *MakeIndex() noexcept {
        Compact();
        if (m_count < kLeastLong || !MakeExtras())
            return nullptr;
        try {
            m_extras->index = std::make_unique<Index>(m_count, [this](std::size_t place) { return KnownBox(place); });
        } catch (std::bad_alloc const &) {
            m_extras->index.reset();
        }
        return m_extras->index.get();
    }

    /// The begin of a block that holds the codes and, behind the last that has room, the objects.
    Word *m_codes = nullptr;
    std::uint32_t m_count = 0;
    std::uint8_t m_capacityBits = 0;
    bool m_hasUntrusted = false;
    std::unique_ptr<Extras> m_extras;
};

} // namespace zvi::lib::spatial
