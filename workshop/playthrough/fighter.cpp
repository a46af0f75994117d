#include "workshop/playthrough/fighter.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "workshop/playthrough/senses.h"
#include "world/beach.h"
#include "world/camera.h"
#include "world/world.h"

namespace dunkman::playthrough {

namespace {

constexpr double warning = 0.28;        // seconds before a strike at which a careful fighter ducks away
constexpr double swingDistance = 2.1;   // where a swing just reaches and a zombie does not
constexpr double waitingDistance = 2.9; // while the zombie cannot be hurt
constexpr double throwingDistance = 2.6;
constexpr double heightBelow = 0.55; // a zombie strikes on its own level only, a swing reaches higher
constexpr double deadZone = 0.12;

int signBeyond(double value, double zone) { return value > zone ? 1 : value < -zone ? -1 : 0; }

// Where the hero can walk while a fight holds the camera.
struct Range {
    double low;
    double high;
};

Range walkingRange() {
    const Camera* camera = world.first<Camera>();
    if (camera == nullptr || camera->target == nullptr) {
        return {hero().position.x - 100.0, hero().position.x + 100.0};
    }
    const Rect view = viewRectangle(*camera);
    return {view.minX + 3.0, view.maxX - 3.5};
}

// Steers so that the hero comes to rest at the place.
void steerTo(Wish& wish, double x, double y, double glide) {
    const Player& player = hero();
    wish.horizontal = signBeyond(x - player.position.x - player.velocity.x * glide, deadZone);
    wish.vertical = signBeyond(y - player.position.y - player.velocity.y * glide, deadZone);
}

double sideOf(const Zombie& zombie) { return zombie.position.x < hero().position.x ? -1.0 : 1.0; }

// Away from the striker, up or down, wherever there is more room and fewer zombies.
Wish duckFrom(const Zombie& striker, const std::vector<const Zombie*>& zombies) {
    Wish wish;
    wish.horizontal = sideOf(striker) > 0.0 ? -1 : 1;
    double above = beachHalfDepth - hero().position.y;
    double below = beachHalfDepth + hero().position.y;
    for (const Zombie* zombie : zombies) {
        if (distanceTo(*zombie) < 3.0) {
            (zombie->position.y > hero().position.y ? above : below) -= 1.0;
        }
    }
    wish.vertical = above > below ? 1 : -1;
    const Range range = walkingRange();
    const bool cornered =
        wish.horizontal < 0 ? hero().position.x < range.low + 0.3 : hero().position.x > range.high - 0.3;
    if (cornered) {
        wish.horizontal = 0;
    }
    return wish;
}

const Zombie* nearestStriker(const std::vector<const Zombie*>& zombies) {
    const Zombie* striker = nullptr;
    for (const Zombie* zombie : zombies) {
        if (secondsUntilStrike(*zombie) < warning && canStrike(*zombie) &&
            (striker == nullptr || secondsUntilStrike(*zombie) < secondsUntilStrike(*striker))) {
            striker = zombie;
        }
    }
    return striker;
}

// A place at the distance from the zombie, on the hero's side of it, or past it when there is no room.
double standingPlace(const Zombie& zombie, double distance) {
    const Range range = walkingRange();
    const double place = zombie.position.x - sideOf(zombie) * distance;
    return std::clamp(place, range.low, range.high);
}

double levelBelow(const Zombie& zombie) {
    const double level = zombie.position.y - heightBelow;
    return level < -beachHalfDepth + 0.1 ? zombie.position.y - 0.1 : level;
}

int closeOnSide(const std::vector<const Zombie*>& zombies, double side) {
    return static_cast<int>(std::count_if(zombies.begin(), zombies.end(), [side](const Zombie* zombie) {
        return sideOf(*zombie) == side && std::abs(zombie->position.x - hero().position.x) < 3.2;
    }));
}

} // namespace

Wish kitingWish() {
    Wish wish;
    const std::vector<const Zombie*> zombies = zombiesInSight();
    if (zombies.empty()) {
        return wish;
    }
    double pushX = 0.0;
    double pushY = 0.0;
    for (const Zombie* zombie : zombies) {
        const double dx = hero().position.x - zombie->position.x;
        const double dy = hero().position.y - zombie->position.y;
        const double square = std::max(dx * dx + dy * dy * 2.0, 0.2);
        pushX += dx / square;
        pushY += 1.5 * dy / square;
    }
    const Range range = walkingRange();
    const double toLow = std::max(hero().position.x - range.low, 0.3);
    const double toHigh = std::max(range.high - hero().position.x, 0.3);
    pushX += 1.2 / toLow - 1.2 / toHigh;
    pushY += 0.4 / std::max(hero().position.y + beachHalfDepth, 0.2) -
             0.4 / std::max(beachHalfDepth - hero().position.y, 0.2);
    wish.horizontal = signBeyond(pushX, 0.08);
    wish.vertical = signBeyond(pushY, 0.15);
    return wish;
}

Wish meleeWish(const Manner& manner) {
    const bool careful = manner.careful;
    Wish wish;
    const std::vector<const Zombie*> zombies = zombiesInSight();
    if (zombies.empty()) {
        return wish;
    }
    const double facing = heroFacing();
    const bool opening =
        weaponIsReady() && std::any_of(zombies.begin(), zombies.end(), [&](const Zombie* zombie) {
            return isVulnerable(*zombie) && inSwing(*zombie, facing);
        });
    const Zombie* striker = careful ? nearestStriker(zombies) : nullptr;
    if (striker != nullptr &&
        !(opening && striker->health == 0 && isVulnerable(*striker) && inSwing(*striker, facing))) {
        wish = duckFrom(*striker, zombies);
        wish.attack = opening;
        return wish;
    }

    const Zombie& target = *zombies.front();
    const double side = sideOf(target);
    const bool crowded = closeOnSide(zombies, side) > 1;
    const bool surrounded = closeOnSide(zombies, -side) > 0;
    double distance = swingDistance;
    if (careful && (!isVulnerable(target) || !weaponIsReady())) {
        distance = waitingDistance;
    } else if (!careful) {
        distance = 1.5;
    }
    if (careful && (surrounded || crowded) && !opening) {
        wish = kitingWish();
    } else {
        steerTo(wish, standingPlace(target, distance), careful ? levelBelow(target) : target.position.y,
                manner.glide);
    }
    wish.attack = opening;
    // A turn on the spot towards who is about to come into reach.
    if (facing != side && wish.horizontal == 0) {
        wish.horizontal = side > 0.0 ? 1 : -1;
    }
    if (facing != side && weaponIsReady() && isVulnerable(target) && inSwing(target, side)) {
        wish.horizontal = side > 0.0 ? 1 : -1;
    }
    return wish;
}

Wish throwingWish(const Manner& manner) {
    Wish wish;
    const std::vector<const Zombie*> zombies = zombiesInSight();
    if (zombies.empty()) {
        return wish;
    }
    const Zombie* striker = manner.careful ? nearestStriker(zombies) : nullptr;
    if (striker != nullptr) {
        wish = duckFrom(*striker, zombies);
    } else {
        const Zombie& target = *zombies.front();
        const double side = sideOf(target);
        if (std::abs(target.position.x - hero().position.x) < throwingDistance && !weaponIsReady()) {
            wish = kitingWish();
        } else {
            const double x = std::clamp(hero().position.x, target.position.x - 6.0, target.position.x + 6.0);
            steerTo(wish, x, std::clamp(hero().position.y, target.position.y - 0.6, target.position.y + 0.4),
                    manner.glide);
            if (heroFacing() != side) {
                wish.horizontal = side > 0.0 ? 1 : -1;
            }
        }
    }
    const Zombie* hit = throwTarget(heroFacing());
    wish.attack = weaponIsReady() && hit != nullptr && isVulnerable(*hit);
    return wish;
}

} // namespace dunkman::playthrough
