#include "workshop/playthrough/pilot.h"

#include <cmath>
#include <utility>

#include "workshop/playthrough/fighter.h"
#include "workshop/playthrough/senses.h"
#include "world/beach.h"
#include "world/world.h"

namespace dunkman::playthrough {

namespace {

constexpr double stepSeconds = 1.0 / 60.0;
constexpr double arrived = 0.15;
constexpr double frictionGlide = 0.125; // seconds
constexpr double threatDistance = 8.0;
constexpr int tapPause = 40; // steps

int signBeyond(double value, double zone) { return value > zone ? 1 : value < -zone ? -1 : 0; }

bool isOfKind(const Weapon& weapon, const std::string& word) {
    return (weapon.getType() == ObjectType::Flamingo) == (word == "flamingo");
}

// The nearest one lying about; the kind "" takes any.
const Weapon* nearestWeapon(const std::string& kind) {
    const Weapon* nearest = nullptr;
    double least = 0.0;
    world.walk<Weapon>([&](const Weapon& weapon) {
        const double distance =
            std::abs(weapon.position.x - hero().position.x) + std::abs(weapon.position.y - hero().position.y);
        if ((kind.empty() || isOfKind(weapon, kind)) && (nearest == nullptr || distance < least)) {
            nearest = &weapon;
            least = distance;
        }
    });
    return nearest;
}

// No fight holds the camera and nobody is close.
bool allIsQuiet() {
    if (cameraIsHeld()) {
        return false;
    }
    const std::vector<const Zombie*> zombies = zombiesInSight();
    return zombies.empty() || std::abs(zombies.front()->position.x - hero().position.x) > threatDistance;
}

} // namespace

Pilot::Pilot(std::vector<Intention> wantedPlan, int reactionSteps)
    : plan(std::move(wantedPlan)), glide(frictionGlide + reactionSteps * stepSeconds),
      underWay(static_cast<std::size_t>(reactionSteps)) {
    begin();
}

void Pilot::begin() {
    steps = 0;
    attacks = 0;
    nextTap = 0;
    running = false;
    corpsesBefore = world.objectsOfType(ObjectType::ZombieDead).size();
}

const std::set<std::int32_t>& Pilot::keysForStep() {
    if (steps == 0) {
        begin();
    }
    Wish wish;
    while (!finished()) {
        const std::optional<Wish> wanted = wishFor(plan[current]);
        ++steps;
        if (wanted) {
            wish = *wanted;
            break;
        }
        ++current;
        begin();
    }
    const bool busy = hero().heldWeapon && hero().heldWeapon->attackTimeout.running;
    attacks += busy && !wasBusy ? 1 : 0;
    wasBusy = busy;
    underWay.push_back(wish);
    const Wish due = underWay.front();
    underWay.pop_front();
    return hands.move(due);
}

std::optional<Wish> Pilot::wishFor(const Intention& intention) {
    switch (intention.verb) {
    case Verb::Act:
        return std::nullopt;
    case Verb::Walk:
        return walkTo(intention.x, intention.y);
    case Verb::Face:
        return face(intention.word == "left" ? -1.0 : 1.0);
    case Verb::Take:
        return take(intention);
    case Verb::Swing:
        return swing(intention);
    case Verb::Snipe:
        return snipe(intention.x);
    case Verb::Fight:
        return fight(intention);
    case Verb::Kite:
        if (steps * stepSeconds >= intention.x) {
            return std::nullopt;
        }
        return kitingWish();
    case Verb::Wait:
    default:
        if (steps * stepSeconds >= intention.x) {
            return std::nullopt;
        }
        return Wish{};
    }
}

std::optional<Wish> Pilot::walkTo(double x, double y) const {
    const Vec2 place = hero().position;
    if (std::abs(x - place.x) < arrived && std::abs(y - place.y) < arrived) {
        return std::nullopt;
    }
    Wish wish;
    wish.horizontal = signBeyond(x - place.x - hero().velocity.x * glide, arrived * 0.6);
    wish.vertical = signBeyond(y - place.y - hero().velocity.y * glide, arrived * 0.6);
    return wish;
}

std::optional<Wish> Pilot::face(double side) const {
    if (heroFacing() == side) {
        return std::nullopt;
    }
    Wish wish;
    wish.horizontal = side > 0.0 ? 1 : -1;
    return wish;
}

std::optional<Wish> Pilot::take(const Intention& intention) {
    if (hero().heldWeapon && isOfKind(*hero().heldWeapon, intention.word)) {
        return std::nullopt;
    }
    const Weapon* weapon = nearestWeapon(intention.word);
    if (weapon == nullptr) {
        return std::nullopt;
    }
    const std::optional<Wish> way = walkTo(
        weapon->position.x, std::fmax(std::fmin(weapon->position.y - 0.9, beachHalfDepth), -beachHalfDepth));
    Wish wish = way.value_or(Wish{});
    const Weapon* within = weaponInReach();
    wish.pickUp =
        within != nullptr && isOfKind(*within, intention.word) && hands.canTap() && steps >= nextTap;
    if (wish.pickUp) {
        nextTap = steps + tapPause; // a second tap before the first has worked would drop the weapon again
    }
    return wish;
}

std::optional<Wish> Pilot::swing(const Intention& intention) {
    if (attacks >= static_cast<int>(intention.x)) {
        return std::nullopt;
    }
    Wish wish;
    wish.attack = weaponIsReady() && hands.canTap();
    return wish;
}

std::optional<Wish> Pilot::snipe(double distance) {
    if (attacks > 0 || !holdsRangedWeapon()) {
        return std::nullopt;
    }
    Wish wish;
    const std::vector<const Zombie*> zombies = zombiesInSight();
    if (!zombies.empty()) {
        const Zombie* hit = throwTarget(heroFacing());
        const Zombie& target = *zombies.front();
        const double away = target.position.x - hero().position.x;
        wish.attack = weaponIsReady() && hands.canTap() && hit != nullptr &&
                      std::abs(hit->position.x - hero().position.x) >= distance;
        // Runs first, and turns round once there is room for the zombie to come a little closer.
        running = std::abs(away) < (running ? distance + 0.9 : distance - 0.4);
        if (running) {
            const bool attack = wish.attack;
            wish = kitingWish();
            wish.attack = attack;
        } else if ((away > 0.0 ? 1.0 : -1.0) != heroFacing()) {
            wish.horizontal = away > 0.0 ? 1 : -1;
        } else {
            wish.vertical =
                signBeyond(target.position.y - hero().position.y - hero().velocity.y * glide, 0.3);
        }
    }
    return wish;
}

std::optional<Wish> Pilot::fight(const Intention& intention) {
    if (fightIsOver(intention)) {
        return std::nullopt;
    }
    const Manner manner = {intention.careful, glide};
    Wish wish;
    if (!hero().heldWeapon) {
        Intention rearm;
        const Weapon* weapon = nearestWeapon("");
        if (weapon == nullptr) {
            wish = kitingWish();
        } else {
            rearm.word = weapon->getType() == ObjectType::Flamingo ? "flamingo" : "pineapple";
            wish = take(rearm).value_or(Wish{});
        }
    } else {
        wish = holdsRangedWeapon() ? throwingWish(manner) : meleeWish(manner);
    }
    wish.attack = wish.attack && hands.canTap();
    return wish;
}

bool Pilot::fightIsOver(const Intention& intention) const {
    switch (intention.end) {
    case FightEnd::Death:
        return false;
    case FightEnd::Seconds:
        return steps * stepSeconds >= intention.x;
    case FightEnd::Broken:
        return !hero().heldWeapon || allIsQuiet();
    case FightEnd::Hearts:
        return hero().health <= static_cast<int>(intention.x) || allIsQuiet();
    case FightEnd::Kills:
        return world.objectsOfType(ObjectType::ZombieDead).size() >=
                   corpsesBefore + static_cast<std::size_t>(intention.x) ||
               allIsQuiet();
    case FightEnd::Clear:
    default:
        return allIsQuiet();
    }
}

} // namespace dunkman::playthrough
