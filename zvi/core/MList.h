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
    struct Node {
        Node *next;
        Node *previous;
        union {
            T element;
        };

        Node() {}
        ~Node() {}
    };

    /// Walks from node to node.
    template <bool IsConst>
    class BasicIterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using reference = std::conditional_t<IsConst, T const &, T &>;
        using pointer = std::conditional_t<IsConst, T const *, T *>;

        BasicIterator() = default;
        explicit BasicIterator(Node *node) : m_node(node) {}

        reference operator*() const { return m_node->element; }
        pointer operator->() const { return std::addressof(m_node->element); }
        BasicIterator &operator++() {
            m_node = m_node->next;
            return *this;
        }
        BasicIterator operator++(int) {
            BasicIterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(BasicIterator, BasicIterator) = default;

    private:
        Node *m_node = nullptr;
    };

    using value_type = T;
    using iterator = BasicIterator<false>;
    using const_iterator = BasicIterator<true>;

    /// Nodes in a block unless the constructor is told otherwise.
    static constexpr std::uint64_t kDefaultNodesPerBlock = 10;

    /// No elements, no allocation. A count of 0 nodes per block is taken as the default.
    explicit MList(std::uint64_t nodesPerBlock = kDefaultNodesPerBlock)
        : m_nodesPerBlock(nodesPerBlock == 0 ? kDefaultNodesPerBlock : nodesPerBlock) {}

    MList(std::initializer_list<T> values) : MList(kDefaultNodesPerBlock) {
        for (T const &value : values)
            AddTail(value);
    }

    MList(MList const &other) : MList(other.m_nodesPerBlock) {
        for (T const &value : other)
            AddTail(value);
    }

    MList(MList &&other) noexcept : MList(other.m_nodesPerBlock) { Swap(other); }

    ~MList() { RemoveAll(); }

    MList &operator=(MList const &other) {
        if (this != &other) {
            MList copy(other);
            Swap(copy);
        }
        return *this;
    }

    MList &operator=(MList &&other) noexcept {
        if (this != &other) {
            MList taken(std::move(other));
            Swap(taken);
        }
        return *this;
    }

    void Swap(MList &other) noexcept {
        std::swap(m_head, other.m_head);
        std::swap(m_tail, other.m_tail);
        std::swap(m_count, other.m_count);
        std::swap(m_newestBlock, other.m_newestBlock);
        std::swap(m_freeHead, other.m_freeHead);
        std::swap(m_nodesPerBlock, other.m_nodesPerBlock);
    }

    std::uint64_t GetCount() const { return m_count; }
    bool Empty() const { return m_count == 0; }

    /// First and last node, null in an empty list. Walk by `node->next` or `node->previous`.
    Node *GetHead() { return m_head; }
    Node const *GetHead() const { return m_head; }
    Node *GetTail() { return m_tail; }
    Node const *GetTail() const { return m_tail; }

    iterator begin() { return iterator(m_head); }
    iterator end() { return iterator(); }
    const_iterator begin() const { return const_iterator(m_head); }
    const_iterator end() const { return const_iterator(); }

    /// Appends `value` and gives its node.
    Node *AddTail(T value) {
        if (m_freeHead == nullptr)
            lib::core::AddNodeBlock(m_newestBlock, m_freeHead, m_nodesPerBlock, std::malloc);
        Node *const node = m_freeHead;
        Node *const nextFree = node->next;
        std::construct_at(std::addressof(node->element), std::move(value));
        m_freeHead = nextFree;
        node->next = nullptr;
        node->previous = m_tail;
        ++m_count;
        if (m_tail != nullptr)
            m_tail->next = node;
        else
            m_head = node;
        m_tail = node;
        return node;
    }

    /// Destroys the elements and frees all blocks.
    void RemoveAll() {
        for (Node *node = m_head; node != nullptr; node = node->next)
            std::destroy_at(std::addressof(node->element));
        while (m_newestBlock != nullptr)
            std::free(std::exchange(m_newestBlock, m_newestBlock->previous));
        m_head = m_tail = m_freeHead = nullptr;
        m_count = 0;
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
