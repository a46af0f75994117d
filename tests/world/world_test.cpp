#include "world/world.h"

#include <gmock/gmock.h>

#include <vector>

#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"
#include "world/flamingo.h"
#include "world/interactable.h"
#include "world/movable.h"
#include "world/player.h"
#include "world/random.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

class WorldTest : public WorldFixture {
protected:
    static std::vector<double> places(ObjectType type) {
        std::vector<double> result;
        for (const OwnedObject& object : world.objectsOfType(type)) {
            result.push_back(object->position.x);
        }
        return result;
    }

    static Object& addAt(double x) { return add<Movable>({x, 0.0}); }
};

TEST_F(WorldTest, HasNoObjectsOfATypeThatNeverCame) {
    EXPECT_TRUE(world.objectsOfType(ObjectType::Zombie).empty());
    EXPECT_EQ(world.first<Zombie>(), nullptr);
}

TEST_F(WorldTest, InsertsOnlyWhenPendingIsApplied) {
    world.queueAdd(makeObject<Movable>());
    EXPECT_EQ(count(ObjectType::Movable), 0u);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Movable), 1u);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Movable), 1u);
}

TEST_F(WorldTest, RemovesOnlyWhenPendingIsApplied) {
    Object& object = addAt(1.0);
    world.queueDestroy(object);
    EXPECT_EQ(count(ObjectType::Movable), 1u);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Movable), 0u);
}

TEST_F(WorldTest, KeepsTheOrderOfInsertion) {
    for (const double x : {3.0, 1.0, 2.0}) {
        addAt(x);
    }
    EXPECT_THAT(places(ObjectType::Movable), testing::ElementsAre(3.0, 1.0, 2.0));
}

TEST_F(WorldTest, RemovalKeepsTheOrderOfTheOthers) {
    std::vector<Object*> objects;
    for (const double x : {0.0, 1.0, 2.0, 3.0, 4.0, 5.0}) {
        objects.push_back(&addAt(x));
    }
    world.queueDestroy(*objects[4]);
    world.queueDestroy(*objects[0]);
    world.queueDestroy(*objects[3]);
    world.applyPending();
    EXPECT_THAT(places(ObjectType::Movable), testing::ElementsAre(1.0, 2.0, 5.0));
}

TEST_F(WorldTest, BucketsHoldObjectsOfExactlyTheirType) {
    add<Movable>();
    add<Zombie>();
    EXPECT_EQ(count(ObjectType::Movable), 1u);
    EXPECT_EQ(count(ObjectType::Walker), 0u);
    EXPECT_EQ(count(ObjectType::Zombie), 1u);
}

TEST_F(WorldTest, DetachedObjectsLiveOnWithTheirNewOwner) {
    Object& object = addAt(7.0);
    world.queueDetach(object);
    EXPECT_TRUE(world.isQueuedForDetach(object));
    OwnedObject owner(&object);
    world.applyPending();
    EXPECT_FALSE(world.isQueuedForDetach(object));
    EXPECT_EQ(count(ObjectType::Movable), 0u);
    EXPECT_EQ(owner->position.x, 7.0);
    world.queueAdd(std::move(owner));
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Movable), 1u);
}

TEST_F(WorldTest, AnObjectQueuedForAddAndDestroyComesAndGoes) {
    auto object = makeObject<Movable>();
    Object& queued = *object;
    world.queueAdd(std::move(object));
    world.queueDestroy(queued);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Movable), 0u);
}

TEST_F(WorldTest, AnObjectQueuedTwiceForDestroyIsFreedOnce) {
    Object& twice = addAt(1.0);
    addAt(2.0);
    world.queueDestroy(twice);
    world.queueDestroy(twice);
    world.applyPending(); // a second release would stop the address sanitizer's run
    EXPECT_THAT(places(ObjectType::Movable), testing::ElementsAre(2.0));
}

TEST_F(WorldTest, AnObjectOutsideTheWorldIsLeftAlone) {
    OwnedObject outside = makeObject<Movable>();
    addAt(2.0);
    world.queueDestroy(*outside);
    world.queueDetach(*outside);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Movable), 1u);
    outside->position.x = 5.0;
    world.queueAdd(std::move(outside));
    addAt(6.0);
    EXPECT_THAT(places(ObjectType::Movable), testing::ElementsAre(2.0, 5.0, 6.0));
}

TEST_F(WorldTest, RemovesFromSeveralBucketsAtOnce) {
    Zombie& zombie = add<Zombie>();
    Movable& movable = add<Movable>();
    add<Zombie>({9.0, 0.0});
    world.queueDestroy(zombie);
    world.queueDestroy(movable);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Movable), 0u);
    EXPECT_THAT(places(ObjectType::Zombie), testing::ElementsAre(9.0));
}

std::vector<int> visited; // type numbers in the order of the calls

