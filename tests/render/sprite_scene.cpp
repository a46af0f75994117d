#include "tests/render/sprite_scene.h"

#include <cstdlib>

#include "render/gl.h"
#include "render/renderer_objects.h"

namespace dunkman {
namespace {

bool startsWith(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }

// The numbers between the braces of a recorded call.
std::vector<double> numbersIn(const std::string& call) {
    std::vector<double> numbers;
    std::size_t cursor = call.find('{');
    while (cursor != std::string::npos && call[cursor] != '}') {
        numbers.push_back(std::strtod(call.c_str() + cursor + 1, nullptr));
        cursor = call.find_first_of(",}", cursor + 1);
    }
    return numbers;
}

} // namespace

SpriteScene::SpriteScene() {
    gl.uniforms = {{"uViewProjection", GL_FLOAT_MAT4, 0, 0},
                   {"uDestMinAndSize", GL_FLOAT_VEC4, 1, 0},
                   {"uPosCosSin", GL_FLOAT_VEC4, 2, 0},
                   {"uMirrorFlags", GL_UNSIGNED_INT, 3, 0},
                   {"uTexture", GL_SAMPLER_2D, 4, 0},
                   {"zOffset", GL_FLOAT, 5, 0},
                   {"uGammaGainSaturation", GL_FLOAT_VEC3, 6, 0},
                   {"uTint", GL_FLOAT_VEC3, 7, 0}};
    rendererObjects = std::make_unique<RendererObjects>(ShaderSourceSet{}, ShaderSourceSet{});
    gl.calls.clear();
}

Texture2D SpriteScene::texture(std::uint32_t name, std::uint32_t width, std::uint32_t height) {
    Texture2D described;
    described.name = name;
    described.width = width;
    described.height = height;
    return described;
}

std::vector<DrawnSprite> SpriteScene::takeSprites() {
    std::vector<DrawnSprite> sprites;
    DrawnSprite next;
    for (const std::string& call : gl.takeCalls()) {
        if (startsWith(call, "glUniform4fv(1,")) {
            next.destMinAndSize = numbersIn(call);
        } else if (startsWith(call, "glUniform4fv(2,")) {
            next.posCosSin = numbersIn(call);
        } else if (startsWith(call, "glUniform1uiv(3,")) {
            next.flags = static_cast<std::uint32_t>(numbersIn(call).at(0));
        } else if (startsWith(call, "glBindTextureUnit(0, ")) {
            next.texture = static_cast<std::uint32_t>(std::strtoul(call.c_str() + 21, nullptr, 10));
        } else if (startsWith(call, "glUniform1fv(5,")) {
            next.zOffset = numbersIn(call).at(0);
        } else if (startsWith(call, "glDrawArrays")) {
            sprites.push_back(next);
        }
    }
    return sprites;
}

} // namespace dunkman
