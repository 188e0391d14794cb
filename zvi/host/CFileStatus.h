#pragma once

#include <cstdint>
#include <string>

/// What the host knows of a file or folder. Times are seconds since 1970 in universal time.
struct CFileStatus {
    /// Bits of `m_attribute`.
    enum Attribute : std::uint8_t {
        normal = 0x00,     ///< a file without any of the others
        readOnly = 0x01,   ///< may not be written
        hidden = 0x02,     ///< not to be shown; on POSIX one whose name begins with a dot
        systemFile = 0x04, ///< of the system; on Windows alone
        volume = 0x08,     ///< never set
        directory = 0x10,  ///< a folder
        archive = 0x20,    ///< changed since the last backup; on Windows alone
    };

    std::int64_t m_ctime = 0;          ///< made; on POSIX the last change of its entry
    std::int64_t m_mtime = 0;          ///< written
    std::int64_t m_atime = 0;          ///< read
    std::uint64_t m_size = 0;          ///< bytes; 0 for a folder
    std::uint8_t m_attribute = normal; ///< bits of `Attribute`
    std::wstring m_szFullName;         ///< absolute, in the library's form
};
