#pragma once

#include "zvi/core/MStatusError.h"
#include "zvi/core/internal/GrowingMemory.h"
#include "zvi/core/internal/HashBinCount.h"
#include "zvi/core/internal/HashBins.h"
#include "zvi/core/internal/NodeBlock.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace zvi::lib::core {

/// A pair of an `MHashMap`.
template <typename K, typename V>
struct HashEntry {
    K const key; ///< unlike all other keys of the map
    V value;     ///< what was stored under it last
};

/// What stands behind the one pointer of an `MHashMap`, whose header tells the rules and the failures.
template <HashKey K, typename V>
class HashTable {
public:
    using Entry = HashEntry<K, V>;

    struct Node {
        union {
            Entry entry;
        };
        Node *next;
        std::uint32_t hash;

        Node() {}
        ~Node() {}
    };

    HashTable() = default;
    ~HashTable() { RemoveAll(); }

    HashTable(HashTable const &) = delete;
    HashTable &operator=(HashTable const &) = delete;

    std::uint64_t Count() const { return m_count; }
    std::uint32_t BinCount() const { return m_binCount; }
    bool IsAllocated() const { return m_bins; }

    /// Turns automatic rehashing off, and on again when it has been called as often.
    void Lock() { ++m_lockCount; }
    void Unlock() {
        assert(m_lockCount > 0);
        --m_lockCount;
    }

    /// The first node of the walk, and the one behind a node; null at the end.
    Node *First() const { return m_count == 0 ? nullptr : FirstFrom(m_bins); }
    Node *Next(Node const *node) const {
        return node->next ? node->next : FirstFrom(m_bins + node->hash % m_binCount + 1);
    }

    Node *Find(K key) const {
        if (!m_bins)
            return nullptr;
        std::uint32_t const hash = HashOf(key);
        return FindInChain(m_bins[hash % m_binCount], hash, key);
    }

    void SetAt(K key, V &&value) {
        std::uint32_t const hash = HashOf(key), bin = hash % m_binCount;
        Node *const found = m_bins ? FindInChain(m_bins[bin], hash, key) : nullptr;
        if (found) {
            found->entry.value = std::move(value);
            return;
        }
        Node *const node = NewNode(key, std::move(value), hash);
        if (!m_bins) [[unlikely]]
            AllocateBinsFor(node);
        Node *&head = m_bins[bin];
        node->next = head;
        head = node;
        if (m_count > m_highThreshold && m_lockCount == 0)
            Rehash(0);
    }

    bool RemoveKey(K key) {
        if (!m_bins)
            return false;
        std::uint32_t const hash = HashOf(key);
        for (Node **link = &m_bins[hash % m_binCount]; *link; link = &(*link)->next) {
            if (IsOf(**link, hash, key)) {
                Unlink(link);
                return true;
            }
        }
        return false;
    }

    /// The node must be in the table.
    void Remove(Node const *node) {
        Node **link = &m_bins[node->hash % m_binCount];
        for (; *link != node; link = &(*link)->next)
            assert(*link);
        Unlink(link);
    }

    void RemoveAll() noexcept {
        DropNodes();
        ReplaceBins(nullptr);
        if (m_lockCount == 0)
            SetBinCount(kSmallestBinCount);
    }

    void Init(std::uint32_t binCount, bool allocate) {
        CheckBinCount(binCount);
        Node **const bins = allocate ? NewBins(binCount) : nullptr;
        DropNodes();
        ReplaceBins(bins);
        SetBinCount(binCount);
    }

    void Rehash(std::uint32_t binCount) {
        if (binCount == 0)
            binCount = PickBinCount(m_count, m_optimalLoad);
        if (binCount == m_binCount)
            return;
        CheckBinCount(binCount);
        if (m_bins)
            MoveToBins(NewBins(binCount), binCount);
        SetBinCount(binCount);
    }

    /// Copies bins and nodes into this table, which must be a fresh one.
    void CopyFrom(HashTable const &source) {
        assert(!m_bins);
        SetBinCount(source.m_binCount);
        if (!source.m_bins)
            return;
        m_bins = NewBins(source.m_binCount);
        for (std::uint32_t bin = 0; bin < source.m_binCount; ++bin)
            CopyChain(source.m_bins[bin], &m_bins[bin]);
    }

    /// See `MHashMap::IsConsistent`.
    bool IsConsistent() const {
        if (m_binCount == 0 || m_lockCount < 0 || m_highThreshold != HighThreshold(m_binCount, m_highFactor) ||
            m_lowThreshold != LowThreshold(m_binCount, m_lowFactor))
            return false;
        std::uint64_t met = 0;
        for (std::uint32_t bin = 0; m_bins && bin < m_binCount; ++bin)
            for (Node const *node = m_bins[bin]; node; node = node->next)
                if (++met > m_count || !IsAtHome(*node, bin))
                    return false;
        return met == m_count && AreNodesComplete(m_newestBlock, m_freeHead, m_nodesPerBlock, met);
    }

private:
    static Node **NewBins(std::uint32_t binCount) { return static_cast<Node **>(AllocateBins(binCount)); }

