#include "render/scissor.h"

#include <algorithm>
#include <cmath>

#include "base/frame_state.h"
#include "base/geometry.h"
#include "render/gl.h"

namespace dunkman {

ScissorBelow::ScissorBelow(double y) {
    const double halfHeight = halfViewWidth / frameState.aspectRatio;
    const double shownPart = std::clamp((y / halfHeight + 1.0) * 0.5, 0.0, 1.0);
    const double rows = std::round(shownPart * static_cast<double>(frameState.clientHeight));
    glScissor(0, 0, static_cast<GLsizei>(frameState.clientWidth), static_cast<GLsizei>(rows));
    glEnable(GL_SCISSOR_TEST);
}

ScissorBelow::~ScissorBelow() { glDisable(GL_SCISSOR_TEST); }

} // namespace dunkman
