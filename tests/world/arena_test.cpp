#include "world/arena.h"

#include <gmock/gmock.h>

#include <vector>

#include "assets/catalog_writer.h"
#include "base/fatal.h"
#include "base/frame_state.h"
#include "tests/world/world_fixture.h"
#include "world/camera.h"
#include "world/player.h"
#include "world/random.h"
#include "world/spawn_point.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

// The hero stands just behind an arena at x = 0, out of the zombies' reach in height; the window is square,
// so the view is 18 by 18.
class ArenaTest : public WorldFixture {
protected:
    ArenaTest() : player(add<Player>({1.0, 0.0})) {
        writable::assetCatalog.recipes =
            json("{zombie: {_type: 'Zombie', tintR: 0.0}, weakZombie: {_type: 'Zombie', tintR: 1.0},"
                 " zombie2HpFast: {_type: 'Zombie', tintR: 2.0},"
                 " zombieBanana: {_type: 'Zombie', tintR: 3.0}}")
                .objectValue();
        player.health = 1000000;
    }

    Camera& addCamera() {
        camera = &add<Camera>();
        return *camera;
    }

    Arena& addArena(std::string_view properties = "{}") {
        Arena& arena = add<Arena>();
        arena.readProperties(json(properties));
        return arena;
    }

    static std::vector<Zombie*> zombies() {
        std::vector<Zombie*> all;
        world.walk<Zombie>([&](Zombie& zombie) { all.push_back(&zombie); });
        return all;
    }

    // Kills as a hit does.
    static void kill(Zombie& zombie) {
        zombie.health = -1;
        zombie.takeDamage(0);
    }

    template <class Action> static std::string messageOf(Action&& action) {
        try {
            action();
        } catch (const FatalError& error) {
            return error.what();
        }
        return "the game went on";
    }

    Player& player;
    Camera* camera = nullptr;
};

TEST_F(ArenaTest, SleepsWithoutAScriptUntilTheHeroComes) {
    const Arena arena;
    EXPECT_FALSE(arena.active);
    EXPECT_EQ(arena.script, nullptr); // places are drawn at random
    EXPECT_EQ(arena.enemyVariant, 0); // the plain zombie
}

TEST_F(ArenaTest, OnlyTheTimerAcceptsAFloat) {
    Arena& arena =
        addArena("{spawnsRemaining: 2.0, maxSimultaneousZombies: 3.0, zombieTimer: 4.5, enemyVariant: 1.0}");
    EXPECT_EQ(arena.spawnsRemaining, 5);
    EXPECT_EQ(arena.maxSimultaneousZombies, 2);
    EXPECT_EQ(arena.zombieTimer, 4.5);
    EXPECT_EQ(arena.enemyVariant, 0);
    arena.readProperties(
        json("{spawnsRemaining: 2, maxSimultaneousZombies: 3, zombieTimer: 4, enemyVariant: 1}"));
    EXPECT_EQ(arena.spawnsRemaining, 2);
    EXPECT_EQ(arena.maxSimultaneousZombies, 3);
    EXPECT_EQ(arena.zombieTimer, 4.0);
    EXPECT_EQ(arena.enemyVariant, 1);
}

TEST_F(ArenaTest, WaitsUntilTheHeroIsPastItsLine) {
    addCamera();
    Arena& arena = addArena();
    player.position.x = 0.0; // exactly on the line
    arena.lateUpdate();
    EXPECT_FALSE(arena.active);
    player.position.x = 0.001;
    arena.lateUpdate();
    EXPECT_TRUE(arena.active);
    EXPECT_EQ(camera->target, &arena);
}

TEST_F(ArenaTest, WithoutAHeroNothingHappens) {
    world.queueDestroy(player);
    world.applyPending();
    Arena& arena = addArena();
    arena.lateUpdate();
    EXPECT_FALSE(arena.active);
}

TEST_F(ArenaTest, SpawnsFromTheStepAfterItsStart) {
    addCamera();
    addArena();
    step();
    EXPECT_EQ(count(ObjectType::Zombie), 0u);
    step();
    EXPECT_EQ(count(ObjectType::Zombie), 1u);
}

