#pragma once

#include "apps/zvi/domains/model/ReadingOptions.h"

#include <string>
#include <vector>

namespace zvi::app {

/// What `zvi draw-index` was asked to do.
struct DrawIndexOptions {
    std::string file = "-";
    ReadingOptions reading;
    int capacity = 8; ///< objects that a leaf holds before it considers splitting
    bool progress = true;
    std::string svgFile;
    std::string help; ///< not empty: help was asked for, and this is it
};

/// Reads the arguments after the verb. Throws UsageError.
DrawIndexOptions ParseDrawIndexOptions(std::vector<std::string> const &arguments);

} // namespace zvi::app
