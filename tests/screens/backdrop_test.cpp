#include "screens/backdrop.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "app/reset.h"
#include "platform/simulated/platform_sim.h"
#include "render/clear.h"
#include "render/discard.h"
#include "render/gl.h"
#include "render/image_table.h"
#include "render/view.h"
#include "tests/fakes/program_fixture.h"
#include "tests/screens/draw_line.h"

namespace dunkman {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Sprite sunset;
std::vector<bool> depthMasks;

class Backdrop : public ProgramFixture {
protected:
    void begin(bool inSoftware) {
        simulated::machine.drawsInSoftware = inSoftware;
        start(InputMode::Live);
        sunset = {.texture = imageByKey("sunset")};
        depthMasks.clear();
        glDepthMask = [](GLboolean writes) { depthMasks.push_back(writes != 0); };
    }

    // What one more frame draws for it.
    static std::vector<std::string> drawn() {
        std::vector<std::string> images;
        for (const DrawnSprite& sprite : drawnSprites(drawLines([] { drawBackdrop(sunset); }))) {
            images.push_back(sprite.image);
        }
        return images;
    }
};

TEST_F(Backdrop, IsDrawnAnewInEveryFrameByAGraphicsCard) {
    begin(false);
    EXPECT_THAT(drawn(), ElementsAre("sunset"));
    EXPECT_THAT(drawn(), ElementsAre("sunset"));
}

TEST_F(Backdrop, LeavesTheDepthsAlone) {
    for (const bool inSoftware : {false, true}) {
        begin(inSoftware);
        drawn();
        EXPECT_THAT(depthMasks, ElementsAre(false, true));
        resetProgram();
    }
}

// Where depths cannot be written, they would not be cleared either.
TEST_F(Backdrop, ComesAfterAWholeClear) {
    begin(true);
    static std::vector<std::string> order;
    order.clear();
    glClear = [](GLbitfield) { order.emplace_back("clear"); };
    glDepthMask = [](GLboolean writes) { order.emplace_back(writes != 0 ? "depths" : "no depths"); };
    clearPicture();
    drawn();
    EXPECT_THAT(order, ElementsAre("clear", "no depths", "depths"));
}

// A copy that is put in place of all pixels.
TEST_F(Backdrop, NeedsNoClearOfPixelsThatAreBroughtBack) {
    begin(true);
    static std::vector<GLbitfield> cleared;
    cleared.clear();
    glClear = [](GLbitfield buffers) { cleared.push_back(buffers); };
    for (int frame = 0; frame < 2; ++frame) {
        clearPicture();
        drawn();
    }
    EXPECT_THAT(cleared, ElementsAre(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT, GL_DEPTH_BUFFER_BIT));
}

TEST_F(Backdrop, IsBroughtBackInSoftware) {
    begin(true);
    EXPECT_THAT(drawn(), ElementsAre("sunset"));
    EXPECT_THAT(drawn(), IsEmpty());
    EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(Backdrop, IsDrawnAnewWhenItLooksDifferent) {
    begin(true);
    drawn();
    sunset.tintG = 0.5;
    EXPECT_THAT(drawn(), ElementsAre("sunset"));
    EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(Backdrop, IsDrawnAnewInAnotherView) {
    begin(true);
    drawn();
    setScreenProjection(1.0);
    EXPECT_THAT(drawn(), ElementsAre("sunset"));
    EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(Backdrop, IsNotKeptFromAFrameThatNobodySees) {
    begin(true);
    {
        const PixelsDiscarded discarded;
        EXPECT_THAT(drawn(), IsEmpty());
    }
    EXPECT_THAT(drawn(), ElementsAre("sunset"));
}

TEST_F(Backdrop, IsDrawnAnewAfterAnother) {
    begin(true);
    drawn();
    const Sprite first = sunset;
    sunset.texture = imageByKey("menuBackground");
    EXPECT_THAT(drawn(), ElementsAre("menuBackground"));
    sunset = first;
    EXPECT_THAT(drawn(), ElementsAre("sunset"));
}

} // namespace
} // namespace dunkman
