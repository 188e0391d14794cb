// Any bytes as a DXF drawing: read and drawn, or refused with InputError; nothing else.

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/domains/dxf/ReadDxf.h"
#include "tests/fuzz/FuzzFile.h"
#include "zvi/core/Utf8.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

using zvi::fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    std::string_view const text(reinterpret_cast<char const *>(data), size);
    try {
        zvi::app::DrawingInput const input = zvi::app::ReadDxf(text, {});
        Check(input.curves.size() == input.origins.size());
        for (zvi::lib::DrawingCurve const &curve : input.curves)
            Check(zvi::lib::IsUtf8(input.LayerOf(curve.id)) && zvi::lib::IsUtf8(input.EntityOf(curve.id).type));
    } catch (zvi::app::InputError const &error) {
        Check(zvi::lib::IsUtf8(error.what()));
    }
    return 0;
}
