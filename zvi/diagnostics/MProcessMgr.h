#pragma once

#include "zvi/Export.h"
#include "zvi/diagnostics/MProcessCommunicator.h"

#include <cstdint>

class CDocument;

namespace zvi::lib {

/// Runs up to 100 child programs at once. What a child writes, to its standard output or its standard error, comes back
/// line by line to a `MProcessCommunicator`, when a timer (zvi/host/Timers.h) finds it:
///
///     struct Lines : MProcessCommunicator {
///         void OnProcessMsg(wchar_t const *text) override { Show(text); }
///     };
///     MProcessMgr::Instance()->Run(L"C:\\tools\\mesh.exe", L"-v \"plan 1.dxf\"", L"C:\\work", 0, 130, new Lines, 0, 0,
///                                  document);
///
/// Nothing that a child writes is lost, and nothing comes twice, while its communicator is attached. A line that the
/// child ends with LF alone counts as ended with CR LF; a last line that it does not end is ended. A child whose output
/// waits to be heard is held up once its ring of 4096 bytes and its pipe are full, so that memory grows with the
/// longest line and not with the output: by a byte and a `wchar_t` for each of its bytes, and nothing for short lines.
///
/// A child has an empty standard input, inherits no files, and leads a group of its own, so that a stop reaches the
/// programs that it has started. Its run ends with it: programs that it leaves behind are not waited for once the pipe
/// has been empty for 200 ms.
///
/// All operations belong to one thread, which is the one that runs the timers. With too little memory a pass leaves
/// what it cannot tell for the next one.
class ZVI_API MProcessMgr {
public:
    /// The id of the timer, and its period in milliseconds.
    static constexpr std::uint64_t kTimerId = 1000;
    static constexpr unsigned int kTimerPeriod = 100;

    /// Made at the first call, destroyed at the end of the process: children that still run are left alone then.
    static MProcessMgr *Instance();

    /// Leaves children that still run alone.
    ~MProcessMgr();
    MProcessMgr(MProcessMgr const &) = delete;
    MProcessMgr &operator=(MProcessMgr const &) = delete;

    /// Starts a program: a path, absolute or from the current folder, that is not looked up anywhere else.
    /// `arguments` are one string: on Windows the child gets it as it is, elsewhere it is split as
    /// zvi/host/CommandLine.h says. `folder` is where the child starts; null or empty: the current one.
    /// `priority` is that of the thread that reads its output, from -2 to 2. `stopExitCode` is the exit code of a child
    /// that is stopped. A null `communicator`: the output is dropped. With `manyLines` a pass tells 1000 messages at
    /// most, else 100. `showWindow` shows the child's window, where there are windows. `document` is what the child
    /// belongs to.
    ///
    /// 0: started. -2: there is no such file. -3: there is no thread or no memory for it. -4: 100 children run already.
    /// With -2 and -3 a communicator whose self-delete flag is set is gone, with -4 it stays with the caller.
    int Run(wchar_t const *program, wchar_t const *arguments, wchar_t const *folder, int priority,
            unsigned int stopExitCode, MProcessCommunicator *communicator, int manyLines, int showWindow,
            CDocument *document);

    /// Ends every child that belongs to the document at once, with its stop exit code. Its communicator hears no more,
    /// and is deleted if it is so set.
    void OnCloseDocument(CDocument *document);

    /// Tells the communicators what there is to tell. Call it whenever `WaitForOutput` says so in order not to wait for
    /// the timer. Does nothing for an id other than the timer's, or while it is already at work.
    void OnTimer(void *window, unsigned int message, std::uint64_t id, unsigned long time);
    /// `OnTimer` of the one object.
    static void TimerProc(void *window, unsigned int message, std::uint64_t id, unsigned long time);

    /// Waits until a pass has something to tell, at most so many milliseconds. 1, or 0 when the time is over.
    int WaitForOutput(unsigned int milliseconds);

private:
    MProcessMgr() = default;

    int ChooseSlot();
    bool StartTimer();
    void StopTimer();
    void PassSlot(int slot);
    MProcessObj *Release(int slot);
    void Destroy(int slot);
    void Close(int slot);
    void ForgetEnded();

    static MProcessMgr *m_pInstance;

    int m_slotCount = 100;
    int m_nextSlot = 0;
    MProcessObj *m_slots[100] = {};
    std::uint64_t m_timerId = 0;
    int m_isBusy = 0;
};

} // namespace zvi::lib
