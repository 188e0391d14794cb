#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// The name of a quantity kind in lower case English, such as "force" or "mass density"; no two kinds share one. Empty
/// for a number that is no kind with a label.
ZVI_API char const *GetUnitKindName(int kind);

/// The quantity kind of this name, in any case of letters; 0 when there is none.
ZVI_API int FindUnitKind(char const *name);

} // namespace zvi::lib