TEST_F(ArenaTest, GathersTheSpawnPointsInViewEdgesIncluded) {
    Camera& view = addCamera();
    view.offset = {0.0, 0.0};
    for (const Vec2 place :
         {Vec2{-9.0, 0.0}, Vec2{9.0, 9.0}, Vec2{9.001, 0.0}, Vec2{0.0, -9.0}, Vec2{0.0, 9.001}}) {
        add<SpawnPoint>(place);
    }
    Arena& arena = addArena();
    arena.lateUpdate();
    ASSERT_EQ(arena.spawnPoints.size(), 3u);
    EXPECT_EQ(arena.spawnPoints[0]->position, (Vec2{-9.0, 0.0}));
    EXPECT_EQ(arena.spawnPoints[1]->position, (Vec2{9.0, 9.0}));
    EXPECT_EQ(arena.spawnPoints[2]->position, (Vec2{0.0, -9.0}));
}

struct VariantCase {
    std::int32_t variant;
    const char* recipe;
};

TEST_F(ArenaTest, EveryVariantHasItsRecipe) {
    for (const VariantCase& row :
         {VariantCase{0, "zombie"}, VariantCase{1, "weakZombie"}, VariantCase{2, "zombie2HpFast"},
          VariantCase{3, "zombieBanana"}, VariantCase{-1, "zombie"}, VariantCase{99, "zombie"}}) {
        EXPECT_STREQ(zombieRecipe(row.variant), row.recipe);
    }
}

TEST_F(ArenaTest, SpawnsTheRecipeOfItsVariantAsAHunter) {
    addCamera();
    addArena("{enemyVariant: 2}");
    step(2);
    ASSERT_EQ(zombies().size(), 1u);
    EXPECT_EQ(zombies()[0]->tintR, 2.0);
    EXPECT_EQ(zombies()[0]->searchRadius, 100.0);
}

struct PlaceCase {
    int place; // -2 left edge, -1 right edge, else a spawn point of the list below
    double y;  // at an edge
};

class ArenaPlaceTest : public ArenaTest {
protected:
    // Six spawns without a pause; the expected draws were reckoned with arbitrary-precision integers.
    void expectPlaces(int pointCount, const std::vector<PlaceCase>& expected) {
        addCamera();
        constexpr std::array<Vec2, 3> places = {{{1.0, 0.5}, {2.0, -0.5}, {3.0, 0.25}}};
        for (int point = 0; point < pointCount; ++point) {
            add<SpawnPoint>(places[static_cast<std::size_t>(point)]);
        }
        addArena("{spawnsRemaining: 6, maxSimultaneousZombies: 100, zombieTimer: 0}");
        step();
        for (std::size_t number = 0; number < expected.size(); ++number) {
            step();
            ASSERT_EQ(zombies().size(), number + 1);
            const Vec2 place = zombies().back()->position;
            const Rect view = viewRectangle(*camera);
            if (expected[number].place == -2) {
                EXPECT_EQ(place, (Vec2{view.minX, expected[number].y})) << number;
            } else if (expected[number].place == -1) {
                EXPECT_EQ(place, (Vec2{view.maxX, expected[number].y})) << number;
            } else {
                EXPECT_EQ(place, places[static_cast<std::size_t>(expected[number].place)]) << number;
            }
        }
    }
};

TEST_F(ArenaPlaceTest, WithoutSpawnPointsOnlyTheEdges) {
    expectPlaces(0, {{-2, -0.7684474024545813},
                     {-2, -0.7584687554089095},
                     {-1, 0.9597475620022937},
                     {-2, 1.2331379574162034},
                     {-1, 1.0857300877240208},
                     {-2, -1.0965331396541949}});
}

TEST_F(ArenaPlaceTest, WithOneSpawnPointTheEdgesAndThatPoint) {
    expectPlaces(1, {{-1, -0.8964883660879829},
                     {-2, 0.9597475620022937},
                     {-1, 0.13377255649022013},
                     {-2, -1.0965331396541949},
                     {0, 0.0},
                     {-2, -0.5934056163647181}});
}

TEST_F(ArenaPlaceTest, WithTwoSpawnPointsEdgesAndPointsAlike) {
    expectPlaces(2, {{1, 0.0},
                     {0, 0.0},
                     {-1, 0.7771908056266987},
                     {1, 0.0},
                     {-2, -1.0965331396541949},
                     {-1, 1.1478533559219577}});
}

TEST_F(ArenaPlaceTest, WithThreeSpawnPointsTheIndexTakesTheRemainderByThree) {
    expectPlaces(3, {{1, 0.0},
                     {0, 0.0},
                     {-1, 0.7771908056266987},
                     {0, 0.0},
                     {-2, -1.0965331396541949},
                     {-1, 1.1478533559219577}});
}

