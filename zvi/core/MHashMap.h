#pragma once

#include "zvi/core/MStatusError.h"
#include "zvi/core/internal/GrowingMemory.h"
#include "zvi/core/internal/HashBinCount.h"
#include "zvi/core/internal/HashBins.h"
#include "zvi/core/internal/NodeBlock.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace zvi {

/// Chained hash map behind one pointer.
///
/// The hash of a key is its value cut to 32 bits (of a pointer: the low half of the address), without mixing; the bin
/// is the hash modulo the bin count. A new pair goes to the head of its bin. The walk goes by ascending bin and, within
/// a bin, from the head of the chain. A pointer to a value holds until its key is removed.
///
/// A fresh map has 17 bins, which are allocated by the first `SetAt`. It rehashes itself when the count passes 2.25
/// times the bins, and when it falls below a quarter of them (if that is 17 or more), to a load of three quarters.
///
/// Failure: `MStatusError` with `kStatusOutOfMemory` when memory cannot be had, with `kStatusUnspecifiedFailure` for a
/// bin count of 0 or of 0x20000000 and more, and for an operation on no node. A failed operation changes nothing, but a
/// pair that was stored (or removed) stays so when only the rehash that follows fails.
template <lib::core::HashKey K, typename V>
class MHashMap {
public:
    /// What a walk yields: `for (auto &[key, value] : map)`.
    struct Entry {
        K const key;
        V value;
    };

private:
    struct Node {
        union {
            Entry entry;
        };
        Node *next;
        std::uint32_t hash;

        Node() {}
        ~Node() {}
    };

    struct Table {
        Node **bins = nullptr;
        std::uint64_t count = 0;
        std::uint32_t binCount = lib::core::kSmallestBinCount;
        float optimalLoad = 0.75F;
        float lowFactor = 0.25F;
        float highFactor = 2.25F;
        std::uint64_t highThreshold = 38;
        std::uint64_t lowThreshold = 0;
        std::int32_t lockCount = 0;
        std::uint32_t nodesPerBlock = 10;
        lib::core::NodeBlock *newestBlock = nullptr;
        Node *freeHead = nullptr;
        /// Where the blocks come from.
        lib::core::GrowingMemory memory{alignof(lib::core::NodeBlock)};
    };

public:
    /// Walks the pairs in the order of the bins. `SetAt` of a new key and `RemoveKey` end its validity, because they
    /// may rehash; between `LockRehash` and `UnlockRehash` only the removal of its own pair does.
    template <bool IsConst>
    class BasicIterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using reference = std::conditional_t<IsConst, Entry const &, Entry &>;
        using pointer = std::conditional_t<IsConst, Entry const *, Entry *>;

        BasicIterator() = default;

        /// The pair; at the end of the walk there is none, which raises `kStatusUnspecifiedFailure`.
        reference operator*() const { return Checked()->entry; }
        pointer operator->() const { return std::addressof(Checked()->entry); }

        BasicIterator &operator++() {
            Node *const node = Checked();
            m_node = node->next;
            if (m_node == nullptr)
                MoveToBin(node->hash % m_table->binCount + 1);
            return *this;
        }
        BasicIterator operator++(int) {
            BasicIterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(BasicIterator const &left, BasicIterator const &right) {
            return left.m_node == right.m_node;
        }

    private:
        friend class MHashMap;

        explicit BasicIterator(Table const *table) : m_table(table) {
            if (table->bins != nullptr && table->count != 0)
                MoveToBin(0);
        }

        Node *Checked() const {
            if (m_node == nullptr)
                RaiseStatus(kStatusUnspecifiedFailure);
            return m_node;
        }

        void MoveToBin(std::uint32_t bin) {
            while (m_node == nullptr && bin < m_table->binCount)
                m_node = m_table->bins[bin++];
        }

        Table const *m_table = nullptr;
        Node *m_node = nullptr;
    };

    using value_type = Entry;
    using iterator = BasicIterator<false>;
    using const_iterator = BasicIterator<true>;

    /// An empty map of 17 bins, none of them allocated yet.
    MHashMap() : m_table(new (std::nothrow) Table) {
        if (m_table == nullptr)
            RaiseStatus(kStatusOutOfMemory);
    }

    /// A later pair of the same key overwrites the earlier one.
    MHashMap(std::initializer_list<std::pair<K, V>> pairs) : MHashMap() {
        for (auto const &[key, value] : pairs)
            SetAt(key, value);
    }

    /// Copies the nodes: the same bins, and the same walk order. The copy is not locked against rehashing.
    MHashMap(MHashMap const &other) : MHashMap() { CopyNodes(*other.m_table); }

