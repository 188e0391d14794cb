#pragma once

#include "zvi/Export.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace zvi::host {

/// What to start, and how.
struct ChildRequest {
    /// Path of the program, in the library's form.
    std::wstring program;
    /// Arguments as one string. On Windows the child gets it as it is; elsewhere it is split into words as
    /// `ArgumentWords` (CommandLine.h) says.
    std::wstring arguments;
    /// The folder that the child starts in; empty: that of this process. A relative path of the program is looked up
    /// from the folder of this process either way.
    std::wstring folder;
    /// Whether the program stands in quotes in the command line. Without them it may end at any blank of
    /// "PROGRAM ARGUMENTS": the shortest beginning that is a program counts, and a bare name is looked up along the
    /// path of the environment.
    bool quotesProgram = true;
    /// Whether both outputs of the child go into a pipe, and its input is empty. Such a child is the leader of a group
    /// of its own, that ends with it on `Terminate`. Otherwise it shares the streams and the group of this process.
    bool captures = true;
    /// How a host with windows shows the first one: 0 hidden, 1 normal, and so on.
    unsigned int showState = 1;
};

/// A program that was started by this one. Besides the streams that `ChildRequest` tells of it inherits no files. On
/// POSIX it starts with no signal blocked, and none ignored that a library in this process may have set to be ignored
/// (SIGPIPE, SIGXFSZ); `SetEnvironmentPath` (Environment.h) may be called meanwhile.
///
/// One thread starts it, reads and waits; `Terminate` and `GiveUp` may be called from any other.
class ZVI_API ChildProcess {
public:
    /// Of no child yet.
    ChildProcess();
    /// Leaves a child that still runs alone; once that has ended, nothing of it stays in the host's table.
    ~ChildProcess();
    ChildProcess(ChildProcess const &) = delete;
    ChildProcess &operator=(ChildProcess const &) = delete;

    /// Starts the child, once in the life of an object. 0, or the host's number of the error; then nothing was started.
    unsigned int Start(ChildRequest const &request);

    /// Waits for output and takes up to `room` bytes of it. 0 at the end of the output: all who held the pipe have
    /// closed it, or the child has ended and the pipe has been empty for `kQuietTime`, or `GiveUp` was called.
    std::size_t Read(char *bytes, std::size_t room);

    /// Closes the reading end of the pipe.
    void CloseOutput();

    /// Ends the child and all of its group at once. If the child was still running, `code` is its exit code.
    void Terminate(std::uint32_t code);

    /// Waits at most so long for the end of the child; whether it has ended, which it has when nothing was started.
    bool WaitForEnd(std::chrono::milliseconds longest);

    /// After the end: the exit code; on POSIX 128 plus the number of the signal that ended the child, and
    /// `kUnknownExitCode` when somebody else has collected the child.
    std::uint32_t ExitCode() const;

    /// Lets `Read` tell the end of the output soon, though it has none, and from now on.
    void GiveUp();
    bool HasGivenUp() const;

    /// How long the pipe of a child that has ended must be empty before others that hold it are not waited for.
    static constexpr std::chrono::milliseconds kQuietTime{200};
    static constexpr std::uint32_t kUnknownExitCode = 0xFFFFFFFF;

private:
    struct State;

    std::unique_ptr<State> m_state;
};

} // namespace zvi::host
