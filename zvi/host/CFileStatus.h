#pragma once

#include <cstdint>
#include <string>

/// What the host knows of a file or folder. Times are seconds since 1970 in universal time.
struct CFileStatus {
    /// Bits of `m_attribute`.
    enum Attribute : std::uint8_t {
        normal = 0x00,
        readOnly = 0x01,
        hidden = 0x02,
        systemFile = 0x04,
        volume = 0x08,
        directory = 0x10,
        archive = 0x20,
    };

    std::int64_t m_ctime = 0;          ///< made; on POSIX the last change of its entry
    std::int64_t m_mtime = 0;          ///< written
    std::int64_t m_atime = 0;          ///< read
    std::uint64_t m_size = 0;          ///< bytes; 0 for a folder
    std::uint8_t m_attribute = normal; ///< bits of `Attribute`
    std::wstring m_szFullName;         ///< absolute, in the library's form
};
