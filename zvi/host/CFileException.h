#pragma once

#include "zvi/Export.h"

#include <exception>

/// Raised by the file classes when a file cannot be read or written, and filled by `Open` when it fails.
class ZVI_API CFileException : public std::exception {
public:
    /// What went wrong, the same on every host.
    enum Cause {
        kNone,         ///< nothing
        kGeneric,      ///< something that the host alone has a number for
        kFileNotFound, ///< there is no such file
        kBadPath,      ///< a part of the path is no folder, or the path has no form of a path, or its drive no root
        kTooManyOpen,  ///< the process or the system has too many open files
        kAccessDenied, ///< the permissions do not allow it, or it is a folder
        kInvalidFile,  ///< the file is not open, or not open for that
        kSharing,      ///< another program has the file for itself
        kDiskFull      ///< no room is left
    };

    /// Of no known cause, or of one with the host's number.
    CFileException() = default;
    CFileException(Cause cause, int systemError) noexcept : m_cause(cause), m_systemError(systemError) {}

    /// What went wrong, as one of the causes and as the host's own number (0 without one).
    Cause GetCause() const noexcept { return m_cause; }
    int GetSystemError() const noexcept { return m_systemError; }

    /// The cause in a few English words.
    char const *what() const noexcept override;

private:
    Cause m_cause = kNone;
    int m_systemError = 0;
};
