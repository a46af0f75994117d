#include <gmock/gmock.h>

#include <string>

#include "base/frame_state_writer.h"
#include "render/renderer_objects.h"
#include "render/sprite.h"
#include "render/view.h"
#include "render/warm_up.h"
#include "tests/render/sprite_scene.h"

// Where OpenGL is done in software, a texture that is shown no smaller than it is has a sampler of its own.
namespace dunkman {
namespace {

using testing::Contains;
using testing::Not;

constexpr const char* sprites = "glBindSampler(0, 3)";
constexpr const char* magnifier = "glBindSampler(0, 5)";

class MagnifiedSprites : public testing::Test {
protected:
    MagnifiedSprites() {
        writable::frameState.clientWidth = 200;
        writable::frameState.clientHeight = 100;
        rendererObjects->software.emplace(ShaderSourceSet{}, ShaderSourceSet{});
        setViewProjection({0.01f, 0, 0, 0, 0, 0.02f, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}); // a unit is a pixel
        scene.gl.calls.clear();
    }
    ~MagnifiedSprites() override { writable::frameState = {}; }

    // The calls that a picture of 64 by 32 texels takes in that size, in pixels.
    std::vector<std::string> callsOf(Vec2 size, double angle = 0.0) {
        draw({.texture = SpriteScene::texture(50, 64, 32), .size = size, .angle = angle});
        return scene.gl.takeCalls();
    }

    SpriteScene scene;
};

TEST_F(MagnifiedSprites, HaveMorePixelsThanTexels) {
    EXPECT_THAT(callsOf({65.0, 33.0}), Contains(magnifier));
    EXPECT_THAT(callsOf({128.0, 64.0}), Contains(magnifier));
}

TEST_F(MagnifiedSprites, AreNotShownSmallerInOneDirection) {
    EXPECT_THAT(callsOf({65.0, 31.0}), Contains(sprites));
    EXPECT_THAT(callsOf({63.0, 64.0}), Contains(sprites));
}

// What a driver reckons may round either way.
TEST_F(MagnifiedSprites, AreNoneThatHaveAsManyPixelsAsTexels) {
    EXPECT_THAT(callsOf({64.0, 32.0}), Contains(sprites));
    EXPECT_THAT(callsOf({64.1, 32.1}), Contains(sprites));
}

// There a driver may reckon more texels to a pixel than there are.
TEST_F(MagnifiedSprites, AreLargerStillWhereTheyAreTurned) {
    EXPECT_THAT(callsOf({80.0, 40.0}, 30.0), Contains(sprites));
    EXPECT_THAT(callsOf({92.0, 46.0}, 30.0), Contains(magnifier));
}

TEST_F(MagnifiedSprites, AreNoneWithoutASize) { EXPECT_THAT(callsOf({0.0, 0.0}), Contains(sprites)); }

TEST_F(MagnifiedSprites, AreAsAllOthersToAGraphicsCard) {
    rendererObjects->software.reset();
    EXPECT_THAT(callsOf({128.0, 64.0}), Contains(sprites));
}

TEST_F(MagnifiedSprites, AreSampledFromTheFullSizeAlone) {
    const Sampler sampler = makeMagnifyingSampler();
    EXPECT_THAT(scene.gl.calls, Contains("glSamplerParameteri(6, GL_TEXTURE_MIN_FILTER, GL_LINEAR)"));
    EXPECT_EQ(sampler.name, 6u);
}

TEST_F(MagnifiedSprites, AreWarmedUp) {
    drawUnseen(SpriteScene::texture(50, 64, 32));
    EXPECT_THAT(scene.gl.takeCalls(), Contains(magnifier));
    rendererObjects->software.reset();
    drawUnseen(SpriteScene::texture(50, 64, 32));
    EXPECT_THAT(scene.gl.takeCalls(), Not(Contains(magnifier)));
}

} // namespace
} // namespace dunkman
