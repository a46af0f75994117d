#include "render/discard.h"

#include <gmock/gmock.h>

#include "render/binding_state.h"
#include "render/renderer_objects.h"
#include "render/sprite.h"
#include "tests/render/sprite_scene.h"

namespace dunkman {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class Discard : public testing::Test {
protected:
    SpriteScene scene;
    const Texture2D picture = SpriteScene::texture(50, 8, 8);
};

TEST_F(Discard, LastsAsLongAsItsObject) {
    {
        const PixelsDiscarded discarded;
        EXPECT_TRUE(bindingState.isDiscarding);
        EXPECT_THAT(scene.gl.takeCalls(), ElementsAre("glEnable(GL_RASTERIZER_DISCARD)"));
    }
    EXPECT_FALSE(bindingState.isDiscarding);
    EXPECT_THAT(scene.gl.takeCalls(), ElementsAre("glDisable(GL_RASTERIZER_DISCARD)"));
}

TEST_F(Discard, LeavesItToAGraphicsCardToDrawNothing) {
    const PixelsDiscarded discarded;
    draw({.texture = picture});
    EXPECT_THAT(scene.takeSprites(), SizeIs(1));
}

TEST_F(Discard, SparesSoftwareTheQuestion) {
    rendererObjects->software.emplace(ShaderSourceSet{}, ShaderSourceSet{});
    scene.gl.calls.clear();
    {
        const PixelsDiscarded discarded;
        scene.gl.calls.clear();
        draw({.texture = picture});
        drawNearestFirst([] { draw({.texture = SpriteScene::texture(51, 8, 8)}); });
        EXPECT_THAT(scene.gl.takeCalls(), IsEmpty());
    }
    draw({.texture = picture});
    EXPECT_THAT(scene.takeSprites(), SizeIs(1));
}

} // namespace
} // namespace dunkman
