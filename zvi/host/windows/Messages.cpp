#include "zvi/host/Messages.h"

#include "zvi/host/windows/WindowsHeader.h"

namespace zvi::host {

std::uint32_t RegisterMessage(wchar_t const *name) {
    if (!name || *name == L'\0')
        return 0;
    return RegisterWindowMessageW(name);
}

} // namespace zvi::host
