#pragma once

#include "zvi/core/MStatusError.h"
#include "zvi/core/internal/HashTable.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace zvi {

/// Chained hash map behind one pointer; its keys are whole numbers, enumerations and pointers.
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
    using Table = lib::core::HashTable<K, V>;
    using Node = typename Table::Node;

public:
    /// What a walk yields, a constant `key` and its `value`: `for (auto &[key, value] : map)`.
    using Entry = lib::core::HashEntry<K, V>;

    /// Walks the pairs in the order of the bins. `SetAt` of a new key and `RemoveKey` end its validity, because they
    /// may rehash; between `LockRehash` and `UnlockRehash` only the removal of its own pair does.
    template <bool IsConst>
    class BasicIterator {
    public:
        /// What algorithms ask of an iterator.
        using iterator_category = std::forward_iterator_tag;
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using reference = std::conditional_t<IsConst, Entry const &, Entry &>;
        using pointer = std::conditional_t<IsConst, Entry const *, Entry *>;

        /// The end of every walk.
        BasicIterator() = default;

        /// The pair; at the end of the walk there is none, which raises `kStatusUnspecifiedFailure`.
        reference operator*() const { return Checked()->entry; }
        pointer operator->() const { return std::addressof(Checked()->entry); }

        /// Goes on to the next pair; at the end of the walk raises `kStatusUnspecifiedFailure`.
        BasicIterator &operator++() {
            m_node = m_table->Next(Checked());
            return *this;
        }
        BasicIterator operator++(int) {
            BasicIterator before = *this;
            ++*this;
            return before;
        }

        /// Whether both are at the same pair, or both at the end.
        friend bool operator==(BasicIterator const &left, BasicIterator const &right) {
            return left.m_node == right.m_node;
        }

    private:
        friend class MHashMap;

        explicit BasicIterator(Table const *table) : m_table(table), m_node(table->First()) {}

        Node *Checked() const {
            if (!m_node)
                RaiseStatus(kStatusUnspecifiedFailure);
            return m_node;
        }

        Table const *m_table = nullptr;
        Node *m_node = nullptr;
    };

    /// The types that containers have.
    using value_type = Entry;
    using iterator = BasicIterator<false>;
    using const_iterator = BasicIterator<true>;

    /// An empty map of 17 bins, none of them allocated yet.
    MHashMap() : m_table(new (std::nothrow) Table) {
        if (!m_table)
            RaiseStatus(kStatusOutOfMemory);
    }

    /// A later pair of the same key overwrites the earlier one.
    MHashMap(std::initializer_list<std::pair<K, V>> pairs) : MHashMap() {
        for (auto const &[key, value] : pairs)
            SetAt(key, value);
    }

    /// Copies the nodes: the same bins, and the same walk order. The copy is not locked against rehashing.
    MHashMap(MHashMap const &other) : MHashMap() { m_table->CopyFrom(*other.m_table); }

    /// Takes over the table of `other`, which gets a fresh one (it may raise for want of memory).
    MHashMap(MHashMap &&other) : MHashMap() { Swap(other); }

    /// Destroys the pairs and frees all memory.
    ~MHashMap() { delete m_table; }

    /// As copy construction; a failure leaves this map as it was.
    MHashMap &operator=(MHashMap const &other) {
        if (this != &other) {
            MHashMap copy(other);
            Swap(copy);
        }
        return *this;
    }

    /// Takes over the table of `other`, which is left empty.
    MHashMap &operator=(MHashMap &&other) noexcept {
        if (this != &other) {
            RemoveAll();
            Swap(other);
        }
        return *this;
    }

    /// Exchanges the tables of two maps.
    void Swap(MHashMap &other) noexcept { std::swap(m_table, other.m_table); }

    /// Number of pairs.
    std::uint64_t GetCount() const { return m_table->Count(); }
    /// Whether there is no pair.
    bool Empty() const { return m_table->Count() == 0; }
    /// Number of bins, allocated or not.
    std::uint32_t GetBinCount() const { return m_table->BinCount(); }
    /// Whether the bin array exists.
    bool IsAllocated() const { return m_table->IsAllocated(); }

    /// Begin and end of a walk; see `BasicIterator`.
    iterator begin() { return iterator(m_table); }
    iterator end() { return iterator(); }
    const_iterator begin() const { return const_iterator(m_table); }
    const_iterator end() const { return const_iterator(); }

    /// The value of `key`, null when it is absent. Never allocates.
    V *Lookup(K key) {
        Node *const node = m_table->Find(key);
        return node ? std::addressof(node->entry.value) : nullptr;
    }
    V const *Lookup(K key) const {
        Node const *const node = m_table->Find(key);
        return node ? std::addressof(node->entry.value) : nullptr;
    }

    /// Whether `key` is present; if so, copies its value to `value`, which is otherwise left as it is.
    bool Lookup(K key, V &value) const {
        V const *const found = Lookup(key);
        if (found)
            value = *found;
        return found;
    }

    /// Stores the pair; an existing value is overwritten.
    void SetAt(K key, V value) { m_table->SetAt(key, std::move(value)); }

    /// Removes the pair of `key`; false when it is absent. The last removal frees the node blocks and keeps the bins.
    bool RemoveKey(K key) { return m_table->RemoveKey(key); }

    /// Removes the pair at `position`; the end of a walk raises `kStatusUnspecifiedFailure`.
    void RemoveAt(iterator position) { m_table->Remove(position.Checked()); }

    /// Drops all pairs, the blocks and the bin array. The bin count goes back to 17 unless the map is locked.
    void RemoveAll() noexcept { m_table->RemoveAll(); }

    /// Sets the bin count of an empty map; `allocate` also makes the bin array. Pairs that the map holds are dropped.
    void InitHashTable(std::uint32_t binCount, bool allocate) { m_table->Init(binCount, allocate); }

    /// Spreads the pairs over `binCount` bins; 0 lets the map choose for its present count.
    void Rehash(std::uint32_t binCount) { m_table->Rehash(binCount); }

    /// Turns automatic rehashing off until `UnlockRehash` has been called as often.
    void LockRehash() { m_table->Lock(); }
    /// Takes one call of `LockRehash` back, which there must have been. It does not rehash.
    void UnlockRehash() { m_table->Unlock(); }

    /// Whether each pair stands once, in the bin of its key, and counts, thresholds and free nodes are right. Walks the
    /// whole map.
    bool IsConsistent() const { return m_table->IsConsistent(); }

private:
    Table *m_table;
};

} // namespace zvi
