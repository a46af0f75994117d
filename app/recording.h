#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/key_states.h"

// A game as the list of its key changes per step, for windows of the proportions it was recorded in: what is on screen
// decides where zombies come from. Applies only while the game screen is current. Main thread only.
namespace dunkman {

struct InputRecord {
    std::uint64_t frame = 0; // index of the game step, from 0
    KeyChanges newKeyStates; // the keys that changed in that step; their order means nothing to a replay
};

extern std::vector<InputRecord> recording; // in ascending frame order
extern std::uint64_t gameStep;             // game steps seen so far in this recording or replay
extern std::size_t replayIndex;            // the next record to apply

// Reads "recording.json5", except in Record mode, which starts with an empty recording. Runs before anything else.
void loadRecording();

// One step in Record mode: keeps the changes, if any, under the number of this step.
void recordStep(KeyChanges changes);

// One step in Replay mode, instead of sampling the keyboard: applies the changes of this step. After the last
// record the game goes on live, on the game-over screen.
void replayStep();

// Writes "recording.json5": a new file first, then in place of the old one. Stops the game with a message when the
// file cannot be written.
void saveRecording();

void resetRecording();

} // namespace dunkman
