#include "world/trace.h"

#include <charconv>
#include <concepts>

#include "json5/canonical.h"
#include "world/arena.h"
#include "world/camera.h"
#include "world/player.h"
#include "world/projectile.h"
#include "world/resort_sign.h"
#include "world/world.h"
#include "world/zombie.h"
#include "world/zombie_dead.h"

namespace dunkman {

namespace {

void append(std::string& out, double number) { appendHexFloat(out, number); }

void append(std::string& out, bool flag) { out += flag ? '1' : '0'; }

void append(std::string& out, std::string_view text) { out += text; }

template <std::integral Number>
requires(!std::same_as<Number, bool>) void append(std::string& out, Number number) {
    char digits[24];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

template <class Value> void field(std::string& out, std::string_view name, const Value& value) {
    out += ' ';
    out += name;
    out += '=';
    append(out, value);
}

std::string_view nameOf(const Object* object) {
    return object != nullptr ? typeName(object->getType()) : std::string_view("none");
}

// Each class appends its bases' fields, then its own.
void fieldsOf(std::string& out, const Object& object) {
    field(out, "x", object.position.x);
    field(out, "y", object.position.y);
    field(out, "w", object.size.x);
    field(out, "h", object.size.y);
}

void fieldsOf(std::string& out, const Drawable& drawable) {
    fieldsOf(out, static_cast<const Object&>(drawable));
    field(out, "mirrorX", drawable.mirrorX);
    field(out, "tilt", drawable.tilt);
    field(out, "zOffset", drawable.zOffset);
}

void fieldsOf(std::string& out, const Movable& movable) {
    fieldsOf(out, static_cast<const Drawable&>(movable));
    field(out, "vx", movable.velocity.x);
    field(out, "vy", movable.velocity.y);
}

void fieldsOf(std::string& out, const Interactable& item) {
    fieldsOf(out, static_cast<const Movable&>(item));
    field(out, "highlighted", item.highlighted);
}

void fieldsOf(std::string& out, const Weapon& weapon) {
    fieldsOf(out, static_cast<const Interactable&>(weapon));
    field(out, "durability", weapon.durability);
    field(out, "attackRunning", weapon.attackTimeout.running);
    field(out, "attackElapsed", weapon.attackTimeout.elapsed);
    field(out, "animationAngle", weapon.animationAngle);
}

void fieldsOf(std::string& out, const Projectile& projectile) {
    fieldsOf(out, static_cast<const Movable&>(projectile));
    field(out, "groundY", projectile.groundY);
    field(out, "damage", projectile.damage);
    field(out, "angle", projectile.angle);
}

void fieldsOf(std::string& out, const Walker& walker) {
    fieldsOf(out, static_cast<const Movable&>(walker));
    field(out, "health", walker.health);
    field(out, "walk", walker.walkAnimation);
    field(out, "hurtRunning", walker.invulnerableTimer.running);
    field(out, "hurtElapsed", walker.invulnerableTimer.elapsed);
}

void fieldsOf(std::string& out, const Zombie& zombie) {
    fieldsOf(out, static_cast<const Walker&>(zombie));
    field(out, "armed", zombie.attackArmed);
    field(out, "strikeRunning", zombie.attackRateTimer.running);
    field(out, "strikeElapsed", zombie.attackRateTimer.elapsed);
}

void fieldsOf(std::string& out, const Player& player) {
    fieldsOf(out, static_cast<const Walker&>(player));
    field(out, "held", nameOf(player.heldWeapon.get()));
    field(out, "handX", player.handX);
    field(out, "handY", player.handY);
    field(out, "handAngle", player.handAngle);
    field(out, "strikeX", player.strikeX);
    field(out, "strikeY", player.strikeY);
}

void fieldsOf(std::string& out, const ZombieDead& corpse) {
    fieldsOf(out, static_cast<const Drawable&>(corpse));
    field(out, "frameTime", corpse.frameTime);
}

void fieldsOf(std::string& out, const ResortSign& sign) {
    fieldsOf(out, static_cast<const Drawable&>(sign));
    field(out, "clock", sign.clock);
}

void fieldsOf(std::string& out, const Camera& camera) {
    fieldsOf(out, static_cast<const Object&>(camera));
    field(out, "target", nameOf(camera.target));
}

void fieldsOf(std::string& out, const Arena& arena) {
    fieldsOf(out, static_cast<const Object&>(arena));
    field(out, "active", arena.active);
    field(out, "spawnsRemaining", arena.spawnsRemaining);
    field(out, "cooling", arena.cooling);
    field(out, "cooldownElapsed", arena.cooldownElapsed);
    field(out, "live", arena.liveZombies.size());
    field(out, "points", arena.spawnPoints.size());
}

template <class Kind> void fieldsAs(std::string& out, const Object& object) {
    fieldsOf(out, static_cast<const Kind&>(object));
}

void appendFields(std::string& out, const Object& object) {
    switch (object.getType()) {
    case ObjectType::Invalid:
        return;
    case ObjectType::Object:
    case ObjectType::SpawnPoint:
        return fieldsOf(out, object);
    case ObjectType::Drawable:
    case ObjectType::Wave:
    case ObjectType::Hint:
        return fieldsAs<Drawable>(out, object);
    case ObjectType::Movable:
        return fieldsAs<Movable>(out, object);
    case ObjectType::Interactable:
        return fieldsAs<Interactable>(out, object);
    case ObjectType::Weapon:
    case ObjectType::Flamingo:
    case ObjectType::RangedWeapon:
    case ObjectType::Pineapple:
        return fieldsAs<Weapon>(out, object);
    case ObjectType::Projectile:
        return fieldsAs<Projectile>(out, object);
    case ObjectType::Walker:
        return fieldsAs<Walker>(out, object);
    case ObjectType::Zombie:
        return fieldsAs<Zombie>(out, object);
    case ObjectType::ZombieDead:
        return fieldsAs<ZombieDead>(out, object);
    case ObjectType::Player:
        return fieldsAs<Player>(out, object);
    case ObjectType::Camera:
        return fieldsAs<Camera>(out, object);
    case ObjectType::Arena:
        return fieldsAs<Arena>(out, object);
    case ObjectType::ResortSign:
        return fieldsAs<ResortSign>(out, object);
    }
}

} // namespace

void appendObjectLine(std::string& out, const Object& object, std::string_view word) {
    out += word;
    out += ' ';
    out += typeName(object.getType());
    appendFields(out, object);
    out += '\n';
}

void appendWorldTrace(std::string& out) {
    for (std::size_t number = 0; number < objectTypeCount; ++number) {
        const auto type = static_cast<ObjectType>(number);
        for (const OwnedObject& object : world.objectsOfType(type)) {
            appendObjectLine(out, *object, "object");
            if (type == ObjectType::Player) {
                const auto& held = static_cast<const Player&>(*object).heldWeapon;
                if (held) {
                    appendObjectLine(out, *held, "held");
                }
            }
        }
    }
}

} // namespace dunkman
