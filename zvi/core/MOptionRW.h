#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <map>
#include <vector>

namespace zvi::lib {

class MOptionData;

/// Keyword to value text of one category, in the order of their code units.
using OptionCategory = std::map<CString, CString>;

/// A place where options are kept. It knows texts alone, and nothing of types.
class ZVI_API MOptionRW {
public:
    /// A place may be deleted through this class.
    virtual ~MOptionRW();

    /// Gives the groups the values that are kept, and 1. A null group is left out.
    virtual int ReadOption(std::vector<MOptionData *> &groups) = 0;
    /// Keeps the values of the groups, and gives 1. A null group is left out.
    virtual int WriteOption(std::vector<MOptionData *> &groups) = 0;
    /// Lends the caller a category in `*out`; 0 when it was not there before. This base has none: 0, and `*out` stays.
    virtual int GetCategoryData(CString category, OptionCategory **out);

protected:
    /// For classes derived from it alone.
    MOptionRW() = default;
    MOptionRW(MOptionRW const &) = default;
    MOptionRW &operator=(MOptionRW const &) = default;
};

} // namespace zvi::lib
