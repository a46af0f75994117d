#include <benchmark/benchmark.h>

#include <filesystem>

#include "platform/simulated/gl_sim.h"
#include "render/gl.h"
#include "render/image_table_writer.h"
#include "render/renderer.h"
#include "render/sprite.h"
#include "render/text.h"
#include "render/view.h"

// Submission of sprites against an OpenGL that does nothing: what the renderer itself costs. Run from the repository's root.
namespace dunkman {
namespace {

// The simulated OpenGL keeps what it is told, which costs a fifth of a sprite. Here the calls of a sprite are taken and
// forgotten.
template <typename... Parameters> void forget(void (*&function)(Parameters...)) {
    function = [](Parameters...) {};
}

void forgetCalls() {
    forget(glUniform1fv);
    forget(glUniform3fv);
    forget(glUniform4fv);
    forget(glUniform1uiv);
    forget(glBindTextureUnit);
    forget(glBindSampler);
    forget(glBindVertexArray);
    forget(glDrawArrays);
}

void prepare() {
    [[maybe_unused]] static const bool prepared = [] {
        simulated::loadGlFunctions();
        const std::filesystem::path before = std::filesystem::current_path();
        std::filesystem::current_path(before / "data");
        createRenderer();
        std::filesystem::current_path(before);
        std::uint32_t width = 40;
        for (Texture2D& glyph : writable::pictures.glyphTable) {
            glCreateTextures(GL_TEXTURE_2D, 1, &glyph.name);
            glyph.width = width++;
            glyph.height = 128;
        }
        setScreenProjection();
        forgetCalls();
        return true;
    }();
}

void drawOne(const Texture2D& texture, double angle) {
    draw({.texture = texture,
          .mirrorX = true,
          .mirrorY = true,
          .position = {1.0, -2.0},
          .size = {3.0, 4.0},
          .pivot = {0.5, 0.0},
          .angle = angle,
          .zOffset = 0.25});
}

void spriteUpright(benchmark::State& state) {
    prepare();
    for (auto iteration : state) {
        drawOne(writable::pictures.glyphTable[0], 0.0);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(spriteUpright);

// The angle changes from sprite to sprite, as that of a swung weapon does.
void spriteTurning(benchmark::State& state) {
    prepare();
    double angle = 0.0;
    for (auto iteration : state) {
        drawOne(writable::pictures.glyphTable[0], angle);
        angle += 0.37;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(spriteTurning);

// The longest line of the story. Items are letters.
void textLine(benchmark::State& state) {
    prepare();
    constexpr std::string_view line = "BUT LITTLE DOES HE KNOW HE CAN CHECK IN ANY TIME";
    constexpr std::int64_t letters = 38;
    for (auto iteration : state) {
        drawText(line, 0, 0.25, 0.0, {0.0, -3.0, 0.0, -3.0}, {0.5, 0.5});
    }
    state.SetItemsProcessed(state.iterations() * letters);
}
BENCHMARK(textLine);

} // namespace
} // namespace dunkman
