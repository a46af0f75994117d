#include "render/view.h"

#include <cassert>

#include "base/frame_state.h"
#include "base/geometry.h"
#include "render/renderer_objects.h"

namespace dunkman {

void setViewProjection(const Matrix4& matrix) {
    assert(rendererObjects != nullptr);
    rendererObjects->view = matrix;
    SpriteProgram& basic = rendererObjects->basic;
    basic.material.setUniform(basic.uniforms.viewProjection, matrix);
    if (rendererObjects->software) {
        SpriteProgram& plain = rendererObjects->software->plain;
        plain.material.setUniform(plain.uniforms.viewProjection, matrix);
    }
}

const Matrix4& currentView() {
    assert(rendererObjects != nullptr);
    return rendererObjects->view;
}

void setScreenProjection(double lowered) {
    const float scaleX = 1.0f / static_cast<float>(halfViewWidth);
    const float scaleY = 1.0f / (static_cast<float>(viewWidth / frameState.aspectRatio) * 0.5f);
    setViewProjection({scaleX, 0.0f, 0.0f, 0.0f, //
                       0.0f, scaleY, 0.0f, 0.0f, //
                       0.0f, 0.0f, -1.0f, 0.0f,  //
                       0.0f, scaleY * static_cast<float>(lowered), -0.0f, 1.0f});
}

} // namespace dunkman
