#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <set>
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

// The frames of these steps, counted from the one in which `screen` is entered.
std::vector<Pixels> picturesFrom(ScreenId screen, const std::vector<std::int64_t>& steps, bool isSpared) {
    const std::filesystem::path before = std::filesystem::current_path();
    resetProgram();
    frames::begin({.size = {1280, 720}, .screen = screen});
    EXPECT_TRUE(isPreparedForSoftware()) << offscreen::driverName();
    std::unique_ptr<RendererObjects> graphicsCard = rendererOfAGraphicsCard();
    std::vector<Pixels> looks;
    for (const std::int64_t step : steps) {
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

// Returns how many different ones there are.
std::size_t expectTheSamePictures(ScreenId screen, const std::vector<std::int64_t>& steps) {
    const std::vector<Pixels> whole = picturesFrom(screen, steps, false);
    const std::vector<Pixels> spared = picturesFrom(screen, steps, true);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        std::size_t differences = 0;
        for (std::size_t byte = 0; byte < whole[i].size(); ++byte) {
            differences += whole[i][byte] == spared[i][byte] ? 0u : 1u;
        }
        EXPECT_EQ(differences, 0u) << "in step " << steps[i];
    }
    return std::set<Pixels>(whole.begin(), whole.end()).size();
}

TEST(ShownGame, LooksAlikeWhateverIsSparedInSoftware) {
    std::vector<std::int64_t> steps;
    for (std::int64_t step = 0; step < 9000; step += 450) { // in each of its acts, its fights among them
        steps.push_back(step);
    }
    EXPECT_EQ(expectTheSamePictures(ScreenId::Game, steps), steps.size());
}

// Two frames in a row: what the first keeps the second may use.
TEST(ShownScreens, LookAlikeWhateverIsSparedInSoftware) {
    expectTheSamePictures(ScreenId::Loading, {0, 1, 200, 201});
    expectTheSamePictures(ScreenId::Intro, {0, 1, 900, 901, 2700, 2701});
    expectTheSamePictures(ScreenId::Menu, {0, 1, 300, 301});
    expectTheSamePictures(ScreenId::Pause, {0, 1});
    expectTheSamePictures(ScreenId::GameOver, {0, 1, 100, 101});
    expectTheSamePictures(ScreenId::Credits, {0, 1, 100, 101});
}

// A screen that follows another has a backdrop of its own.
TEST(ShownScreens, LookAlikeWhenTheyFollowEachOther) {
    expectTheSamePictures(ScreenId::Menu, {475, 476, 477, 478, 479, 480, 481, 482, 483, 484, 485, 486, 487});
    expectTheSamePictures(ScreenId::Game, {9005, 9006, 9007, 9008, 9009, 9010, 9011, 9012, 9013});
}

} // namespace
} // namespace dunkman
