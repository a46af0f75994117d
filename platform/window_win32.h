#pragma once

#include <windows.h>

#include <optional>

#include "platform/window_rules.h"

// The game's window as Windows sees it; what it decides is in window_rules.h.
namespace dunkman::platform {

// 1920 by 1080, borderless, visible, of a class of the system's; then made the game's own, laid over the
// whole display and brought to the foreground. Null when the system refuses.
HWND openGameWindow();

// The display that most of the window is on; all 0 when there is none.
Area displayOf(HWND window);

} // namespace dunkman::platform
