#pragma once

#include "zvi/core/CArray.h"
#include "zvi/core/CString.h"

/// Growable array of texts.
class CStringArray : public CArray<CString> {
public:
    using CArray<CString>::CArray;
};
