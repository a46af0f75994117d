#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "app/reset.h"
#include "base/fatal.h"
#include "base/key_states.h"
#include "platform/simulated/platform_sim.h"
#include "screens/screen.h"
#include "tests/fakes/small_data.h"
#include "tests/scenarios/live_bytes.h"
#include "tests/scenarios/random_scene.h"
#include "tools/headless/runner.h"
#include "world/arena.h"
#include "world/player.h"
#include "world/world.h"

// Random games with a random hand on the keyboard. Nothing is known about their course, so nothing is asked
// but that the game survives or stops with a message: run it under the address and undefined-behaviour
// sanitizers. DUNKMAN_SOAK_STEPS sets how many steps are run, DUNKMAN_SOAK_SEED where they start; with
// DUNKMAN_SOAK_MESSAGES set, the messages are shown. After the first minute the heap must not grow any more:
//   DUNKMAN_SOAK_STEPS=1000000 ASAN_OPTIONS=quarantine_size_mb=16 build/sanitize/bin/scenarios_test
//       --gtest_filter='Soak*'
namespace dunkman {

namespace {

constexpr std::uint64_t defaultSteps = 20'000;
constexpr std::uint64_t defaultSeed = 1;

std::uint64_t fromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::strtoull(text, nullptr, 10) : otherwise;
}

// What the games came to. A soak in which nothing happens finds nothing.
struct Findings {
    std::uint64_t steps = 0;
    std::uint64_t processes = 0;
    std::uint64_t scenes = 0;
    std::uint64_t messages = 0; // scenes that ended with one
    std::uint64_t gamesLost = 0;
    std::uint64_t stepsArmed = 0;
    std::uint64_t stepsInFight = 0; // an arena holds the camera or would
    std::uint64_t projectiles = 0;  // counted once for each step
    std::uint64_t corpses = 0;
    std::size_t mostObjects = 0;
    std::int64_t liveBytesAtFirst = 0; // of the heap, after the first minute, with nothing loaded
    std::int64_t liveBytes = 0;        // the same at the end
};

class Soak {
public:
    explicit Soak(std::uint64_t seed) : random(seed) {}
    ~Soak() { resetProgram(); }
    Soak(const Soak&) = delete;
    Soak& operator=(const Soak&) = delete;

    // A process that loads a few scenes one after another, until `steps` are done in all.
    void runProcess(std::uint64_t steps) {
        ++findings.processes;
        data.write("recipes.json5", random.recipes());
        data.write("prefabs.json5", random.prefabs());
        data.write("scene.json5", random.scene());
        resetProgram();
        weigh();
        try {
            startUp(random.chance(0.5) ? InputMode::Record : InputMode::Live, ScreenId::Game);
            for (std::uint32_t reloads = random.below(5); findings.steps < steps; --reloads) {
                play(std::min<std::uint64_t>(random.below(600), steps - findings.steps));
                if (reloads == 0) {
                    break;
                }
                data.write("scene.json5", random.scene());
                switchTo(ScreenId::Game);
            }
        } catch (const FatalError& error) {
            endWith(error.what());
        } catch (const std::out_of_range& error) {
            endWith(error.what()); // a number in a file that neither a double nor an integer can hold
        }
    }

    // After each process, when everything is free again.
    void weigh() {
        constexpr std::chrono::seconds warmUp{60};
        findings.liveBytes = liveHeapBytes();
        if (findings.liveBytesAtFirst == 0 && std::chrono::steady_clock::now() - began > warmUp) {
            findings.liveBytesAtFirst = findings.liveBytes;
            std::cout << "after a minute: step " << findings.steps << ", live bytes " << findings.liveBytes
                      << ", resident bytes " << residentBytes() << '\n';
        }
    }

    Findings findings;

private:
    void endWith(const std::string& message) {
        ++findings.messages;
        EXPECT_FALSE(message.empty());
        if (std::getenv("DUNKMAN_SOAK_MESSAGES") != nullptr) {
            std::cout << message << '\n';
        }
    }

