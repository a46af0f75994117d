#pragma once

// The sound of the program as its shell sees it. Main thread only. A machine without sound is no fault: the
// game runs on in silence.
namespace dunkman {

// Opens the default output device and starts the audio thread. Does not throw; a failure leaves everything
// released and writes one line to the debugger output. Supplied by the platform.
void startAudio();

// Decodes both pieces of music; the game track loops, starting at its end, the intro track stands at its
// start.
void loadMusicTracks();

// Mixes the selected music into the ring. The last thing that a simulation step does.
void feedAudio();

// Ends the audio thread and releases everything that startAudio took. Returns within 100 ms; does nothing
// when nothing was started. Supplied by the platform.
void stopAudio();

// Before the process ends, however it does: stops the audio if it plays, and gives an audio thread that did not end in
// time two seconds more. A process that ends takes its threads away wherever they are; Wine 8 dies of that in the midst
// of its audio system, one time in thirty. Supplied by the platform; does nothing where no device plays.
void finishAudio();

// Stops, forgets both tracks and selects silence, as before start-up. For programs that run many games.
void resetAudio();

} // namespace dunkman
