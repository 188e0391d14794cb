#pragma once

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <list>
#include <unordered_map>
#include <utility>

/// Hash map of any key with `std::hash`, for the interfaces of applications. A walk yields the pairs in the order in
/// which their keys came in, the same on every host: `for (auto &[key, value] : map)`. Values keep their address until
/// their key is removed.
template <typename K, typename V>
class CMap {
public:
    /// A pair, and the types that containers have.
    using Entry = std::pair<K const, V>;
    using value_type = Entry;
    using iterator = typename std::list<Entry>::iterator;
    using const_iterator = typename std::list<Entry>::const_iterator;

    /// No pairs.
    CMap() = default;
    /// A later pair of the same key overwrites the earlier one.
    CMap(std::initializer_list<Entry> entries) {
        for (Entry const &entry : entries)
            SetAt(entry.first, entry.second);
    }
    /// Copies the pairs in their order.
    CMap(CMap const &other) {
        for (Entry const &entry : other)
            SetAt(entry.first, entry.second);
    }
    /// Takes over the pairs of `other`, which is left empty.
    CMap(CMap &&other) noexcept { Swap(other); }
    /// Copies or takes over the pairs; a copy that raises an error changes nothing.
    CMap &operator=(CMap other) noexcept {
        Swap(other);
        return *this;
    }

    /// Exchanges the pairs of two maps.
    void Swap(CMap &other) noexcept {
        m_entries.swap(other.m_entries);
        m_index.swap(other.m_index);
    }

    /// Number of pairs.
    int GetCount() const { return static_cast<int>(m_entries.size()); }
    /// Number of pairs, as `GetCount`.
    int GetSize() const { return GetCount(); }
    /// Whether there is no pair.
    bool IsEmpty() const { return m_entries.empty(); }

    /// Stores the pair; an existing value is overwritten.
    void SetAt(K const &key, V value) {
        if (V *const found = Lookup(key))
            *found = std::move(value);
        else
            Append(key, std::move(value));
    }

    /// The value of `key`, null when it is absent.
    V *Lookup(K const &key) {
        auto const found = m_index.find(key);
        return found == m_index.end() ? nullptr : &found->second->second;
    }
    V const *Lookup(K const &key) const {
        auto const found = m_index.find(key);
        return found == m_index.end() ? nullptr : &found->second->second;
    }

    /// Whether `key` is present; if so, copies its value to `value`, which is otherwise left as it is.
    bool Lookup(K const &key, V &value) const {
        V const *const found = Lookup(key);
        if (found)
            value = *found;
        return found;
    }

    /// The value of `key`, stored as the type constructs it when the key is absent.
    V &operator[](K const &key) {
        V *const found = Lookup(key);
        return found ? *found : Append(key, V());
    }

    /// Removes the pair of `key`; false when it is absent.
    bool RemoveKey(K const &key) {
        auto const found = m_index.find(key);
        if (found == m_index.end())
            return false;
        auto const entry = found->second;
        m_index.erase(found);
        m_entries.erase(entry);
        return true;
    }

    /// Drops all pairs.
    void RemoveAll() {
        m_index.clear();
        m_entries.clear();
    }

    /// Walks the pairs in the order in which their keys came in.
    iterator begin() { return m_entries.begin(); }
    iterator end() { return m_entries.end(); }
    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }

    /// Whether each key leads to its own pair. Walks the whole map.
    bool IsConsistent() const {
        std::size_t found = 0;
        for (const_iterator entry = begin(); entry != end(); ++entry) {
            auto const place = m_index.find(entry->first);
            found += place != m_index.end() && const_iterator(place->second) == entry ? 1 : 0;
        }
        return found == m_entries.size() && found == m_index.size();
    }

private:
    V &Append(K const &key, V value) {
        m_entries.emplace_back(key, std::move(value));
        auto const entry = std::prev(m_entries.end());
        try {
            m_index.emplace(key, entry);
        } catch (...) {
            m_entries.erase(entry);
            throw;
        }
        return entry->second;
    }

    std::list<Entry> m_entries;
    std::unordered_map<K, iterator> m_index;
};
