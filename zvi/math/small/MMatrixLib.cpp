#include "zvi/math/small/MMatrixLib.h"

#include "zvi/math/func/MMathFunc.h"

namespace zvi::lib {

double MMatrixLib::CalcAngleDegLineAndAxisX(double x1, double y1, double x2, double y2) {
    return MMathFunc::GetAngle(x2 - x1, y2 - y1);
}

void MMatrixLib::RotateM2D(double angleDeg, double baseX, double baseY, double m[3][3]) {
    double const c = MMathFunc::mathCos(angleDeg * MMathFunc::m_trrad);
    double const s = MMathFunc::mathSin(angleDeg * MMathFunc::m_trrad);
    m[0][0] = c;
    m[0][1] = s;
    m[0][2] = 0.0;
    m[1][0] = -s;
    m[1][1] = c;
    m[1][2] = 0.0;
    m[2][0] = baseX - (c * baseX - s * baseY);
    m[2][1] = baseY - (s * baseX + c * baseY);
    m[2][2] = 1.0;
}

} // namespace zvi::lib
