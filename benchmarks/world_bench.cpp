// What a step of the world costs, and what the less frequent things around it cost. Run from the repository's
// root.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "app/reset.h"
#include "assets/catalog_writer.h"
#include "base/frame_state_writer.h"
#include "json5/reader.h"
#include "platform/simulated/gl_sim.h"
#include "render/image_table_writer.h"
#include "render/renderer.h"
#include "world/camera.h"
#include "world/player.h"
#include "world/projectile.h"
#include "world/scene_loader.h"
#include "world/trace.h"
#include "world/weapon.h"
#include "world/world.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

constexpr std::int32_t plentyOfHealth = 1'000'000'000;

void enterImages() {
    for (const char* key : {"player", "playerUnarmed", "zombie", "zombieDeath0", "zombieDeath1",
                            "zombieDeath2", "zombieDeath3", "flamingo", "pineapple"}) {
        Texture2D& texture = writable::pictures.imageTable[key];
        texture.name = 1;
        texture.width = 100;
        texture.height = 200;
    }
}

void startEmpty() {
    resetProgram();
    enterImages();
    writable::frameState.frameDelta = 1.0 / 60.0;
    writable::frameState.aspectRatio = 16.0 / 9.0;
}

JsonValue valueOf(const std::string& text) {
    JsonValue value;
    Json5Report report;
    parseDocument(text, report, value);
    return value;
}

// The hero in the middle of the beach, zombies left and right of him, most of them within sight.
void fillBeach(std::int64_t zombies) {
    startEmpty();
    auto player = makeObject<Player>();
    player->health = plentyOfHealth;
    world.queueAdd(std::move(player));
    world.queueAdd(makeObject<Camera>());
    for (std::int64_t number = 0; number < zombies; ++number) {
        auto zombie = makeObject<Zombie>();
        const auto spread = static_cast<double>(number * 7919 % 1000) / 1000.0;
        zombie->position = {-8.0 + 16.0 * spread, -1.5 + 3.0 * static_cast<double>(number % 97) / 97.0};
        zombie->health = plentyOfHealth;
        world.queueAdd(std::move(zombie));
    }
    world.applyPending();
}

void countPerObject(benchmark::State& state, std::int64_t objects) {
    state.counters["per_object"] =
        benchmark::Counter(static_cast<double>(objects),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Ten seconds of the game, over and over. A crowd that has stood still for longer is another measurement: its
// velocities have decayed to subnormal numbers, which processors multiply slowly.
void stepWorld(benchmark::State& state) {
    constexpr int stepsPerGame = 600;
    int stepsLeft = 0;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        if (stepsLeft == 0) {
            state.PauseTiming();
            fillBeach(state.range(0));
            stepsLeft = stepsPerGame;
            state.ResumeTiming();
        }
        --stepsLeft;
        world.updateAll();
        world.lateUpdateAll();
        world.applyPending();
    }
    countPerObject(state, state.range(0) + 2);
    resetProgram();
}

// The drawing pass against an OpenGL that draws nothing.
void drawWorld(benchmark::State& state) {
    fillBeach(state.range(0));
    simulated::loadGlFunctions();
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(before / "data");
    createRenderer();
    std::filesystem::current_path(before);
    for (auto iteration : state) {
        static_cast<void>(iteration);
        world.drawAll();
    }
    countPerObject(state, state.range(0) + 1);
    resetProgram();
}

// A swing that reaches everybody: the widest walk that an attack makes.
void meleeAttack(benchmark::State& state) {
    fillBeach(state.range(0));
    Weapon weapon;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        weapon.attack({}, {0.0, 1.0}, false);
    }
    countPerObject(state, state.range(0));
    resetProgram();
}

void projectileStep(benchmark::State& state) {
    fillBeach(state.range(0));
    Projectile projectile;
    projectile.acceleration = {0.0, 0.0};
    projectile.position = {0.0, 50.0}; // touches nobody
    for (auto iteration : state) {
        static_cast<void>(iteration);
        projectile.update();
    }
    countPerObject(state, state.range(0));
    resetProgram();
}

