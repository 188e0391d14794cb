#include "zvi/diagnostics/MProcessMgr.h"

#include "zvi/diagnostics/MProcessObjDetail.h"
#include "zvi/diagnostics/ProcessPassDetail.h"
#include "zvi/host/Files.h"
#include "zvi/host/Timers.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <memory>
#include <new>
#include <utility>

namespace zvi::lib {

namespace {

using namespace diagnostics;

constexpr int kStarted = 0;
constexpr int kNoProgram = -2;
constexpr int kNoThread = -3;
constexpr int kNoSlot = -4;

/// The first of the objects whose slots are free already while their workers end.
MProcessObj *leaving = nullptr;

wchar_t const *TextOf(wchar_t const *text) {
    return text ? text : L"";
}

/// Holds a flag at 1.
class Busy {
public:
    explicit Busy(int &flag) : m_flag(flag) { m_flag = 1; }
    ~Busy() { m_flag = 0; }
    Busy(Busy const &) = delete;
    Busy &operator=(Busy const &) = delete;

private:
    int &m_flag;
};

int StartWorker(MProcessObj &object) {
    if (!host::Exists(object.program))
        return kNoProgram;
    return object.StartThread() ? kStarted : kNoThread;
}

} // namespace

MProcessMgr *MProcessMgr::m_pInstance = nullptr;

MProcessMgr *MProcessMgr::Instance() {
    static MProcessMgr manager;
    return m_pInstance = &manager;
}

MProcessMgr::~MProcessMgr() {
    StopTimer();
    for (MProcessObj *const object : m_slots)
        if (object)
            object->EndWorker(false);
    for (MProcessObj *each = leaving; each; each = each->nextLeaving)
        each->EndWorker(false);
    for (int slot = 0; slot < m_slotCount; ++slot)
        if (m_slots[slot])
            Destroy(slot);
    while (leaving)
        delete std::exchange(leaving, leaving->nextLeaving);
    m_pInstance = nullptr;
}

int MProcessMgr::Run(wchar_t const *program, wchar_t const *arguments, wchar_t const *folder, int priority,
                     unsigned int stopExitCode, MProcessCommunicator *communicator, int manyLines, int showWindow,
                     CDocument *document) {
    ForgetEnded();
    int const slot = ChooseSlot();
    if (slot < 0)
        return kNoSlot;
    int result = kNoThread;
    try {
        MProcessObj &object = *(m_slots[slot] = new MProcessObj(slot));
        SlotOf(object).Reset(&object);
        if (communicator)
            communicator->SetProcessObj(&object, nullptr);
        object.SetRequest(TextOf(program), TextOf(arguments), TextOf(folder));
        object.SetParameters(priority, stopExitCode, manyLines, showWindow);
        object.document = document;
        result = StartWorker(object);
        if (result == kStarted && !StartTimer())
            result = kNoThread;
    } catch (std::bad_alloc const &) {
        result = kNoThread;
        if (!m_slots[slot] && communicator && communicator->IsSelfDelete() != 0)
            delete communicator;
    }
    if (result != kStarted && m_slots[slot])
        Close(slot);
    return result;
}

/// The slot for the next run, or -1. Searching begins behind the slot that was taken last.
int MProcessMgr::ChooseSlot() {
    if (m_nextSlot == m_slotCount)
        m_nextSlot = 0;
    if (m_slots[m_nextSlot]) {
        auto const *const free = std::find(std::begin(m_slots), std::end(m_slots), nullptr);
        if (free == std::end(m_slots))
            return -1;
        m_nextSlot = static_cast<int>(free - std::begin(m_slots));
    }
    return m_nextSlot++;
}

bool MProcessMgr::StartTimer() {
    if (m_timerId == 0)
        m_timerId = host::StartTimer(kTimerId, kTimerPeriod, TimerProc);
    return m_timerId != 0;
}

void MProcessMgr::StopTimer() {
    if (m_timerId != 0)
        host::StopTimer(std::exchange(m_timerId, 0));
}

void MProcessMgr::OnCloseDocument(CDocument *document) {
    ForgetEnded();
    for (int slot = 0; slot < m_slotCount; ++slot) {
        MProcessObj const *const object = m_slots[slot];
        if (object && object->document == document && object->IsThreadAlive())
            Close(slot);
    }
}

void MProcessMgr::TimerProc(void *window, unsigned int message, std::uint64_t id, unsigned long time) {
    if (m_pInstance)
        m_pInstance->OnTimer(window, message, id, time);
}

void MProcessMgr::OnTimer(void *, unsigned int, std::uint64_t id, unsigned long) {
    if (id != m_timerId || m_isBusy != 0)
        return;
    ForgetEnded();
    Busy const busy(m_isBusy);
    ProcessOutput().Clear();
    for (int slot = 0; slot < m_slotCount; ++slot)
        if (m_slots[slot])
            PassSlot(slot);
    // A message may have started a run in a slot that this pass had behind it, even one that has ended since.
    if (std::all_of(std::begin(m_slots), std::end(m_slots), [](MProcessObj const *object) { return !object; }))
        StopTimer();
}

/// The pass of a slot with a run.
void MProcessMgr::PassSlot(int slot) {
    assert(m_slots[slot]);
    MProcessObj &object = *m_slots[slot];
    ProcessSlot &shared = SlotOf(object);
    if (object.IsThreadAlive()) {
        if (shared.HasWork() && ParseAndSend(object, false) && shared.IsOwnedBy(object) && shared.HasSegment(false))
            ProcessOutput().Set();
    } else if (FinishRun(object)) {
        Destroy(slot);
    }
}

int MProcessMgr::WaitForOutput(unsigned int milliseconds) {
    return ProcessOutput().Wait(std::chrono::milliseconds(milliseconds)) ? 1 : 0;
}

/// Takes a run out of its slot, which is then as before the first.
MProcessObj *MProcessMgr::Release(int slot) {
    assert(m_slots[slot]);
    SlotOf(*m_slots[slot]).Reset(nullptr);
    return std::exchange(m_slots[slot], nullptr);
}

/// Destroys a run whose worker has ended or is about to.
void MProcessMgr::Destroy(int slot) {
    std::unique_ptr<MProcessObj> const object(Release(slot));
    object->DropCommunicator();
}

/// Ends a run at once. Its worker may take a moment more.
void MProcessMgr::Close(int slot) {
    MProcessObj *const object = Release(slot);
    object->EndWorker(true);
    object->DropCommunicator();
    object->nextLeaving = std::exchange(leaving, object);
}

/// Destroys closed runs whose workers have ended. Within a pass they stay, since it may be at work on one.
void MProcessMgr::ForgetEnded() {
    for (MProcessObj **place = &leaving; m_isBusy == 0 && *place;) {
        if ((*place)->IsThreadAlive())
            place = &(*place)->nextLeaving;
        else
            delete std::exchange(*place, (*place)->nextLeaving);
    }
}

} // namespace zvi::lib
