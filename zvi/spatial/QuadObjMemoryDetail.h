#pragma once

#include "zvi/spatial/MQuadObj.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace zvi::lib {

/// Memory for the objects that a tree owns. Each object begins its own cache line, because deletions meet them in any
/// order and read all of one.
class QuadObjMemory {
public:
    MQuadObj *Make();
    void Destroy(MQuadObj *object);

private:
    static constexpr std::size_t kCacheLine = 64;
    static constexpr std::size_t kSlotsPerBlock = 256;

    union alignas(kCacheLine) Slot {
        Slot *nextFree;
        std::byte object[sizeof(MQuadObj)];
    };

    void AddBlock();

    std::vector<std::unique_ptr<Slot[]>> m_blocks;
    Slot *m_firstFree = nullptr;
};

} // namespace zvi::lib
