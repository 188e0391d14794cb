#include "zvi/diagnostics/ProcessPassDetail.h"

#include "zvi/base/Index.h"
#include "zvi/core/WideFormat.h"

#include <new>
#include <utility>

namespace zvi::lib::diagnostics {

namespace {

/// Tells the communicator a message. It may delete itself, or have the run closed.
void Tell(MProcessObj &object, std::wstring const &text, T_PROCESS_MSG const &about) {
    struct Current {
        MProcessObj &object;
        ~Current() { object.currentMsg = nullptr; }
    } const current{object};
    object.currentMsg = &about;
    if (MProcessCommunicator *const communicator = object.Communicator())
        communicator->OnProcessMsg(text.c_str());
}

/// The collected messages of a slot, which the slot has back afterwards if it still is that of the run.
class CollectedMessages {
public:
    explicit CollectedMessages(MProcessObj const &object) : m_object(object), m_slot(SlotOf(object)) {
        std::swap(all, m_slot.messages);
    }
    ~CollectedMessages() {
        if (IsOurs())
            std::swap(all, m_slot.messages);
    }
    CollectedMessages(CollectedMessages const &) = delete;
    CollectedMessages &operator=(CollectedMessages const &) = delete;

    bool IsOurs() const { return m_slot.IsOwnedBy(m_object); }

    ProcessMessages all;

private:
    MProcessObj const &m_object;
    ProcessSlot &m_slot;
};

bool SendCollected(MProcessObj &object) {
    CollectedMessages messages(object);
    std::wstring text;
    T_PROCESS_MSG about;
    while (messages.all.HasNext() && object.Communicator() && messages.IsOurs()) {
        try {
            messages.all.TakeNext(text, about);
        } catch (std::bad_alloc const &) {
            return false;
        }
        Tell(object, text, about);
    }
    messages.all.Clear();
    return true;
}

bool SendExit(MProcessObj &object) {
    std::wstring text;
    try {
        text = FormatWide(L"!Exit:%d", static_cast<int>(object.exitCode));
    } catch (std::bad_alloc const &) {
        return false;
    }
    Tell(object, text, {text.size(), {}, 0, true, object.startError});
    object.DetachCommunicator();
    return true;
}

} // namespace

ProcessSlot &SlotOf(MProcessObj const &object) {
    return ProcessSlots()[base::Index(object.Slot())];
}

bool ParseAndSend(MProcessObj &object, bool isEnd) {
    // What the pass before had no memory for comes first.
    if (!SendCollected(object))
        return false;
    ProcessSlot &slot = SlotOf(object);
    slot.Parse(object.manyLines != 0 ? kManyMessagesPerPass : kMessagesPerPass, isEnd);
    return SendCollected(object);
}

bool FinishRun(MProcessObj &object) {
    object.finished = 1;
    ProcessSlot &slot = SlotOf(object);
    do {
        std::size_t const before = slot.Held();
        if (!ParseAndSend(object, true))
            return false;
        if (slot.Held() == before)
            break;
    } while (true);
    return !slot.HasSegment(true) && SendExit(object);
}

} // namespace zvi::lib::diagnostics
