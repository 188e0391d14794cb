#pragma once

#include "zvi/core/MOPTDATA.h"

#include <concepts>
#include <utility>

namespace zvi::lib::core {

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// What the typed option values share: a value of type `T` behind the keyword.
template <typename T>
class OptionValue : public MOPTDATA {
public:
    /// An empty keyword; give the value its default before its first use.
    OptionValue() = default;
    OptionValue(OptionValue const &) = default;
    OptionValue &operator=(OptionValue const &) = default;

    /// Sets the keyword by `SetKeyWord`, then the value.
    void SetData(CString keyword, T value) {
        SetKeyWord(keyword);
        m_value = std::move(value);
    }

    T &operator=(T value) {
        m_value = std::move(value);
        return m_value;
    }

    operator T() const { return m_value; }

    /// Exact: not-a-number equals nothing, and texts are compared by case.
    template <typename U>
    requires(!std::derived_from<U, MOPTDATA> && std::convertible_to<U, T>) friend bool
    operator==(OptionValue const &option, U const &value) {
        return option.m_value == value;
    }
    friend bool operator==(OptionValue const &left, OptionValue const &right) { return left.m_value == right.m_value; }

protected:
    T m_value{};
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

} // namespace zvi::lib::core
