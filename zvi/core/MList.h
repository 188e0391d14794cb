#pragma once

#include "zvi/core/internal/NodeBlock.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

namespace zvi {

/// Doubly linked list whose nodes come from blocks, so that appending seldom reaches the general allocator. A block is
/// a 16-byte header, whose first 8 bytes link to the block before it, followed by the nodes. Nodes keep their address
/// as long as they are in the list. When memory cannot be had, `MStatusError` carries `kStatusOutOfMemory`.
template <typename T>
class MList {
public:
    /// An element with its neighbours, null at either end of the list.
    struct Node {
        Node *next;     ///< towards the tail
        Node *previous; ///< towards the head
        union {
            T element; ///< the value that was added
        };

        Node() {}
        ~Node() {}
    };

    /// Walks from node to node.
    template <bool IsConst>
    class BasicIterator {
    public:
        /// What algorithms ask of an iterator.
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using reference = std::conditional_t<IsConst, T const &, T &>;
        using pointer = std::conditional_t<IsConst, T const *, T *>;

        /// The end of every walk.
        BasicIterator() = default;
        /// At `node`; at the end for null.
        explicit BasicIterator(Node *node) : m_node(node) {}

        /// The element, which there is none of at the end.
        reference operator*() const { return m_node->element; }
        pointer operator->() const { return std::addressof(m_node->element); }
        /// Goes on to the next element.
        BasicIterator &operator++() {
            m_node = m_node->next;
            return *this;
        }
        BasicIterator operator++(int) {
            BasicIterator before = *this;
            ++*this;
            return before;
        }
        /// Whether both are at the same element, or both at the end.
        friend bool operator==(BasicIterator, BasicIterator) = default;

    private:
        Node *m_node = nullptr;
    };

    /// The types that containers have.
    using value_type = T;
    using iterator = BasicIterator<false>;
    using const_iterator = BasicIterator<true>;

    /// Nodes in a block unless the constructor is told otherwise.
    static constexpr std::uint64_t kDefaultNodesPerBlock = 10;

    /// No elements, no allocation. A count of 0 nodes per block is taken as the default.
    explicit MList(std::uint64_t nodesPerBlock = kDefaultNodesPerBlock)
        : m_nodesPerBlock(nodesPerBlock == 0 ? kDefaultNodesPerBlock : nodesPerBlock) {}

    /// The values in their order.
    MList(std::initializer_list<T> values) : MList(kDefaultNodesPerBlock) {
        for (T const &value : values)
            AddTail(value);
    }

    /// Copies the elements, and the number of nodes per block.
    MList(MList const &other) : MList(other.m_nodesPerBlock) {
        for (T const &value : other)
            AddTail(value);
    }

    /// Takes over the nodes of `other`, which is left empty.
    MList(MList &&other) noexcept : MList(other.m_nodesPerBlock) { Swap(other); }

    ~MList() { RemoveAll(); }

    /// As the copy; the list is as it was when memory cannot be had.
    MList &operator=(MList const &other) {
        if (this != &other) {
            MList copy(other);
            Swap(copy);
        }
        return *this;
    }

    /// Takes over the nodes of `other`, which is left empty.
    MList &operator=(MList &&other) noexcept {
        if (this != &other) {
            MList taken(std::move(other));
            Swap(taken);
        }
        return *this;
    }

    /// Exchanges the nodes of two lists.
    void Swap(MList &other) noexcept {
        std::swap(m_head, other.m_head);
        std::swap(m_tail, other.m_tail);
        std::swap(m_count, other.m_count);
        std::swap(m_newestBlock, other.m_newestBlock);
        std::swap(m_freeHead, other.m_freeHead);
        std::swap(m_nodesPerBlock, other.m_nodesPerBlock);
    }

    /// Number of elements.
    std::uint64_t GetCount() const { return m_count; }
    /// Whether there is no element.
    bool Empty() const { return m_count == 0; }

    /// First and last node, null in an empty list. Walk by `node->next` or `node->previous`.
    Node *GetHead() { return m_head; }
    Node const *GetHead() const { return m_head; }
    Node *GetTail() { return m_tail; }
    Node const *GetTail() const { return m_tail; }

    /// Walks from the head to the tail.
    iterator begin() { return iterator(m_head); }
    iterator end() { return iterator(); }
    const_iterator begin() const { return const_iterator(m_head); }
    const_iterator end() const { return const_iterator(); }

    /// Appends `value` and gives its node.
    Node *AddTail(T value) {
        if (!m_freeHead)
            lib::core::AddNodeBlock(m_newestBlock, m_freeHead, m_nodesPerBlock, std::malloc);
        Node *const node = m_freeHead;
        Node *const nextFree = node->next;
        std::construct_at(std::addressof(node->element), std::move(value));
        m_freeHead = nextFree;
        node->next = nullptr;
        node->previous = m_tail;
        ++m_count;
        if (m_tail)
            m_tail->next = node;
        else
            m_head = node;
        m_tail = node;
        return node;
    }

    /// Destroys the elements and frees all blocks.
    void RemoveAll() {
        for (Node *node = m_head; node; node = node->next)
            std::destroy_at(std::addressof(node->element));
        while (m_newestBlock)
            std::free(std::exchange(m_newestBlock, m_newestBlock->previous));
        m_head = m_tail = m_freeHead = nullptr;
        m_count = 0;
    }

    /// Whether the links agree in both directions, and the count and the free nodes are right. Walks the whole list; it
    /// is for tests.
    bool IsConsistent() const {
        Node const *last = nullptr;
        std::uint64_t met = 0;
        for (Node const *node = m_head; node; last = node, node = node->next)
            if (++met > m_count || node->previous != last)
                return false;
        return met == m_count && m_tail == last &&
               lib::core::AreNodesComplete(m_newestBlock, m_freeHead, m_nodesPerBlock, met);
    }

private:
    Node *m_head = nullptr;
    Node *m_tail = nullptr;
    std::uint64_t m_count = 0;
    lib::core::NodeBlock *m_newestBlock = nullptr;
    Node *m_freeHead = nullptr;
    std::uint64_t m_nodesPerBlock;
};

} // namespace zvi
