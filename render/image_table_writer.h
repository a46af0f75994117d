#pragma once

#include "render/image_table.h"

// For the asset catalogue, which fills both tables at start-up and releases them at the end, and for tests.
namespace dunkman::writable {

extern Pictures pictures; // a fresh one forgets without touching OpenGL

} // namespace dunkman::writable
