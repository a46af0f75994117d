#include "tests/scenarios/play.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "app/reset.h"
#include "platform/simulated/platform_sim.h"
#include "screens/screen.h"
#include "tools/headless/runner.h"
#include "world/trace.h"

namespace dunkman {

namespace {

constexpr std::int64_t stepNanoseconds = 16666667;

constexpr std::string_view recipes = R"({
    "hero": {"_type": "Player"},
    "camera": {"_type": "Camera"},
    "flamingo": {"_type": "Flamingo"},
    "sweeper": {"_type": "Flamingo", "collisionRadius": 40, "damage": 100},
    "pineapple": {"_type": "Pineapple"},
    "arena": {"_type": "Arena"},
    "spawnPoint": {"_type": "SpawnPoint"},
    "weakZombie": {"_type": "Zombie", "health": 0},
    "zombie": {"_type": "Zombie", "health": 1},
    "zombie2HpFast": {"_type": "Zombie", "health": 2, "acceleration": 17},
    "zombieBanana": {"_type": "Zombie", "health": 3}
})";

} // namespace

Play::Play(std::string_view scene, InputMode mode) {
    data.write("recipes.json5", recipes);
    data.write("scene.json5", R"([{"recipe": "camera"}, {"recipe": "hero"},)" + std::string(scene) + "]");
    begin(mode);
}

Play::~Play() {
    frameObserver = nullptr;
    resetProgram();
}

void Play::restart(InputMode mode) {
    worldAfterStep.clear();
    begin(mode);
}

void Play::begin(InputMode mode) {
    resetProgram();
    startUp(mode, ScreenId::Game);
    frameObserver = this;
}

Play& Play::hold(std::int32_t virtualKey) {
    simulated::machine.keysDown.insert(virtualKey);
    return *this;
}

Play& Play::letGo(std::int32_t virtualKey) {
    simulated::machine.keysDown.erase(virtualKey);
    return *this;
}

Play& Play::tap(std::int32_t virtualKey) { return hold(virtualKey).step().letGo(virtualKey).step(); }

Play& Play::step(int count) {
    for (int done = 0; done < count; ++done) {
        simulated::machine.clockNanoseconds += stepNanoseconds;
        runIteration();
    }
    return *this;
}

int Play::until(std::string_view what, const std::function<bool()>& condition, int most) {
    for (int steps = 0; steps <= most; ++steps) {
        if (condition()) {
            return steps;
        }
        if (steps < most) {
            step();
        }
    }
    ADD_FAILURE() << "not within " << most << " steps: " << what;
    return most;
}

Play& Play::walkTo(double x) {
    const bool toTheRight = x > hero().position.x;
    const std::int32_t key = toTheRight ? keys::d : keys::a;
    hold(key);
    until(
        "the hero arrives",
        [toTheRight, x] { return toTheRight ? hero().position.x >= x : hero().position.x <= x; }, 3000);
    return letGo(key);
}

Play& Play::turnLeft() { return tap(keys::a); }

void Play::untilTheEnd(int most) {
    try {
        step(most);
    } catch (const simulated::ProgramExit&) {
        return;
    }
    ADD_FAILURE() << "the program did not end within " << most << " steps";
}

Zombie& Play::zombie(std::size_t number) {
    const auto bucket = world.objectsOfType(ObjectType::Zombie);
    if (number >= bucket.size()) {
        throw std::out_of_range("there are only " + std::to_string(bucket.size()) + " zombies");
    }
    return static_cast<Zombie&>(*bucket[number]);
}

std::vector<Vec2> Play::zombiePlaces() {
    std::vector<Vec2> places;
    for (const OwnedObject& object : world.objectsOfType(ObjectType::Zombie)) {
        places.push_back(object->position);
    }
    return places;
}

std::string_view Play::currentScreenName() { return screenName(screenState.currentScreen); }

std::string Play::lineOf(std::string_view objectType) const {
    const std::string start = "object " + std::string(objectType) + ' ';
    std::size_t place = 0;
    while (place < worldLines().size()) {
        const std::size_t end = worldLines().find('\n', place);
        if (worldLines().compare(place, start.size(), start) == 0) {
            return worldLines().substr(place, end - place);
        }
        place = end + 1;
    }
    return {};
}

void Play::inputApplied() { gameStepRuns = isCurrent(ScreenId::Game); }

void Play::updated() {
    if (gameStepRuns) {
        worldAfterStep.emplace_back();
        appendWorldTrace(worldAfterStep.back());
    }
}

int stepsOf(double seconds) {
    int steps = 0;
    for (double elapsed = 0.0; elapsed < seconds; elapsed += 1.0 / 60.0) {
        ++steps;
    }
    return steps;
}

} // namespace dunkman
