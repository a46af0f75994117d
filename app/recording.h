#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/key_states.h"

// A game as the list of its key changes per step, for windows of the proportions it was recorded in: what is on screen
// decides where zombies come from. Applies only while the game screen is current. Main thread only.
namespace dunkman {

struct InputRecord {
    std::uint64_t frame = 0; // index of the game step, from 0
    KeyChanges newKeyStates; // the keys that changed in that step; their order means nothing to a replay
};

struct RecordedGame {
    std::vector<InputRecord> records; // in ascending frame order
    std::uint64_t gameStep = 0;       // game steps seen so far in this recording or replay
    std::size_t replayIndex = 0;      // the next record to apply
    bool isSaved = false;             // no record is in memory alone
    std::uint64_t keptSteps = 0;      // game steps at the last time that it was kept unfinished
    bool isKept = false;              // the unfinished recording on the disk is this one
};

extern const RecordedGame& recording;

// Reads "recording.json5", except in Record mode, which starts with an empty recording. Runs before anything
// else is read.
void loadRecording();

// One step in Record mode: keeps the changes, if any, under the number of this step.
void recordStep(KeyChanges changes);

// One step in Replay mode, instead of sampling the keyboard: applies the changes of this step. After the last
// record the game goes on live, on the game-over screen.
void replayStep();

// Writes "recording.json5": a new file first, then in place of the old one. Stops the game with a message when the
// file cannot be written.
void saveRecording();

// The records as a data file holds them.
std::string recordingText();

} // namespace dunkman
