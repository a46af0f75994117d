#include "world/drawable.h"

#include <array>

#include "render/image_table.h"
#include "world/object_class.h"
#include "world/trace_line.h"

namespace dunkman {

namespace {

constexpr std::array fields = {
    field<&Drawable::imageKey>("imageKey", "key of its picture; empty: its class's own, or none"),
    field<&Drawable::mirrorX>("mirrorX", "flips the picture left to right"),
    field<&Drawable::mirrorY>("mirrorY", "true shows the picture upright, false on its head"),
    field<&Drawable::isFlat>("isFlat", "lies on the ground instead of standing upright"),
    field<&Drawable::isUI>("isUI", "lies over the rest of the level; wins over isFlat"),
    field<&Drawable::gamma>("gamma", "exponent of the colours; 1 leaves them", notNegative),
    field<&Drawable::gain>("gain", "factor of the colours; 1 leaves them", notNegative),
    field<&Drawable::saturation>("saturation", "0 is grey, 1 leaves the colours", notNegative),
    field<&Drawable::tintR>("tintR", "factor of the red", notNegative),
    field<&Drawable::tintG>("tintG", "factor of the green", notNegative),
    field<&Drawable::tintB>("tintB", "factor of the blue", notNegative),
    field<&Drawable::pivot>("pivot", "point of the picture that sits at the position, fractions of its size"),
    field<&Drawable::zOffset>("zOffset", "added to the depth of its place, world units; more is nearer"),
    field<&Drawable::tilt>("tilt", "rotation about the pivot, degrees counter-clockwise"),
};

} // namespace

template <> const ObjectClass& objectClass<Drawable>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Drawable>(),
        .meaning = "A picture that stands, lies or hangs somewhere.",
        .fields = fields,
        .rule = "A size written as one number with a decimal point is a height, and the width follows the "
                "picture. A whole number is a square, a pair is taken as it stands.",
    };
    return record;
}

Rect Drawable::getBounds() const {
    const double minX = position.x - pivot.x * size.x;
    const double minY = position.y - pivot.y * size.y;
    return {minX, minY, minX + size.x, minY + size.y};
}

void Drawable::readProperties(const JsonValue& value) {
    Object::readProperties(value);
    // On every call: an earlier one may have brought the key.
    if (!imageKey.empty()) {
        useImage(imageKey);
    }
    // Only a number written with a decimal point is a height whose width follows the image; scenes rely on
    // the plain integer staying a square.
    if (value.get("size").kind == JsonKind::Float) {
        fitWidthToImage();
    }
}

void Drawable::traceState(TraceLine& line) const {
    Object::traceState(line);
    line.add("mirrorX", mirrorX);
    line.add("tilt", tilt);
    line.add("zOffset", zOffset);
}

void Drawable::drawScaled(Vec2 scale, double angle) {
    Sprite sprite = asSprite();
    if (isUI) {
        sprite.mode = SpriteMode::Interface;
    }
    sprite.scale = scale;
    sprite.angle = angle;
    drawIfTextured(sprite);
}

void Drawable::draw() { drawScaled({1.0, 1.0}, tilt); }

void Drawable::useImage(std::string_view key) { texture = imageByKey(key); }

void Drawable::fitWidthToImage() { size.x = aspectOf(texture) * size.y; }

Sprite Drawable::asSprite() const {
    return {.texture = texture,
            .mirrorX = mirrorX,
            .mirrorY = mirrorY,
            .mode = isFlat ? SpriteMode::Flat : SpriteMode::World,
            .gamma = gamma,
            .gain = gain,
            .saturation = saturation,
            .tintR = tintR,
            .tintG = tintG,
            .tintB = tintB,
            .position = position,
            .size = size,
            .pivot = pivot,
            .zOffset = zOffset};
}

void drawIfTextured(const Sprite& sprite) {
    if (sprite.texture.name != 0) {
        draw(sprite);
    }
}

} // namespace dunkman
