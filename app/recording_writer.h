#pragma once

#include "app/recording.h"

// For the recorder and the replay themselves, and for tests.
namespace dunkman::writable {

extern RecordedGame recording;

} // namespace dunkman::writable