TEST_F(ArenaTest, TheDefaultsBringTwoAtOnceASecondApartAndFiveInAll) {
    addCamera();
    Arena& arena = addArena();
    step(2);
    EXPECT_EQ(zombies().size(), 1u);
    step(59);
    EXPECT_EQ(zombies().size(), 1u);
    step();
    EXPECT_EQ(zombies().size(), 2u);
    step(600);
    EXPECT_EQ(zombies().size(), 2u); // the cap holds
    for (int spawned = 3; spawned <= 5; ++spawned) {
        kill(*zombies()[0]);
        step();
        EXPECT_EQ(zombies().size(), 2u) << spawned;
        step(61);
    }
    EXPECT_EQ(arena.spawnsRemaining, 0);
    EXPECT_EQ(camera->target, &arena);
}

TEST_F(ArenaTest, EndsWhenTheLastZombieIsDeadAndFreesTheCamera) {
    addCamera();
    addArena("{spawnsRemaining: 2, zombieTimer: 0}");
    step(4);
    ASSERT_EQ(zombies().size(), 2u);
    kill(*zombies()[0]);
    step();
    EXPECT_EQ(count(ObjectType::Arena), 1u);
    EXPECT_NE(camera->target, nullptr);
    kill(*zombies()[0]);
    step();
    EXPECT_EQ(count(ObjectType::Arena), 0u);
    EXPECT_EQ(camera->target, nullptr);
}

TEST_F(ArenaTest, AZombieWithHealthNoughtStillCounts) {
    addCamera();
    Arena& arena = addArena("{spawnsRemaining: 1}");
    step(2);
    zombies()[0]->health = 0;
    step();
    EXPECT_EQ(arena.liveZombies.size(), 1u);
}

TEST_F(ArenaTest, ASpawnedZombieWithNegativeHealthLeavesTheListAndLivesOn) {
    writable::assetCatalog.recipes = json("{zombie: {_type: 'Zombie', health: -1}}").objectValue();
    addCamera();
    addArena("{spawnsRemaining: 1}");
    step(2);
    EXPECT_EQ(count(ObjectType::Arena), 1u);
    step();
    EXPECT_EQ(count(ObjectType::Arena), 0u);
    EXPECT_EQ(count(ObjectType::Zombie), 1u);
}

TEST_F(ArenaTest, ACapOfNothingNeverSpawns) {
    addCamera();
    addArena("{maxSimultaneousZombies: 0, zombieTimer: 0}");
    step(100);
    EXPECT_EQ(count(ObjectType::Zombie), 0u);
    EXPECT_EQ(count(ObjectType::Arena), 1u);
}

TEST_F(ArenaTest, ANegativeQuotaSpawnsForEver) {
    addCamera();
    Arena& arena = addArena("{spawnsRemaining: -1, maxSimultaneousZombies: 1000, zombieTimer: 0}");
    step(51);
    EXPECT_EQ(count(ObjectType::Zombie), 50u);
    EXPECT_EQ(arena.spawnsRemaining, -51);
}

TEST_F(ArenaTest, AQuotaOfNothingEndsInTheStepAfterItsStart) {
    addCamera();
    addArena("{spawnsRemaining: 0}");
    step();
    EXPECT_EQ(count(ObjectType::Arena), 1u);
    step();
    EXPECT_EQ(count(ObjectType::Arena), 0u);
    EXPECT_EQ(camera->target, nullptr);
}

TEST_F(ArenaTest, TheScriptSpawnsItsFiveStepsInOrder) {
    addCamera();
    add<SpawnPoint>({2.0, 0.5});
    Arena& arena =
        addArena("{enemyVariant: 4, spawnsRemaining: 99, maxSimultaneousZombies: 9, zombieTimer: 0}");
    step();
    EXPECT_EQ(arena.spawnsRemaining, 5);
    struct Step {
        int place;
        double recipeMark;
    };
    for (const Step& expected : {Step{0, 1.0}, Step{0, 1.0}, Step{-2, 1.0}, Step{-1, 1.0}, Step{0, 0.0}}) {
        step();
        const Zombie& spawned = *zombies().back();
        const Rect view = viewRectangle(*camera);
        const double x = expected.place == 0 ? 2.0 : (expected.place == -2 ? view.minX : view.maxX);
        EXPECT_EQ(spawned.position.x, x);
        EXPECT_EQ(spawned.tintR, expected.recipeMark);
    }
    EXPECT_EQ(arena.spawnsRemaining, 0);
    step(50);
    EXPECT_EQ(zombies().size(), 5u);
}

