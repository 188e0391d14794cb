#include "zvi/diagnostics/ProcessWorkerDetail.h"

#include "zvi/base/Index.h"
#include "zvi/diagnostics/ProcessSlotDetail.h"
#include "zvi/host/WorkerThread.h"

#include <cassert>
#include <chrono>
#include <cstring>

namespace zvi::lib::diagnostics {

namespace {

/// How often a worker that waits for its child's end looks whether it is still to wait.
constexpr std::chrono::milliseconds kEndWait{100};

constexpr unsigned int kHidden = 0;
constexpr unsigned int kNormal = 1;

class Worker {
public:
    explicit Worker(ProcessThreadParameters const &parameters)
        : m_parameters(parameters), m_object(*parameters.object), m_child(m_object.child) {}

    void Run() {
        if (m_child.HasGivenUp() || !Start())
            return;
        host::SetThreadPriority(m_object.priority);
        if (m_object.IsClosed())
            m_child.Terminate(m_parameters.stopExitCode);
        PassOutputOn();
        m_child.CloseOutput();
        if (WaitForEnd())
            m_object.exitCode = m_child.ExitCode();
    }

private:
    bool Start() {
        m_object.startError = m_child.Start({.program = *m_parameters.program,
                                             .arguments = *m_parameters.arguments,
                                             .folder = *m_parameters.folder,
                                             .captures = m_parameters.captures != 0,
                                             .showState = m_parameters.showWindow != 0 ? kNormal : kHidden});
        return m_object.startError == 0;
    }

    void PassOutputOn() {
        auto &[bytes, ends] = *m_object.buffers;
        do {
            StopIfAsked();
            std::size_t const count = m_child.Read(bytes.data(), bytes.size());
            if (count == 0)
                break;
            Put(ends.Mended({bytes.data(), count}));
        } while (true);
        Put(ends.AtEnd());
    }

    void StopIfAsked() {
        if (*m_parameters.runFlag != 0 || m_hasStopped)
            return;
        m_hasStopped = true;
        m_child.Terminate(m_parameters.stopExitCode);
        WaitForEnd();
    }

    /// False when the worker is to end before the child.
    bool WaitForEnd() {
        while (!m_child.WaitForEnd(kEndWait))
            if (m_child.HasGivenUp() && !m_object.IsClosed())
                return false;
        return true;
    }

    void Put(std::string_view bytes) {
        if (m_object.HasCommunicator())
            ProcessSlots()[base::Index(m_object.Slot())].Put(m_object, bytes);
    }

    ProcessThreadParameters const &m_parameters;
    MProcessObj &m_object;
    host::ChildProcess &m_child;
    bool m_hasStopped = false;
};

} // namespace

std::string_view LineEnds::Mended(std::string_view output) {
    assert(output.size() <= kReadSize);
    char *end = m_mended.data();
    while (!output.empty()) {
        std::size_t const place = output.find('\n');
        std::size_t const count = place == output.npos ? output.size() : place;
        std::memcpy(end, output.data(), count);
        end += count;
        if (count > 0)
            m_last = output[count - 1];
        output.remove_prefix(count);
        if (output.empty())
            break;
        if (m_last != '\r')
            *end++ = '\r';
        *end++ = m_last = '\n';
        output.remove_prefix(1);
    }
    return {m_mended.data(), static_cast<std::size_t>(end - m_mended.data())};
}

std::string_view LineEnds::AtEnd() const {
    // Behind a line end there is no line, and CR and BS have ended what there was.
    bool const isInLine = m_last != '\n' && m_last != '\r' && m_last != '\b';
    return isInLine ? "\r\n" : "";
}

void RunChild(ProcessThreadParameters const &parameters) {
    host::BeginWorkerThread();
    Worker(parameters).Run();
    // The last that it does with the object.
    parameters.object->NoteThreadEnd();
    ProcessOutput().Set();
}

} // namespace zvi::lib::diagnostics
