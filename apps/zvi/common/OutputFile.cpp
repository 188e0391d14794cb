#include "apps/zvi/common/OutputFile.h"

#include "apps/zvi/common/Terminal.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace zvi::app {

namespace {

std::string CannotWrite(int error) {
    return "cannot be written (" + std::generic_category().message(error) +
           "); check that the folder exists, may be written to and has room";
}

/// Writes and closes; gives the error number, 0 for success.
int WriteTo(std::string const &path, char const *mode, std::string_view content) {
    std::FILE *file = std::fopen(path.c_str(), mode);
    if (!file)
        return errno;
    errno = 0;
    bool const written = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    int const writeError = written ? 0 : errno;
    bool const closed = std::fclose(file) == 0;
    return written ? (closed ? 0 : errno) : (writeError != 0 ? writeError : EIO);
}

} // namespace

std::string WriteWholeFile(std::string const &path, std::string_view content) {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::file_status const status = fs::status(path, error);
    if (fs::is_directory(status))
        return "is a folder; name a file";
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        int const failure = WriteTo(path, "wb", content);
        return failure == 0 || failure == EPIPE ? std::string() : CannotWrite(failure);
    }
    fs::path const target = fs::exists(status) ? fs::canonical(path, error) : fs::path(path);
    if (error && fs::exists(status))
        return CannotWrite(error.value());
    std::string const beside = target.string() + "." + std::to_string(ProcessNumber()) + ".part";
    RemoveOnInterrupt(beside);
    int failure = WriteTo(beside, "wb", content);
    if (failure == 0) {
        fs::rename(beside, target, error);
        failure = error.value();
    }
    if (failure != 0)
        std::remove(beside.c_str());
    RemoveOnInterrupt("");
    return failure == 0 ? std::string() : CannotWrite(failure);
}

} // namespace zvi::app
