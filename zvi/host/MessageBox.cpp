#include "zvi/host/MessageBox.h"

#include "zvi/host/MessageBoxDetail.h"

#include <utility>

namespace zvi::host {

namespace {

/// Never destroyed, so that it may be called until the process ends.
MessageBoxHandler &Handler() {
    static MessageBoxHandler *const handler = new MessageBoxHandler;
    return *handler;
}

} // namespace

void SetMessageBox(MessageBoxHandler handler) {
    Handler() = std::move(handler);
}

void ShowMessageBox(wchar_t const *text) {
    // A copy, because the handler may replace itself.
    MessageBoxHandler const handler = Handler();
    wchar_t const *const shown = text ? text : L"";
    if (handler)
        handler(shown);
    else
        ShowSystemMessage(shown);
}

} // namespace zvi::host
