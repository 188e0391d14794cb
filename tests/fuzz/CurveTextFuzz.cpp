// Any bytes as curve text: read, its domains found and drawn, or refused with InputError; nothing else.

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/domains/input/CurveText.h"
#include "apps/zvi/domains/output/DomainJson.h"
#include "apps/zvi/domains/output/DxfDrawing.h"
#include "apps/zvi/domains/output/Report.h"
#include "apps/zvi/domains/output/SvgPicture.h"

#include "zvi/drawing/MakeDrawingDomains.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    std::string_view const text(reinterpret_cast<char const *>(data), size);
    try {
        zvi::app::DrawingInput const input = zvi::app::ReadCurveText(text);
        zvi::lib::DrawingResult const result = zvi::lib::MakeDrawingDomains(input.curves);
        zvi::app::SvgPicture("fuzz", input, result);
        zvi::app::DxfDrawing(result, input.units);
        zvi::app::DomainJson(input, result);
        zvi::app::Summary(input, result, 1e-4);
    } catch (zvi::app::InputError const &) {
    }
    return 0;
}
