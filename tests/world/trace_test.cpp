#include "world/trace.h"

#include "tests/world/world_fixture.h"
#include "world/arena.h"
#include "world/camera.h"
#include "world/flamingo.h"
#include "world/pineapple.h"
#include "world/player.h"
#include "world/projectile.h"
#include "world/resort_sign.h"
#include "world/spawn_point.h"
#include "world/zombie.h"
#include "world/zombie_dead.h"

namespace dunkman {

namespace {

class TraceTest : public WorldFixture {
protected:
    static std::string line(const Object& object) {
        std::string out;
        appendObjectLine(out, object, "object");
        return out;
    }

    template <class Kind> static std::string lineOfSized() {
        const auto object = makeObject<Kind>();
        object->size = {0.5, 2.0};
        return line(*object);
    }
};

constexpr const char* place = "x=0x0p+0 y=0x0p+0 w=0x1p-1 h=0x1p+1";

TEST_F(TraceTest, EveryClassPrintsItsFieldsAfterItsBases) {
    const std::string object(place);
    const std::string drawable = object + " mirrorX=0 tilt=0x0p+0 zOffset=0x0p+0";
    const std::string movable = drawable + " vx=0x0p+0 vy=0x0p+0";
    const std::string item = movable + " highlighted=0";
    const std::string weapon =
        item + " durability=-1 attackRunning=0 attackElapsed=0x0p+0 animationAngle=0x0p+0";
    const std::string walker = movable + " health=2 walk=0x0p+0 hurtRunning=0 hurtElapsed=0x0p+0";
    EXPECT_EQ(lineOfSized<SpawnPoint>(), "object SpawnPoint " + object + "\n");
    EXPECT_EQ(lineOfSized<Drawable>(), "object Drawable " + drawable + "\n");
    EXPECT_EQ(lineOfSized<Movable>(), "object Movable " + movable + "\n");
    EXPECT_EQ(lineOfSized<Interactable>(), "object Interactable " + item + "\n");
    EXPECT_EQ(lineOfSized<Weapon>(), "object Weapon " + weapon + "\n");
    EXPECT_EQ(lineOfSized<Flamingo>(), "object Flamingo " + weapon + "\n");
    EXPECT_EQ(lineOfSized<RangedWeapon>(), "object RangedWeapon " + weapon + "\n");
    EXPECT_EQ(lineOfSized<Projectile>(),
              "object Projectile " + movable + " groundY=-0x1p+0 damage=0 angle=0x0p+0\n");
    EXPECT_EQ(lineOfSized<Walker>(), "object Walker " + walker + "\n");
    EXPECT_EQ(lineOfSized<Zombie>(),
              "object Zombie " + walker + " armed=0 strikeRunning=0 strikeElapsed=0x0p+0\n");
    EXPECT_EQ(lineOfSized<ZombieDead>(), "object ZombieDead " + drawable + " frameTime=0x0p+0\n");
    EXPECT_EQ(lineOfSized<ResortSign>(), "object ResortSign " + drawable + " clock=0x0p+0\n");
    EXPECT_EQ(lineOfSized<Camera>(), "object Camera " + object + " target=none\n");
    EXPECT_EQ(lineOfSized<Arena>(), "object Arena " + object +
                                        " active=0 spawnsRemaining=5 cooling=0 cooldownElapsed=0x0p+0 live=0"
                                        " points=0\n");
}

TEST_F(TraceTest, FieldsShowTheirValues) {
    Zombie zombie;
    zombie.position = {1.5, -0.25};
    zombie.mirrorX = true;
    zombie.tilt = 3.0;
    zombie.zOffset = -4.0;
    zombie.velocity = {0.1, 1e-320};
    zombie.health = -3;
    zombie.walkAnimation = 8.0;
    zombie.invulnerableTimer = {1.0, true, 0.5};
    zombie.attackArmed = true;
    zombie.attackRateTimer = {1.0, true, -1.0};
    zombie.size = {1.0, 2.0};
    EXPECT_EQ(line(zombie), "object Zombie x=0x1.8p+0 y=-0x1p-2 w=0x1p+0 h=0x1p+1 mirrorX=1 tilt=0x1.8p+1"
                            " zOffset=-0x1p+2 vx=0x1.999999999999ap-4 vy=0x0.00000000007e8p-1022 health=-3"
                            " walk=0x1p+3 hurtRunning=1 hurtElapsed=0x1p-1 armed=1 strikeRunning=1"
                            " strikeElapsed=-0x1p+0\n");
}

TEST_F(TraceTest, TheWeaponInHandFollowsItsPlayer) {
    Player& player = add<Player>();
    player.size = {0.5, 2.0};
    player.handX = 1.0;
    player.handY = 2.0;
    player.handAngle = 4.0;
    player.strikeX = 8.0;
    player.strikeY = 16.0;
    std::string out;
    appendWorldTrace(out);
    const std::string before =
        std::string("object Player ") + place +
        " mirrorX=0 tilt=0x0p+0 zOffset=0x0p+0 vx=0x0p+0 vy=0x0p+0 health=5 walk=0x0p+0"
        " hurtRunning=0 hurtElapsed=0x0p+0 held=";
    const std::string after = " handX=0x1p+0 handY=0x1p+1 handAngle=0x1p+2 strikeX=0x1p+3 strikeY=0x1p+4\n";
    EXPECT_EQ(out, before + "none" + after);

    player.heldWeapon = makeObject<Pineapple>();
    player.heldWeapon->size = {0.5, 2.0};
    out.clear();
    appendWorldTrace(out);
    EXPECT_EQ(out, before + "Pineapple" + after + "held Pineapple " + place +
                       " mirrorX=0 tilt=0x0p+0 zOffset=0x0p+0 vx=0x0p+0 vy=0x0p+0 highlighted=0 durability=5"
                       " attackRunning=0 attackElapsed=0x0p+0 animationAngle=0x0p+0\n");
}

TEST_F(TraceTest, ACameraNamesTheTypeOfItsTarget) {
    Arena arena;
    Camera camera;
    camera.target = &arena;
    EXPECT_NE(line(camera).find(" target=Arena\n"), std::string::npos);
}

TEST_F(TraceTest, ObjectsComeByTypeNumberAndInBucketOrder) {
    add<SpawnPoint>({1.0, 0.0});
    add<Camera>();
    add<SpawnPoint>({2.0, 0.0});
    add<Movable>();
    std::string out;
    appendWorldTrace(out);
    const std::size_t movable = out.find("object Movable x=0x0p+0");
    const std::size_t camera = out.find("object Camera x=0x0p+0");
    const std::size_t first = out.find("object SpawnPoint x=0x1p+0");
    const std::size_t second = out.find("object SpawnPoint x=0x1p+1");
    EXPECT_LT(movable, camera);
    EXPECT_LT(camera, first);
    EXPECT_LT(first, second);
    EXPECT_NE(second, std::string::npos);
}

} // namespace

} // namespace dunkman
