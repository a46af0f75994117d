#pragma once

namespace dunkman {

// While it lives, only what lies below a height of the interface view is drawn, in whole rows of pixels of the
// window. Not to be nested.
class ScissorBelow {
public:
    explicit ScissorBelow(double y); // interface units, with the view where setScreenProjection() puts it
    ~ScissorBelow();
    ScissorBelow(const ScissorBelow&) = delete;
    ScissorBelow& operator=(const ScissorBelow&) = delete;
};

} // namespace dunkman
