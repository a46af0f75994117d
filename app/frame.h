#pragma once

namespace dunkman {

// Looks on while a step runs, for traces. The game has none.
class FrameObserver {
public:
    virtual void inputApplied() {} // key states and screen stand as update will see them
    virtual void updated() {} // after update, before render; not called in the step that ends the program

protected:
    ~FrameObserver() = default;
};

extern FrameObserver* frameObserver; // null: nobody

// One simulation-and-draw step of frameDelta seconds: input, clear, update, render, key ageing, audio feed. The
// screen that updates is also the one that renders, even when it switched. Ends the process when update asked
// for it.
void runFrame();

} // namespace dunkman
