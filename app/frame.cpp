#include "app/frame.h"

#include <cassert>
#include <utility>

#include "app/pace.h"
#include "app/process_end.h"
#include "app/recording.h"
#include "audio/sound.h"
#include "base/arithmetic.h"
#include "base/frame_state.h"
#include "base/key_states_writer.h"
#include "platform/platform.h"
#include "render/clear.h"
#include "screens/screen.h"

namespace dunkman {

FrameObserver* frameObserver = nullptr;

namespace {

void pollKeys(KeyChanges* recorder) {
    for (const std::int32_t key : polledKeys) {
        sampleKey(key, platform::isKeyDown(key), recorder);
    }
}

void applyInput(bool inGame) {
    if (inGame && frameState.inputMode == InputMode::Replay) {
        replayStep();
    } else if (inGame && frameState.inputMode == InputMode::Record) {
        KeyChanges changes;
        pollKeys(&changes);
        recordStep(std::move(changes));
    } else {
        pollKeys(nullptr);
    }
}

} // namespace

void runFrame() {
    assert(hasDefaultArithmetic());
    const bool inGame = isCurrent(ScreenId::Game);
    applyInput(inGame);
    clearPicture();

    GameScreenBase* screen = screenState.currentScreen;
    if (frameObserver != nullptr) {
        frameObserver->inputApplied();
    }
    screen->update();
    if (screenState.currentScreen == nullptr) {
        if (frameState.inputMode == InputMode::Record) {
            saveRecording();
        }
        endPace();
        endProcess(0);
    }
    if (frameObserver != nullptr) {
        frameObserver->updated();
    }
    screen->render();
    finishClear();
    ageKeyStates();
    feedAudio();
}

} // namespace dunkman