// Removes k of n objects, spread over the bucket. Only applyPending is timed.
void removeObjects(benchmark::State& state) {
    const std::int64_t total = state.range(0);
    const std::int64_t removed = state.range(1);
    for (auto iteration : state) {
        static_cast<void>(iteration);
        state.PauseTiming();
        startEmpty();
        for (std::int64_t number = 0; number < total; ++number) {
            world.queueAdd(makeObject<Movable>());
        }
        world.applyPending();
        const auto bucket = world.objectsOfType(ObjectType::Movable);
        for (std::int64_t number = 0; number < removed; ++number) {
            world.queueDestroy(*bucket[static_cast<std::size_t>(number * total / removed)]);
        }
        state.ResumeTiming();
        world.applyPending();
    }
    resetProgram();
}

// A scene of n objects, half of them out of prefabs of ten with offset and overrides; parsing is not
// included.
void loadSceneEntries(benchmark::State& state) {
    startEmpty();
    writable::assetCatalog.recipes =
        valueOf("{zombie: {_type: 'Zombie', size: 2.0, health: 3, imageKey: 'zombie'}}").objectValue();
    writable::assetCatalog.prefabs = valueOf("{crowd: [" +
                                             [] {
                                                 std::string entries;
                                                 for (int number = 0; number < 10; ++number) {
                                                     entries += "{recipe: 'zombie', tag: 'one', position: [" +
                                                                std::to_string(number) + ", 0.5]},";
                                                 }
                                                 return entries;
                                             }() +
                                             "]}")
                                         .objectValue();
    std::string text = "[";
    for (std::int64_t number = 0; number < state.range(0); number += 20) {
        text +=
            "{prefab: 'crowd', offset: [" + std::to_string(number) + ", 0], overrides: {one: {health: 5}}},";
        for (int single = 0; single < 10; ++single) {
            text += "{recipe: 'zombie', position: [" + std::to_string(number + single) +
                    ", 1.0], mirrorX: true},";
        }
    }
    text += "]";
    const JsonValue entries = valueOf(text);
    for (auto iteration : state) {
        static_cast<void>(iteration);
        loadGroup(entries);
        world.applyPending();
        world.clear();
    }
    countPerObject(state, state.range(0));
    resetProgram();
}

void traceWorld(benchmark::State& state) {
    fillBeach(state.range(0));
    for (int count = 0; count < 30; ++count) {
        world.updateAll();
        world.lateUpdateAll();
        world.applyPending();
    }
    std::string out;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        out.clear();
        appendWorldTrace(out);
        benchmark::DoNotOptimize(out.data());
    }
    countPerObject(state, state.range(0) + 2);
    resetProgram();
}

BENCHMARK(stepWorld)->Arg(2)->Arg(100)->Arg(1'000)->Arg(10'000);
BENCHMARK(drawWorld)->Arg(2)->Arg(100)->Arg(1'000)->Arg(10'000);
BENCHMARK(meleeAttack)->Arg(2)->Arg(100)->Arg(1'000)->Arg(10'000);
BENCHMARK(projectileStep)->Arg(2)->Arg(100)->Arg(1'000)->Arg(10'000);
BENCHMARK(removeObjects)
    ->Args({10'000, 1})
    ->Args({10'000, 100})
    ->Args({10'000, 10'000})
    ->Args({100'000, 1})
    ->Args({100'000, 1'000})
    ->Args({100'000, 100'000})
    ->Iterations(30);
BENCHMARK(loadSceneEntries)->Arg(100)->Arg(1'000)->Arg(10'000);
BENCHMARK(traceWorld)->Arg(2)->Arg(100)->Arg(1'000);

} // namespace

} // namespace dunkman
