#include "workshop/playthrough/senses.h"

#include <algorithm>
#include <cmath>

#include "base/fatal.h"
#include "world/camera.h"
#include "world/ranged_weapon.h"
#include "world/world.h"

namespace dunkman::playthrough {

namespace {

constexpr double sight = 9.5; // units to either side of the hero
constexpr double step = 1.0 / 60.0;
constexpr double never = 1000.0;
constexpr double gravity = 9.81;

} // namespace

const Player& hero() {
    const Player* player = world.first<Player>();
    if (player == nullptr) {
        fatal("The scene has no Player for the pilot to steer.");
    }
    return *player;
}

std::vector<const Zombie*> zombiesInSight() {
    std::vector<const Zombie*> seen;
    world.walk<Zombie>([&](const Zombie& zombie) {
        if (zombie.health >= 0 && std::abs(zombie.position.x - hero().position.x) < sight) {
            seen.push_back(&zombie);
        }
    });
    std::stable_sort(seen.begin(), seen.end(), [](const Zombie* left, const Zombie* right) {
        return distanceTo(*left) < distanceTo(*right);
    });
    return seen;
}

bool cameraIsHeld() {
    const Camera* camera = world.first<Camera>();
    return camera != nullptr && camera->target != nullptr;
}

double heroFacing() { return hero().mirrorX ? -1.0 : 1.0; }

bool holdsRangedWeapon() { return hero().heldWeapon && hero().heldWeapon->getType() != ObjectType::Flamingo; }

bool weaponIsReady() { return hero().heldWeapon && !hero().heldWeapon->attackTimeout.running; }

double distanceTo(const Zombie& zombie) {
    return std::abs(zombie.position.x - hero().position.x) + std::abs(zombie.position.y - hero().position.y);
}

bool inSwing(const Zombie& zombie, double facing) {
    const Player& player = hero();
    // From the pose of the hand at rest, mirrored to the wanted side.
    const double reachX = std::abs(player.strikeX - player.position.x) * facing + player.position.x;
    const Rect body = zombie.getBounds();
    const double outX = std::max({body.minX - reachX, reachX - body.maxX, 0.0});
    const double outY = std::max({body.minY - player.strikeY, player.strikeY - body.maxY, 0.0});
    const double radius = player.heldWeapon ? player.heldWeapon->collisionRadius : 0.0;
    return outX * outX + outY * outY < radius * radius;
}

bool isVulnerable(const Zombie& zombie) { return !zombie.invulnerableTimer.running; }

bool canStrike(const Zombie& zombie) {
    const double gapX =
        std::abs(hero().position.x - zombie.position.x) - hero().size.x * 0.5 - zombie.size.x * 0.45;
    const double gapY = std::abs(hero().position.y - zombie.position.y);
    return std::abs(gapX) < zombie.size.x * 0.1 && gapY < zombie.size.y * 0.1;
}

double secondsUntilStrike(const Zombie& zombie) {
    if (!zombie.attackArmed) {
        return never;
    }
    return zombie.attackRateTimer.running ? zombie.attackRateTimer.duration - zombie.attackRateTimer.elapsed
                                          : 0.0;
}

const Weapon* weaponInReach() {
    const Rect body = hero().getBounds();
    const double reachX = body.minX + (hero().mirrorX ? -0.5 : 0.5) * hero().size.x;
    const double reachY = body.minY + 0.5 * hero().size.y;
    const Weapon* nearest = nullptr;
    double least = 0.0;
    world.walk<Weapon>([&](const Weapon& weapon) {
        const Rect bounds = weapon.getBounds();
        if (bounds.maxX > body.minX && body.maxX > bounds.minX && bounds.maxY > body.minY &&
            body.maxY > bounds.minY) {
            const double distance =
                std::abs(weapon.position.x - reachX) + std::abs(weapon.position.y - reachY);
            if (nearest == nullptr || distance < least) {
                nearest = &weapon;
                least = distance;
            }
        }
    });
    return nearest;
}

const Zombie* throwTarget(double facing) {
    const Player& player = hero();
    if (!holdsRangedWeapon()) {
        return nullptr;
    }
    const auto& weapon = static_cast<const RangedWeapon&>(*player.heldWeapon);
    const Vec2 half = {weapon.size.x * 0.5, weapon.size.y * 0.5};
    Vec2 place = {std::abs(player.strikeX - player.position.x) * facing + player.position.x, player.strikeY};
    Vec2 velocity = {weapon.initialVelocity.x * facing, weapon.initialVelocity.y};
    const std::vector<const Zombie*> zombies = zombiesInSight();
    for (double time = 0.0; place.y >= player.position.y; time += step) {
        for (const Zombie* zombie : zombies) {
            const Rect body = zombie->getBounds();
            const double walked = zombie->velocity.x * time;
            if (body.minX + walked < place.x + half.x && place.x - half.x < body.maxX + walked &&
                body.minY < place.y + half.y && place.y - half.y < body.maxY) {
                return zombie;
            }
        }
        velocity.y -= gravity * step;
        place.x += velocity.x * step;
        place.y += velocity.y * step;
    }
    return nullptr;
}

} // namespace dunkman::playthrough
