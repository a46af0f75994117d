#include "app/program.h"

#include "app/main_loop.h"
#include "app/recording.h"
#include "assets/catalog.h"
#include "audio/sound.h"
#include "platform/platform.h"
#include "render/gl.h"
#include "render/renderer.h"
#include "render/warm_up.h"

namespace dunkman {

void startUp(InputMode mode, ScreenId firstScreen) {
    inputMode = mode;
    loadRecording();

    platform::switchDisplayMode();
    platform::openWindow();
    platform::hideCursor();
    platform::createGlContext();
    platform::loadGlFunctions();
    platform::setSwapInterval();

    createRenderer();
    assetCatalog.loadAll();
    warmUpDriver();
    glClearColor(0.1f, 0.2f, 0.3f, 1.0f);

    createScreens();
    switchTo(firstScreen);

    startAudio();
    loadMusicTracks();
    startLoop();
}

void shutDown() {
    releaseRenderer();
    assetCatalog.releaseAll();
    stopAudio();
}

void runProgram(InputMode mode) {
    startUp(mode);
    if (platform::isWindowVisible()) {
        while (runIteration() == LoopEnd::GoOn) {
        }
    }
    shutDown();
}

} // namespace dunkman
