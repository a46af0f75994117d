#include "render/warm_up.h"

#include <gmock/gmock.h>

#include "render/image_table_writer.h"
#include "tests/render/sprite_scene.h"

namespace dunkman {
namespace {

class WarmUp : public testing::Test {
protected:
    WarmUp() {
        writable::pictures.imageTable["sunset"] = SpriteScene::texture(300, 1536, 768);
        writable::pictures.imageTable["zombie"] = SpriteScene::texture(301, 200, 100);
        for (std::size_t letter = 0; letter < glyphCount; ++letter) {
            writable::pictures.glyphTable[letter] =
                SpriteScene::texture(400 + static_cast<std::uint32_t>(letter), 64, 128);
        }
    }

    SpriteScene scene;
};

TEST_F(WarmUp, DrawsEveryImageAndEveryGlyphOnce) {
    std::vector<std::uint32_t> expected = {300, 301};
    for (std::uint32_t letter = 0; letter < glyphCount; ++letter) {
        expected.push_back(400 + letter);
    }
    warmUpDriver();
    std::vector<std::uint32_t> drawn;
    for (const DrawnSprite& sprite : scene.takeSprites()) {
        drawn.push_back(sprite.texture);
    }
    EXPECT_THAT(drawn, testing::UnorderedElementsAreArray(expected));
}

TEST_F(WarmUp, ShowsNothingOfThem) {
    warmUpDriver();
    const std::vector<DrawnSprite> sprites = scene.takeSprites();
    ASSERT_FALSE(sprites.empty());
    for (const DrawnSprite& sprite : sprites) {
        EXPECT_EQ(sprite.destMinAndSize[2], 0.0);
        EXPECT_EQ(sprite.destMinAndSize[3], 0.0);
    }
}

} // namespace
} // namespace dunkman
