#include "zvi/host/ChildProcess.h"

#include "zvi/host/Paths.h"
#include "zvi/host/windows/Handle.h"

#include <atomic>
#include <mutex>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace zvi::host {

namespace {

using std::chrono::milliseconds;

/// Bytes that the host keeps for a reader that is late.
constexpr DWORD kPipeRoom = 65536;

/// A handle that children may inherit if they are told to.
SECURITY_ATTRIBUTES Inheritable() {
    return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
}

/// A name for a pipe that no other has.
std::wstring PipeName() {
    static std::atomic<unsigned long> number = 0;
    return L"\\\\.\\pipe\\zvi-child-" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++number);
}

struct Pipe {
    Handle read;
    Handle write;
};

/// A pipe whose reading end can be waited for together with other things, which an anonymous one cannot.
DWORD OpenPipe(Pipe &pipe) {
    std::wstring const name = PipeName();
    pipe.read = Handle(::CreateNamedPipeW(
        name.c_str(), PIPE_ACCESS_INBOUND | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
        PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1, 0, kPipeRoom, 0, nullptr));
    if (!pipe.read.IsOpen())
        return ::GetLastError();
    SECURITY_ATTRIBUTES security = Inheritable();
    pipe.write = Handle(::CreateFileW(name.c_str(), GENERIC_WRITE, 0, &security, OPEN_EXISTING, 0, nullptr));
    return pipe.write.IsOpen() ? 0 : ::GetLastError();
}

Handle EmptyInput() {
    SECURITY_ATTRIBUTES security = Inheritable();
    return Handle(
        ::CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &security, OPEN_EXISTING, 0, nullptr));
}

/// The handles that a child inherits, and no others.
class InheritedHandles {
public:
    explicit InheritedHandles(std::vector<HANDLE> handles) : m_handles(std::move(handles)) {
        SIZE_T size = 0;
        ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_memory.resize(size);
        m_isReady = ::InitializeProcThreadAttributeList(List(), 1, 0, &size) != 0;
        if (m_isReady && !::UpdateProcThreadAttribute(List(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_handles.data(),
                                                      m_handles.size() * sizeof(HANDLE), nullptr, nullptr))
            Drop();
    }
    ~InheritedHandles() { Drop(); }
    InheritedHandles(InheritedHandles const &) = delete;
    InheritedHandles &operator=(InheritedHandles const &) = delete;

    bool IsReady() const { return m_isReady; }
    LPPROC_THREAD_ATTRIBUTE_LIST List() { return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.data()); }

private:
    void Drop() {
        if (m_isReady)
            ::DeleteProcThreadAttributeList(List());
        m_isReady = false;
    }

    std::vector<HANDLE> m_handles;
    std::vector<char> m_memory;
    bool m_isReady = false;
};

std::wstring LineOf(ChildRequest const &request) {
    std::wstring const program = NativePath(request.program).native();
    return (request.quotesProgram ? L'"' + program + L'"' : program) + L' ' + request.arguments;
}

/// Starts a process; `output` and `input` are the child's streams if it has its own.
DWORD StartProcess(ChildRequest const &request, HANDLE output, HANDLE input, PROCESS_INFORMATION &started) {
    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof(startup);
    startup.StartupInfo.dwFlags =
        STARTF_USESHOWWINDOW | (request.captures ? STARTF_FORCEOFFFEEDBACK | STARTF_USESTDHANDLES : 0);
    startup.StartupInfo.wShowWindow = static_cast<WORD>(request.showState);
    startup.StartupInfo.hStdInput = input;
    startup.StartupInfo.hStdOutput = output;
    startup.StartupInfo.hStdError = output;
    DWORD flags = 0;
    InheritedHandles inherited({output, input});
    if (request.captures) {
        if (!inherited.IsReady())
            return ERROR_NOT_ENOUGH_MEMORY;
        startup.lpAttributeList = inherited.List();
        flags = EXTENDED_STARTUPINFO_PRESENT | CREATE_SUSPENDED | CREATE_NEW_PROCESS_GROUP;
    } else {
        startup.StartupInfo.cb = sizeof(startup.StartupInfo);
    }
    std::wstring line = LineOf(request);
    std::wstring const folder = NativePath(request.folder).native();
    bool const isStarted =
        ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, request.captures ? TRUE : FALSE, flags, nullptr,
                         request.folder.empty() ? nullptr : folder.c_str(), &startup.StartupInfo, &started) != 0;
    return isStarted ? 0 : ::GetLastError();
}

