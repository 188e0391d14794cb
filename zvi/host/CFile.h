#pragma once

#include "zvi/Export.h"

#include <cstddef>
#include <string>

/// A file with its path, which is in the library's form or in the host's. What is done with files that are not open
/// stands in zvi/host/Files.h.
class ZVI_API CFile {
public:
    /// Flags of opening. Text mode is in force when neither text nor binary is asked for. Sharing is looked at on
    /// Windows alone: others may read the file meanwhile, so that a log can be followed, and without `kExclusive`
    /// write it too.
    static constexpr unsigned int kRead = 0;
    static constexpr unsigned int kWrite = 0x1;
    static constexpr unsigned int kReadWrite = 0x2;
    static constexpr unsigned int kExclusive = 0x10;
    static constexpr unsigned int kCreate = 0x1000;     ///< makes the file, or empties one that is there
    static constexpr unsigned int kNoTruncate = 0x2000; ///< with `kCreate`: what a file holds stays
    static constexpr unsigned int kText = 0x4000;
    static constexpr unsigned int kBinary = 0x8000;

    /// Closes nothing: each kind of file closes its own.
    virtual ~CFile();
    CFile(CFile const &) = delete;
    CFile &operator=(CFile const &) = delete;

    /// Sets the path that `GetFilePath` gives; null empties it. Nothing is opened or renamed.
    virtual void SetFilePath(wchar_t const *path);
    /// The path of the file, as it was given.
    std::wstring const &GetFilePath() const { return m_path; }

    /// Reads up to `count` bytes and gives their number, which is 0 at the end of the file. Raises `CFileException`.
    virtual std::size_t Read(void *buffer, std::size_t count) = 0;

    /// Closes the file; does nothing to one that is not open. Raises `CFileException` when what was written until now
    /// cannot reach the file, which is closed all the same.
    virtual void Close() = 0;

protected:
    CFile();

private:
    std::wstring m_path;
};
