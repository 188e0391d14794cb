#include "zvi/core/Utf8.h"
#include "zvi/units/MUnitCtrl.h"

#include <cstdio>

int main() {
    using namespace zvi::lib;
    MUnitCtrl units(nullptr);   // of no document
    units.Initialize(1);        // what users see: N, m, kg, sec, J
    constexpr int kStress = 17; // a kind of quantity; zvi units lists them

    double const stored = units.ConvertUnitDataIn(kStress, 2.5e6); // a value is stored in N and mm
    units.SetUnitSystemType(5, 0);                                 // from now on lbf and in, without notice
    CString label;
    units.GetUnitSystem(kStress, label);
    std::printf("%g N/mm^2 is %.2f %s\n", stored, units.ConvertUnitDataOut(kStress, stored),
                Utf8Of(label).c_str()); // 2.5 N/mm^2 is 362.59 lbf/in^2
}
