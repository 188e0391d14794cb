#pragma once

#include "zvi/Export.h"

#include <cstddef>
#include <mutex>
#include <string_view>

namespace zvi::lib {

class MProcessObj;

/// What a message to a `MProcessCommunicator` was made of.
struct T_PROCESS_MSG {
    /// `back` of a piece of output that begins at the start of the line once more.
    static constexpr int kLineStart = -1;

    /// Units of the text; a child may write zeros, which stand within it.
    std::size_t length = 0;
    /// The bytes that the child wrote for it: those behind the last CR, BS or line end before it, without its own.
    std::string_view bytes;
    /// How the child came to where it wrote them: 0 on a line of its own, `kLineStart` behind a CR, else behind so many
    /// BS.
    int back = 0;
    /// Whether they end a line.
    bool endsLine = false;
    /// With "!Exit:", the host's number of the error that kept the program from starting; 0 when it ran.
    unsigned int startError = 0;
};

/// What an application derives to hear what a child program writes, and to stop it; see `MProcessMgr::Run`.
///
/// Messages come on the thread that runs the timers, one after the other:
/// - A text that begins with no "!" is a new line of output. It ends in CR when the child has ended the line; otherwise
///   it is the first piece of a line that will be written over.
/// - "!Same:" and a text, which takes the place of the line shown last.
/// - "!Exit:" and a number: the child has ended with this exit code. This is the last message, and the communicator is
///   free again. A child that could not be started ends with 0; `GetCurrentMsg` tells it from one that ran.
///
/// A line of the child that begins with "!Same:" or "!Exit:" itself looks like such a message; there is no escape. Each
/// byte is one unit, sign-extended: a byte of 0x80 and above becomes 0xFF80 and above, and its low byte is what the
/// child wrote. While it is given a message, the communicator may do anything: run programs, close documents, be
/// deleted.
class ZVI_API MProcessCommunicator {
public:
    /// Of no child yet.
    MProcessCommunicator() = default;
    /// Leaves the child to itself; nobody hears it any more.
    virtual ~MProcessCommunicator();
    MProcessCommunicator(MProcessCommunicator const &) = delete;
    MProcessCommunicator &operator=(MProcessCommunicator const &) = delete;

    /// Takes a message.
    virtual void OnProcessMsg(wchar_t const *text) = 0;

    /// Sends a message to the child: "!Stop" ends it the next time that it writes. Other texts are accepted and
    /// ignored; the rule is that the text contains "!" and "Stop" stands at index 1. 0, or -1 when no child is
    /// attached. May be called from any thread.
    int SendMsg(wchar_t const *text);

    /// 1 while the child is being run, else 0.
    int IsAlive();

    /// Whether the library deletes this object once its child has ended, or could not be started: 1, which it is at the
    /// beginning, or 0.
    void SetSelfDelete(int selfDelete);
    int IsSelfDelete();

    /// For the library: attaches this to another child, or to none, and lets go of the one before unless that is
    /// `except`.
    void SetProcessObj(MProcessObj *object, MProcessObj *except);

    /// What the message was made of that `OnProcessMsg` is being given; null at any other time, and once the child has
    /// been let go.
    T_PROCESS_MSG const *GetCurrentMsg();

private:
    std::recursive_mutex m_lock;
    MProcessObj *m_object = nullptr;
    int m_selfDelete = 1;
};

} // namespace zvi::lib
