#pragma once

namespace dunkman {

// Ends the process at once and without shutDown, as a screen does that ends the program: only the desktop is given back,
// and the sound, which plays to the last, is not cut off in the middle of a call.
[[noreturn]] void endProcess(int status);

} // namespace dunkman