TEST_F(ArenaTest, AScriptDrawsOnlyForItsEdges) {
    addCamera();
    add<SpawnPoint>({2.0, 0.5});
    addArena("{enemyVariant: 4, maxSimultaneousZombies: 9, zombieTimer: 0}");
    step(3);
    EXPECT_EQ(randomState, 0u);
    step();
    EXPECT_EQ(randomState, 9812080132662924994u);
}

TEST_F(ArenaTest, OfTwoOverlappingArenasTheFirstThatEndsFreesTheCamera) {
    addCamera();
    addArena("{spawnsRemaining: 0}");
    Arena& longer = addArena("{maxSimultaneousZombies: 0}");
    step();
    EXPECT_EQ(camera->target, &longer);
    step();
    EXPECT_EQ(camera->target, nullptr);
    EXPECT_EQ(count(ObjectType::Arena), 1u);
}

TEST_F(ArenaTest, WithoutACameraItStartsButGathersNothing) {
    add<SpawnPoint>({1.0, 0.0});
    Arena& arena = addArena("{maxSimultaneousZombies: 0}");
    step(2);
    EXPECT_TRUE(arena.active);
    EXPECT_TRUE(arena.spawnPoints.empty());
}

TEST_F(ArenaTest, WithoutACameraItCanEnd) {
    addArena("{spawnsRemaining: 0}");
    step(2);
    EXPECT_EQ(count(ObjectType::Arena), 0u);
}

TEST_F(ArenaTest, AnEdgeWithoutACameraStopsTheGame) {
    addArena();
    EXPECT_THAT(messageOf([] { step(2); }),
                testing::AllOf(testing::HasSubstr("Arena at (0, 0)"), testing::HasSubstr("place -2"),
                               testing::HasSubstr("no Camera")));
}

TEST_F(ArenaTest, AScriptStepWithoutItsSpawnPointStopsTheGame) {
    addCamera();
    addArena("{enemyVariant: 4}");
    EXPECT_THAT(messageOf([] { step(2); }),
                testing::AllOf(testing::HasSubstr("Arena at (0, 0)"), testing::HasSubstr("spawn point 0")));
}

TEST_F(ArenaTest, AVariantThatSelectsNoScriptStopsTheGame) {
    addCamera();
    addArena("{enemyVariant: 5}");
    EXPECT_THAT(messageOf([] { step(); }),
                testing::AllOf(testing::HasSubstr("Arena at (0, 0)"), testing::HasSubstr("enemyVariant 5")));
}

TEST_F(ArenaTest, ARecipeThatMakesNoZombieStopsTheGame) {
    writable::assetCatalog.recipes = json("{zombie: {_type: 'Walker'}}").objectValue();
    addCamera();
    addArena();
    EXPECT_THAT(messageOf([] { step(2); }),
                testing::AllOf(testing::HasSubstr("Arena at (0, 0)"), testing::HasSubstr("\"zombie\""),
                               testing::HasSubstr("makes no Zombie")));
}

TEST_F(ArenaTest, ARecipeWithAnUnknownPictureStopsTheGameAndTellsWhoLetsItIn) {
    writable::assetCatalog.recipes = json("{zombie: {_type: 'Zombie', imageKey: 'nobody'}}").objectValue();
    addCamera();
    addArena();
    EXPECT_THAT(messageOf([] { step(2); }),
                testing::AllOf(testing::HasSubstr("\"nobody\""), testing::HasSubstr("\"zombie\""),
                               testing::HasSubstr("Arena at (0, 0) lets in")));
}

TEST_F(ArenaTest, AMissingRecipeStopsTheGame) {
    writable::assetCatalog.recipes.clear();
    addCamera();
    addArena("{enemyVariant: 3}");
    EXPECT_THAT(messageOf([] { step(2); }),
                testing::AllOf(testing::HasSubstr("\"zombieBanana\""), testing::HasSubstr("is missing")));
}

TEST_F(ArenaTest, TheCameraCentresOnTheArenasBounds) {
    addCamera();
    Arena& arena = addArena("{maxSimultaneousZombies: 0, size: [4, 1]}");
    step(600);
    EXPECT_NEAR(camera->position.x, 2.0, 1e-9);
    EXPECT_EQ(arena.getBounds().maxX, 4.0);
}

} // namespace

} // namespace dunkman
