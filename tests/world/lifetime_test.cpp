#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "tests/world/world_fixture.h"
#include "world/arena.h"
#include "world/camera.h"
#include "world/flamingo.h"
#include "world/player.h"

// Who owns what, and that it ends once. What these tests do is only half of them: the sanitized runs see whether anything
// was freed twice, used after it was freed, or never freed.
namespace dunkman {

namespace {

// A world of lists without any cleverness, next to the real one.
class Ledger {
public:
    explicit Ledger(unsigned seed) : generator(seed) {}
    ~Ledger() { world.clear(); }
    Ledger(const Ledger&) = delete;
    Ledger& operator=(const Ledger&) = delete;

    void doSomething() {
        switch (generator() % 8) {
        case 0:
        case 1:
        case 2:
            make();
            break;
        case 3:
            putBack();
            break;
        case 4:
            if (Object* object = anyOf(inWorld)) {
                detachQueue.push_back(object);
                world.queueDetach(*object);
            }
            break;
        case 5:
            queueDestroy(anyOf(inWorld));
            break;
        case 6:
            queueDestroy(anyOf(entering));
            break;
        default: // of somebody else's: it is left alone
            queueDestroy(held.empty() ? nullptr : held[generator() % held.size()].get());
            break;
        }
    }

    void applyPending() {
        world.applyPending();
        enterAndDetach();
        for (Object* object : destroyQueue) {
            std::erase(inWorld, object);
        }
        destroyQueue.clear();
    }

    void clear() {
        world.clear();
        enterAndDetach();
        inWorld.clear();
        destroyQueue.clear();
    }

    // Per type, in order.
    void compare() const {
        std::map<ObjectType, std::vector<const Object*>> expected;
        for (const Object* object : inWorld) {
            expected[object->getType()].push_back(object);
        }
        for (std::size_t number = 1; number < objectTypeCount; ++number) {
            const auto type = static_cast<ObjectType>(number);
            std::vector<const Object*> present;
            for (const OwnedObject& object : world.objectsOfType(type)) {
                present.push_back(object.get());
            }
            EXPECT_EQ(present, expected[type]) << typeName(type);
        }
    }

    std::size_t made = 0;
    std::size_t detached = 0;

private:
    void make() {
        OwnedObject object = createObject(static_cast<ObjectType>(1 + generator() % (objectTypeCount - 1)));
        entering.push_back(object.get());
        world.queueAdd(std::move(object));
        ++made;
    }

    void putBack() {
        if (!held.empty()) {
            std::swap(held[generator() % held.size()], held.back());
            entering.push_back(held.back().get());
            world.queueAdd(std::move(held.back()));
            held.pop_back();
        }
    }

    void queueDestroy(Object* object) {
        if (object != nullptr) {
            destroyQueue.push_back(object);
            world.queueDestroy(*object);
        }
    }

    void enterAndDetach() {
        inWorld.insert(inWorld.end(), entering.begin(), entering.end());
        entering.clear();
        for (Object* object : detachQueue) {
            if (std::erase(inWorld, object) != 0) { // queued twice, it leaves once
                held.emplace_back(object);
                ++detached;
            }
        }
        detachQueue.clear();
    }

    Object* anyOf(const std::vector<Object*>& list) {
        return list.empty() ? nullptr : list[generator() % list.size()];
    }

