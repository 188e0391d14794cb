#include "zvi/host/Environment.h"

#include "zvi/host/Paths.h"
#include "zvi/host/windows/WindowsHeader.h"

namespace zvi::host {

bool SetEnvironmentPath(std::wstring const &name, std::wstring const &value) {
    return ::SetEnvironmentVariableW(name.c_str(), NativePath(value).c_str()) != 0;
}

} // namespace zvi::host