    void play(std::uint64_t steps) {
        ++findings.scenes;
        for (std::uint64_t done = 0; done < steps && isCurrent(ScreenId::Game); ++done) {
            turnKeys();
            simulated::machine.clockNanoseconds += stepLength();
            if (random.chance(0.01)) {
                simulated::machine.clientSize = {random.below(3) * 700,
                                                 random.below(3) * 400}; // minimised at times
            }
            ++findings.steps;
            runIteration();
            look();
        }
        const std::size_t corpses = world.objectsOfType(ObjectType::ZombieDead).size();
        findings.corpses += corpses;
        findings.gamesLost += !isCurrent(ScreenId::Game) ? 1u : 0u;
    }

    void turnKeys() {
        for (const std::int32_t key : polledKeys) {
            if (key != keys::escape && random.chance(0.1) && simulated::machine.keysDown.erase(key) == 0) {
                simulated::machine.keysDown.insert(key);
            }
        }
    }

    std::int64_t stepLength() {
        constexpr std::int64_t sixtieth = 16'666'667;
        if (random.chance(0.97)) {
            return sixtieth;
        }
        const std::int64_t factor = random.below(4);
        return factor * sixtieth * static_cast<std::int64_t>(random.below(30));
    }

    void look() {
        const Player* hero = world.first<Player>();
        const Arena* arena = world.first<Arena>();
        findings.stepsArmed += hero != nullptr && hero->heldWeapon != nullptr ? 1u : 0u;
        findings.stepsInFight += arena != nullptr && arena->active ? 1u : 0u;
        findings.projectiles += world.objectsOfType(ObjectType::Projectile).size();
        std::size_t objects = 0;
        for (std::size_t type = 0; type < objectTypeCount; ++type) {
            objects += world.objectsOfType(static_cast<ObjectType>(type)).size();
        }
        findings.mostObjects = std::max(findings.mostObjects, objects);
    }

    SmallData data;
    RandomScene random;
    const std::chrono::steady_clock::time_point began = std::chrono::steady_clock::now();
};

TEST(Soak, RandomGamesOverRandomScenesEndWithoutHarm) {
    const std::uint64_t steps = fromEnvironment("DUNKMAN_SOAK_STEPS", defaultSteps);
    Soak soak(fromEnvironment("DUNKMAN_SOAK_SEED", defaultSeed));
    while (soak.findings.steps < steps) {
        soak.runProcess(steps);
    }
    const Findings& findings = soak.findings;
    std::cout << "steps " << findings.steps << ", processes " << findings.processes << ", scenes "
              << findings.scenes << ", ended by a message " << findings.messages << ", games lost "
              << findings.gamesLost << ", steps armed " << findings.stepsArmed << ", steps in a fight "
              << findings.stepsInFight << ", projectile steps " << findings.projectiles << ", corpses "
              << findings.corpses << ", most objects " << findings.mostObjects << ", live bytes "
              << findings.liveBytes << ", resident bytes " << residentBytes() << '\n';
    if (findings.liveBytesAtFirst != 0) {
        constexpr std::int64_t room =
            1 << 20; // the texts of the last scene, and tables that reach their size late
        EXPECT_LT(findings.liveBytes, findings.liveBytesAtFirst + room);
    }
    // Otherwise the soak has gone stale: the scenes no longer bring the game to life.
    EXPECT_GT(findings.scenes * 1000, steps);
    EXPECT_GT(findings.stepsArmed * 10, steps);
    EXPECT_GT(findings.stepsInFight * 20, steps);
    EXPECT_GT(findings.projectiles * 50, steps);
    EXPECT_GT(findings.corpses * 500, steps);
    EXPECT_GT(findings.gamesLost, 0u);
    EXPECT_LT(findings.messages * 2, findings.processes);
}

} // namespace

} // namespace dunkman
