#include "apps/zvi/common/OutputFile.h"

#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/StandardStreams.h"
#include "apps/zvi/common/Terminal.h"

namespace zvi::app {

namespace {

std::string CannotWrite(std::error_code const &failure) {
    return "cannot be written (" + ReasonOf(failure) +
           "); check that the folder exists, may be written to and has room";
}

/// Writes the content under another name, and renames it to `name` or removes it.
///
/// `host::ReplaceContent` would not do: its half file has a name that nobody outside knows, so that an interrupt would
/// leave it behind, and it cannot say before the work whether the file could be written.
std::string WriteBeside(std::string const &name, std::string_view content, bool isForGood) {
    namespace fs = std::filesystem;
    fs::path const path = PathOf(name);
    std::error_code failure;
    if (IsDevice(path)) {
        failure = WriteContent(path, content);
        return !failure || failure == std::errc::broken_pipe ? std::string() : CannotWrite(failure);
    }
    fs::file_status const status = fs::status(path, failure);
    if (is_directory(status))
        return "is a folder; name a file";
    fs::path const target = exists(status) ? fs::canonical(path, failure) : path;
    if (failure && exists(status))
        return CannotWrite(failure);
    fs::path const beside = NameBeside(target);
    RemoveOnInterrupt(beside);
    failure = WriteContent(beside, content);
    if (!failure && isForGood)
        fs::rename(beside, target, failure);
    std::error_code ignored;
    if (failure || !isForGood)
        fs::remove(beside, ignored);
    RemoveOnInterrupt({});
    return failure ? CannotWrite(failure) : std::string();
}

} // namespace

std::string WriteWholeFile(std::string const &name, std::string_view content) {
    return WriteBeside(name, content, true);
}

std::string WhyNotWritable(std::string const &name) {
    return IsDevice(PathOf(name)) ? "" : WriteBeside(name, "", false);
}

} // namespace zvi::app
