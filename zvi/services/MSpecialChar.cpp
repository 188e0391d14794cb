#include "zvi/services/MSpecialChar.h"

#include <iterator>

namespace zvi::lib {

namespace {

/// In the order of `MSpecialChar::Sign`.
constexpr wchar_t const *kSigns[] = {
    L"\u00B5",
    L"\u00B0",
    L"\u00B0C",
};

} // namespace

CString MSpecialChar::Get(Sign sign) {
    auto const index = static_cast<unsigned int>(sign);
    return index < std::size(kSigns) ? CString(kSigns[index]) : CString();
}

} // namespace zvi::lib
