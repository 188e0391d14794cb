#include "zvi/host/NamePatternDetail.h"

#include <cstddef>

namespace zvi::host {

/// One mark to go back to suffices: a later '*' can take whatever an earlier one could.
bool FitsPattern(std::wstring_view name, std::wstring_view pattern) {
    if (pattern == L"*.*")
        return true;
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = pattern.npos;
    std::size_t taken = 0;
    while (at < name.size()) {
        if (in < pattern.size() && pattern[in] == L'*') {
            star = in++;
            taken = at;
        } else if (in < pattern.size() && (pattern[in] == L'?' || pattern[in] == name[at])) {
            ++in;
            ++at;
        } else if (star != pattern.npos) {
            in = star + 1;
            at = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(L'*', in) == pattern.npos;
}

} // namespace zvi::host
