#pragma once

#include "zvi/Export.h"

namespace zvi_interface {

/// The face of a unit system that geometry needs: factors between the user's units and the neutral units in which
/// values are stored. A quantity kind is a number from 0 to 128; kind 1 is a length. The order of the virtual
/// operations is fixed, because client code is compiled against it.
class ZVI_API IUnitCtrl {
public:
    /// Factor that turns a value of the kind, in current units, into neutral units; 1.0 for a kind it does not know.
    virtual double GetConvertFactorCurrent(int kind) = 0;

    /// The same for the units that were in force before the last change.
    virtual double GetConvertFactorPrevious(int kind) = 0;

    /// Chooses the neutral length unit: 0 is mm, 2 is m; any other value changes nothing.
    virtual void SetNeutralUnit(int neutralUnit) = 0;

    /// The neutral length unit, 0 (mm) or 2 (m).
    virtual int GetNeutralUnit() = 0;

    /// The value of the kind, given in the force and length units of those indices, in current units.
    virtual double ConvValueTgtUnit2CurUnit(int force, int length, int kind, double value) = 0;
    /// An object may be deleted through this class.
    virtual ~IUnitCtrl();
};

} // namespace zvi_interface
