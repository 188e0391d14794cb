#include "apps/zvi/domains/dxf/LayerPattern.h"

#include "zvi/core/Utf8.h"

namespace zvi::app {

std::string FoldedLayerName(std::string_view name) {
    return lib::Utf8Of(lib::WideOf(name).MakeLower());
}

bool FitsPattern(std::string_view name, std::string_view pattern) {
    constexpr std::size_t kNone = std::string_view::npos;
    std::size_t at = 0;
    std::size_t inPattern = 0;
    std::size_t star = kNone; // the last one that was met, and where the name goes on behind what it stands for
    std::size_t behindStar = 0;
    while (at < name.size()) {
        bool const isOne = inPattern < pattern.size() && pattern[inPattern] == '?';
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            star = inPattern++;
            behindStar = at;
        } else if (isOne || (inPattern < pattern.size() && pattern[inPattern] == name[at])) {
            at += isOne ? lib::Utf8Length(name[at]) : 1;
            ++inPattern;
        } else if (star != kNone) {
            inPattern = star + 1;
            behindStar += lib::Utf8Length(name[behindStar]);
            at = behindStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == kNone;
}

} // namespace zvi::app
