#include "zvi/host/Messages.h"

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace zvi::host {

std::uint32_t RegisterMessage(wchar_t const *name) {
    if (!name || *name == L'\0')
        return 0;
    return RegisterWindowMessageW(name);
}

} // namespace zvi::host
