#pragma once

#include <string>
#include <string_view>

#include "render/sprite.h"
#include "render/texture.h"
#include "world/object.h"

namespace dunkman {

// An object with a sprite.
class Drawable : public Object {
public:
    static constexpr ObjectType type = ObjectType::Drawable;

    ObjectType getType() const override { return type; }
    Rect getBounds() const override;
    void readProperties(const JsonValue& value) override; // image and width beside the list
    void traceState(TraceLine& line) const override;

    // Submits the sprite; scale and rotation act about the pivot. `angle` in degrees. Draws nothing while
    // there is no texture.
    virtual void drawScaled(Vec2 scale, double angle);

    // Draws the object as the scene shows it.
    virtual void draw();

    // Takes the picture of the image table, but neither its key nor its proportions. Stops the game when
    // there is no such image.
    void useImage(std::string_view key);

    // Sets the width from the height and the image's proportions.
    void fitWidthToImage();

    Texture2D texture; // a copy, not owned; name 0: nothing to draw

    // Fields of data files.
    bool mirrorX = false;
    bool mirrorY = true; // images are stored top row first: unmirrored ones would stand on their heads
    bool isFlat = false;
    bool isUI = false;
    double gamma = 1.0;
    double gain = 1.0;
    double saturation = 1.0;
    double tintR = 1.0;
    double tintG = 1.0;
    double tintB = 1.0;
    std::string imageKey;
    Vec2 pivot{0.5, 0.5};
    double zOffset = 0.0;
    double tilt = 0.0;

    // As it stands in the scene, unscaled and untilted; who draws it changes what differs. Refers to `texture`.
    Sprite asSprite() const;
};

// Draws nothing while there is no texture.
void drawIfTextured(const Sprite& sprite);

} // namespace dunkman