    std::mt19937 generator;
    std::vector<Object*> entering;
    std::vector<Object*> inWorld;
    std::vector<Object*> detachQueue;
    std::vector<Object*> destroyQueue;
    std::vector<OwnedObject> held;
};

using LifetimeTest = WorldFixture;

TEST_F(LifetimeTest, WhateverIsQueuedInWhateverOrderEndsOnce) {
    std::size_t made = 0;
    std::size_t detached = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        Ledger ledger(seed);
        for (int round = 0; round < 60; ++round) {
            for (unsigned actions = (seed + static_cast<unsigned>(round)) % 12; actions > 0; --actions) {
                ledger.doSomething();
            }
            if (round % 20 == 19) {
                ledger.clear();
            } else {
                ledger.applyPending();
            }
            ledger.compare();
        }
        made += ledger.made;
        detached += ledger.detached;
    }
    EXPECT_GT(made, 20000u);
    EXPECT_GT(detached, 3000u);
}

TEST_F(LifetimeTest, EveryClassEndsAsItselfWhicheverWayItLeaves) {
    for (std::size_t number = 1; number < objectTypeCount; ++number) {
        const auto type = static_cast<ObjectType>(number);
        OwnedObject unused = createObject(type);
        OwnedObject freed = createObject(type);
        OwnedObject detached = createObject(type);
        OwnedObject cleared = createObject(type);
        Object& first = *freed;
        Object& second = *detached;
        world.queueAdd(std::move(freed));
        world.queueAdd(std::move(detached));
        world.queueAdd(std::move(cleared));
        world.applyPending();
        world.queueDestroy(first);
        world.queueDetach(second);
        world.applyPending();
        const OwnedObject owner(&second);
        EXPECT_EQ(count(type), 1u) << typeName(type);
        world.queueAdd(createObject(type));
        world.clear();
        EXPECT_EQ(count(type), 0u) << typeName(type);
    }
}

TEST_F(LifetimeTest, AnObjectDetachedBeforeItEnteredBelongsToItsNewOwnerAlsoAfterAClear) {
    OwnedObject object = makeObject<Flamingo>();
    Object& kept = *object;
    world.queueAdd(std::move(object));
    world.queueDetach(kept);
    const OwnedObject owner(&kept);
    world.clear();
    owner->position.x = 3.0;
    EXPECT_EQ(count(ObjectType::Flamingo), 0u);
}

TEST_F(LifetimeTest, AnObjectQueuedForBothIsDetached) {
    Flamingo& flamingo = add<Flamingo>();
    world.queueDestroy(flamingo);
    world.queueDetach(flamingo);
    const OwnedObject owner(&flamingo);
    world.applyPending();
    owner->position.x = 3.0;
    EXPECT_EQ(count(ObjectType::Flamingo), 0u);
}

class HeldWeaponTest : public WorldFixture {
protected:
    HeldWeaponTest() : hero(add<Player>()) {
        Flamingo& flamingo = add<Flamingo>({0.0, 0.8});
        flamingo.durability = 1;
        hero.update();
        press(keyZ);
        hero.update(); // takes it: it is in the hand, in its bucket and in the queue
    }

    static constexpr std::int32_t keyZ = 0x5A;
    static constexpr std::int32_t keyX = 0x58;
    Player& hero;
};

TEST_F(HeldWeaponTest, AGameThatIsLeftInTheStepOfPickingUpFreesTheWeaponOnce) {
    ASSERT_NE(hero.heldWeapon, nullptr);
    ASSERT_EQ(count(ObjectType::Flamingo), 1u);
    world.clear();
    EXPECT_EQ(count(ObjectType::Flamingo), 0u);
}

TEST_F(HeldWeaponTest, AWeaponThatBreaksInTheHandIsGone) {
    world.applyPending();
    release(keyZ);
    press(keyX);
    hero.update();
    EXPECT_EQ(hero.heldWeapon, nullptr);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Flamingo), 0u);
}

TEST_F(HeldWeaponTest, AWeaponDroppedAndTakenAgainInTheNextStepIsOne) {
    world.applyPending();
    hero.update(); // Z still counts as just pressed: it drops it
    EXPECT_EQ(hero.heldWeapon, nullptr);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Flamingo), 1u);
    hero.update();
    EXPECT_NE(hero.heldWeapon, nullptr);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Flamingo), 0u);
}

TEST_F(LifetimeTest, ACameraLetsGoOfAnArenaThatIsOver) {
    Camera& camera = add<Camera>();
    Player& hero = add<Player>({5.0, 0.0});
    Arena& arena = add<Arena>({1.0, 0.0});
    arena.spawnsRemaining = 0;
    step();
    EXPECT_EQ(camera.target, &arena);
    step();
    EXPECT_EQ(count(ObjectType::Arena), 0u);
    hero.position.x = 6.0;
    step(3); // the camera follows whatever its target is
    EXPECT_EQ(camera.target, nullptr);
}

} // namespace

} // namespace dunkman
