#include "apps/zvi/common/ReadWhole.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/Text.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace zvi::app {

std::string ReadWhole(std::string const &file, std::istream &standardInput) {
    if (file == "-")
        return AllOf(standardInput);
    std::filesystem::path const path = PathOf(file);
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        throw InputError(0, "is a folder; name a file in it");
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        bool const there = std::filesystem::exists(path, error);
        throw InputError(0, there ? "cannot be opened; check that it may be read"
                                  : "there is no such file; check the name and the folder");
    }
    std::string text = AllOf(stream);
    if (stream.bad())
        throw InputError(0, "cannot be read to its end; check the disk or copy the file");
    return text;
}

} // namespace zvi::app
