#include "zvi/core/MTolerance.h"

#include "zvi/core/MOptionDB.h"
#include "zvi/core/OptionGenTol.h"

#include <cassert>

namespace zvi::lib {

namespace {

OptionGenTol::Values const &InForce() {
    auto *const group = dynamic_cast<OptionGenTol *>(MOptionDB::Instance()->GetOptData(OptionGenTol::kCategory));
    assert(group);
    return group->values;
}

} // namespace

MTolerance::MTolerance() = default;

MTolerance::~MTolerance() = default;

double MTolerance::GetRegardAsZero() {
    return InForce().RegardAsZero;
}

double MTolerance::GetMergeTolerance() {
    return InForce().PointMergeTolerance;
}

double MTolerance::GetAngleTolerance() {
    return InForce().AngleTolerance;
}

double MTolerance::GetRegardAsZeroForPost() {
    return InForce().RegardAsZeroForAnalysisResult;
}

} // namespace zvi::lib
