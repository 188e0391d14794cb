#pragma once

#include "zvi/host/Paths.h"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace zvi::fuzz {

/// A file of this process with the bytes that the fuzzer made up; set TMPDIR to a folder in memory.
inline std::wstring FileWith(std::uint8_t const *data, std::size_t size) {
    static std::filesystem::path const path =
        std::filesystem::temp_directory_path() / ("zvi_fuzz_" + std::to_string(getpid()));
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<char const *>(data), static_cast<std::streamsize>(size));
    return host::LibraryPath(path);
}

/// Ends the run when what must hold does not.
inline void Check(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace zvi::fuzz