    /// Takes over the table of `other`, which gets a fresh one (it may raise for want of memory).
    MHashMap(MHashMap &&other) : MHashMap() { Swap(other); }

    ~MHashMap() {
        RemoveAll();
        delete m_table;
    }

    MHashMap &operator=(MHashMap const &other) {
        if (this != &other) {
            MHashMap copy(other);
            Swap(copy);
        }
        return *this;
    }

    MHashMap &operator=(MHashMap &&other) noexcept {
        if (this != &other) {
            RemoveAll();
            Swap(other);
        }
        return *this;
    }

    void Swap(MHashMap &other) noexcept { std::swap(m_table, other.m_table); }

    std::uint64_t GetCount() const { return m_table->count; }
    bool Empty() const { return m_table->count == 0; }
    std::uint32_t GetBinCount() const { return m_table->binCount; }

    /// Whether the bin array exists.
    bool IsAllocated() const { return m_table->bins != nullptr; }

    iterator begin() { return iterator(m_table); }
    iterator end() { return iterator(); }
    const_iterator begin() const { return const_iterator(m_table); }
    const_iterator end() const { return const_iterator(); }

    /// The value of `key`, null when it is absent. Never allocates.
    V *Lookup(K key) {
        Node *const node = FindNode(key);
        return node == nullptr ? nullptr : std::addressof(node->entry.value);
    }
    V const *Lookup(K key) const {
        Node const *const node = FindNode(key);
        return node == nullptr ? nullptr : std::addressof(node->entry.value);
    }

    /// Whether `key` is present; if so, copies its value to `value`, which is otherwise left as it is.
    bool Lookup(K key, V &value) const {
        V const *const found = Lookup(key);
        if (found != nullptr)
            value = *found;
        return found != nullptr;
    }

    /// Stores the pair; an existing value is overwritten.
    void SetAt(K key, V value) {
        Table &table = *m_table;
        std::uint32_t const hash = lib::core::HashOf(key);
        std::uint32_t const bin = hash % table.binCount;
        if (table.bins == nullptr) {
            table.bins = NewBins(table.binCount);
        } else if (Node *const node = FindInChain(table.bins[bin], hash, key)) {
            node->entry.value = std::move(value);
            return;
        }
        Node *const node = NewNode(key, std::move(value), hash);
        node->next = table.bins[bin];
        table.bins[bin] = node;
        if (table.count > table.highThreshold && table.lockCount == 0)
            Rehash(lib::core::PickBinCount(table.count, table.optimalLoad));
    }

    /// Removes the pair of `key`; false when it is absent. The last removal frees the node blocks and keeps the bins.
    bool RemoveKey(K key) {
        if (m_table->bins == nullptr)
            return false;
        std::uint32_t const hash = lib::core::HashOf(key);
        for (Node **link = &m_table->bins[hash % m_table->binCount]; *link != nullptr; link = &(*link)->next) {
            if (IsOf(**link, hash, key)) {
                Unlink(link);
                return true;
            }
        }
        return false;
    }

    /// Removes the pair at `position`; the end of a walk raises `kStatusUnspecifiedFailure`.
    void RemoveAt(iterator position) {
        Node *const node = position.Checked();
        Node **link = &m_table->bins[node->hash % m_table->binCount];
        while (*link != node)
            link = &(*link)->next;
        Unlink(link);
    }

    /// Drops all pairs, the blocks and the bin array. The bin count goes back to 17 unless the map is locked.
    void RemoveAll() noexcept {
        Table &table = *m_table;
        DropNodes();
        ReplaceBins(nullptr);
        if (table.lockCount == 0)
            SetBinCount(lib::core::kSmallestBinCount);
    }

    /// Sets the bin count of an empty map; `allocate` also makes the bin array. Pairs that the map holds are dropped.
    void InitHashTable(std::uint32_t binCount, bool allocate) {
        lib::core::CheckBinCount(binCount);
        Node **const bins = allocate ? NewBins(binCount) : nullptr;
        DropNodes();
        ReplaceBins(bins);
        SetBinCount(binCount);
    }

    /// Spreads the pairs over `binCount` bins; 0 lets the map choose for its present count.
    void Rehash(std::uint32_t binCount) {
        Table &table = *m_table;
        if (binCount == 0)
            binCount = lib::core::PickBinCount(table.count, table.optimalLoad);
        if (binCount == table.binCount)
            return;
        lib::core::CheckBinCount(binCount);
        if (table.bins != nullptr)
            MoveToBins(NewBins(binCount), binCount);
        SetBinCount(binCount);
    }

