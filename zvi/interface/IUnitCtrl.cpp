#include "zvi/interface/IUnitCtrl.h"

namespace zvi_interface {

IUnitCtrl::~IUnitCtrl() = default;

} // namespace zvi_interface
