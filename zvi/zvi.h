#pragma once

// Every public header of the library, room by room.

#include "zvi/core/Export.h"
#include "zvi/core/Version.h"
#include "zvi/drawing/DrawingRecords.h"
#include "zvi/drawing/MakeDrawingDomains.h"
