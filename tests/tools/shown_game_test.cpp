#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "app/reset.h"
#include "platform/offscreen/offscreen.h"
#include "render/binding_state_writer.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"
#include "render/shader_preprocessor.h"
#include "tools/frames/stage.h"

// The shipped game as a real OpenGL draws it.
namespace dunkman {
namespace {

using Pixels = std::vector<std::uint8_t>;

void drawAsOnAGraphicsCard() {
    ShaderSourceSet sources;
    sources.vertex = preprocessShaderFile("drawable_basic.vert");
    sources.fragment = preprocessShaderFile("drawable_basic.frag");
    rendererObjects = std::make_unique<RendererObjects>(sources, ShaderSourceSet());
    writable::bindingState = {};
    rendererObjects->basic.material.applyRenderState();
    rendererObjects->basic.material.bind();
}

// What lies between two looks at the game: there are some in each of its acts, its fights among them.
constexpr std::int64_t stride = 450; // steps

std::vector<Pixels> picturesOfTheGame(bool isSpared) {
    const std::filesystem::path before = std::filesystem::current_path();
    resetProgram();
    frames::begin({.size = {1280, 720}, .screen = ScreenId::Game});
    EXPECT_TRUE(isPreparedForSoftware()) << offscreen::driverName();
    if (!isSpared) {
        drawAsOnAGraphicsCard();
    }
    std::vector<Pixels> pictures;
    for (std::int64_t step = 0; step < 9000; step += stride) {
        frames::runUntil(step);
        frames::iterate();
        pictures.push_back(offscreen::takePicture().rgb);
    }
    std::filesystem::current_path(before);
    return pictures;
}

TEST(ShownGame, LooksAlikeWhateverIsSparedInSoftware) {
    const std::vector<Pixels> whole = picturesOfTheGame(false);
    const std::vector<Pixels> spared = picturesOfTheGame(true);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::size_t differences = 0;
        for (std::size_t byte = 0; byte < whole[i].size(); ++byte) {
            differences += whole[i][byte] == spared[i][byte] ? 0u : 1u;
        }
        EXPECT_EQ(differences, 0u) << "in step " << static_cast<std::int64_t>(i) * stride;
    }
    EXPECT_NE(whole.front(), whole.back());
}

} // namespace
} // namespace dunkman
