#include "world/zombie.h"

#include <array>
#include <cassert>
#include <cmath>

#include "base/frame_state.h"
#include "world/numbers.h"
#include "world/object_class.h"
#include "world/player.h"
#include "world/registry.h"
#include "world/trace_line.h"
#include "world/world.h"
#include "world/zombie_dead.h"

namespace dunkman {

namespace {

constexpr std::array fields = {
    field<&Zombie::attackRateTimer>("attackRateTimer", "seconds from one strike to the next", positive),
    field<&Zombie::searchRadius>("searchRadius", "sideways distance at which it notices the hero, units",
                                 notNegative),
    field<&Zombie::attackDelay>("attackDelay", "seconds from arrival to the first strike", notNegative),
};

constexpr std::array<std::string_view, 1> images = {"zombie"};

constexpr std::int32_t strikeDamage = 1;

// Where a zombie stops: shares of the two bodies' widths, and how close counts as arrived.
constexpr double heroBodyShare = 0.5;
constexpr double ownBodyShare = 0.45;
constexpr double arrivedShare = 0.1;

// The strike shows as a swelling over the first fifth of the pause.
constexpr double swellRate = 10.0;
constexpr double swellAmount = 0.2;

} // namespace

template <> const ObjectClass& objectClass<Zombie>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Zombie>(),
        .meaning = "The enemy: notices the hero, walks up and strikes while he stays in reach.",
        .fields = fields,
        .images = images,
    };
    return record;
}

Zombie::Zombie() {
    autoMirror = true;
    acceleration = {10.0, 10.0};
    invulnerableTimer.duration = 0.5;
    useImage(images[0]);
    fitWidthToImage();
}

void Zombie::update() {
    Walker::update();
    attackRateTimer.advance(frameState.frameDelta);

    Player* player = world.first<Player>();
    if (player == nullptr) {
        return;
    }
    const double toPlayerX = player->position.x - position.x;
    const double toPlayerY = player->position.y - position.y;
    if (std::abs(toPlayerX) > searchRadius) {
        return;
    }
    if (toPlayerX > 0.0) {
        mirrorX = inverseMirror;
    }
    if (toPlayerX < 0.0) {
        mirrorX = !inverseMirror;
    }

    const double side = toPlayerX < 0.0 ? -1.0 : 1.0;
    double gapX = toPlayerX - (player->size.x * heroBodyShare + size.x * ownBodyShare) * side;
    double gapY = toPlayerY;
    if (std::abs(gapX) < size.x * arrivedShare) {
        gapX = 0.0;
    }
    if (std::abs(gapY) < size.y * arrivedShare) {
        gapY = 0.0;
    }

    if (std::abs(gapX) + std::abs(gapY) == 0.0) {
        strikeWhenReady();
    } else {
        attackArmed = false;
        velocity.x += signOf(gapX) * acceleration.x * frameState.frameDelta;
        velocity.y += signOf(gapY) * acceleration.y * frameState.frameDelta;
    }
}

void Zombie::strikeWhenReady() {
    if (attackRateTimer.running) {
        return;
    }
    if (attackArmed) {
        Player* const player = world.first<Player>();
        assert(player != nullptr);
        player->takeDamage(strikeDamage);
    } else {
        // Only the end of the pause is waited for before the first strike. A wind-up longer than the pause
        // starts below zero.
        attackArmed = true;
        attackRateTimer.elapsed = attackRateTimer.duration - attackDelay;
    }
    attackRateTimer.running = true;
}

void Zombie::takeDamage(std::int32_t amount) {
    Walker::takeDamage(amount);
    if (health < 0) {
        world.queueDestroy(*this);
        auto corpse = makeObject<ZombieDead>();
        corpse->position = position;
        corpse->mirrorX = mirrorX;
        corpse->pivot = pivot;
        corpse->size.y = size.y; // the width stays the constructor's until the corpse's first update
        world.queueAdd(std::move(corpse));
    }
}

void Zombie::draw() {
    if (hiddenByBlink()) {
        return;
    }
    if (!attackRateTimer.running) {
        Walker::draw();
        return;
    }
    const double progress = attackRateTimer.elapsed / attackRateTimer.duration * swellRate;
    const double scale = 1.0 + swellAmount * clamp(progress, 0.0, 1.0) * clamp(2.0 - progress, 0.0, 1.0);
    drawScaled({scale, scale}, 0.0);
}

void Zombie::traceState(TraceLine& line) const {
    Walker::traceState(line);
    line.add("armed", attackArmed);
    line.add("strikeRunning", attackRateTimer.running);
    line.add("strikeElapsed", attackRateTimer.elapsed);
}

} // namespace dunkman
