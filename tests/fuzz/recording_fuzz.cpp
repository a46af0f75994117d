#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <string_view>

#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "app/reset.h"
#include "base/fatal.h"
#include "platform/simulated/platform_sim.h"
#include "tests/fakes/small_data.h"

// The input is a recording. A small game is replayed by it for ten seconds, and played on live when it ends before; the
// game goes on or stops with a message.
namespace {

using namespace dunkman;

constexpr int gameSteps = 600;
constexpr std::int64_t stepNanoseconds = 16666667;

// What every game starts from, written once. The current directory is the fuzzer's own but for start-up.
class GameFolder {
public:
    GameFolder() {
        data.write("recipes.json5", R"({
            "hero": {"_type": "Player"}, "camera": {"_type": "Camera"}, "flamingo": {"_type": "Flamingo"},
            "pineapple": {"_type": "Pineapple"}, "spawnPoint": {"_type": "SpawnPoint"},
            "arena": {"_type": "Arena", "zombieTimer": 0.1}, "zombie": {"_type": "Zombie"},
            "zombie2HpFast": {"_type": "Zombie", "health": 2}, "zombieBanana": {"_type": "Zombie", "health": 3}})");
        data.write("scene.json5", R"([
            {"recipe": "hero"}, {"recipe": "camera"}, {"recipe": "flamingo", "position": [0.3, 0.8]},
            {"recipe": "pineapple", "position": [-0.3, 0.8]}, {"recipe": "zombie", "position": [1.5, 0]},
            {"recipe": "spawnPoint", "position": [3, 1]}, {"recipe": "arena", "position": [2, 0]}])");
        std::filesystem::current_path(before);
    }

    void start(std::string_view recording) const {
        data.write("recording.json5", recording);
        std::filesystem::current_path(data.folder);
        try {
            startUp(InputMode::Replay, ScreenId::Game);
        } catch (const std::exception&) {
            std::filesystem::current_path(before);
            throw;
        }
        std::filesystem::current_path(before);
    }

private:
    const std::filesystem::path before = std::filesystem::current_path();
    const SmallData data;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const GameFolder folder;
    resetProgram();
    try {
        folder.start({reinterpret_cast<const char*>(data), size});
        for (int step = 0; step < gameSteps; ++step) {
            simulated::machine.clockNanoseconds += stepNanoseconds;
            runIteration();
        }
    } catch (const FatalError&) {
        // stopped with a message
    } catch (const simulated::ProgramExit&) {
        // the show was over
    }
    resetProgram();
    return 0;
}
