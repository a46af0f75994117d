#include "tools/inspect/level_run.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "app/lifecycle.h"
#include "app/reset.h"
#include "base/fatal.h"
#include "base/geometry.h"
#include "screens/screen.h"
#include "tools/inspect/arena_check.h"
#include "world/scene_loader.h"
#include "world/world.h"

namespace dunkman::inspect {

namespace {

// Entry by entry, so that an object is known to come from its entry.
LevelPlaces collectPlaces(const LevelFiles& files) {
    LevelPlaces places;
    std::size_t number = 0;
    for (const Located& entry : files.scene.top().elements()) {
        world.clear();
        loadGroup(JsonValue::makeArray({entry.value()}));
        world.applyPending();
        places.add("entry " + std::to_string(++number), entry.spot());
    }
    return places;
}

} // namespace

void runLevel(const LevelFiles& files, Faults& faults) {
    resetProgram();
    try {
        startUp(InputMode::Live, ScreenId::Game);
        collectPlaces(files).check(faults);
    } catch (const std::exception& error) {
        faults.add(files.scene.wholeFile(), "The game stops. " + faultMessage(error));
    }
    resetProgram();
}

} // namespace dunkman::inspect
