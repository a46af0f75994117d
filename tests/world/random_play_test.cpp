#include <algorithm>
#include <random>
#include <set>
#include <string>

#include "assets/catalog_writer.h"
#include "base/fatal.h"
#include "base/frame_state_writer.h"
#include "base/key_states_writer.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"
#include "world/player.h"
#include "world/scene_loader.h"
#include "world/trace.h"

namespace dunkman {

namespace {

constexpr int gameCount = 400;
constexpr int stepsPerGame = 500; // 200,000 steps in all

// Random scenes played with random keys. The sanitized run looks for what nobody thought of; here the rules
// that hold in every game are checked after every step.
class RandomPlayTest : public WorldFixture {
protected:
    RandomPlayTest() {
        writable::assetCatalog.recipes =
            json("{zombie: {_type: 'Zombie', health: 0}, weakZombie: {_type: 'Zombie', health: -1},"
                 " zombie2HpFast: {_type: 'Zombie', acceleration: 40, attackDelay: 5.0},"
                 " zombieBanana: {_type: 'Zombie', size: 3.0, attackRateTimer: 0}}")
                .objectValue();
        for (std::size_t number = 1; number < objectTypeCount; ++number) {
            const std::string name(typeName(static_cast<ObjectType>(number)));
            writable::assetCatalog.recipes["a" + name] = json("{_type: '" + name + "'}");
        }
        writable::assetCatalog.prefabs =
            json("{hoard: [{recipe: 'aFlamingo'}, {recipe: 'aPineapple', tag: 'fruit'},"
                 " {recipe: 'zombie', position: [2, 0]}],"
                 " hoards: [{prefab: 'hoard', offset: [1, 0]}, {prefab: 'hoard', offset: -1}]}")
                .objectValue();
    }

    int upTo(int limit) { return static_cast<int>(generator() % static_cast<unsigned>(limit)); }

    std::string place() {
        return "[" + std::to_string(upTo(40) - 15) + "." + std::to_string(upTo(10)) + ", " +
               std::to_string(upTo(4) - 2) + ".5]";
    }

    std::string randomScene() {
        std::string text =
            "[{recipe: 'aPlayer'}, {recipe: 'aCamera'}, {recipe: 'aSpawnPoint', position: [0, 1]}, ";
        for (int entries = upTo(25); entries > 0; --entries) {
            if (upTo(5) == 0) {
                text += "{prefab: 'hoards', offset: " + place() +
                        ", overrides: {fruit: {durability: " + std::to_string(upTo(4)) + "}}}, ";
                continue;
            }
            const auto type = static_cast<ObjectType>(1 + upTo(static_cast<int>(objectTypeCount) - 1));
            text += "{recipe: 'a" + std::string(typeName(type)) + "', position: " + place();
            text += ", imageKey: 'box', damage: " + std::to_string(upTo(3)) +
                    ", collisionRadius: " + std::to_string(upTo(3)) +
                    ", enemyVariant: " + std::to_string(upTo(6) - 1) +
                    ", zombieTimer: 0.1, velocity: " + place() + ", attackTimeout: 0." +
                    std::to_string(upTo(5)) + "}, ";
        }
        return text + "]";
    }

    void pressKeys() {
        for (const std::int32_t key : polledKeys) {
            // Mostly kept as it is, so that the hero gets somewhere.
            const bool down = upTo(8) == 0 ? upTo(2) == 0 : eitherDown(key, key);
            sampleKey(key, down, nullptr);
        }
    }

    // Every object is in one place only, in the bucket of its type, and the heroes are on the beach.
    static bool soundWorld() {
        std::set<const Object*> seen;
        for (std::size_t number = 0; number < objectTypeCount; ++number) {
            const auto type = static_cast<ObjectType>(number);
            for (const OwnedObject& object : world.objectsOfType(type)) {
                if (object->getType() != type || !seen.insert(object.get()).second) {
                    return false;
                }
            }
        }
        for (const OwnedObject& object : world.objectsOfType(ObjectType::Player)) {
            const auto& player = static_cast<const Player&>(*object);
            if (player.position.y < -1.5 || player.position.y > 1.5 || player.position.x < -11.0 ||
                (player.heldWeapon && !seen.insert(player.heldWeapon.get()).second)) {
                return false;
            }
        }
        return true;
    }

    std::mt19937 generator{7};
};

TEST_F(RandomPlayTest, TwoHundredThousandStepsKeepTheWorldSound) {
    int stepsDone = 0;
    int stops = 0;
    std::size_t mostZombies = 0;
    std::size_t mostCorpses = 0;
    bool wasArmed = false;
    std::string trace;
    for (int game = 0; game < gameCount; ++game) {
        world.clear();
        loadGroup(json(randomScene()));
        world.applyPending();
        try {
            for (int count = 0; count < stepsPerGame; ++count) {
                writable::frameState.frameDelta = upTo(50) == 0 ? 0.3 : sixtieth;
                pressKeys();
                step();
                world.drawAll();
                drawnSprites.clear();
                ++stepsDone;
                ASSERT_TRUE(soundWorld()) << "game " << game << ", step " << count;
                wasArmed = wasArmed || world.first<Player>()->heldWeapon;
            }
        } catch (const FatalError& stop) {
            // A scene may ask for what an arena cannot do; the world must bear that too.
            ++stops;
            EXPECT_NE(std::string(stop.what()).find("Arena at"), std::string::npos) << stop.what();
        }
        mostZombies = std::max(mostZombies, count(ObjectType::Zombie));
        mostCorpses = std::max(mostCorpses, count(ObjectType::ZombieDead));
        trace.clear();
        appendWorldTrace(trace);
        EXPECT_NE(trace.find("object Player"), std::string::npos);
    }
    // Something must have happened for all this to mean anything.
    EXPECT_GT(stepsDone, gameCount * stepsPerGame * 3 / 4);
    EXPECT_LT(stops, gameCount / 4);
    EXPECT_GT(mostZombies, 5u);
    EXPECT_GT(mostCorpses, 3u);
    EXPECT_TRUE(wasArmed);
}

} // namespace

} // namespace dunkman
