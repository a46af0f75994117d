#include "app/reset.h"

#include "app/frame.h"
#include "app/main_loop.h"
#include "app/recording_writer.h"
#include "app/start_times.h"
#include "assets/catalog_writer.h"
#include "audio/sound.h"
#include "base/frame_state_writer.h"
#include "base/key_states_writer.h"
#include "platform/platform.h"
#include "render/renderer.h"
#include "screens/backdrop.h"
#include "screens/screen.h"
#include "world/world.h"

namespace dunkman {

void resetProgram() {
    frameObserver = nullptr;
    destroyScreens();
    resetBackdrop();
    resetWorld();
    resetAudio();
    writable::assetCatalog = {};
    resetRenderer();
    writable::recording = {};
    resetMainLoop();
    resetStartTimes();
    writable::keyStates = {};
    writable::frameState = {};
    platform::resetMachine();
}

} // namespace dunkman
