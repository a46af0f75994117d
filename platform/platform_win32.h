#pragma once

#include <string>

// What the entry needs of the Windows platform beside platform/platform.h.
namespace dunkman::platform {

// Asks Windows not to scale what the program draws: before the first window, for a program that is built
// without the manifest which says the same.
void useRealPixels();

// Gives the desktop back as restoreDesktop does and shows the message, in UTF-8, in a box.
void showFatalMessage(const std::string& message);

} // namespace dunkman::platform
