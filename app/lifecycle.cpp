#include "app/lifecycle.h"

#include <exception>
#include <string>

#include "app/data_folder.h"
#include "app/main_loop.h"
#include "app/pace.h"
#include "app/recording.h"
#include "app/start_times.h"
#include "app/unfinished_recording.h"
#include "assets/catalog_writer.h"
#include "audio/sound.h"
#include "base/fatal.h"
#include "base/frame_state_writer.h"
#include "base/key_states.h"
#include "platform/platform.h"
#include "render/gl.h"
#include "render/renderer.h"
#include "render/warm_up.h"

namespace dunkman {

namespace {

// A key counts as pressed when it was pressed since anybody last asked. What was typed before the program
// began, in whatever window, is not for it: least of all an Escape.
void dropOldKeyPresses() {
    for (const std::int32_t key : polledKeys) {
        platform::isKeyDown(key);
    }
}

// The first picture, as soon as there can be one: loading takes a while, and a fresh window is white.
void showDarkness() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT); // to black
    platform::swapBuffers();
}

} // namespace

void startUp(InputMode mode, ScreenId firstScreen) {
    beginStartTimes();
    enterDataFolder(platform::programFolder());
    dropOldKeyPresses();
    writable::frameState.inputMode = mode;
    loadRecording();
    noteStarted("recording");

    platform::switchDisplayMode();
    platform::openWindow();
    platform::hideCursor();
    noteStarted("window");
    platform::createGlContext();
    platform::loadGlFunctions();
    platform::setSwapInterval();
    showDarkness();
    platform::resetArithmetic(); // the driver's libraries are in the process now
    noteStarted("context");

    createRenderer();
    if (platform::drawsInSoftware()) {
        prepareForSoftware();
    }
    noteStarted("shaders");
    writable::assetCatalog.loadAll();
    noteStarted("pictures");
    warmUpDriver();
    noteStarted("warm-up");
    glClearColor(0.1f, 0.2f, 0.3f, 1.0f);

    createScreens();
    switchTo(firstScreen);
    noteStarted("screen");

    startAudio();
    loadMusicTracks();
    noteStarted("music");
    startLoop();
}

void shutDown() {
    const std::string kept = keepUnfinishedRecording(); // before anything else can go wrong
    releaseRenderer();
    writable::assetCatalog.releaseAll();
    stopAudio();
    platform::restoreDesktop();
    finishAudio();
    if (!kept.empty()) {
        platform::showNotice("The game was left before its recording was finished. " + kept);
    }
}

void endWithFault(const std::exception& fault) {
    const std::string kept = keepUnfinishedRecording();
    fatal(faultMessage(fault) + (kept.empty() ? "" : "\n\n" + kept));
}

void runProgram(InputMode mode) {
    try {
        startUp(mode);
        if (platform::isWindowVisible()) {
            while (runIteration() == LoopEnd::GoOn) {
                tellStartTimes();
                keepRecordingNowAndThen();
            }
            endPace();
        }
        shutDown();
    } catch (const std::exception& fault) {
        endWithFault(fault);
    }
}

} // namespace dunkman
