#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

namespace zvi::lib {

/// Starts one program, and waits for it if it is told to. The application makes the one object, which `Instance` gives
/// for as long as it lives. Belongs to one thread: it changes the current folder and the environment of the process.
class ZVI_API CRunUtil {
public:
    /// Makes it the object that `Instance` gives.
    CRunUtil();
    /// From now on `Instance` gives null.
    ~CRunUtil();
    CRunUtil(CRunUtil const &) = delete;
    CRunUtil &operator=(CRunUtil const &) = delete;

    /// The object that was made last; null once one has been destroyed, and before.
    static CRunUtil *Instance();

    /// Starts "PROGRAM ARGUMENTS" in the program's folder, which is the current one of this process meanwhile; a
    /// relative path that names a folder therefore finds nothing. The program is not put in quotes: if its path has
    /// blanks, the shortest beginning of the line that names a program is started, and a bare name is looked up along
    /// the path of the environment. The child shares the streams of this process. `showWindow` is the state of its
    /// window, where there are windows.
    ///
    /// With `wait` the main window takes no input (zvi/host/Messages.h) until the child has ended. 1, or 0 when it
    /// could not be started or waited for. The folder that was current is so again afterwards, unless its path has more
    /// than 259 characters.
    int Run(CString &program, CString &arguments, unsigned int showWindow, int wait) const;

    /// Sets the 30 variables of the converter's programs in the environment of this process, which children inherit.
    /// They name folders beside the running program: "Convert\OCC", in capital letters throughout, and "Convert".
    void SetConvertEnvironment();

private:
    static CRunUtil *m_pInstance;
};

} // namespace zvi::lib
