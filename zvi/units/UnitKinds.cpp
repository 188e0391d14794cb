#include "zvi/units/UnitKinds.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace zvi::lib {

namespace {

struct KindName {
    int kind;
    char const *name;
};

constexpr KindName kKindNames[] = {
    {1, "length"},
    {2, "force"},
    {3, "acceleration"},
    {4, "angle in degrees"},
    {5, "angle"},
    {6, "temperature"},
    {9, "area"},
    {10, "volume"},
    {11, "second moment of area"},
    {12, "moment"},
    {13, "moment per length"},
    {14, "force per length"},
    {15, "rotational stiffness"},
    {16, "force per angle"},
    {17, "stress"},
    {18, "pressure"},
    {19, "unit weight"},
    {20, "thermal expansion"},
    {21, "time"},
    {22, "ground acceleration"},
    {23, "velocity"},
    {24, "mass"},
    {25, "mass moment of inertia"},
    {26, "mass per length"},
    {27, "mass per area"},
    {28, "frequency in cycles"},
    {29, "rate"},
    {30, "force rate"},
    {31, "moment rate"},
    {32, "jerk"},
    {33, "angular velocity"},
    {34, "warping constant"},
    {35, "time in hours"},
    {36, "time in days"},
    {37, "energy"},
    {38, "specific heat"},
    {39, "flow per day"},
    {40, "heat transfer coefficient"},
    {41, "thermal conductivity"},
    {42, "heat generation"},
    {43, "compressibility"},
    {44, "flexibility per area"},
    {45, "curvature"},
    {46, "damping"},
    {47, "rotational damping"},
    {48, "slowness"},
    {49, "mass density"},
    {50, "angular acceleration"},
    {51, "time in minutes"},
    {52, "flow per area and day"},
    {53, "flow per length and day"},
    {54, "consolidation per day"},
    {55, "permeability per day"},
    {56, "rate per day"},
    {57, "damping in days"},
    {58, "rotational damping in days"},
    {59, "period in days"},
    {60, "acceleration in gal"},
    {61, "frequency"},
    {62, "memory"},
    {63, "bending stiffness"},
    {64, "force squared"},
    {65, "number"},
    {67, "viscosity in days"},
    {68, "damping per area in days"},
    {69, "flow per hour"},
    {70, "inverse area"},
    {71, "damping per area"},
    {72, "first moment of mass"},
    {73, "rotational speed"},
    {74, "rotational acceleration"},
    {75, "heat flow per hour"},
    {76, "heat flux per hour"},
    {77, "thermal conductance"},
    {78, "heat flux"},
    {79, "heat source"},
    {80, "radiation constant"},
    {81, "energy density"},
    {82, "power"},
    {83, "time in seconds"},
    {84, "film coefficient"},
    {85, "moment per volume"},
    {86, "moment per length and step"},
    {87, "cycles per time"},
    {88, "squared velocity in days"},
    {89, "volume per force"},
    {90, "temperature gradient"},
    {91, "line mass"},
    {92, "line mass rate"},
    {93, "squared slowness"},
    {94, "convection coefficient"},
    {95, "molar flow along length"},
    {96, "molar flow"},
    {97, "stiffness per degree"},
    {98, "damping per degree"},
    {99, "mass flow"},
    {100, "surface heat"},
    {101, "area per power"},
    {102, "molar mass"},
    {103, "strain rate"},
    {104, "mass per cubed time"},
    {105, "rate of acceleration"},
    {106, "mass rate"},
    {107, "concentration"},
    {108, "heat power"},
    {109, "content per volume"},
    {111, "twist"},
    {112, "current density"},
    {113, "conductivity per area"},
    {114, "time per volume"},
    {115, "current"},
    {116, "inverse volume"},
    {117, "resistivity"},
    {118, "conductivity"},
    {119, "count rate"},
    {120, "voltage"},
    {121, "field strength"},
    {122, "surface current"},
    {123, "mass flux"},
    {124, "dissipation rate"},
    {125, "stiffness rate"},
    {126, "inertia per area"},
    {127, "viscosity"},
    {128, "specific energy"},
};

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

char const *GetUnitKindName(int kind) {
    auto const found = std::find_if(std::begin(kKindNames), std::end(kKindNames),
                                    [kind](KindName const &entry) { return entry.kind == kind; });
    return found == std::end(kKindNames) ? "" : found->name;
}

int FindUnitKind(char const *name) {
    std::string_view const wanted = name ? name : "";
    auto const found = std::find_if(std::begin(kKindNames), std::end(kKindNames), [wanted](KindName const &entry) {
        std::string_view const known = entry.name;
        return std::equal(known.begin(), known.end(), wanted.begin(), wanted.end(),
                          [](char a, char b) { return a == Lower(b); });
    });
    return found == std::end(kKindNames) ? 0 : found->kind;
}

} // namespace zvi::lib
