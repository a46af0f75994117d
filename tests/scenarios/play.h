#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/frame.h"
#include "base/frame_state.h"
#include "base/key_states.h"
#include "tests/fakes/small_data.h"
#include "world/arena.h"
#include "world/camera.h"
#include "world/flamingo.h"
#include "world/player.h"
#include "world/world.h"
#include "world/zombie.h"
#include "world/zombie_dead.h"

namespace dunkman {

// A game on the simulated machine, played key by key: starts on the game screen in a fresh process and steps
// a sixtieth of a second at a time. All pictures are square, so every width is the height.
//
// Recipes: hero, camera, flamingo, sweeper (a flamingo that fells all of the beach at one swing), pineapple,
// arena, spawnPoint, and the zombies weakZombie, zombie, zombie2HpFast and zombieBanana.
class Play : private FrameObserver {
public:
    // `scene` lists the entries of the scene; hero and camera are in it beforehand. Record steps like Live,
    // but by exactly 1/60 s.
    explicit Play(std::string_view scene = "", InputMode mode = InputMode::Record);
    ~Play();
    Play(const Play&) = delete;
    Play& operator=(const Play&) = delete;

    // Another process over the same data folder, recording included.
    void restart(InputMode mode);

    Play& hold(std::int32_t virtualKey);
    Play& letGo(std::int32_t virtualKey);
    Play& tap(std::int32_t virtualKey); // down for one step, up for the next
    Play& step(int count = 1);

    // Steps until the condition holds and answers how many that took; fails the test after `most` steps.
    int until(std::string_view what, const std::function<bool()>& condition, int most = 600);

    // Walks there along the beach. Lets go of the key in time, but may glide a quarter of a unit too far.
    Play& walkTo(double x);
    Play& turnLeft(); // by a step in that direction

    // Steps until the program has ended by itself; fails the test after `most` steps.
    void untilTheEnd(int most);

    static Player& hero() { return *world.first<Player>(); }
    static Camera& camera() { return *world.first<Camera>(); }
    static Arena* arena() { return world.first<Arena>(); }
    static std::size_t count(ObjectType type) { return world.objectsOfType(type).size(); }
    static Zombie& zombie(std::size_t number = 0); // throws std::out_of_range
    static std::vector<Vec2> zombiePlaces();
    static bool isArmed() { return Play::hero().heldWeapon != nullptr; }
    static bool isOver() { return currentScreenName() == "GameOver"; }
    static std::string_view currentScreenName();

    // The world after the last game step's update, before it was drawn, as in a trace; and after every such
    // step.
    const std::string& worldLines() const { return worldAfterStep.back(); }
    const std::vector<std::string>& allWorlds() const { return worldAfterStep; }

    // The last step's first line of such an object, or nothing.
    std::string lineOf(std::string_view objectType) const;

    const SmallData data;

private:
    void begin(InputMode mode);
    void inputApplied() override;
    void updated() override;

    std::vector<std::string> worldAfterStep; // one text for each step on the game screen
    bool gameStepRuns = false;
};

// How many steps of a sixtieth a timer of so many seconds takes, the sum being rounded as in the game.
int stepsOf(double seconds);

} // namespace dunkman
