#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include "app/lifecycle.h"
#include "app/reset.h"
#include "base/fatal.h"
#include "json5/reader.h"
#include "screens/screen.h"
#include "tests/fakes/small_data.h"
#include "tests/fuzz/busy_play.h"
#include "world/arena.h"
#include "world/player.h"
#include "world/scene_loader.h"
#include "world/world.h"

// The input is a scene. It is loaded and played for five seconds, keys included; the game goes on or stops with a
// message. There is a recipe for every type, under the type's name, and the prefabs "some" and "more".
namespace {

using namespace dunkman;

constexpr int gameSteps = 300;
constexpr std::int32_t mostHearts = 100; // each is drawn: more would only take time

std::string recipes() {
    std::string text = "{";
    for (std::size_t number = 1; number < objectTypeCount; ++number) {
        const std::string name(typeName(static_cast<ObjectType>(number)));
        text += '"' + name + "\": {\"_type\": \"" + name + "\"},\n";
    }
    for (const char* zombie : zombieRecipes) {
        text += '"' + std::string(zombie) + "\": {\"_type\": \"Zombie\"},\n";
    }
    return text + "}";
}

constexpr std::string_view prefabs = R"({
    "some": [{"recipe": "Flamingo", "position": [0.3, 0.8], "tag": "weapon"}, {"recipe": "Zombie", "position": 2, "tag": "enemy"}],
    "more": [{"prefab": "some", "offset": [1, 0]}, {"recipe": "Arena", "tag": "arena"}, {"recipe": "SpawnPoint"}]
})";

// The files that every game starts from, written once. The current directory is the fuzzer's own but for start-up.
class GameFolder {
public:
    GameFolder() {
        data.write("recipes.json5", recipes());
        data.write("prefabs.json5", prefabs);
        data.write("scene.json5", R"([{"recipe": "Player"}])");
        std::filesystem::current_path(before);
    }

    void start() const {
        std::filesystem::current_path(data.folder);
        startUp(InputMode::Record, ScreenId::Game);
        std::filesystem::current_path(before);
    }

private:
    const std::filesystem::path before = std::filesystem::current_path();
    const SmallData data;
};

void play(std::string_view scene) {
    JsonValue entries;
    Json5Report report;
    parseDocument(scene, report, entries);
    loadGroup(entries);
    world.applyPending();
    playBusily(gameSteps, [] {
        if (Player* hero = world.first<Player>()) {
            hero->health = std::min(hero->health, mostHearts);
        }
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const GameFolder folder;
    resetProgram();
    folder.start();
    world.clear();
    try {
        play({reinterpret_cast<const char*>(data), size});
    } catch (const FatalError&) {
        // stopped with a message
    } catch (const std::out_of_range&) {
        // a number that does not fit
    }
    resetProgram();
    return 0;
}
