#pragma once

#include <string>

// What the entry needs of the Windows platform beside platform/platform.h.
namespace dunkman::platform {

// Puts the desktop's own display mode back, takes the window away and shows the message in a box.
void showFatalMessage(const std::string& message);

} // namespace dunkman::platform
