#pragma once

#include "zvi/core/MStatusError.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

namespace zvi::lib::core {

/// Header of a block of nodes; the nodes follow it. `MList` and `MHashMap` take their nodes from such blocks.
struct alignas(16) NodeBlock {
    NodeBlock *previous;
};
static_assert(sizeof(NodeBlock) == 16);

/// Takes a block of `nodesPerBlock` nodes, one at least, from `allocate(bytes)`, makes it the newest and threads its
/// nodes onto the free list, from the last to the first, so that the lowest address is handed out first. Raises
/// `kStatusOutOfMemory` and changes nothing when the block cannot be had (null) or its size does not fit.
template <typename Node, typename Allocate>
void AddNodeBlock(NodeBlock *&newest, Node *&freeHead, std::uint64_t nodesPerBlock, Allocate allocate) {
    static_assert(alignof(Node) <= alignof(NodeBlock), "nodes are aligned to 16 bytes");
    assert(nodesPerBlock > 0);
    constexpr std::uint64_t kLargestBlock = (std::numeric_limits<std::ptrdiff_t>::max)();
    if (nodesPerBlock > (kLargestBlock - sizeof(NodeBlock)) / sizeof(Node))
        RaiseStatus(kStatusOutOfMemory);
    void *const memory = allocate(sizeof(NodeBlock) + nodesPerBlock * sizeof(Node));
    if (!memory)
        RaiseStatus(kStatusOutOfMemory);
    newest = ::new (memory) NodeBlock{newest};
    Node *const nodes = reinterpret_cast<Node *>(newest + 1);
    for (std::uint64_t i = nodesPerBlock; i > 0; --i) {
        Node *const node = ::new (static_cast<void *>(nodes + (i - 1))) Node;
        node->next = freeHead;
        freeHead = node;
    }
}

/// Whether the nodes in use and the free ones are together all nodes of the blocks.
template <typename Node>
bool AreNodesComplete(NodeBlock const *newest, Node const *freeHead, std::uint64_t nodesPerBlock, std::uint64_t used) {
    std::uint64_t all = 0;
    for (; newest; newest = newest->previous)
        all += nodesPerBlock;
    for (; freeHead && used <= all; freeHead = freeHead->next)
        ++used;
    return used == all;
}

} // namespace zvi::lib::core
