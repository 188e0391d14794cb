#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"
#include "apps/zvi/domains/model/ReadingOptions.h"

#include <string>

namespace zvi::app {

/// Reads a drawing. A file named .dxf, and any text that starts like one, is DXF; a file named .curves, and what comes
/// through standard input ("-"), is curve text. Throws InputError for other files and as the two readers do, and
/// UsageError when layers are chosen in curve text, which has none. Lines may end in LF, CR LF, or CR alone.
DrawingInput ReadDrawing(std::string const &file, std::string text, ReadingOptions const &options);

} // namespace zvi::app
