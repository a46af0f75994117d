#include "render/clear.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "render/discard.h"
#include "render/renderer_objects.h"
#include "render/sprite.h"
#include "tests/render/sprite_scene.h"

namespace dunkman {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* everything = "glClear(16640)"; // GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT
constexpr const char* depths = "glClear(GL_DEPTH_BUFFER_BIT)";
constexpr const char* drawCall = "glDrawArrays(5, 0, 4)";

class Clear : public testing::Test {
protected:
    void doItInSoftware() {
        rendererObjects->software.emplace(ShaderSourceSet{}, ShaderSourceSet{});
        scene.gl.takeCalls();
    }

    // What has been cleared and drawn since it was last asked.
    std::vector<std::string> calls() {
        std::vector<std::string> found;
        for (const std::string& call : scene.gl.takeCalls()) {
            if (call.starts_with("glClear(") || call.starts_with("glDrawArrays")) {
                found.push_back(call);
            }
        }
        return found;
    }

    void drawSomething() { draw({.texture = SpriteScene::texture(50, 8, 8)}); }

    SpriteScene scene;
};

TEST_F(Clear, IsDoneAtOnceByAGraphicsCard) {
    clearPicture();
    EXPECT_THAT(calls(), ElementsAre(everything));
    drawSomething();
    finishClear();
    EXPECT_THAT(calls(), ElementsAre(drawCall));
}

TEST_F(Clear, IsDoneBeforeTheFirstSpriteInSoftware) {
    doItInSoftware();
    clearPicture();
    EXPECT_THAT(calls(), IsEmpty());
    drawSomething();
    drawSomething();
    finishClear();
    EXPECT_THAT(calls(), ElementsAre(everything, drawCall, drawCall));
}

TEST_F(Clear, IsDoneEvenIfNothingIsDrawn) {
    doItInSoftware();
    clearPicture();
    finishClear();
    finishClear();
    EXPECT_THAT(calls(), ElementsAre(everything));
}

TEST_F(Clear, LeavesThePixelsOfACopy) {
    doItInSoftware();
    clearPicture();
    finishClearAroundCopy();
    drawSomething();
    finishClear();
    EXPECT_THAT(calls(), ElementsAre(depths, drawCall));
}

TEST_F(Clear, IsNotOwedToAPictureThatNobodySees) {
    doItInSoftware();
    clearPicture(); // by a frame that was broken off
    {
        const PixelsDiscarded discarded;
        clearPicture();
    }
    finishClear();
    EXPECT_THAT(calls(), IsEmpty());
}

} // namespace
} // namespace dunkman
