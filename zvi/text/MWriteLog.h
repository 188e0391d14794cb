#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <string>
#include <string_view>

class CFileException;
class CStdioFile;

namespace zvi::lib {

/// Writes one log file in the system's multi-byte encoding. Every write goes to the system at once, so that the log can
/// be followed, and holds all that was written when the process is killed.
///
/// The application makes the one object; whoever else uses it does so while it lives. A failure of the disk raises
/// `CFileException`. Nothing is locked.
class ZVI_API MWriteLog {
public:
    /// No log is open. The object takes over `m_pInstance`.
    MWriteLog();
    /// As a new object: a log that is open stays with its object.
    MWriteLog(MWriteLog const &other);
    /// Nothing is taken over.
    MWriteLog &operator=(MWriteLog const &other);
    /// Ends the log and clears `m_pInstance`, whichever object that is.
    virtual ~MWriteLog();

    /// The object made last; null when there is none, or since one was destroyed. Never makes one.
    static MWriteLog *Instance();

    /// The address that the log's first lines send the reader to for more details; the product's own, empty until it is
    /// set. Holds for logs that are started afterwards.
    static void SetSiteAddress(CString const &address);

    /// Makes the log file anew and writes its first six lines. Others may read it meanwhile; on Windows none may write
    /// it. Gives 1, or 0 with no log open when the file cannot be made. A log that is open is ended before.
    int StartLog(CString &path);

    /// Closes the log; does nothing when none is open.
    void EndLog();

    /// Flushes the log if one is open.
    void ForceFlush();

    /// Writes a formatted text (see `FormatWide`) without adding a line end. 0 when no log is open.
    int Write(wchar_t const *format, ...);

    /// Writes a text and a line end; nothing when no log is open.
    void WriteLine(wchar_t const *text);

    /// Write a line "[Message][SOURCE] : TEXT", the same as an error and as a warning. 0 when no log is open. There is
    /// no time in the line.
    int WriteMsg(CString source, CString text);
    int WriteError(CString source, CString text);
    int WriteWarning(CString source, CString text);

    static MWriteLog *m_pInstance; ///< the log of the process, null without one

protected:
    /// The local time as "2026-3-9 8:5:0": year, month, day, hour, minute, second without zeros in front.
    CString GetTimeString();

    /// A new file object on an open file; null, with the reason in `error` unless that is null, when it cannot be
    /// opened.
    CStdioFile *GetFile(wchar_t const *path, unsigned int flags, CFileException *error);

private:
    int WriteBytes(std::string_view bytes);
    /// Writes a line as "[Error][SOURCE] : TEXT".
    int WriteKind(std::string_view kind, CString const &source, CString const &text);

    CStdioFile *m_pFile = nullptr;
    std::string m_line; ///< the line that was written last, for its memory
};

} // namespace zvi::lib
