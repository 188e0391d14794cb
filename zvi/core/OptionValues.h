#pragma once

#include "zvi/Export.h"
#include "zvi/core/internal/OptionValue.h"

#include <cstdint>

// The typed option values, one class for each type. A text that does not parse counts as 0, or as the number at its
// start, and raises no error.

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// True or false, as an `int`.
class ZVI_API MOPTBOOL : public zvi::lib::core::OptionValue<std::int32_t> {
public:
    /// Stores the value as it is given, and gives it back.
    std::int32_t operator=(std::int32_t value) {
        m_value = value;
        return value;
    }
    /// 1 for exactly "TRUE", 0 for any other text, "true" and "1" included.
    void SetType(CString &text) override;
    /// "TRUE" for any value but 0, else "FALSE".
    CString GetType() override;
};

/// A whole number of 32 bits.
class ZVI_API MOPTINT : public zvi::lib::core::OptionValue<std::int32_t> {
public:
    using OptionValue::operator=;
    /// Sets the value from its text form.
    void SetType(CString &text) override;
    /// The value's text form.
    CString GetType() override;
};

/// A number of 8 bits; its text is a number too.
class ZVI_API MOPTCHAR : public zvi::lib::core::OptionValue<char> {
public:
    using OptionValue::operator=;
    /// Keeps the low 8 bits of the number: 44 of "300".
    void SetType(CString &text) override;
    /// The number with its sign, from -128 to 127.
    CString GetType() override;
};

/// A number of double precision.
class ZVI_API MOPTDOUBLE : public zvi::lib::core::OptionValue<double> {
public:
    using OptionValue::operator=;
    /// Sets the value from its text form.
    void SetType(CString &text) override;
    /// Six significant digits, and blanks behind them up to twelve columns: deliberate, and settings files in use look
    /// so. Who reads the text back trims it.
    CString GetType() override;
};

/// A number of single precision.
class ZVI_API MOPTFLOAT : public zvi::lib::core::OptionValue<float> {
public:
    using OptionValue::operator=;
    /// Sets the value from its text form.
    void SetType(CString &text) override;
    /// Six digits behind the point: "0.500000".
    CString GetType() override;
};

/// A text.
class ZVI_API MOPTSTRING : public zvi::lib::core::OptionValue<CString> {
public:
    using OptionValue::operator=;
    /// Sets the value from its text form.
    void SetType(CString &text) override;
    /// The value's text form.
    CString GetType() override;
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
