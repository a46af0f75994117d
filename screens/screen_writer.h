#pragma once

#include "screens/screen.h"

// For the framework, the screen that ends the program, and tests.
namespace dunkman::writable {

extern ScreenState screenState;

} // namespace dunkman::writable
