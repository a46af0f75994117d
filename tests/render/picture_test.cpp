#include "render/picture.h"

#include <gmock/gmock.h>

#include "base/fatal.h"
#include "render/image_table_writer.h"
#include "tests/render/sprite_scene.h"

namespace dunkman {
namespace {

using testing::ElementsAre;

class Pictures : public testing::Test {
protected:
    Pictures() {
        std::uint32_t name = 200;
        for (const char* key : {"logo", "cocktailFull"}) {
            writable::pictures.imageTable[key] = SpriteScene::texture(name++, 200, 100);
        }
    }

    SpriteScene scene;
};

TEST_F(Pictures, KeepTheirProportionsAndAreCentred) {
    drawPicture("logo", {1.0, -2.0}, 2.0, 0.0, 0.25, 0, SpriteMode::Interface);
    const DrawnSprite picture = scene.takeSprites().at(0);
    EXPECT_EQ(picture.texture, 200u);
    EXPECT_EQ(picture.flags, 10u);
    EXPECT_THAT(picture.destMinAndSize, ElementsAre(-2.0, -1.0, 4.0, 2.0));
    EXPECT_THAT(picture.posCosSin, ElementsAre(1.0, -2.0, 1.0, 0.0));
    EXPECT_EQ(picture.zOffset, 0.25);
}

TEST_F(Pictures, TakeTheirModeFromTheCaller) {
    drawPicture("cocktailFull", {}, 4.0, 0.0, 0.36, 0, SpriteMode::Loading);
    EXPECT_EQ(scene.takeSprites().at(0).flags, 14u);
}

TEST_F(Pictures, TakeAnExtentOfZeroTexelsForOne) {
    writable::pictures.imageTable["logo"] = SpriteScene::texture(1, 0, 0);
    drawPicture("logo", {}, 2.0, 0.0, 0.0, 0, SpriteMode::Interface);
    EXPECT_THAT(scene.takeSprites().at(0).destMinAndSize, ElementsAre(-1.0, -1.0, 2.0, 2.0));
}

TEST_F(Pictures, StopTheGameAtAnUnknownKey) {
    EXPECT_THROW(drawPicture("nobody", {}, 1.0, 0.0, 0.0, 0, SpriteMode::Interface), FatalError);
}

} // namespace
} // namespace dunkman
