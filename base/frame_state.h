#pragma once

#include <cstdint>

// The few values of the running program that everybody reads. The main loop writes them, on the main thread;
// nothing here includes anything of ours.
namespace dunkman {

// Where key states come from, and with that how time advances. The numbers are kept from the data format of old
// builds and are part of the behaviour: any value other than 1 and 2 acts as Live.
enum class InputMode : std::int32_t {
    Live = 0,   // keyboard, real time step
    Record = 1, // keyboard, one fixed step per loop iteration, changes are collected
    Replay = 2, // recorded changes while the game screen shows, fixed steps with catch-up
};

struct FrameState {
    double frameDelta = 0.0;       // seconds: time step of the runFrame call in progress
    double elapsedTime = 0.0;      // seconds since the loop's start sample, refreshed once per loop iteration
    double aspectRatio = 1.0;      // client width / client height; 1.0 until the first iteration
    std::uint32_t clientWidth = 0; // pixels; 0 until the first iteration, so that it always sets the viewport
    std::uint32_t clientHeight = 0;          // pixels; as above
    InputMode inputMode = InputMode::Replay; // the mode that ships
};

extern const FrameState& frameState;

} // namespace dunkman
