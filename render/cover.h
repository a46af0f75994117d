#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "base/geometry.h"
#include "render/footprint.h"
#include "render/sprite.h"
#include "render/view.h"

namespace dunkman {

// What will hide a backdrop: the opaque parts of sprites that are drawn over it later in the same picture.
class Cover {
public:
    // Of sprites drawn with this view.
    explicit Cover(const Matrix4& view);

    // Takes in a sprite that is going to be drawn just as it is here. One that stands askew or hides little counts as
    // hiding nothing, and so does what comes when there is no room any more.
    void add(const Sprite& sprite);

    // The pixels outside of which everything will be hidden.
    PixelRect uncovered() const;

private:
    static constexpr std::size_t mostParts = 64;

    Matrix4 viewProjection;
    std::optional<PlaneInPicture> plane; // none: nothing counts
    std::array<Rect, mostParts> parts;   // pixels of the picture
    std::size_t count = 0;
};

} // namespace dunkman
