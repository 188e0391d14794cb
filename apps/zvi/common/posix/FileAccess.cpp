#include "apps/zvi/common/FileAccess.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace zvi::app {

bool IsDevice(std::filesystem::path const &path) {
    std::error_code error;
    std::filesystem::file_status const status = std::filesystem::status(path, error);
    return exists(status) && !is_regular_file(status) && !is_directory(status);
}

std::filesystem::path NameBeside(std::filesystem::path const &path) {
    return path.native() + "." + std::to_string(getpid()) + ".part";
}

std::error_code WriteContent(std::filesystem::path const &path, std::string_view content) {
    auto const failure = [](int number) { return std::error_code(number, std::generic_category()); };
    std::FILE *const file = std::fopen(path.c_str(), "wb");
    if (!file)
        return failure(errno);
    errno = 0;
    bool const isWritten = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    int const writeError = errno;
    bool const isClosed = std::fclose(file) == 0;
    if (isWritten)
        return isClosed ? std::error_code() : failure(errno);
    return failure(writeError ? writeError : EIO);
}

} // namespace zvi::app