    /// Turns automatic rehashing off until `UnlockRehash` has been called as often.
    void LockRehash() { ++m_table->lockCount; }
    void UnlockRehash() { --m_table->lockCount; }

private:
    static Node **NewBins(std::uint32_t binCount) { return static_cast<Node **>(lib::core::AllocateBins(binCount)); }

    /// Puts `bins`, which may be null, in the place of the bin array; the bin count is still the old one.
    void ReplaceBins(Node **bins) { lib::core::ReleaseBins(std::exchange(m_table->bins, bins), m_table->binCount); }

    static Node *FindInChain(Node *node, std::uint32_t hash, K key) {
        while (node != nullptr && !IsOf(*node, hash, key))
            node = node->next;
        return node;
    }

    /// A key of 32 bits or fewer is its hash.
    static bool IsOf(Node const &node, std::uint32_t hash, K key) {
        if constexpr (sizeof(K) <= sizeof(hash))
            return node.hash == hash;
        else
            return node.hash == hash && node.entry.key == key;
    }

    Node *FindNode(K key) const {
        if (m_table->bins == nullptr)
            return nullptr;
        std::uint32_t const hash = lib::core::HashOf(key);
        return FindInChain(m_table->bins[hash % m_table->binCount], hash, key);
    }

    /// Takes a node from the free list, fills it and counts it.
    Node *NewNode(K key, V &&value, std::uint32_t hash) {
        Table &table = *m_table;
        if (table.freeHead == nullptr)
            lib::core::AddNodeBlock(table.newestBlock, table.freeHead, table.nodesPerBlock,
                                    [&](std::size_t bytes) { return table.memory.Take(bytes); });
        Node *const node = table.freeHead;
        ::new (static_cast<void *>(std::addressof(node->entry))) Entry{key, std::move(value)};
        table.freeHead = node->next;
        node->hash = hash;
        ++table.count;
        return node;
    }

    void Unlink(Node **link) {
        Table &table = *m_table;
        Node *const node = *link;
        *link = node->next;
        std::destroy_at(std::addressof(node->entry));
        node->next = table.freeHead;
        table.freeHead = node;
        --table.count;
        if (table.count < table.lowThreshold && table.lockCount == 0)
            Rehash(lib::core::PickBinCount(table.count, table.optimalLoad));
        if (table.count == 0)
            FreeBlocks();
    }

    void FreeBlocks() {
        Table &table = *m_table;
        table.memory.ReleaseAll();
        table.newestBlock = nullptr;
        table.freeHead = nullptr;
    }

    /// Destroys all pairs and frees the blocks; the bin heads dangle until the caller replaces them.
    void DropNodes() {
        if constexpr (!std::is_trivially_destructible_v<V>) {
            for (Entry &entry : *this)
                std::destroy_at(std::addressof(entry));
        }
        m_table->count = 0;
        FreeBlocks();
    }

    void MoveToBins(Node **bins, std::uint32_t binCount) {
        Table &table = *m_table;
        for (std::uint32_t bin = 0; bin < table.binCount; ++bin) {
            for (Node *node = table.bins[bin]; node != nullptr;) {
                Node *const next = node->next;
                Node *&head = bins[node->hash % binCount];
                node->next = head;
                head = node;
                node = next;
            }
        }
        ReplaceBins(bins);
    }

    /// Stores the bin count with the thresholds that follow from it. Below 17 elements a table does not shrink.
    void SetBinCount(std::uint32_t binCount) {
        Table &table = *m_table;
        table.binCount = binCount;
        table.highThreshold = static_cast<std::uint64_t>(static_cast<float>(binCount) * table.highFactor);
        auto const low = static_cast<std::uint64_t>(static_cast<float>(binCount) * table.lowFactor);
        table.lowThreshold = low < lib::core::kSmallestBinCount ? 0 : low;
    }

    void CopyNodes(Table const &source) {
        SetBinCount(source.binCount);
        if (source.bins == nullptr)
            return;
        m_table->bins = NewBins(source.binCount);
        for (std::uint32_t bin = 0; bin < source.binCount; ++bin)
            CopyChain(source.bins[bin], &m_table->bins[bin]);
    }

    void CopyChain(Node const *from, Node **link) {
        for (; from != nullptr; from = from->next) {
            Node *const node = NewNode(from->entry.key, V(from->entry.value), from->hash);
            node->next = nullptr;
            *link = node;
            link = &node->next;
        }
    }

    Table *m_table;
};

} // namespace zvi
