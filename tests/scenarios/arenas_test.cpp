#include "tests/scenarios/play.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "screens/screen.h"

namespace dunkman {

namespace {

struct Arrival {
    Vec2 place;
    std::int32_t health;
    double viewCentre; // the camera's x in that step
    friend bool operator==(const Arrival&, const Arrival&) = default;
};

constexpr double halfView = 9.0;

// A hero who fells everybody on the beach with one swing.
class ArenaPlay : public Play {
public:
    explicit ArenaPlay(const std::string& scene)
        : Play(R"({"recipe": "sweeper", "position": [0, 0.8]},)" + scene) {
        tap(keys::z);
    }

    // Walks past the line of the first arena, no further.
    void enterArena() {
        hold(keys::d);
        until(
            "the arena begins", [] { return arena()->active; }, 3000);
        letGo(keys::d);
    }

    void swingAndWait() {
        tap(keys::x);
        until("the swing is over", [] { return !hero().heldWeapon->attackTimeout.running; });
    }

    // Swings whenever there is somebody until the first arena is gone; answers who came where.
    std::vector<Arrival> fightOut() {
        std::vector<Arrival> arrivals;
        const Arena* const fight = arena();
        std::int32_t remaining = fight->spawnsRemaining;
        until(
            "the arena ends",
            [&] {
                // The arena that lets the last one in may be gone by the time he is counted, but not in that
                // step.
                if (arena() == fight && fight->spawnsRemaining != remaining) {
                    remaining = fight->spawnsRemaining;
                    const Zombie& newest = zombie(count(ObjectType::Zombie) - 1);
                    arrivals.push_back({newest.position, newest.health, camera().position.x});
                }
                const bool swing = count(ObjectType::Zombie) > 0 && !hero().heldWeapon->attackTimeout.running;
                if (swing && !simulatedKeyIsDown) {
                    hold(keys::x);
                } else {
                    letGo(keys::x);
                }
                simulatedKeyIsDown = swing && !simulatedKeyIsDown;
                return arena() != fight;
            },
            6000);
        letGo(keys::x).step();
        return arrivals;
    }

private:
    bool simulatedKeyIsDown = false;
};

TEST(Arenas, HoldTheCameraAndTheHeroInIt) {
    ArenaPlay play(R"({"recipe": "arena", "position": [6, 0], "size": [4, 1]})");
    play.step(60);
    EXPECT_FALSE(play.arena()->active);
    EXPECT_EQ(play.camera().target, nullptr);
    play.enterArena();
    EXPECT_EQ(play.camera().target, play.arena());
    play.hold(keys::d).step(600);
    EXPECT_NEAR(play.camera().position.x, 8.0, 1e-9); // the middle of the arena's width
    EXPECT_NEAR(play.hero().position.x, 8.0 + halfView - 3.5, 1e-9);
    play.letGo(keys::d).hold(keys::a).step(600);
    EXPECT_NEAR(play.hero().position.x, 8.0 - halfView + 3.0, 1e-9);
}

TEST(Arenas, LetInNoMoreThanTheirCapAtOnceAndWaitBetween) {
    ArenaPlay play(R"({"recipe": "arena", "position": [3, 0], "spawnsRemaining": 4})");
    play.enterArena();
    EXPECT_EQ(play.count(ObjectType::Zombie), 0u);
    play.step();
    EXPECT_EQ(play.count(ObjectType::Zombie), 1u); // at once, from the next step on
    const auto second = [] { return Play::count(ObjectType::Zombie) == 2; };
    EXPECT_EQ(play.until("the second", second), stepsOf(1.0));
    play.step(300);
    EXPECT_EQ(play.count(ObjectType::Zombie), 2u); // the cap
    EXPECT_EQ(play.arena()->spawnsRemaining, 2);

    play.hold(keys::x).step();
    EXPECT_EQ(play.count(ObjectType::ZombieDead), 2u);
    EXPECT_EQ(play.count(ObjectType::Zombie),
              1u); // the cooldown is long over: the third comes in that very step
    play.letGo(keys::x);
    EXPECT_EQ(play.until("the fourth", second), stepsOf(1.0));
    EXPECT_EQ(play.arena()->spawnsRemaining, 0);
    play.step(120);
    EXPECT_EQ(play.count(ObjectType::Zombie), 2u); // the quota
}

TEST(Arenas, ReleaseTheCameraAndLeaveWhenTheLastZombieIsDead) {
    ArenaPlay play(R"({"recipe": "arena", "position": [3, 0], "spawnsRemaining": 2})");
    play.enterArena();
    play.until("both are in", [&] { return play.count(ObjectType::Zombie) == 2; });
    EXPECT_NE(play.arena(), nullptr);
    play.hold(keys::x).step().letGo(keys::x);
    EXPECT_EQ(play.count(ObjectType::ZombieDead), 2u);
    EXPECT_EQ(play.arena(), nullptr);
    EXPECT_EQ(play.camera().target, nullptr);
    play.walkTo(20.0).step(300);
    EXPECT_NEAR(play.camera().position.x, play.hero().position.x, 1e-6);
}

TEST(Arenas, TheirZombiesHuntTheHeroFromAnywhere) {
    ArenaPlay play(
        R"({"recipe": "spawnPoint", "position": [11, 0]}, {"recipe": "spawnPoint", "position": [11.5, 0]},
                      {"recipe": "arena", "position": [3, 0], "spawnsRemaining": 1})");
    play.enterArena();
    play.step();
    EXPECT_GT(play.zombie().position.x - play.hero().position.x, 6.0);
    EXPECT_EQ(play.zombie().searchRadius, 100.0);
    play.until(
        "it arrives", [&] { return play.zombie().attackArmed; }, 1000);
}

TEST(Arenas, TheScriptedOneLetsInItsFiveInOrder) {
    ArenaPlay play(R"({"recipe": "spawnPoint", "position": [5, 1.75]},
                      {"recipe": "arena", "position": [3, 0], "enemyVariant": 4, "spawnsRemaining": 77})");
    play.enterArena();
    EXPECT_EQ(play.arena()->spawnsRemaining, 5); // the script's, whatever the data said
    const std::vector<Arrival> arrivals = play.fightOut();
    ASSERT_EQ(arrivals.size(), 5u);
    const Vec2 point = {5.0, 1.75};
    EXPECT_EQ(arrivals[0].place, point);
    EXPECT_EQ(arrivals[1].place, point);
    EXPECT_EQ(arrivals[2].place.x, arrivals[2].viewCentre - halfView);
    EXPECT_EQ(arrivals[3].place.x, arrivals[3].viewCentre + halfView);
    EXPECT_EQ(arrivals[4].place, point);
    for (std::size_t number = 0; number < 4; ++number) {
        EXPECT_EQ(arrivals[number].health, 0) << number; // weak ones
    }
    EXPECT_EQ(arrivals[4].health, 1); // and a full one at last
}

TEST(Arenas, EachKindOfZombieHasItsNumber) {
    const std::vector<std::int32_t> healthOfVariant = {1, 0, 2, 3, 1};
    for (const std::int32_t variant : {0, 1, 2, 3, -7}) {
        ArenaPlay play(R"({"recipe": "arena", "position": [3, 0], "enemyVariant": )" +
                       std::to_string(variant) + "}");
        play.enterArena();
        play.step();
        const auto place = static_cast<std::size_t>(variant < 0 ? 4 : variant);
        EXPECT_EQ(play.zombie().health, healthOfVariant[place]) << "variant " << variant;
    }
}

TEST(Arenas, ThreeInARowAreFoughtOneAfterTheOther) {
    ArenaPlay play(R"({"recipe": "arena", "position": [4, 0], "spawnsRemaining": 2, "enemyVariant": 1},
                      {"recipe": "arena", "position": [24, 0], "spawnsRemaining": 3},
                      {"recipe": "arena", "position": [44, 0], "spawnsRemaining": 4, "maxSimultaneousZombies": 3})");
    std::size_t corpses = 0;
    for (const std::size_t quota : {2u, 3u, 4u}) {
        play.enterArena();
        EXPECT_EQ(play.camera().target, play.arena());
        const double line = play.arena()->position.x;
        EXPECT_EQ(play.fightOut().size(), quota);
        corpses += quota;
        EXPECT_EQ(play.count(ObjectType::ZombieDead), corpses);
        EXPECT_EQ(play.camera().target, nullptr);
        EXPECT_NEAR(play.hero().position.x, line, 1.0);
    }
    EXPECT_EQ(play.arena(), nullptr);
    play.walkTo(70.0);
    EXPECT_EQ(play.currentScreenName(), "Game");
}

constexpr const char* eightRandomOnes = R"(
    {"recipe": "spawnPoint", "position": [5, 1.75]}, {"recipe": "spawnPoint", "position": [7, 1.5]},
    {"recipe": "arena", "position": [3, 0], "spawnsRemaining": 8})";

// Worked out by hand from the generator's formula, starting with the state 0: place, then point, then height.
TEST(Arenas, MakeTheChoicesThatTheGeneratorGivesAFreshProcess) {
    ArenaPlay play(eightRandomOnes);
    play.enterArena();
    const std::vector<Arrival> arrivals = play.fightOut();
    ASSERT_EQ(arrivals.size(), 8u);
    const Vec2 first = {5.0, 1.75};
    const Vec2 second = {7.0, 1.5};
    const auto leftEdge = [&](std::size_t number, double y) {
        return Vec2{arrivals[number].viewCentre - halfView, y};
    };
    const auto rightEdge = [&](std::size_t number, double y) {
        return Vec2{arrivals[number].viewCentre + halfView, y};
    };
    EXPECT_EQ(arrivals[0].place, second);
    EXPECT_EQ(arrivals[1].place, first);
    EXPECT_EQ(arrivals[2].place, rightEdge(2, 0.7771908056266987));
    EXPECT_EQ(arrivals[3].place, second);
    EXPECT_EQ(arrivals[4].place, leftEdge(4, -1.0965331396541949));
    EXPECT_EQ(arrivals[5].place, rightEdge(5, 1.1478533559219577));
    EXPECT_EQ(arrivals[6].place, leftEdge(6, 1.482335312587944));
    EXPECT_EQ(arrivals[7].place, second);
}

TEST(Arenas, MakeTheSameChoicesInEveryRun) {
    ArenaPlay play(eightRandomOnes);
    play.enterArena();
    const std::vector<Arrival> arrivals = play.fightOut();
    const std::vector<std::string> worlds = play.allWorlds();

    play.restart(InputMode::Record);
    play.tap(keys::z);
    play.enterArena();
    EXPECT_EQ(play.fightOut(), arrivals);
    EXPECT_TRUE(play.allWorlds() == worlds);
}

TEST(Arenas, ASecondGameOfTheSameProcessGoesOnWithTheNextRandomNumbers) {
    ArenaPlay play(eightRandomOnes);
    play.enterArena();
    const std::vector<Arrival> arrivals = play.fightOut();

    switchTo(ScreenId::Game);
    play.tap(keys::z);
    play.enterArena();
    const std::vector<Arrival> next = play.fightOut();
    EXPECT_EQ(next.size(), arrivals.size());
    EXPECT_NE(next, arrivals);
}

} // namespace

} // namespace dunkman
