#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

// Nobody owns an option value through this class, so its destructor is not virtual.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// One option value: a keyword, and a value whose text form goes to and comes from storage. This base holds no value.
class ZVI_API MOPTDATA {
public:
    /// The keyword under which the value is stored.
    virtual void SetKeyWord(CString &keyword);
    /// The keyword that was set, empty before.
    virtual CString GetKeyWord();

    /// Sets the value from its text form. The name has nothing to do with a type.
    virtual void SetType(CString &text);
    /// The value's text form. The name has nothing to do with a type.
    virtual CString GetType();

private:
    CString m_keyword;
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
