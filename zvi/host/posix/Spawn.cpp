#include "zvi/host/posix/Spawn.h"
#include "zvi/host/CommandLine.h"
#include "zvi/host/Paths.h"
#include "zvi/host/posix/EnvironmentCopy.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <csignal>
#include <string>
#include <system_error>
#include <vector>

namespace zvi::host {

namespace {

namespace fs = std::filesystem;

/// The first descriptor behind those of the standard streams.
constexpr int kFirstOther = 3;

struct Command {
    /// An absolute path; empty when there is no such program.
    fs::path program;
    std::vector<std::string> words;
};

fs::path Absolute(fs::path const &path) {
    std::error_code failure;
    fs::path const absolute = path.empty() ? path : fs::absolute(path, failure);
    return failure ? fs::path() : absolute;
}

fs::path ProgramOf(std::wstring_view name) {
    return NativePath(FindProgram(std::wstring(name)));
}

/// Reads "PROGRAM ARGUMENTS": the shortest beginning up to a blank that is a program.
Command CommandWithoutQuotes(std::wstring_view line) {
    if (line.starts_with(L'"')) {
        std::size_t const end = std::min(line.find(L'"', 1), line.size());
        return {Absolute(ProgramOf(line.substr(1, end - 1))),
                ArgumentWords(line.substr(std::min(end + 1, line.size())))};
    }
    for (std::size_t end = 0; end < line.size();) {
        end = std::min(line.find(L' ', end + 1), line.size());
        fs::path const program = ProgramOf(line.substr(0, end));
        if (!program.empty())
            return {Absolute(program), ArgumentWords(line.substr(end))};
    }
    return {};
}

Command CommandOf(ChildRequest const &request) {
    Command command = request.quotesProgram
                          ? Command{Absolute(NativePath(request.program)), ArgumentWords(request.arguments)}
                          : CommandWithoutQuotes(request.program + L' ' + request.arguments);
    command.words.insert(command.words.begin(), command.program.native());
    return command;
}

/// What the child does between its start and its program.
class FileActions {
public:
    FileActions() { m_error = ::posix_spawn_file_actions_init(&m_actions); }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&m_actions); }
    FileActions(FileActions const &) = delete;
    FileActions &operator=(FileActions const &) = delete;

    void Capture(int output) {
        Note(::posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        Note(::posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO));
        Note(::posix_spawn_file_actions_adddup2(&m_actions, output, STDERR_FILENO));
    }

    void StartIn(fs::path const &folder) { Note(::posix_spawn_file_actions_addchdir_np(&m_actions, folder.c_str())); }

    void CloseOthers() {
#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 34)
        Note(::posix_spawn_file_actions_addclosefrom_np(&m_actions, kFirstOther));
#else
        long const limit = ::sysconf(_SC_OPEN_MAX);
        for (int other = kFirstOther; other < limit; ++other)
            if (::fcntl(other, F_GETFD) >= 0)
                Note(::posix_spawn_file_actions_addclose(&m_actions, other));
#endif
    }

    int Error() const {
        return m_error;
    }
    posix_spawn_file_actions_t const *Get() const {
        return &m_actions;
    }

private:
    void Note(int error) {
        if (m_error == 0)
            m_error = error;
    }

    posix_spawn_file_actions_t m_actions{};
    int m_error = 0;
};

/// No signal blocked, and those at their usual meaning that libraries set to be ignored; a group of its own if asked
/// for.
class Attributes {
public:
    explicit Attributes(bool ownGroup) {
        sigset_t none;
        sigset_t usual;
        ::sigemptyset(&none);
        ::sigemptyset(&usual);
        ::sigaddset(&usual, SIGPIPE);
        ::sigaddset(&usual, SIGXFSZ);
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setsigmask(&m_attributes, &none);
        ::posix_spawnattr_setsigdefault(&m_attributes, &usual);
        ::posix_spawnattr_setpgroup(&m_attributes, 0);
        ::posix_spawnattr_setflags(&m_attributes, static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                                                     (ownGroup ? POSIX_SPAWN_SETPGROUP : 0)));
    }
    ~Attributes() { ::posix_spawnattr_destroy(&m_attributes); }
    Attributes(Attributes const &) = delete;
    Attributes &operator=(Attributes const &) = delete;

    posix_spawnattr_t const *Get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

/// Pointers to texts with a null at their end, as the host wants them.
std::vector<char *> Pointers(std::vector<std::string> &texts) {
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

int Spawn(ChildRequest const &request, int output, pid_t &child) {
    assert(output == -1 || output >= kFirstOther);
    Command command = CommandOf(request);
    if (command.program.empty())
        return ENOENT;
    FileActions actions;
    if (output >= 0)
        actions.Capture(output);
    if (!request.folder.empty())
        actions.StartIn(NativePath(request.folder));
    actions.CloseOthers();
    if (actions.Error() != 0)
        return actions.Error();
    Attributes const attributes(request.captures);
    std::vector<std::string> environment = EnvironmentCopy();
    return ::posix_spawn(&child, command.program.c_str(), actions.Get(), attributes.Get(),
                         Pointers(command.words).data(), Pointers(environment).data());
}

} // namespace zvi::host
