#include "zvi/host/MessageBoxDetail.h"

#include "zvi/host/CodePage.h"

#include <cstdio>

namespace zvi::host {

void ShowSystemMessage(wchar_t const *text) {
    std::string const line = MultiOfWide(text, kSystemCodePage) + "\n";
    static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

} // namespace zvi::host
