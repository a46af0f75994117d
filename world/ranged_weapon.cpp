#include "world/ranged_weapon.h"

#include "base/fatal.h"
#include "world/describe.h"
#include "world/player.h"
#include "world/projectile.h"
#include "world/properties.h"
#include "world/world.h"

namespace dunkman {

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

void RangedWeapon::readProperties(const JsonValue& value) {
    Weapon::readProperties(value);
    readPairProperty(value, "initialVelocity", initialVelocity);
}

JsonValue RangedWeapon::writeProperties() const {
    JsonValue value = Weapon::writeProperties();
    writeProperty(value, "initialVelocity", initialVelocity);
    return value;
}

} // namespace dunkman
