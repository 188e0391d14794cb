#include "zvi/host/ChildProcess.h"

#include "zvi/host/posix/Spawn.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#if defined(__linux__)
#include <sys/syscall.h>
#endif

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

namespace zvi::host {

namespace {

using std::chrono::milliseconds;

/// How often a thread that waits looks whether it has been told to give up, and at the child where the host does not
/// wake it at the child's end.
constexpr milliseconds kWatch{100};
/// The first and the longest pause between two looks at a child that is about to end.
constexpr std::chrono::microseconds kFirstPause{50};
constexpr std::chrono::microseconds kLongestPause{20000};
/// The longest wait that the host is asked for at once.
constexpr milliseconds kLongestWait{1000000};
/// What is added to the number of the signal that ended a child.
constexpr std::uint32_t kSignalBase = 128;

/// A descriptor that is closed with its object.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    Descriptor(Descriptor &&other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor() {
        if (m_number >= 0)
            ::close(m_number);
    }

    int Number() const { return m_number; }
    bool IsOpen() const { return m_number >= 0; }

private:
    int m_number;
};

/// Moves a descriptor out of the place of a standard stream that this process has closed.
Descriptor BehindStandardStreams(int number) {
    Descriptor given(number);
    return number > STDERR_FILENO ? std::move(given) : Descriptor(::fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

struct Pipe {
    Descriptor read;
    Descriptor write;
};

/// A pipe that children do not inherit by themselves; with an error both ends are closed.
int OpenPipe(Pipe &pipe) {
    int ends[2] = {-1, -1};
#if defined(__linux__)
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return errno;
#else
    if (::pipe(ends) != 0)
        return errno;
    ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    ::fcntl(ends[1], F_SETFD, FD_CLOEXEC);
#endif
    pipe.read = BehindStandardStreams(ends[0]);
    pipe.write = BehindStandardStreams(ends[1]);
    return pipe.read.IsOpen() && pipe.write.IsOpen() ? 0 : errno;
}

/// A descriptor that becomes readable when the child ends; closed where the host has none.
Descriptor EndOf([[maybe_unused]] pid_t child) {
#if defined(SYS_pidfd_open)
    return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
#else
    return Descriptor();
#endif
}

/// Whether there is something to read within so long.
bool IsReadable(int descriptor, milliseconds longest) {
    pollfd wait{descriptor, POLLIN, 0};
    return ::poll(&wait, 1, static_cast<int>(longest.count())) > 0;
}

std::uint32_t ExitCodeOf(int status) {
    if (WIFEXITED(status))
        return static_cast<std::uint32_t>(WEXITSTATUS(status));
    return kSignalBase + static_cast<std::uint32_t>(WTERMSIG(status));
}

} // namespace

struct ChildProcess::State {
    /// Guards what is about the child's number, which is another's once the child has been collected.
    std::mutex guard;
    pid_t child = 0;
    bool isCollected = false;
    bool leadsGroup = false;
    bool wasStopped = false;
    std::uint32_t stopCode = 0;
    std::uint32_t exitCode = kUnknownExitCode;

    Descriptor output;
    Descriptor end;
    bool hasEnded = false; ///< as far as the reading thread knows
    std::atomic<bool> hasGivenUp = false;

    int Start(ChildRequest const &request) {
        Pipe pipe;
        if (int const error = request.captures ? OpenPipe(pipe) : 0; error != 0)
            return error;
        std::lock_guard const lock(guard);
        pid_t started = 0;
        if (int const error = Spawn(request, pipe.write.Number(), started); error != 0)
            return error;
        child = started;
        leadsGroup = request.captures;
        output = std::move(pipe.read);
        end = EndOf(child);
        return 0;
    }

    /// Whether the child has ended, collected or not; `guard` is held.
    bool HasEnded() const {
        siginfo_t info{};
        return isCollected || child == 0 ||
               ::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) != 0 ||
               info.si_pid == child;
    }

    /// Takes a child that has ended out of the host's table; whether it has. `guard` is held.
    bool Collect() {
        if (!HasEnded())
            return false;
        if (child == 0 || isCollected)
            return true;
        int status = 0;
        bool const isOurs = ::waitpid(child, &status, WNOHANG) == child;
        isCollected = true;
        exitCode = wasStopped ? stopCode : isOurs ? ExitCodeOf(status) : kUnknownExitCode;
        return true;
    }

    bool CollectNow() {
        std::lock_guard const lock(guard);
        return Collect();
    }
};

ChildProcess::ChildProcess() : m_state(std::make_unique<State>()) {}

ChildProcess::~ChildProcess() {
    if (m_state->CollectNow())
        return;
    pid_t const child = m_state->child;
    try {
        std::thread([child] { ::waitpid(child, nullptr, 0); }).detach();
    } catch (std::system_error const &) {
        // Without a thread the child stays in the table when it has ended, until this process ends.
    }
}

unsigned int ChildProcess::Start(ChildRequest const &request) {
    try {
        return static_cast<unsigned int>(m_state->Start(request));
    } catch (std::bad_alloc const &) {
        return ENOMEM;
    }
}

std::size_t ChildProcess::Read(char *bytes, std::size_t room) {
    State &state = *m_state;
    while (state.output.IsOpen() && !state.hasGivenUp) {
        pollfd waits[] = {{state.output.Number(), POLLIN, 0}, {state.end.Number(), POLLIN, 0}};
        bool const watchesEnd = !state.hasEnded && state.end.IsOpen();
        milliseconds const longest = state.hasEnded ? kQuietTime : kWatch;
        int const ready = ::poll(waits, watchesEnd ? 2 : 1, static_cast<int>(longest.count()));
        if (waits[0].revents != 0) {
            ssize_t const count = ::read(state.output.Number(), bytes, room);
            if (count >= 0)
                return static_cast<std::size_t>(count);
            if (errno != EINTR)
                return 0;
        } else if (ready == 0 && state.hasEnded) {
            return 0;
        } else if (!state.hasEnded) {
            std::lock_guard const lock(state.guard);
            state.hasEnded = state.HasEnded();
        }
    }
    return 0;
}

void ChildProcess::CloseOutput() {
    m_state->output = Descriptor();
}

void ChildProcess::Terminate(std::uint32_t code) {
    State &state = *m_state;
    std::lock_guard const lock(state.guard);
    if (state.child == 0 || state.isCollected)
        return;
    if (!state.HasEnded()) {
        state.wasStopped = true;
        state.stopCode = code;
    }
    ::kill(state.leadsGroup ? -state.child : state.child, SIGKILL);
}

bool ChildProcess::WaitForEnd(milliseconds longest) {
    State &state = *m_state;
    auto const deadline = std::chrono::steady_clock::now() + longest;
    std::chrono::microseconds pause = kFirstPause;
    while (!state.CollectNow()) {
        auto const left = deadline - std::chrono::steady_clock::now();
        if (left <= left.zero())
            return false;
        if (state.end.IsOpen()) {
            IsReadable(state.end.Number(), std::min(kLongestWait, std::chrono::ceil<milliseconds>(left)));
        } else {
            std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(pause, left));
            pause = std::min(2 * pause, kLongestPause);
        }
    }
    return true;
}

std::uint32_t ChildProcess::ExitCode() const {
    std::lock_guard const lock(m_state->guard);
    return m_state->exitCode;
}

void ChildProcess::GiveUp() {
    m_state->hasGivenUp = true;
}

bool ChildProcess::HasGivenUp() const {
    return m_state->hasGivenUp;
}

} // namespace zvi::host
