#include "zvi/base/Index.h"
#include "zvi/diagnostics/MProcessObjDetail.h"
#include "zvi/diagnostics/ProcessSlotDetail.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace zvi::lib::diagnostics {

namespace {

using base::Index;

/// How long a worker waits for room at a time before it looks at what may have changed.
constexpr std::chrono::milliseconds kRoomWait{100};

} // namespace

void ProcessSlot::Reset(MProcessObj const *owner) {
    std::lock_guard const lock(m_lock);
    m_readIndex = 0;
    m_writeIndex = 0;
    m_owner = owner;
    std::string().swap(m_unfinished);
    m_parser = ProcessParser();
    messages.Clear();
    m_hasRoom.notify_all();
}

void ProcessSlot::Put(MProcessObj const &owner, std::string_view bytes) {
    std::unique_lock lock(m_lock);
    while (!bytes.empty() && m_owner == &owner && owner.HasCommunicator()) {
        if (std::size_t const copied = CopyIn(bytes); copied > 0) {
            bytes.remove_prefix(copied);
            // The thread that this wakes takes the lock at once.
            lock.unlock();
            ProcessOutput().Set();
            lock.lock();
        } else if (!MoveUnfinished()) {
            m_hasRoom.wait_for(lock, kRoomWait);
        }
    }
}

std::size_t ProcessSlot::CopyIn(std::string_view bytes) {
    std::size_t copied = 0;
    while (copied < bytes.size()) {
        // Up to the end of the ring or one short of the read index, whichever comes first.
        int const limit = m_writeIndex < m_readIndex ? m_readIndex - 1 : m_readIndex == 0 ? kRingSize - 1 : kRingSize;
        std::size_t const count = std::min(Index(limit - m_writeIndex), bytes.size() - copied);
        if (count == 0)
            break;
        std::memcpy(m_ring.data() + m_writeIndex, bytes.data() + copied, count);
        m_writeIndex = (m_writeIndex + static_cast<int>(count)) % kRingSize;
        copied += count;
    }
    return copied;
}

std::string_view ProcessSlot::CopyOut(char *bytes) const {
    bool const wraps = m_writeIndex < m_readIndex;
    std::size_t const first = Index((wraps ? kRingSize : m_writeIndex) - m_readIndex);
    std::size_t const second = wraps ? Index(m_writeIndex) : 0;
    std::memcpy(bytes, m_ring.data() + m_readIndex, first);
    std::memcpy(bytes + first, m_ring.data(), second);
    return {bytes, first + second};
}

bool ProcessSlot::MoveUnfinished() {
    std::array<char, kRingSize> held;
    std::string_view bytes = CopyOut(held.data());
    if (HoldsSegmentEnd(bytes))
        return false;
    int moved = static_cast<int>(bytes.size());
    // What follows a CR at the very end decides what it is.
    if (bytes.ends_with('\r')) {
        bytes.remove_suffix(1);
        --moved;
    }
    if (m_unfinished.empty() && bytes.starts_with('\n'))
        bytes.remove_prefix(1);
    try {
        m_unfinished.append(bytes);
    } catch (std::bad_alloc const &) {
        return false;
    }
    m_readIndex = (m_readIndex + moved) % kRingSize;
    return true;
}

void ProcessSlot::Parse(std::size_t limit, bool isEnd) {
    std::lock_guard const lock(m_lock);
    std::array<char, kRingSize> held;
    std::size_t const read = m_parser.Read(CopyOut(held.data()), m_unfinished, limit, isEnd, messages);
    m_readIndex = (m_readIndex + static_cast<int>(read)) % kRingSize;
    if (read > 0)
        m_hasRoom.notify_one();
}

bool ProcessSlot::IsOwnedBy(MProcessObj const &run) {
    std::lock_guard const lock(m_lock);
    return m_owner == &run;
}

bool ProcessSlot::HasWork() {
    return messages.HasNext() || Held() > 0;
}

std::size_t ProcessSlot::Held() {
    std::lock_guard const lock(m_lock);
    return base::Index((m_writeIndex - m_readIndex + kRingSize) % kRingSize);
}

bool ProcessSlot::HasSegment(bool isEnd) {
    std::lock_guard const lock(m_lock);
    std::array<char, kRingSize> held;
    std::string_view const bytes = CopyOut(held.data());
    return HoldsSegmentEnd(bytes) || (isEnd && bytes.ends_with('\r'));
}

void OutputSignal::Set() {
    {
        std::lock_guard const lock(m_lock);
        if (std::exchange(m_isSet, true))
            return;
    }
    m_isSetNow.notify_all();
}

void OutputSignal::Clear() {
    std::lock_guard const lock(m_lock);
    m_isSet = false;
}

bool OutputSignal::Wait(std::chrono::milliseconds longest) {
    std::unique_lock lock(m_lock);
    return m_isSetNow.wait_for(lock, longest, [this] { return m_isSet; });
}

std::array<ProcessSlot, kSlotCount> &ProcessSlots() {
    static auto *const slots = new std::array<ProcessSlot, kSlotCount>;
    return *slots;
}

OutputSignal &ProcessOutput() {
    static auto *const signal = new OutputSignal;
    return *signal;
}

} // namespace zvi::lib::diagnostics
