#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/core/MArray.h"

#include <cstdint>

namespace zvi::lib {

/// Entries that one base table has room for.
inline constexpr int kUnitTableRoom = 10;

/// Quantity kinds run from 0 to 128.
inline constexpr int kUnitKindCount = 129;

/// Distinct labels that a `T_UNIT_SYSTEM` has room for.
inline constexpr int kUnitSystemRoom = 30;

/// The chosen unit of each base: indices into the tables of `T_UNIT_NAMEFACT`, in this order.
struct T_UNIT_INDEX {
    std::int32_t force = 0;  ///< of the force table
    std::int32_t length = 0; ///< of the length table
    std::int32_t mass = 0;   ///< of the mass table
    std::int32_t time = 0;   ///< of the time table
    std::int32_t heat = 0;   ///< of the heat table
};

/// Names and factors of the five base tables: length, force, mass, heat, time. An entry that is not in use has no name
/// and the factor 1. The mass table is parallel to the force table: entry i is the mass that goes with force unit i.
/// The time table holds four entries and counts three, deliberately: the day is known and not offered for choice.
struct T_UNIT_NAMEFACT {
    CString lengthName[kUnitTableRoom];                                   ///< mm, cm, m, in, ft, micrometre
    CString forceName[kUnitTableRoom];                                    ///< kgf, tonf, N, kN, lbf, kips
    CString massName[kUnitTableRoom];                                     ///< parallel to the forces
    CString heatName[kUnitTableRoom];                                     ///< cal, kcal, J, Btu, kJ
    CString timeName[kUnitTableRoom];                                     ///< sec, min, hr, day
    double lengthFactor[kUnitTableRoom] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1}; ///< to the neutral length
    double forceFactor[kUnitTableRoom] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};  ///< to N
    double massFactor[kUnitTableRoom] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};   ///< to kg
    double heatFactor[kUnitTableRoom] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};   ///< to J
    double timeFactor[kUnitTableRoom] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};   ///< to sec
    std::int32_t lengthCount = 0;                                         ///< lengths offered
    std::int32_t forceCount = 0;                                          ///< forces offered
    std::int32_t massCount = 0;                                           ///< masses offered
    std::int32_t heatCount = 0;                                           ///< heats offered
    std::int32_t timeCount = 0;                                           ///< times offered: all but the day
};

/// The labels of several quantity kinds, each distinct label once. `indices` holds for each kind asked for the place
/// of its label in `labels`, or -1 for a kind without one. A label for which there was no room has the index
/// `capacity`.
struct T_UNIT_SYSTEM {
    MArray<std::int32_t> indices;            ///< one for each kind asked for
    CString labels[kUnitSystemRoom];         ///< the distinct labels, in the order in which they came up
    std::int32_t capacity = kUnitSystemRoom; ///< room in `labels`
};

} // namespace zvi::lib
