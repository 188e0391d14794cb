#include "apps/zvi/domains/output/Colors.h"

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace zvi::app {

namespace {

/// Turn between one hue and the next, in degrees.
constexpr double kGoldenAngle = 137.50776405003785;

/// Hue of the first domain, in degrees: a blue.
constexpr double kFirstHue = 250.0;

/// Lightness (0 to 1) and chroma of the fills, taken in turn.
constexpr std::array<double, 3> kLightPage = {0.86, 0.79, 0.91};
constexpr std::array<double, 3> kDarkPage = {0.45, 0.52, 0.40};
constexpr double kLightChroma = 0.085;
constexpr double kDarkChroma = 0.075;

/// Linear light to the value of a screen, 0 to 255 (the transfer curve of sRGB).
int ScreenValue(double linear) {
    double const light = std::clamp(linear, 0.0, 1.0);
    double const value = light <= 0.0031308 ? 12.92 * light : 1.055 * lib::Pow(light, 1.0 / 2.4) - 0.055;
    return static_cast<int>(std::lround(255.0 * value));
}

/// Appends a value of 0 to 255 as two hexadecimal digits.
void AppendHex(std::string &text, int value) {
    constexpr char kDigits[] = "0123456789abcdef";
    text += kDigits[value / 16];
    text += kDigits[value % 16];
}

double Cube(double x) {
    return x * x * x;
}

/// Lightness, chroma and hue to "#rrggbb" (the Oklab colour space of B. Ottosson, 2020, to linear sRGB).
std::string ScreenColor(double lightness, double chroma, double hueDegrees) {
    double const hue = hueDegrees * std::numbers::pi / 180.0;
    double const a = chroma * lib::Cos(hue);
    double const b = chroma * lib::Sin(hue);
    double const l = Cube(lightness + 0.3963377774 * a + 0.2158037573 * b);
    double const m = Cube(lightness - 0.1055613458 * a - 0.0638541728 * b);
    double const s = Cube(lightness - 0.0894841775 * a - 1.2914855480 * b);
    std::string color = "#";
    AppendHex(color, ScreenValue(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s));
    AppendHex(color, ScreenValue(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s));
    AppendHex(color, ScreenValue(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s));
    return color;
}

} // namespace

DomainColors ColorsOf(std::size_t domain) {
    double const hue = kFirstHue + kGoldenAngle * static_cast<double>(domain);
    std::size_t const turn = domain % kLightPage.size();
    return {ScreenColor(kLightPage[turn], kLightChroma, hue), ScreenColor(kDarkPage[turn], kDarkChroma, hue)};
}

} // namespace zvi::app
