#include "world/ranged_weapon.h"

#include <array>

#include "base/fatal.h"
#include "world/describe.h"
#include "world/object_class.h"
#include "world/player.h"
#include "world/projectile.h"
#include "world/world.h"

namespace dunkman {

namespace {

constexpr std::array fields = {
    field<&RangedWeapon::initialVelocity>("initialVelocity", "start of a throw to the right, units/s"),
};

} // namespace

template <> const ObjectClass& objectClass<RangedWeapon>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<RangedWeapon>(),
        .meaning = "A weapon that is thrown: each attack sends off a projectile that looks like it.",
        .fields = fields,
    };
    return record;
}

RangedWeapon::RangedWeapon() {
    handPivot = {0.5, 0.5};
    collisionPivot = {0.5, 0.5};
}

void RangedWeapon::attack(Vec2 wielderPosition, Vec2 strikePoint, bool wielderMirrorX) {
    const Player* player = world.first<Player>();
    if (player == nullptr) {
        fatal(describe(*this) + " was thrown, but the scene has no Player; add one to scene.json5.");
    }
    auto projectile = makeObject<Projectile>();
    projectile->texture = texture;
    projectile->autoMirror = autoMirror;
    projectile->inverseMirror = inverseMirror;
    projectile->size.y = size.y;
    projectile->fitWidthToImage();
    projectile->damage = damage;
    projectile->velocity = initialVelocity;
    projectile->zOffset = player->position.y - player->handY - 0.01 + 3.0;
    projectile->groundY = wielderPosition.y;
    projectile->position = strikePoint;
    if (wielderMirrorX) {
        projectile->velocity.x = -projectile->velocity.x;
    }
    world.queueAdd(std::move(projectile));
}

} // namespace dunkman
