#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MOPTDATA.h"
#include "zvi/core/MOptionRW.h"

namespace zvi::lib {

/// A group of option values under one category. A group derives from it, owns typed values, and is kept in `MOptionDB`
/// under its category for as long as the process runs.
class ZVI_API MOptionData {
public:
    /// Which way values go.
    enum OPTION_IOTYPE { OPTION_READ = 0, OPTION_WRITE = 1 };

    /// A group may be deleted through this class. The values are freed by the group that owns them.
    virtual ~MOptionData();

    /// Sets the keywords and defaults, registers each value, and gives 1.
    virtual int InitOption() = 0;
    /// Name of the group's category.
    virtual CString GetCategory() = 0;
    /// Adds a value, which the group owns. One that is added twice is moved twice.
    virtual void RegOption(MOPTDATA *option);
    /// Moves every value, in the order of their registration, from storage or to it. On reading, a category or keyword
    /// that is not kept leaves its values as they are; on writing, keywords that the group does not know stay.
    virtual void IOData(MOptionRW *rw, OPTION_IOTYPE ioType);

    /// The values in the order of their registration.
    MArray<MOPTDATA *> const &Options() const { return m_options; }

protected:
    MOptionData() = default;
    // The values of a copy would be those of the original.
    MOptionData(MOptionData const &) = delete;
    MOptionData &operator=(MOptionData const &) = delete;

private:
    void ReadFrom(OptionCategory const &kept) const;
    void WriteTo(OptionCategory &kept) const;

    MArray<MOPTDATA *> m_options; ///< not owned
};

} // namespace zvi::lib