    /// Puts `bins`, which may be null, in the place of the bin array; the bin count is still the old one.
    void ReplaceBins(Node **bins) { ReleaseBins(std::exchange(m_bins, bins), m_binCount); }

    /// The first node of this bin and the ones behind it; there are bins. Null when all are empty.
    Node *FirstFrom(Node *const *bin) const {
        assert(m_bins && bin >= m_bins && bin <= m_bins + m_binCount);
        for (Node *const *const end = m_bins + m_binCount; bin != end; ++bin)
            if (*bin)
                return *bin;
        return nullptr;
    }

    static Node *FindInChain(Node *node, std::uint32_t hash, K key) {
        while (node && !IsOf(*node, hash, key))
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

    /// Whether the node belongs into the bin, and no node behind it has its key.
    bool IsAtHome(Node const &node, std::uint32_t bin) const {
        return node.hash == HashOf(node.entry.key) && node.hash % m_binCount == bin &&
               !FindInChain(node.next, node.hash, node.entry.key);
    }

    /// Takes a node from the free list, fills it and counts it.
    Node *NewNode(K key, V &&value, std::uint32_t hash) {
        if (!m_freeHead)
            AddNodeBlock(m_newestBlock, m_freeHead, m_nodesPerBlock,
                         [this](std::size_t bytes) { return m_memory.Take(bytes); });
        Node *const node = m_freeHead;
        ::new (static_cast<void *>(std::addressof(node->entry))) Entry{key, std::move(value)};
        m_freeHead = node->next;
        node->hash = hash;
        ++m_count;
        return node;
    }

    void FreeNode(Node *node) {
        std::destroy_at(std::addressof(node->entry));
        node->next = m_freeHead;
        m_freeHead = node;
        --m_count;
    }

    /// Gets the bins that the first node of the table needs, and gives the node back when they cannot be had.
    [[gnu::noinline]] void AllocateBinsFor(Node *first) {
        assert(!m_bins);
        try {
            m_bins = NewBins(m_binCount);
        } catch (...) {
            FreeNode(first);
            throw;
        }
    }

    /// Takes out and frees the node that the link leads to.
    void Unlink(Node **link) {
        assert(*link);
        Node *const node = *link;
        *link = node->next;
        FreeNode(node);
        if (m_count < m_lowThreshold && m_lockCount == 0)
            Rehash(0);
        if (m_count == 0)
            FreeBlocks();
    }

    void FreeBlocks() {
        m_memory.ReleaseAll();
        m_newestBlock = nullptr;
        m_freeHead = nullptr;
    }

    /// Destroys all pairs and frees the blocks; the bin heads dangle until the caller replaces them.
    void DropNodes() {
        if constexpr (!std::is_trivially_destructible_v<V>)
            for (Node *node = First(); node; node = Next(node))
                std::destroy_at(std::addressof(node->entry));
        m_count = 0;
        FreeBlocks();
    }

    void MoveToBins(Node **bins, std::uint32_t binCount) {
        for (std::uint32_t bin = 0; bin < m_binCount; ++bin) {
            for (Node *node = m_bins[bin]; node;) {
                Node *const next = node->next;
                Node *&head = bins[node->hash % binCount];
                node->next = head;
                head = node;
                node = next;
            }
        }
        ReplaceBins(bins);
    }

    /// Stores the bin count with the thresholds that follow from it.
    void SetBinCount(std::uint32_t binCount) {
        m_binCount = binCount;
        m_highThreshold = HighThreshold(binCount, m_highFactor);
        m_lowThreshold = LowThreshold(binCount, m_lowFactor);
    }

    void CopyChain(Node const *from, Node **link) {
        for (; from; from = from->next) {
            Node *const node = NewNode(from->entry.key, V(from->entry.value), from->hash);
            node->next = nullptr;
            *link = node;
            link = &node->next;
        }
    }

    Node **m_bins = nullptr;
    std::uint64_t m_count = 0;
    std::uint32_t m_binCount = kSmallestBinCount;
    float m_optimalLoad = kOptimalLoad;
    float m_lowFactor = kLowFactor;
    float m_highFactor = kHighFactor;
    std::uint64_t m_highThreshold = HighThreshold(kSmallestBinCount, kHighFactor);
    std::uint64_t m_lowThreshold = LowThreshold(kSmallestBinCount, kLowFactor);
    std::int32_t m_lockCount = 0;
    std::uint32_t m_nodesPerBlock = kNodesPerBlock;
    NodeBlock *m_newestBlock = nullptr;
    Node *m_freeHead = nullptr;
    /// Where the blocks come from.
    GrowingMemory m_memory{alignof(NodeBlock)};
};

} // namespace zvi::lib::core
