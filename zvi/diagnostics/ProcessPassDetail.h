#pragma once

#include "zvi/diagnostics/MProcessObjDetail.h"
#include "zvi/diagnostics/ProcessSlotDetail.h"

namespace zvi::lib::diagnostics {

/// The slot of a run.
ProcessSlot &SlotOf(MProcessObj const &object);

/// The parse step: takes what the limit of a pass lets it out of the ring, and tells it to the communicator. False when
/// the memory did not suffice to tell all.
bool ParseAndSend(MProcessObj &object, bool isEnd);

/// The finish step: tells all that is left and the exit code, and lets the communicator go. False when the memory did
/// not suffice; then it can be called again.
bool FinishRun(MProcessObj &object);

} // namespace zvi::lib::diagnostics
