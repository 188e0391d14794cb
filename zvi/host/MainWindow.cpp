#include "zvi/host/Messages.h"

#include <utility>

namespace zvi::host {

namespace {

/// Never destroyed, so that it may be called until the process ends.
MainWindow &Window() {
    static MainWindow *const window = new MainWindow;
    return *window;
}

} // namespace

void SetMainWindow(MainWindow window) {
    Window() = std::move(window);
}

std::intptr_t SendToMainWindow(std::uint32_t message, std::uintptr_t first, std::intptr_t second) {
    // A copy, because the window may replace itself.
    MainWindow const window = Window();
    return window ? window(message, first, second) : 0;
}

void EnableMainWindow(bool isEnabled) {
    SendToMainWindow(kEnableMessage, isEnabled ? 1 : 0, 0);
}

} // namespace zvi::host
