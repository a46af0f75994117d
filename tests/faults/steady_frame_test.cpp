#include <gtest/gtest.h>

#include "base/key_states.h"
#include "tests/fakes/program_fixture.h"
#include "tests/faults/faulty_calls.h"
#include "world/player.h"
#include "world/world.h"

namespace dunkman {

namespace {

// The game with all that moves in it: the hero walks and strikes, a zombie comes, a pineapple lies about.
class SteadyFrame : public ProgramFixture {
protected:
    SteadyFrame() {
        data.write(
            "recipes.json5",
            R"({"hero": {"_type": "Player"}, "camera": {"_type": "Camera"}, "flamingo": {"_type": "Flamingo"},
                       "pineapple": {"_type": "Pineapple"}, "zombie": {"_type": "Zombie", "size": 2.0, "health": 9},
                       "wave": {"_type": "Wave", "imageKey": "palmTree", "size": 2.0},
                       "ground": {"_type": "Drawable", "imageKey": "sunset", "size": [8, 4], "isFlat": true}})");
        data.write("scene.json5",
                   R"([{"recipe": "hero"}, {"recipe": "camera"}, {"recipe": "flamingo", "position": [0, 0.8]},
                       {"recipe": "zombie", "position": [5, 0]}, {"recipe": "pineapple", "position": [3, 1]},
                       {"recipe": "wave", "position": [0, 2]}, {"recipe": "ground", "position": [0, -2]}])");
        start(InputMode::Live, ScreenId::Game);
    }

    static constexpr std::int64_t frame = 16666667; // nanoseconds
};

TEST_F(SteadyFrame, TakesNoMemory) {
    for (int warmUp = 0; warmUp < 60; ++warmUp) {
        iterateAfter(frame);
    }
    press(keys::d);
    press(keys::x);
    const double start = world.first<Player>()->position.x;
    beginCounting();
    for (int number = 0; number < 60; ++number) {
        iterateAfter(frame);
    }
    EXPECT_EQ(endCounting().at(static_cast<std::size_t>(SystemCall::Allocation)), 0);
    EXPECT_GT(world.first<Player>()->position.x, start) << "nobody walked, so this showed nothing";
}

} // namespace

} // namespace dunkman
