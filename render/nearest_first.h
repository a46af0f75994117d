#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/geometry.h"
#include "render/footprint.h"
#include "render/sorting_depth.h"
#include "render/sprite.h"
#include "render/view.h"

namespace dunkman {

// Keeps sprites of one view back, to ask OpenGL for the nearest first. Where it is done in software, a pixel that lies behind
// one already drawn costs next to nothing, but one that is drawn over later costs as much as any.
//
// No pixel of the picture is another for it. What is seen of sprites is the nearest at every pixel, whichever came first,
// except where two are equally near: there the first stays. So none overtakes another that may be as near as itself anywhere
// where both are. What lies outside the picture is left out.
class SpriteQueue {
public:
    SpriteQueue();

    // With this view the sprites are to be drawn.
    void begin(const Matrix4& view);
    bool isOpen() const { return open; }
    void add(const Sprite& sprite);

    // Draws them.
    void end();

private:
    struct Entry {
        Sprite sprite;
        Rect box; // around it, pixels of the picture
        DepthRange depths;
    };

    static bool mayOvertake(const Entry& later, const Entry& earlier);
    void drawAll();

    Matrix4 viewProjection{};
    std::optional<PlaneInPicture> plane;
    std::vector<Entry> entries; // as they came
    std::vector<std::uint32_t> order;
    bool open = false;
};

// Runs `drawSprites`, which draws sprites of one view and changes nothing else of OpenGL's state. In software, in a
// picture without blending whose depth buffer holds the sprites that are to be seen, they are drawn nearest first; otherwise
// as they come.
void drawNearestFirst(void (*drawSprites)());

} // namespace dunkman
