#include "render/sprite.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "base/frame_state_writer.h"
#include "render/renderer_objects.h"
#include "render/scissor.h"
#include "render/view.h"
#include "tests/render/sprite_scene.h"

namespace dunkman {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;

class SpriteDrawing : public testing::Test {
protected:
    // One sprite of these properties, 3 wide and 4 high at (1, 2).
    struct Look {
        bool mirrorX = false;
        bool mirrorY = false;
        SpriteMode mode = SpriteMode::World;
        Vec2 pivot = {0.5, 0.0};
        Vec2 scale = {1.0, 1.0};
        double angle = 0.0;
        double zOffset = 0.0;
    };

    DrawnSprite drawn(Look look) {
        draw({.texture = picture,
              .mirrorX = look.mirrorX,
              .mirrorY = look.mirrorY,
              .mode = look.mode,
              .position = {1.0, 2.0},
              .size = {3.0, 4.0},
              .pivot = look.pivot,
              .scale = look.scale,
              .angle = look.angle,
              .zOffset = look.zOffset});
        return scene.takeSprites().at(0);
    }

    SpriteScene scene;
    const Texture2D picture = SpriteScene::texture(40, 16, 16);
};

TEST_F(SpriteDrawing, SetsStateProgramAndUniformsInThisOrderTheFirstTime) {
    draw({.texture = picture,
          .mirrorY = true,
          .mode = SpriteMode::Interface,
          .gamma = 0.5,
          .gain = 2.0,
          .saturation = 0.25,
          .tintR = 0.1,
          .tintG = 0.2,
          .tintB = 0.3,
          .position = {1.0, 2.0},
          .size = {3.0, 4.0},
          .pivot = {0.5, 0.0},
          .zOffset = -0.75});
    EXPECT_THAT(scene.gl.calls,
                ElementsAre("glEnable(GL_DEPTH_TEST)", "glDepthFunc(GL_LESS)", "glDepthMask(GL_TRUE)",
                            "glEnable(GL_CULL_FACE)", "glCullFace(GL_BACK)", "glDisable(GL_BLEND)",
                            "glUseProgram(1)", "glUniform1i(4, 0)", "glUniform4fv(1, 1, {-1.5, -0, 3, 4})",
                            "glUniform4fv(2, 1, {1, 2, 1, -0})", "glUniform1uiv(3, 1, {10})",
                            "glBindTextureUnit(0, 40)", "glBindSampler(0, 3)", "glUniform1fv(5, 1, {-0.75})",
                            "glUniform3fv(6, 1, {0.5, 2, 0.25})", "glUniform3fv(7, 1, {0.1, 0.2, 0.3})",
                            "glBindVertexArray(2)", "glDrawArrays(5, 0, 4)", // 5: GL_TRIANGLE_STRIP
                            "glBindVertexArray(0)"));
}

TEST_F(SpriteDrawing, SendsNothingButItsValuesAfterwards) {
    drawn({});
    draw({.texture = picture, .pivot = {0.0, 0.0}});
    EXPECT_EQ(scene.gl.calls.size(), 11u);
    EXPECT_EQ(scene.gl.calls.front(), "glUniform4fv(1, 1, {-0, -0, 1, 1})");
}

TEST_F(SpriteDrawing, NeverAsksTheDriverWhileDrawing) {
    for (int sprite = 0; sprite < 3; ++sprite) {
        draw({.texture = picture});
    }
    for (const std::string& call : scene.gl.calls) {
        EXPECT_NE(call.rfind("glGet", 0), 0u) << call;
    }
}

TEST_F(SpriteDrawing, ScalesTheSizeBeforeThePivotTakesItsPart) {
    EXPECT_THAT(drawn({.pivot = {0.25, 0.5}, .scale = {2.0, 0.5}}).destMinAndSize,
                ElementsAre(-1.5, -1.0, 6.0, 2.0));
}

TEST_F(SpriteDrawing, MirroringAboutTheCentreLeavesTheRectangleInPlace) {
    EXPECT_EQ(drawn({.mirrorX = true, .pivot = {0.5, 0.5}}).destMinAndSize,
              drawn({.mirrorX = false, .pivot = {0.5, 0.5}}).destMinAndSize);
}

TEST_F(SpriteDrawing, MirroringMovesAPivotAtTheLeftToTheRight) {
    EXPECT_THAT(drawn({.mirrorX = true, .pivot = {0.0, 1.0}}).destMinAndSize,
                ElementsAre(-3.0, -4.0, 3.0, 4.0));
}

TEST_F(SpriteDrawing, WritesTheMirroredPivotBack) {
    Vec2 pivot = {0.25, 0.5};
    drawSprite(picture, true, false, SpriteMode::World, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, {}, {1.0, 1.0}, pivot,
               {1.0, 1.0}, 0.0, 0.0);
    EXPECT_EQ(pivot, (Vec2{0.75, 0.5}));
}

TEST_F(SpriteDrawing, KeepsThePivotWithoutMirroringAndWithMirrorYAlone) {
    Vec2 pivot = {0.25, 0.5};
    drawSprite(picture, false, true, SpriteMode::World, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, {}, {1.0, 1.0}, pivot,
               {1.0, 1.0}, 0.0, 0.0);
    EXPECT_EQ(pivot, (Vec2{0.25, 0.5}));
}

TEST_F(SpriteDrawing, SendsCosineAndSineOfTheClockwiseAngle) {
    EXPECT_THAT(drawn({.angle = 90.0}).posCosSin,
                ElementsAre(1.0, 2.0, DoubleNear(0.0, 1e-12), DoubleNear(-1.0, 1e-12)));
    EXPECT_THAT(drawn({.angle = -30.0}).posCosSin,
                ElementsAre(1.0, 2.0, DoubleNear(0.8660254, 1e-7), DoubleNear(0.5, 1e-7)));
}

TEST_F(SpriteDrawing, MeasuresAnglesWithTheGamesOwnPi) {
    // With the nearest double to pi the cosine would be 6.123234e-17.
    EXPECT_THAT(drawn({.angle = 90.0}).posCosSin[2], DoubleNear(-1.034e-13, 1e-15));
}

TEST_F(SpriteDrawing, LeavesTheSpriteOfTheCallerAlone) {
    const Sprite sprite = {.texture = picture, .mirrorX = true, .pivot = {0.25, 0.5}};
    draw(sprite);
    EXPECT_EQ(sprite.pivot, (Vec2{0.25, 0.5}));
    EXPECT_THAT(scene.takeSprites().at(0).destMinAndSize, ElementsAre(-0.75, -0.5, 1.0, 1.0));
}

TEST_F(SpriteDrawing, DrawsAnUprightUntintedUnitAboutItsMiddleUnlessToldOtherwise) {
    draw({.texture = picture});
    EXPECT_THAT(
        scene.gl.calls,
        testing::IsSupersetOf({"glUniform4fv(1, 1, {-0.5, -0.5, 1, 1})", "glUniform4fv(2, 1, {0, 0, 1, -0})",
                               "glUniform1uiv(3, 1, {0})", "glUniform1fv(5, 1, {0})",
                               "glUniform3fv(6, 1, {1, 1, 1})", "glUniform3fv(7, 1, {1, 1, 1})"}));
}

TEST_F(SpriteDrawing, KeepsTheSignOfZero) {
    const DrawnSprite sprite = drawn({.pivot = {0.0, 0.0}, .angle = 0.0});
    EXPECT_TRUE(std::signbit(sprite.destMinAndSize[0]));
    EXPECT_TRUE(std::signbit(sprite.destMinAndSize[1]));
    EXPECT_TRUE(std::signbit(sprite.posCosSin[3]));
}

TEST_F(SpriteDrawing, PacksModeAndMirroringIntoFlags) {
    EXPECT_EQ(drawn({}).flags, 0u);
    EXPECT_EQ(drawn({.mirrorX = true}).flags, 1u);
    EXPECT_EQ(drawn({.mirrorY = true}).flags, 2u);
    EXPECT_EQ(drawn({.mode = SpriteMode::Flat}).flags, 4u);
    EXPECT_EQ(drawn({.mirrorX = true, .mirrorY = true, .mode = SpriteMode::Interface}).flags, 11u);
    EXPECT_EQ(drawn({.mirrorY = true, .mode = SpriteMode::Loading}).flags, 14u);
}

TEST_F(SpriteDrawing, SendsTheDepthOffset) { EXPECT_EQ(drawn({.zOffset = -2.5}).zOffset, -2.5); }

TEST_F(SpriteDrawing, DoesWithoutAUniformThatTheCompilerRemoved) {
    rendererObjects.reset();
    scene.gl.uniforms.pop_back(); // uTint
    rendererObjects = std::make_unique<RendererObjects>(ShaderSourceSet{}, ShaderSourceSet{});
    scene.gl.calls.clear();
    draw({.texture = picture});
    for (const std::string& call : scene.gl.calls) {
        EXPECT_NE(call.rfind("glUniform3fv(7", 0), 0u);
    }
    EXPECT_EQ(scene.takeSprites().size(), 1u);
}

// What only OpenGL in software is spared. A picture of 160 by 80 pixels that shows 16 by 8 units about the origin: ten pixels a unit.
class SpriteWithBorders : public SpriteDrawing {
protected:
    SpriteWithBorders() {
        writable::frameState.clientWidth = 160;
        writable::frameState.clientHeight = 80;
        rendererObjects->software.emplace(ShaderSourceSet{}, ShaderSourceSet{});
        setViewProjection({0.125f, 0, 0, 0, 0, 0.25f, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1});
        know({{.left = 16, .top = 24, .right = 40, .bottom = 56}});
    }
    ~SpriteWithBorders() override { writable::frameState = {}; }

