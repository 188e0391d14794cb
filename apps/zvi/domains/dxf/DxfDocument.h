#pragma once

#include "apps/zvi/domains/dxf/DxfPairs.h"
#include "apps/zvi/domains/geometry/Affine.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::app {

/// One entity as it stands in the text: its type and its groups, those of DxfDocument::pairs from `first` on.
struct DxfRecord {
    std::string_view type;
    std::size_t line = 0;
    std::size_t first = 0;
    std::size_t count = 0;
};

/// A line of the layer table.
struct DxfLayer {
    std::string_view name;
    bool off = false;
    bool frozen = false;
    int color = 7; ///< of the format's palette
};

/// A block definition: what an INSERT of its name draws, with `base` at the point of insertion.
struct DxfBlock {
    std::string_view name;
    std::size_t line = 0;
    Point3 base;
    std::vector<DxfRecord> records;
};

/// A DXF text taken apart, nothing interpreted yet. All views look into the text.
struct DxfDocument {
    std::vector<DxfPair> pairs;
    std::string units = "absent"; ///< from the header: "mm", "inch", ..., "none", "unknown"
    std::string_view codePage;    ///< from the header, as written
    std::vector<DxfLayer> layers;
    std::vector<DxfBlock> blocks;
    std::vector<DxfRecord> records; ///< of the section ENTITIES
    std::size_t bytesAfterEnd = 0;  ///< bytes that follow the EOF group
};

/// Reads the text. Throws InputError, with the line, for a text that is no ASCII DXF, is damaged, or ends before its
/// EOF group. Sections other than HEADER, TABLES, BLOCKS and ENTITIES are passed over.
DxfDocument ReadDxfDocument(std::string_view text);

/// The number in a group. Throws InputError where it is none.
double NumberOf(DxfPair const &pair);

/// The integer in a group. Throws InputError where it is none.
int IntegerOf(DxfPair const &pair);

} // namespace zvi::app
