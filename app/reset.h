#pragma once

namespace dunkman {

// Frees everything and puts every process-wide value and the machine back to the state of a fresh process, without
// touching OpenGL. For programs that run several games; the game itself ends with its process.
void resetProgram();

} // namespace dunkman
