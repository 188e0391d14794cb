#pragma once

#include "zvi/Export.h"

#include <cstdint>
#include <functional>

namespace zvi::host {

/// The lowest and the highest number of a registered message.
inline constexpr std::uint32_t kFirstMessage = 0xC000;
inline constexpr std::uint32_t kLastMessage = 0xFFFF;

/// Number of the message of that name, from 0xC000 to 0xFFFF: the same for the life of the process, and for names that
/// differ only in the case of the letters a to z. 0 for a null or empty name and when all numbers are taken.
/// May be called from any thread, and while programs and libraries are being loaded.
ZVI_API std::uint32_t RegisterMessage(wchar_t const *name);

/// What an application installs as its main window: takes a message with its two parameters and gives the answer.
using MainWindow = std::function<std::intptr_t(std::uint32_t message, std::uintptr_t first, std::intptr_t second)>;

/// Installs the main window of the process in place of the one before; an empty function takes it away.
/// Install it on the thread that sends; the window may replace itself while it is called.
ZVI_API void SetMainWindow(MainWindow window);

/// Calls the main window and gives its answer, which is 0 when there is no main window.
ZVI_API std::intptr_t SendToMainWindow(std::uint32_t message, std::uintptr_t first, std::intptr_t second);

/// The message that tells the main window whether it takes input: its first parameter is 1 or 0.
inline constexpr std::uint32_t kEnableMessage = 0x000A;

/// Sends the main window that message.
ZVI_API void EnableMainWindow(bool isEnabled);

} // namespace zvi::host