    // That the texture can be seen in these parts only.
    void know(const std::vector<TexelRect>& parts) {
        for (TextureCoverage& coverage : rendererObjects->software->coverage[bordered.name]) {
            std::copy(parts.begin(), parts.end(), coverage.parts.begin());
            coverage.count = static_cast<std::uint8_t>(parts.size());
        }
    }

    // What is said about scissors while a sprite is drawn, and that it is drawn.
    std::vector<std::string> drawnWithin(const Sprite& sprite) {
        scene.gl.calls.clear();
        draw(sprite);
        std::vector<std::string> found;
        for (const std::string& call : scene.gl.takeCalls()) {
            if (call.find("cissor") != std::string::npos || call.find("SCISSOR") != std::string::npos ||
                call.rfind("glDrawArrays", 0) == 0) {
                found.push_back(call);
            }
        }
        return found;
    }

    Sprite upright() {
        return {.texture = bordered, .mirrorY = true, .size = {4.0, 4.0}, .pivot = {0.0, 0.0}};
    }

    static constexpr const char* drawCall = "glDrawArrays(5, 0, 4)";
    Texture2D bordered = SpriteScene::texture(40, 64, 64);
};

TEST_F(SpriteWithBorders, IsDrawnOnlyWhereItCanBeSeen) {
    EXPECT_THAT(drawnWithin(upright()), ElementsAre("glScissor(89, 44, 17, 22)", "glEnable(GL_SCISSOR_TEST)",
                                                    drawCall, "glDisable(GL_SCISSOR_TEST)"));
}

TEST_F(SpriteWithBorders, MirrorsItsBordersWithThePicture) {
    Sprite mirrored = upright();
    mirrored.mirrorX = true;
    mirrored.pivot.x = 1.0; // which mirroring makes 0
    mirrored.mirrorY = false;
    EXPECT_EQ(drawnWithin(mirrored).front(), "glScissor(94, 54, 17, 22)");
}

TEST_F(SpriteWithBorders, TurnsItsBordersWithThePicture) {
    Sprite turned = upright();
    turned.angle = 90.0;
    EXPECT_EQ(drawnWithin(turned).front(), "glScissor(53, 48, 23, 18)");
}

TEST_F(SpriteWithBorders, IsDrawnPartByPartWhereItIsLarge) {
    know({{.left = 0, .top = 0, .right = 64, .bottom = 16},
          {.left = 24, .top = 16, .right = 40, .bottom = 64}});
    Sprite palm = upright();
    palm.position = {-8.0, -4.0};
    palm.size = {8.0, 8.0};
    EXPECT_THAT(drawnWithin(palm),
                ElementsAre("glScissor(0, 59, 81, 21)", "glEnable(GL_SCISSOR_TEST)", drawCall,
                            "glDisable(GL_SCISSOR_TEST)", "glScissor(29, 0, 22, 61)",
                            "glEnable(GL_SCISSOR_TEST)", drawCall, "glDisable(GL_SCISSOR_TEST)"));
    palm.size = {4.0, 4.0}; // there, two parts spare less than their calls cost
    EXPECT_THAT(drawnWithin(palm), ElementsAre(drawCall));
}

TEST_F(SpriteWithBorders, IsDrawnInOnePartWhereItIsTurned) {
    know({{.left = 24, .top = 0, .right = 64, .bottom = 16},
          {.left = 24, .top = 16, .right = 40, .bottom = 64}});
    Sprite turned = upright();
    turned.position = {4.0, -4.0};
    turned.size = {8.0, 8.0};
    turned.angle = 90.0;
    EXPECT_THAT(drawnWithin(turned), ElementsAre("glScissor(38, 28, 83, 52)", "glEnable(GL_SCISSOR_TEST)",
                                                 drawCall, "glDisable(GL_SCISSOR_TEST)"));
}

TEST_F(SpriteWithBorders, IsDrawnWholeWhereThatSparesNothing) {
    Sprite small = upright();
    small.scale = {0.5, 0.5}; // a few hundred pixels
    EXPECT_THAT(drawnWithin(small), ElementsAre(drawCall));
    Sprite outOfView = upright();
    outOfView.position = {20.0, 0.0};
    EXPECT_THAT(drawnWithin(outOfView), ElementsAre(drawCall));
    know({});
    EXPECT_THAT(drawnWithin(upright()), ElementsAre(drawCall));
}

TEST_F(SpriteWithBorders, IsDrawnWholeWhereItsPlaceIsNoNumber) {
    Sprite lost = upright();
    lost.position = {std::nan(""), 0.0};
    EXPECT_THAT(drawnWithin(lost), ElementsAre(drawCall));
}

TEST_F(SpriteWithBorders, IsDrawnWholeByAGraphicsCard) {
    rendererObjects->software.reset();
    EXPECT_THAT(drawnWithin(upright()), ElementsAre(drawCall));
}

TEST_F(SpriteWithBorders, LeavesAScissorAloneThatIsInForce) {
    const Scissor scissor({0, 0, 50, 50});
    EXPECT_THAT(drawnWithin(upright()), ElementsAre(drawCall));
}

class ScreenProjection : public SpriteDrawing {
protected:
    std::string projectionAt(double aspect) {
        writable::frameState.aspectRatio = aspect;
        rendererObjects->basic.material.bind();
        scene.gl.calls.clear();
        setScreenProjection();
        return scene.gl.calls.at(0);
    }
};

TEST_F(ScreenProjection, IsEighteenWideWithDepthReversed) {
    EXPECT_EQ(projectionAt(2.0),
              "glUniformMatrix4fv(0, 1, GL_FALSE, {0.11111111, 0, 0, 0, 0, 0.22222222, 0, 0, 0, 0, "
              "-1, 0, 0, 0, -0, 1})");
}

TEST_F(ScreenProjection, RoundsTheHeightToAFloatBeforeHalvingIt) {
    const float scaleY = 1.0f / (static_cast<float>(18.0 / (16.0 / 9.0)) * 0.5f);
    EXPECT_EQ(scaleY, 1.0f / 5.0625f);
    EXPECT_THAT(projectionAt(16.0 / 9.0), testing::HasSubstr("0, 0.19753087, 0"));
}

} // namespace
} // namespace dunkman
