#pragma once

#include <string>

namespace zvi::app {

/// Fill colours of one domain, "#rrggbb", for a light and for a dark page.
struct DomainColors {
    std::string light;
    std::string dark;
};

/// Colours for the domain of this number, counted from 0. Hues follow one another by the golden angle, so that any few
/// in a row are far apart; lightness takes turns, so that colours that come back near in hue differ in it.
DomainColors ColorsOf(std::size_t domain);

} // namespace zvi::app
