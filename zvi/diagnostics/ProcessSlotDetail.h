#pragma once

#include "zvi/diagnostics/ProcessParserDetail.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

namespace zvi::lib {
class MProcessObj;
}

namespace zvi::lib::diagnostics {

/// Number of children that run at once.
inline constexpr int kSlotCount = 100;
/// Bytes of a ring; it holds one less, so that it never looks empty when it is full.
inline constexpr int kRingSize = 4096;
/// Messages that one pass takes from a slot, and from one with many lines.
inline constexpr std::size_t kMessagesPerPass = 100;
inline constexpr std::size_t kManyMessagesPerPass = 1000;

/// What the worker of a child and the timer share. All but `messages` is under the slot's lock.
class ProcessSlot {
public:
    /// Begins a new run, whose worker alone may put bytes in from now on; null: nobody may.
    void Reset(MProcessObj const *owner);

    /// Copies a child's bytes into the ring, and waits for room until all are in. Those of a run that no longer owns
    /// the slot, or that nobody hears, are dropped.
    void Put(MProcessObj const &owner, std::string_view bytes);

    /// Takes whole segments out of the ring, as many as make so many messages, into `messages`.
    void Parse(std::size_t limit, bool isEnd);
    /// Whether the run is still the one that owns the slot.
    bool IsOwnedBy(MProcessObj const &run);
    /// Whether there is anything to parse or to send.
    bool HasWork();
    /// Bytes in the ring.
    std::size_t Held();
    /// Whether another `Parse` would add messages.
    bool HasSegment(bool isEnd);

    /// Collected by the parse step and not yet sent. Used by the timer's thread alone.
    ProcessMessages messages;

private:
    /// Copies what there is room for and gives its number. Here and below the lock is held.
    std::size_t CopyIn(std::string_view bytes);
    /// Copies all that the ring holds to `bytes`, which holds `kRingSize`.
    std::string_view CopyOut(char *bytes) const;
    /// Makes room in a full ring that holds no finished segment, by moving the unfinished one to a buffer that grows.
    bool MoveUnfinished();

    std::array<char, kRingSize> m_ring{};
    int m_readIndex = 0;
    int m_writeIndex = 0;
    std::mutex m_lock;
    std::condition_variable m_hasRoom;
    MProcessObj const *m_owner = nullptr;
    std::string m_unfinished;
    ProcessParser m_parser;
};

/// Tells the timer's thread that a worker has put bytes into a ring, or has ended.
class OutputSignal {
public:
    void Set();
    void Clear();
    /// Waits at most so long until it is set; whether it is.
    bool Wait(std::chrono::milliseconds longest);

private:
    std::mutex m_lock;
    std::condition_variable m_isSetNow;
    bool m_isSet = false;
};

/// The slots of the process, and their signal. Never destroyed.
std::array<ProcessSlot, kSlotCount> &ProcessSlots();
OutputSignal &ProcessOutput();

} // namespace zvi::lib::diagnostics
