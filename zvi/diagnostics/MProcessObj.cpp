#include "zvi/diagnostics/MProcessObjDetail.h"

#include "zvi/diagnostics/ProcessWorkerDetail.h"
#include "zvi/host/WorkerThread.h"

#include <cassert>
#include <functional>
#include <system_error>
#include <utility>

namespace zvi::lib {

MProcessObj::MProcessObj(int slot) : buffers(new diagnostics::WorkerBuffers), m_slot(slot) {}

MProcessObj::~MProcessObj() {
    if (!m_thread.joinable())
        return;
    if (host::AreOtherThreadsGone())
        m_thread.detach();
    else
        m_thread.join();
}

void MProcessObj::SetCommunicator(MProcessCommunicator *communicator) {
    std::lock_guard const lock(m_lock);
    m_hasCommunicator = communicator ? 1 : 0;
    m_communicator = communicator;
}

MProcessCommunicator *MProcessObj::Communicator() {
    std::lock_guard const lock(m_lock);
    return m_communicator;
}

void MProcessObj::DetachCommunicator() {
    m_detached = Communicator();
    if (m_detached)
        m_detached->SetProcessObj(nullptr, nullptr);
}

void MProcessObj::DropCommunicator() {
    if (Communicator())
        DetachCommunicator();
    MProcessCommunicator *const detached = std::exchange(m_detached, nullptr);
    if (detached && detached->IsSelfDelete() != 0)
        delete detached;
}

void MProcessObj::SetRequest(std::wstring_view wantedProgram, std::wstring_view wantedArguments,
                             std::wstring_view wantedFolder) {
    program = wantedProgram;
    arguments = wantedArguments;
    folder = wantedFolder;
}

void MProcessObj::SetParameters(int threadPriority, unsigned int stopExitCode, int tellsManyLines, int showWindow) {
    constexpr int kCaptures = 1;
    priority = threadPriority;
    manyLines = tellsManyLines;
    parameters = {&m_runFlag, &program, &arguments, &folder, kCaptures, stopExitCode, showWindow, this};
}

bool MProcessObj::StartThread() {
    assert(parameters.object && !m_thread.joinable());
    try {
        m_hasThreadEnded = false;
        m_thread = std::thread(diagnostics::RunChild, std::cref(parameters));
        return true;
    } catch (std::system_error const &) {
        m_hasThreadEnded = true;
        return false;
    }
}

void MProcessObj::EndWorker(bool isClosed) {
    m_isClosed = isClosed;
    child.GiveUp();
    if (isClosed && IsThreadAlive())
        child.Terminate(parameters.stopExitCode);
}

} // namespace zvi::lib
