#include "render/scissor.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "base/frame_state.h"
#include "base/geometry.h"
#include "render/binding_state_writer.h"
#include "render/gl.h"

namespace dunkman {
namespace {

PixelRect pixelsBelow(double y) {
    const double halfHeight = halfViewWidth / frameState.aspectRatio;
    const double shownPart = std::clamp((y / halfHeight + 1.0) * 0.5, 0.0, 1.0);
    const double rows = std::round(shownPart * static_cast<double>(frameState.clientHeight));
    return {.width = static_cast<std::int32_t>(frameState.clientWidth),
            .height = static_cast<std::int32_t>(rows)};
}

} // namespace

Scissor::Scissor(const PixelRect& rectangle) {
    assert(!bindingState.isScissored);
    glScissor(rectangle.x, rectangle.y, rectangle.width, rectangle.height);
    glEnable(GL_SCISSOR_TEST);
    writable::bindingState.isScissored = true;
}

Scissor::~Scissor() {
    glDisable(GL_SCISSOR_TEST);
    writable::bindingState.isScissored = false;
}

ScissorBelow::ScissorBelow(double y) : scissor(pixelsBelow(y)) {}

} // namespace dunkman
