#include "world/player.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>

#include "base/frame_state.h"
#include "base/key_states.h"
#include "exact/exact_math.h"
#include "world/beach.h"
#include "world/camera.h"
#include "world/numbers.h"
#include "world/object_class.h"
#include "world/trace_line.h"
#include "world/world.h"

namespace dunkman {

namespace {

constexpr std::string_view unarmedKey = "playerUnarmed";
constexpr std::string_view armedKey = "player";
constexpr std::array images = {unarmedKey, armedKey};

// The play area. The two margins of a held view differ on purpose.
constexpr double leftViewMargin = 3.0;
constexpr double rightViewMargin = 3.5;

// In proportions of the hero's size.
constexpr double handHeight = 0.45;
constexpr double handReach = 0.75;

double thrust(bool forward, bool backward) { return (forward ? 1.0 : 0.0) - (backward ? 1.0 : 0.0); }

} // namespace

template <> const ObjectClass& objectClass<Player>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Player>(),
        .meaning = "The hero. The game needs one and ends when he falls.",
        .images = images,
    };
    return record;
}

Player::Player() {
    health = 5;
    autoMirror = true;
    useImage(armedKey);
    armedImage = texture;
    useImage(unarmedKey);
    unarmedImage = texture;
    fitWidthToImage();
}

void Player::update() {
    steer();
    Walker::update();
    stayInPlayArea();

    const Vec2 reach = reachPoint();
    const bool pickUpPressed = eitherJustPressed(keys::z, keys::enter);
    if (heldWeapon) {
        // Before the attack test: the timer may end in the very step of the next attack.
        poseHeldWeapon();
        if (eitherJustPressed(keys::x, keys::space)) {
            attackWithHeldWeapon();
            return;
        }
        if (pickUpPressed) {
            dropHeldWeapon(reach);
        }
    }

    Interactable* item = nearestItem(reach);
    if (item == nullptr) {
        return;
    }
    if (!pickUpPressed) {
        item->highlighted = true;
    } else if (item->getType() != ObjectType::Interactable) {
        take(static_cast<Weapon&>(*item));
    }
}

void Player::steer() {
    const double horizontal = thrust(eitherDown(keys::d, keys::right), eitherDown(keys::a, keys::left));
    const double vertical = thrust(eitherDown(keys::w, keys::up), eitherDown(keys::s, keys::down));
    velocity.x += horizontal * acceleration.x * frameState.frameDelta;
    velocity.y += vertical * acceleration.y * frameState.frameDelta;
}

void Player::stayInPlayArea() {
    const Camera* camera = world.first<Camera>();
    if (camera != nullptr && camera->target != nullptr) {
        const Rect view = viewRectangle(*camera);
        if (view.minX + leftViewMargin > position.x) {
            position.x = view.minX + leftViewMargin;
        } else {
            position.x = std::min(view.maxX - rightViewMargin, position.x);
        }
    }
    position.y = clamp(position.y, -beachHalfDepth, beachHalfDepth);
    position.x = std::max(position.x, beachStart);
}

// +0.5 unmirrored, -0.5 mirrored.
double Player::facingSide() const { return 0.5 - (mirrorX ? 1.0 : 0.0); }

// The centre of the body; mirrored, half a width beyond its low-x edge.
Vec2 Player::reachPoint() const {
    const Rect bounds = getBounds();
    return {bounds.minX + facingSide() * size.x, bounds.minY + 0.5 * size.y};
}

void Player::attackWithHeldWeapon() {
    if (heldWeapon->attackTimeout.running) {
        return;
    }
    heldWeapon->attackTimeout.running = true;
    if (heldWeapon->durability >= 0) {
        heldWeapon->durability -= 1;
    }
    heldWeapon->attack(position, {strikeX, strikeY}, mirrorX);
    if (heldWeapon->durability == 0) {
        heldWeapon.reset();
        texture = unarmedImage;
    }
}

void Player::dropHeldWeapon(Vec2 reach) {
    heldWeapon->position = {reach.x - 0.0, reach.y - 0.5};
    world.queueAdd(std::move(heldWeapon));
    texture = unarmedImage;
}

Interactable* Player::nearestItem(Vec2 reach) const {
    const Rect bounds = getBounds();
    double nearest = -1.0;
    Interactable* candidate = nullptr;
    world.walk<Interactable>([&](Interactable& item) {
        if (!overlap(item.getBounds(), bounds) || world.isQueuedForDetach(item)) {
            return;
        }
        const double distance = std::abs(item.position.x - reach.x) + std::abs(item.position.y - reach.y);
        if (nearest < 0.0 || distance < nearest) {
            nearest = distance;
            candidate = &item;
        }
    });
    return candidate;
}

void Player::take(Weapon& weapon) {
    world.queueDetach(weapon);
    heldWeapon.reset(&weapon);
    texture = armedImage;
    poseHeldWeapon();
}

void Player::poseHeldWeapon() {
    assert(heldWeapon != nullptr);
    Weapon& weapon = *heldWeapon;
    const double share = clamp(weapon.attackTimeout.elapsed / weapon.attackTimeout.duration /
                                   weapon.timeoutAnimationPercentage,
                               0.0, 1.0);
    double phase = 0.0;
    if (weapon.attackArc.x != 0.0) {
        phase = weapon.attackArc.y != 0.0 ? share * twoPi : share * pi;
    } else {
        phase = share * pi + pi;
    }
    const double swing = exactSin(phase);
    weapon.animationAngle = (swing > 0.0 ? weapon.attackArc.x : weapon.attackArc.y) * swing;
    weapon.attackTimeout.advance(frameState.frameDelta);

    const double side = facingSide();
    handY = position.y + size.y * handHeight;
    handX = position.x + side * handReach * size.x;
    handAngle = (weapon.animationAngle - 90.0) * side;

    double fromHandX = (weapon.collisionPivot.x - weapon.handPivot.x) * weapon.size.x;
    const double fromHandY = (weapon.collisionPivot.y - weapon.handPivot.y) * weapon.size.y;
    if (side < 0.0) {
        fromHandX = -fromHandX;
    }
    const double angle = handAngle * radiansPerDegree;
    const double cosine = exactCos(angle);
    const double sine = exactSin(angle);
    strikeX = cosine * fromHandX - sine * fromHandY + handX;
    strikeY = sine * fromHandX + cosine * fromHandY + handY;
}

void Player::draw() {
    Walker::draw();
    if (heldWeapon) {
        drawHeldWeapon();
    }
}

void Player::drawHeldWeapon() {
    assert(heldWeapon != nullptr);
    Weapon& weapon = *heldWeapon;
    if (weapon.autoMirror) {
        weapon.mirrorX = mirrorX;
    }
    Sprite sprite = weapon.asSprite();
    sprite.position = {handX, handY};
    sprite.pivot = weapon.handPivot;
    sprite.angle = handAngle;
    sprite.zOffset = zOffset - (position.y - handY - 0.01);
    drawIfTextured(sprite);
}

void Player::traceState(TraceLine& line) const {
    Walker::traceState(line);
    line.add("held", typeNameOf(heldWeapon.get()));
    line.add("handX", handX);
    line.add("handY", handY);
    line.add("handAngle", handAngle);
    line.add("strikeX", strikeX);
    line.add("strikeY", strikeY);
}

} // namespace dunkman
