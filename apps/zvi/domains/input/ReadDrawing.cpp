#include "apps/zvi/domains/input/ReadDrawing.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/domains/dxf/DxfPairs.h"
#include "apps/zvi/domains/dxf/ReadDxf.h"
#include "apps/zvi/domains/input/CurveText.h"

#include <algorithm>

namespace zvi::app {

DrawingInput ReadDrawing(std::string const &file, std::string text, ReadingOptions const &options) {
    if (text.find('\n') == std::string::npos)
        std::replace(text.begin(), text.end(), '\r', '\n');
    std::string const extension = file == "-" ? "" : NameOf(PathOf(file).extension());
    if (SameNoCase(extension, ".dxf") || LooksLikeDxf(text))
        return ReadDxf(text, options);
    if (file != "-" && !SameNoCase(extension, ".curves"))
        throw InputError(0, "is no drawing that can be read; name a .dxf or a .curves file");
    if (!options.layers.empty())
        throw UsageError("curve text has no layers; --layer and --layers are for DXF drawings");
    return ReadCurveText(text);
}

} // namespace zvi::app
