#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "render/gl.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"
#include "render/sprite.h"
#include "render/view.h"
#include "render/warm_up.h"
#include "tests/render/sprite_scene.h"

// Where every pixel is dear, sprites that have nothing to adjust have a program of their own.
namespace dunkman {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

constexpr const char* usesBasic = "glUseProgram(1)";
constexpr const char* usesPlain = "glUseProgram(4)";

class PlainSprites : public testing::Test {
protected:
    PlainSprites() {
        rendererObjects->software.emplace(ShaderSourceSet{}, ShaderSourceSet{});
        scene.gl.calls.clear();
    }

    std::vector<std::string> callsOf(const Sprite& sprite) {
        draw(sprite);
        return scene.gl.takeCalls();
    }

    SpriteScene scene;
    Texture2D picture = SpriteScene::texture(50, 64, 64);
};

TEST_F(PlainSprites, AreDrawnByTheirOwnProgram) {
    EXPECT_THAT(callsOf({.texture = picture}), Contains(usesPlain));
    EXPECT_THAT(callsOf({.texture = picture, .mode = SpriteMode::Flat, .angle = 30.0}),
                Not(Contains(usesBasic)));
    EXPECT_THAT(callsOf({.texture = picture, .mode = SpriteMode::Interface}), Not(Contains(usesBasic)));
}

TEST_F(PlainSprites, MayBeTinted) {
    const std::vector<std::string> calls = callsOf({.texture = picture, .tintR = 0.5, .tintG = 0.25});
    EXPECT_THAT(calls, Contains(usesPlain));
    EXPECT_THAT(calls, Contains("glUniform3fv(7, 1, {0.5, 0.25, 1})"));
}

TEST_F(PlainSprites, AreNoneOfThoseThatHaveSomethingToAdjust) {
    EXPECT_THAT(callsOf({.texture = picture, .gamma = 0.5}), Contains(usesBasic));
    draw({.texture = picture});
    EXPECT_THAT(callsOf({.texture = picture, .gain = 2.0}), Contains(usesBasic));
    draw({.texture = picture});
    EXPECT_THAT(callsOf({.texture = picture, .saturation = 0.0}), Contains(usesBasic));
    draw({.texture = picture});
    EXPECT_THAT(callsOf({.texture = picture, .mode = SpriteMode::Loading}), Contains(usesBasic));
}

TEST_F(PlainSprites, LeaveTheRenderStateAsTheCallerHasIt) {
    draw({.texture = picture});
    scene.gl.calls.clear();
    for (const double gain : {2.0, 1.0}) { // to the other program and back
        for (const std::string& call : callsOf({.texture = picture, .gain = gain})) {
            EXPECT_THAT(call, Not(StartsWith("glEnable")));
            EXPECT_THAT(call, Not(StartsWith("glDepth")));
        }
    }
}

// Found by the address sanitizer: binding the other program sent it the texture of the last sprite that it had drawn.
TEST_F(PlainSprites, NeedNoTextureThatOthersHadBeforeThem) {
    auto gone = std::make_unique<Texture2D>(picture);
    gone->name = 77;
    draw({.texture = *gone, .gain = 2.0});
    draw({.texture = picture});
    gone.reset();
    scene.gl.calls.clear();
    EXPECT_THAT(callsOf({.texture = picture, .gain = 2.0}), Not(Contains("glBindTextureUnit(0, 77)")));
}

TEST_F(PlainSprites, SeeTheViewThatAllSpritesSee) {
    Matrix4 view{};
    view[5] = 3.0f;
    const std::string sendsView =
        "glUniformMatrix4fv(0, 1, GL_FALSE, {0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})";
    setViewProjection(view);
    EXPECT_THAT(callsOf({.texture = picture}), Contains(sendsView));
    EXPECT_THAT(callsOf({.texture = picture, .gain = 2.0}), Contains(sendsView));
}

TEST_F(PlainSprites, AreWarmedUpBesideTheOthers) {
    warmUpDriver();
    EXPECT_THAT(scene.gl.calls, Contains(usesPlain));
    EXPECT_THAT(scene.gl.calls, Contains(usesBasic));
}

TEST_F(PlainSprites, LoseTheirProgramWithTheOthers) {
    releaseRenderer();
    EXPECT_THAT(scene.gl.calls,
                ElementsAre("glDeleteProgram(1)", "glDeleteProgram(4)", "glDeleteVertexArrays(1, {2})",
                            "glDeleteSamplers(1, {3})", "glDeleteSamplers(1, {5})"));
    EXPECT_FALSE(isPreparedForSoftware());
}

} // namespace
} // namespace dunkman