DWORD Milliseconds(milliseconds time) {
    return time.count() >= INFINITE ? INFINITE - 1 : static_cast<DWORD>(time.count());
}

} // namespace

struct ChildProcess::State {
    /// Guards the handles of the child while it is being started.
    std::mutex guard;
    Handle process;
    Handle job;
    Handle output;
    /// Set when a read has ended, and for good when the reader gives up.
    Handle hasRead{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    Handle hasGivenUp{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};

    DWORD Start(ChildRequest const &request) {
        Pipe pipe;
        Handle input;
        if (request.captures) {
            if (DWORD const error = OpenPipe(pipe); error != 0)
                return error;
            input = EmptyInput();
        }
        std::lock_guard const lock(guard);
        PROCESS_INFORMATION started{};
        if (DWORD const error = StartProcess(request, pipe.write.Get(), input.Get(), started); error != 0)
            return error;
        Handle const thread(started.hThread);
        process = Handle(started.hProcess);
        output = std::move(pipe.read);
        if (request.captures)
            MakeGroup();
        ::ResumeThread(thread.Get());
        return 0;
    }

    /// Puts the child into a job; a host that refuses that leaves the programs that it starts to themselves.
    void MakeGroup() {
        Handle made(::CreateJobObjectW(nullptr, nullptr));
        if (made.IsOpen() && ::AssignProcessToJobObject(made.Get(), process.Get()))
            job = std::move(made);
    }

    /// Waits for a read under way: until it has ended, or the child has ended and nothing came for a while, or the
    /// reader gave up.
    void WaitForRead() const {
        HANDLE const waits[] = {hasRead.Get(), hasGivenUp.Get(), process.Get()};
        if (::WaitForMultipleObjects(3, waits, FALSE, INFINITE) == WAIT_OBJECT_0 + 2)
            ::WaitForMultipleObjects(2, waits, FALSE, Milliseconds(kQuietTime));
    }

    /// One read; false at the end of the output.
    bool ReadOnce(char *bytes, std::size_t room, std::size_t &count) const {
        OVERLAPPED overlapped{};
        overlapped.hEvent = hasRead.Get();
        if (!::ReadFile(output.Get(), bytes, static_cast<DWORD>(room), nullptr, &overlapped)) {
            if (::GetLastError() != ERROR_IO_PENDING)
                return false;
            WaitForRead();
            // The bytes are the host's until it has answered, and what came at the last moment counts.
            ::CancelIoEx(output.Get(), &overlapped);
        }
        DWORD read = 0;
        bool const isRead = ::GetOverlappedResult(output.Get(), &overlapped, &read, TRUE) != 0;
        count = read;
        return isRead;
    }
};

ChildProcess::ChildProcess() : m_state(std::make_unique<State>()) {}

ChildProcess::~ChildProcess() = default;

unsigned int ChildProcess::Start(ChildRequest const &request) {
    try {
        return m_state->Start(request);
    } catch (std::bad_alloc const &) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

std::size_t ChildProcess::Read(char *bytes, std::size_t room) {
    // A child that writes nothing wakes its reader too.
    for (std::size_t count = 0; m_state->output.IsOpen() && !HasGivenUp();)
        if (!m_state->ReadOnce(bytes, room, count) || count > 0)
            return count;
    return 0;
}

void ChildProcess::CloseOutput() {
    m_state->output = Handle();
}

void ChildProcess::Terminate(std::uint32_t code) {
    State &state = *m_state;
    std::lock_guard const lock(state.guard);
    if (state.job.IsOpen())
        ::TerminateJobObject(state.job.Get(), code);
    else if (state.process.IsOpen())
        ::TerminateProcess(state.process.Get(), code);
}

bool ChildProcess::WaitForEnd(milliseconds longest) {
    return !m_state->process.IsOpen() ||
           ::WaitForSingleObject(m_state->process.Get(), Milliseconds(longest)) == WAIT_OBJECT_0;
}

std::uint32_t ChildProcess::ExitCode() const {
    DWORD code = kUnknownExitCode;
    return m_state->process.IsOpen() && ::GetExitCodeProcess(m_state->process.Get(), &code) ? code : kUnknownExitCode;
}

void ChildProcess::GiveUp() {
    ::SetEvent(m_state->hasGivenUp.Get());
}

bool ChildProcess::HasGivenUp() const {
    return ::WaitForSingleObject(m_state->hasGivenUp.Get(), 0) == WAIT_OBJECT_0;
}

} // namespace zvi::host
