#include "apps/zvi/domains/input/ReadDrawing.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/domains/dxf/DxfPairs.h"
#include "apps/zvi/domains/dxf/ReadDxf.h"
#include "apps/zvi/domains/input/CurveText.h"

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
        throw InputError(0, "is a folder; name a drawing in it");
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

DrawingInput ReadDrawing(std::string const &file, std::string_view text, ReadingOptions const &options) {
    std::string const extension = file == "-" ? "" : NameOf(PathOf(file).extension());
    if (SameNoCase(extension, ".dxf") || LooksLikeDxf(text))
        return ReadDxf(text, options);
    if (file != "-" && !SameNoCase(extension, ".curves"))
        throw InputError(0, "is no drawing that can be read; name a .dxf or a .curves file");
    if (!options.layers.empty())
        throw UsageError("curve text has no layers; leave out --layer");
    return ReadCurveText(text);
}

} // namespace zvi::app
