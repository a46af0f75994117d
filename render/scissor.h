#pragma once

#include "render/footprint.h"

namespace dunkman {

// While it lives, nothing outside of a rectangle is drawn or cleared. Not to be nested.
class Scissor {
public:
    explicit Scissor(const PixelRect& rectangle);
    ~Scissor();
    Scissor(const Scissor&) = delete;
    Scissor& operator=(const Scissor&) = delete;
};

// While it lives, only what lies below a height of the interface view is drawn, in whole rows of pixels of the
// window. Not to be nested.
class ScissorBelow {
public:
    explicit ScissorBelow(double y); // interface units, with the view where setScreenProjection() puts it

private:
    Scissor scissor;
};

} // namespace dunkman
