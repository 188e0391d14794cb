#pragma once

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/domains/dxf/ReadDxf.h"

#include <string>

namespace zvi::app::test {

/// Groups written "CODE VALUE", one to a line of `groups`, as the two lines each that a DXF text has.
inline std::string DxfGroups(std::string const &groups) {
    std::string text;
    std::size_t at = 0;
    while (at < groups.size()) {
        std::size_t const end = groups.find('\n', at);
        std::string const group = groups.substr(at, end - at);
        std::size_t const blank = group.find(' ');
        text += group.substr(0, blank) + "\n" + (blank == std::string::npos ? "" : group.substr(blank + 1)) + "\n";
        at = end == std::string::npos ? groups.size() : end + 1;
    }
    return text;
}

/// A drawing of the given entities and, before them, whole sections. Both as for DxfGroups, each line ended.
inline std::string DxfWith(std::string const &entities, std::string const &sections = "") {
    return DxfGroups(sections + "0 SECTION\n2 ENTITIES\n" + entities + "0 ENDSEC\n0 EOF\n");
}

/// A section BLOCKS with these blocks.
inline std::string BlockSection(std::string const &blocks) {
    return "0 SECTION\n2 BLOCKS\n" + blocks + "0 ENDSEC\n";
}

/// What reading refuses the text with, "LINE: what"; empty when it is read.
inline std::string Refusal(std::string const &text, ReadingOptions const &options = {}) {
    try {
        ReadDxf(text, options);
        return "";
    } catch (InputError const &error) {
        return std::to_string(error.Line()) + ": " + error.what();
    }
}

} // namespace zvi::app::test