template <class Base> class Witness final : public Base {
public:
    explicit Witness(ObjectType shown) : shownType(shown) {}
    ObjectType getType() const override { return shownType; }
    void update() override { visited.push_back(static_cast<int>(shownType)); }
    void lateUpdate() override { visited.push_back(100 + static_cast<int>(shownType)); }

private:
    ObjectType shownType;
};

// Objects that stand in for the types up to Hint, whose order recordings rely on; a type that is added stands behind
// them. They are taken out again before the world would free them as what they claim to be.
class WitnessTest : public WorldTest {
protected:
    WitnessTest() {
        visited.clear();
        for (std::size_t number = indexOf(ObjectType::Hint); number > 0; --number) {
            witnesses.push_back(std::make_unique<Witness<Interactable>>(static_cast<ObjectType>(number)));
            world.queueAdd(OwnedObject(witnesses.back().get()));
        }
        world.applyPending();
    }
    ~WitnessTest() override {
        for (const auto& witness : witnesses) {
            world.queueDetach(*witness);
        }
        world.applyPending();
    }
    std::vector<std::unique_ptr<Witness<Interactable>>> witnesses;
};

TEST_F(WitnessTest, UpdatesGoThroughTheTypesInAscendingNumber) {
    world.updateAll();
    EXPECT_THAT(visited,
                testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19));
}

TEST_F(WitnessTest, LateUpdatesGoTheSameWay) {
    world.lateUpdateAll();
    EXPECT_THAT(visited, testing::ElementsAre(101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112, 113,
                                              114, 115, 116, 117, 118, 119));
}

TEST_F(WitnessTest, TheWalkFromDrawableIsBreadthFirst) {
    std::vector<int> order;
    world.walk<Drawable>([&](Drawable& drawable) { order.push_back(static_cast<int>(drawable.getType())); });
    EXPECT_THAT(order, testing::ElementsAre(2, 3, 12, 17, 18, 19, 4, 7, 10, 5, 11, 13, 6, 8, 9));
}

TEST_F(WitnessTest, TheWalkFromInteractableLeavesProjectilesOut) {
    std::vector<int> order;
    world.walk<Interactable>([&](Interactable& item) { order.push_back(static_cast<int>(item.getType())); });
    EXPECT_THAT(order, testing::ElementsAre(4, 5, 6, 8, 9));
}

TEST_F(WitnessTest, DrawingFollowsTheWalkFromDrawable) {
    for (const auto& witness : witnesses) {
        witness->useImage("box");
        witness->zOffset = static_cast<double>(indexOf(witness->getType()));
    }
    world.drawAll();
    std::vector<double> order;
    for (const DrawnSprite& sprite : drawnSprites) {
        order.push_back(sprite.zOffset);
    }
    EXPECT_THAT(order, testing::ElementsAre(2, 3, 12, 17, 18, 19, 4, 7, 10, 5, 11, 13, 6, 8, 9));
}

// While it is updated it adds one object and takes itself out.
class Spawner final : public Movable {
public:
    void update() override {
        world.queueAdd(makeObject<Movable>());
        world.queueDestroy(*this);
        seenDuringUpdate = world.objectsOfType(ObjectType::Movable).size();
    }
    std::size_t seenDuringUpdate = 0;
};

TEST_F(WorldTest, NothingEntersOrLeavesWhileTheWorldIsWalked) {
    auto* spawner = new Spawner;
    world.queueAdd(OwnedObject(spawner));
    addAt(1.0);
    world.updateAll();
    EXPECT_EQ(spawner->seenDuringUpdate, 2u);
    EXPECT_EQ(count(ObjectType::Movable), 2u);
    world.queueDetach(*spawner); // it is no plain Movable, so the test frees it
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Movable), 2u);
    EXPECT_EQ(world.objectsOfType(ObjectType::Movable)[0]->position.x, 1.0);
    delete spawner;
}

TEST_F(WorldTest, ClearFreesQueuesAndTheWeaponInHand) {
    Player& player = add<Player>();
    player.heldWeapon = makeObject<Flamingo>();
    Object& leaving = addAt(1.0);
    world.queueAdd(makeObject<Zombie>());
    world.queueDestroy(leaving);
    world.clear(); // the leak check of the sanitized run looks at what is left
    for (std::size_t number = 0; number < objectTypeCount; ++number) {
        EXPECT_TRUE(world.objectsOfType(static_cast<ObjectType>(number)).empty());
    }
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Zombie), 0u);
}

TEST_F(WorldTest, ClearFreesAWeaponOnItsWayIntoTheHandOnce) {
    Player& player = add<Player>();
    Flamingo& flamingo = add<Flamingo>();
    world.queueDetach(flamingo);
    player.heldWeapon.reset(&flamingo);
    world.clear();
    EXPECT_EQ(count(ObjectType::Flamingo), 0u);
}

TEST_F(WorldTest, ClearKeepsTheRandomNumbersGoingAndResetDoesNot) {
    const std::uint64_t first = nextRandom();
    world.clear();
    EXPECT_NE(nextRandom(), first);
    resetWorld();
    EXPECT_EQ(nextRandom(), first);
}

} // namespace

} // namespace dunkman
