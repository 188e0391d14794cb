#pragma once

#include "zvi/diagnostics/MProcessCommunicator.h"
#include "zvi/host/ChildProcess.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

class CDocument;

namespace zvi::lib {

namespace diagnostics {
struct WorkerBuffers;
}

/// What a worker is given.
struct ProcessThreadParameters {
    std::atomic<int> *runFlag;
    std::wstring const *program;
    std::wstring const *arguments;
    std::wstring const *folder;
    int captures;
    unsigned int stopExitCode;
    int showWindow;
    MProcessObj *object;
};

/// A run of a child program. The manager makes and destroys it on its own thread, and destroys it only once its worker
/// has ended; the worker uses what is const or atomic, and the child.
class MProcessObj {
public:
    explicit MProcessObj(int slot);
    /// Waits for the worker.
    ~MProcessObj();
    MProcessObj(MProcessObj const &) = delete;
    MProcessObj &operator=(MProcessObj const &) = delete;

    int Slot() const { return m_slot; }

    /// Attaching and detaching are the communicator's part, under its lock and then this one's.
    void SetCommunicator(MProcessCommunicator *communicator);
    MProcessCommunicator *Communicator();
    bool HasCommunicator() const { return m_hasCommunicator != 0; }

    /// Lets go of the communicator, and deletes it, or the one that "!Exit:" has let go, if its self-delete flag says
    /// so.
    void DropCommunicator();
    /// Lets go of the communicator at the end of the run; it is deleted with this object unless its flag says
    /// otherwise.
    void DetachCommunicator();

    /// What to run, and how; before the worker is started.
    void SetRequest(std::wstring_view wantedProgram, std::wstring_view wantedArguments, std::wstring_view wantedFolder);
    void SetParameters(int threadPriority, unsigned int stopExitCode, int tellsManyLines, int showWindow);

    /// Asks the worker to stop the child at its next pass.
    void RequestStop() { m_runFlag = 0; }

    /// Starts the worker, once, when the parameters are set. False when the host has no thread for it.
    bool StartThread();
    /// Whether the worker is still there.
    bool IsThreadAlive() const { return !m_hasThreadEnded; }
    void NoteThreadEnd() { m_hasThreadEnded = true; }

    /// Ends the worker soon. With `isClosed` the child is ended at once with the exit code of a stop; otherwise it is
    /// left alone.
    void EndWorker(bool isClosed);
    bool IsClosed() const { return m_isClosed; }

    ProcessThreadParameters parameters{};
    std::wstring program;
    std::wstring arguments;
    std::wstring folder;
    int priority = 0;
    int manyLines = 0;
    int finished = 0;
    CDocument *document = nullptr;
    host::ChildProcess child;
    std::unique_ptr<diagnostics::WorkerBuffers> const buffers;
    std::atomic<std::uint32_t> exitCode = 0;
    /// Why the child could not be started; 0 when it was.
    std::atomic<unsigned int> startError = 0;
    /// What is being told to the communicator.
    T_PROCESS_MSG const *currentMsg = nullptr;
    /// The next one whose worker is about to end.
    MProcessObj *nextLeaving = nullptr;

private:
    int m_slot;
    std::atomic<int> m_hasCommunicator = 0;
    std::recursive_mutex m_lock;
    MProcessCommunicator *m_communicator = nullptr;
    MProcessCommunicator *m_detached = nullptr;
    std::atomic<int> m_runFlag = 1;
    std::thread m_thread;
    std::atomic<bool> m_hasThreadEnded = true;
    std::atomic<bool> m_isClosed = false;
};

} // namespace zvi::lib
