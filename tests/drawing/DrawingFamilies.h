#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace zvi::lib::test {

/// Random numbers that are the same on every host.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}
    double Real(double low, double high) { return low + (high - low) * 0x1p-53 * static_cast<double>(Next() >> 11); }
    int Whole(int low, int high) { return low + static_cast<int>(Next() % static_cast<unsigned>(high - low + 1)); }
    bool Chance(double share) { return Real(0.0, 1.0) < share; }
    std::vector<DrawingCurve> Shuffled(std::vector<DrawingCurve> curves) {
        for (int i = static_cast<int>(curves.size()); i > 1; --i)
            std::swap(curves[static_cast<std::size_t>(i - 1)], curves[static_cast<std::size_t>(Whole(0, i - 1))]);
        return curves;
    }

private:
    std::uint64_t Next() {
        std::uint64_t z = m_state += 0x9e3779b97f4a7c15u;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }
    std::uint64_t m_state;
};

/// A drawing of a family, with what is known of its result.
struct Drawing {
    std::vector<DrawingCurve> curves;
    DrawingOptions options;
    bool areCountsSure = true; ///< no distance equals the tolerance to rounding
    int domains = -1;          ///< how many there must be, -1 where that is not known
    double area = -1.0;        ///< of all of them, within the tolerance times the length; -1 where it is not known
};

/// Kinds of drawings in which curves nearly touch.
int FamilyCount();
char const *FamilyName(int family);
/// The drawing of that family and seed: numbers of 1 to 6 decimals or of all, tolerances from 0 to half the drawing,
/// some far from the origin, huge or tiny.
Drawing DrawFamily(int family, std::uint64_t seed);

} // namespace zvi::lib::test
