#include "apps/zvi/domains/dxf/ReadDxf.h"

#include "apps/zvi/domains/dxf/DxfPlacer.h"

namespace zvi::app {

DrawingInput ReadDxf(std::string_view text, ReadingOptions const &options) {
    DxfDocument const document = ReadDxfDocument(text);
    return DxfPlacer(document, options).Place();
}

} // namespace zvi::app
