#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

namespace zvi::lib {

/// Keeps a log open as long as it lives, and can mark the run as failed by the name of the log: a log "x_Success.log"
/// becomes "x_Fail.log". The one `MWriteLog` must exist all the while; without one there is no log.
class ZVI_API CAutoLogWrite {
public:
    /// Starts the log at that path. A log that cannot be made is left out without a word.
    explicit CAutoLogWrite(CString path);
    /// A copy has the path alone; whichever object is destroyed first ends the log.
    CAutoLogWrite(CAutoLogWrite const &other);
    CAutoLogWrite &operator=(CAutoLogWrite const &other);
    /// Ends the log if it is open.
    ~CAutoLogWrite();

    /// The path of the log, also when it has another name by now.
    CString GetLogFile();

    /// Ends the log and puts "_Fail" in place of every "_Success" in its file's name. A log without "_Success" in its
    /// name, one that is not there, and one whose new name is taken already keep their name.
    void WriteFile_Fail();

private:
    CString m_path;
};

} // namespace zvi::lib
