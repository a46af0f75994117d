#include "world/drawable.h"

#include "render/image_table.h"
#include "world/properties.h"

namespace dunkman {

Rect Drawable::getBounds() const {
    const double minX = position.x - pivot.x * size.x;
    const double minY = position.y - pivot.y * size.y;
    return {minX, minY, minX + size.x, minY + size.y};
}

void Drawable::readProperties(const JsonValue& value) {
    Object::readProperties(value);
    readStringProperty(value, "imageKey", imageKey);
    if (!imageKey.empty()) {
        useImage(imageKey);
    }
    // Only a number written with a decimal point is a height whose width follows the image; scenes rely on
    // the plain integer staying a square.
    if (value.get("size").kind == JsonKind::Float) {
        fitWidthToImage();
    }
    readBoolProperty(value, "mirrorX", mirrorX);
    readBoolProperty(value, "mirrorY", mirrorY);
    readBoolProperty(value, "isFlat", isFlat);
    readBoolProperty(value, "isUI", isUI);
    readNumberProperty(value, "gamma", gamma);
    readNumberProperty(value, "gain", gain);
    readNumberProperty(value, "saturation", saturation);
    readNumberProperty(value, "tintR", tintR);
    readNumberProperty(value, "tintG", tintG);
    readNumberProperty(value, "tintB", tintB);
    readPairProperty(value, "pivot", pivot);
    readNumberProperty(value, "zOffset", zOffset);
    readNumberProperty(value, "tilt", tilt);
}

JsonValue Drawable::writeProperties() const {
    JsonValue value = Object::writeProperties();
    writeProperty(value, "imageKey", std::string_view(imageKey));
    writeProperty(value, "mirrorX", mirrorX);
    writeProperty(value, "mirrorY", mirrorY);
    writeProperty(value, "isFlat", isFlat);
    writeProperty(value, "isUI", isUI);
    writeProperty(value, "gamma", gamma);
    writeProperty(value, "gain", gain);
    writeProperty(value, "saturation", saturation);
    writeProperty(value, "tintR", tintR);
    writeProperty(value, "tintG", tintG);
    writeProperty(value, "tintB", tintB);
    writeProperty(value, "pivot", pivot);
    writeProperty(value, "zOffset", zOffset);
    writeProperty(value, "tilt", tilt);
    return value;
}

void Drawable::drawScaled(Vec2 scale, double angle) {
    const SpriteMode standing = isFlat ? SpriteMode::Flat : SpriteMode::World;
    submitSprite(isUI ? SpriteMode::Interface : standing, position, scale, angle);
}

void Drawable::draw() { drawScaled({1.0, 1.0}, tilt); }

void Drawable::useImage(std::string_view key) { texture = imageByKey(key); }

void Drawable::fitWidthToImage() { size.x = aspectOf(texture) * size.y; }

void Drawable::submitSprite(SpriteMode mode, Vec2 place, Vec2 scale, double angle) const {
    if (texture.name == 0) {
        return;
    }
    Vec2 pivotCopy = pivot; // the sprite drawer writes the mirrored pivot back
    drawSprite(texture, mirrorX, mirrorY, mode, gamma, gain, saturation, tintR, tintG, tintB, place, size,
               pivotCopy, scale, angle, zOffset);
}

} // namespace dunkman
