#pragma once

#include "apps/zvi/domains/model/ReadingOptions.h"
#include "apps/zvi/domains/output/DxfDrawing.h"

#include "zvi/drawing/DrawingRecords.h"

#include <optional>
#include <string>
#include <vector>

namespace zvi::app {

/// What `zvi domains` was asked to do.
struct DomainsOptions {
    std::string file = "-";
    ReadingOptions reading;
    lib::DrawingOptions drawing; ///< but for the join tolerance
    bool allLeftovers = false;
    bool strict = false;
    bool json = false;
    bool progress = true;
    std::string color = "auto";
    std::string svgFile; ///< empty: none
    std::string dxfFile; ///< empty: none
    DxfForm dxfForm;
    bool listLayers = false; ///< only that
    std::string help;        ///< not empty: help was asked for, and this is it
};

/// Reads the arguments after the verb. Throws UsageError for unknown options, with the nearest name, for values
/// that make no sense, and for output files that would overwrite the drawing or one another.
DomainsOptions ParseDomainsOptions(std::vector<std::string> const &arguments);

} // namespace zvi::app
