#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "app/reset.h"
#include "platform/offscreen/offscreen.h"
#include "render/binding_state_writer.h"
#include "render/image_table.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"
#include "render/shader_preprocessor.h"
#include "render/warm_up.h"
#include "tools/frames/stage.h"

// The shipped game as a real OpenGL draws it.
namespace dunkman {
namespace {

using Pixels = std::vector<std::uint8_t>;

std::unique_ptr<RendererObjects> rendererOfAGraphicsCard() {
    ShaderSourceSet sources;
    sources.vertex = preprocessShaderFile("drawable_basic.vert");
    sources.fragment = preprocessShaderFile("drawable_basic.frag");
    return std::make_unique<RendererObjects>(sources, ShaderSourceSet());
}

void swapRenderer(std::unique_ptr<RendererObjects>& other) {
    std::swap(rendererObjects, other);
    writable::bindingState = {};
    drawUnseen(pictures.imageTable.begin()->second); // brings its render state
}

// What lies between two looks at the game: there are some in each of its acts, its fights among them.
constexpr std::int64_t stride = 450; // steps

std::vector<Pixels> picturesOfTheGame(bool isSpared) {
    const std::filesystem::path before = std::filesystem::current_path();
    resetProgram();
    frames::begin({.size = {1280, 720}, .screen = ScreenId::Game});
    EXPECT_TRUE(isPreparedForSoftware()) << offscreen::driverName();
    std::unique_ptr<RendererObjects> graphicsCard = rendererOfAGraphicsCard();
    std::vector<Pixels> looks;
    for (std::int64_t step = 0; step < 9000; step += stride) {
        frames::runUntil(step);
        if (!isSpared) {
            swapRenderer(graphicsCard);
        }
        frames::iterate();
        looks.push_back(offscreen::takePicture().rgb);
        if (!isSpared) {
            swapRenderer(graphicsCard);
        }
    }
    std::filesystem::current_path(before);
    return looks;
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
