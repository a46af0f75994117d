#include "screens/menu_decoration.h"

#include <gmock/gmock.h>

#include <cmath>

#include "base/frame_state_writer.h"
#include "render/image_table_writer.h"
#include "tests/render/sprite_scene.h"

namespace dunkman {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;

constexpr double floatPrecision = 1e-6;

// The angle in degrees that a sprite was turned by.
double angleOf(const DrawnSprite& sprite) {
    return std::atan2(-sprite.posCosSin[3], sprite.posCosSin[2]) * 180.0 / pi;
}

class PicturesOfTheMenu : public testing::Test {
protected:
    PicturesOfTheMenu() {
        std::uint32_t name = 200;
        for (const char* key : {"logo", "logoTheGame", "pineapple", "cocktailFull", "flamingo", "palmTree"}) {
            writable::pictures.imageTable[key] = SpriteScene::texture(name++, 200, 100);
        }
    }
    SpriteScene scene;
};

TEST_F(PicturesOfTheMenu, OfTheDecorationRestWhereTheirSinesAreZero) {
    writable::frameState.elapsedTime = 0.0;
    drawDecorationItem({"flamingo", 1.0, 2.0, 3.0, 30.0, -0.2, 10.0, 4.0, 0.0, 0.5, 4.0, 0.0});
    const DrawnSprite item = scene.takeSprites().at(0);
    EXPECT_THAT(item.destMinAndSize, ElementsAre(-3.0, -1.5, 6.0, 3.0));
    EXPECT_THAT(item.posCosSin[0], DoubleNear(1.0, floatPrecision));
    EXPECT_THAT(item.posCosSin[1], DoubleNear(2.0, floatPrecision));
    EXPECT_THAT(angleOf(item), DoubleNear(30.0, 1e-4));
    EXPECT_THAT(item.zOffset, DoubleNear(-0.2, floatPrecision));
    EXPECT_EQ(item.flags, 10u);
}

TEST_F(PicturesOfTheMenu, OfTheDecorationRockAboutTheirBaseAngle) {
    writable::frameState.elapsedTime = 0.25;
    drawDecorationItem({"flamingo", 0.0, 0.0, 1.0, 30.0, 0.0, 10.0, 4.0, 0.5, 0.0, 4.0, 0.0});
    EXPECT_THAT(angleOf(scene.takeSprites().at(0)), DoubleNear(30.0 + 10.0 * std::sin(1.5), 1e-4));
}

TEST_F(PicturesOfTheMenu, OfTheDecorationBobAlongTheirTilt) {
    writable::frameState.elapsedTime = 0.25;
    drawDecorationItem({"flamingo", 1.0, 2.0, 1.0, 30.0, 0.0, 0.0, 4.0, 0.0, 0.5, 4.0, 0.5});
    const double bob = 0.5 * std::sin(1.5);
    const DrawnSprite item = scene.takeSprites().at(0);
    EXPECT_THAT(item.posCosSin[0], DoubleNear(1.0 + 0.5 * bob, floatPrecision)); // sin 30 degrees
    EXPECT_THAT(item.posCosSin[1], DoubleNear(2.0 + std::sqrt(0.75) * bob, floatPrecision));
}

TEST(MenuDecorationTable, FruitDrinkAndBirdBobWhileTwoPalmsOnlySway) {
    const MenuDecoration decoration;
    EXPECT_EQ(decoration.logoPosition, (Vec2{-0.5, 1.0}));
    const auto row = [&](std::size_t index) {
        const DecorationItem& item = decoration.items[index];
        return std::vector<double>{item.baseX,        item.baseY,         item.height,        item.baseAngle,
                                   item.zOffset,      item.rockAmplitude, item.rockFrequency, item.rockPhase,
                                   item.bobAmplitude, item.bobFrequency,  item.bobPhase};
    };
    EXPECT_EQ(decoration.items[0].imageKey, "pineapple");
    EXPECT_THAT(row(0), ElementsAre(1.5, 1.7, 1.6, -35.0, -0.3, 2.5, 4.0, 0.0, 0.05, 4.0, 0.0));
    EXPECT_EQ(decoration.items[1].imageKey, "cocktailFull");
    EXPECT_THAT(row(1), ElementsAre(0.8, 1.8, 2.8, -18.0, -0.1, 1.0, 4.0, 1.0, 0.05, 4.0, 1.0 - pi / 4.0));
    EXPECT_EQ(decoration.items[2].imageKey, "flamingo");
    EXPECT_THAT(row(2), ElementsAre(0.0, 1.8, 3.0, -5.0, -0.2, 2.0, 4.0, 2.0, 0.05, 4.0, 2.0 - pi / 8.0));
    EXPECT_EQ(decoration.items[3].imageKey, "palmTree");
    EXPECT_THAT(row(3), ElementsAre(-0.9, 3.2, 2.5, 35.0, -0.4, 1.0, 4.0, 0.0, 0.0, 4.0, 0.0));
    EXPECT_EQ(decoration.items[4].imageKey, "palmTree");
    EXPECT_THAT(row(4), ElementsAre(2.5, 1.5, 2.4, -45.0, -0.5, 1.0, 4.0, 0.0, 0.0, 4.0, 0.0));
}

TEST_F(PicturesOfTheMenu, AreTheLogoTheSubtitleAndTheTableInOrder) {
    drawMenuDecoration(MenuDecoration());
    std::vector<std::uint32_t> textures;
    for (const DrawnSprite& sprite : scene.takeSprites()) {
        textures.push_back(sprite.texture);
    }
    EXPECT_THAT(textures, ElementsAre(200, 201, 202, 203, 204, 205, 205));
}

TEST_F(PicturesOfTheMenu, OfTheLogoRockTogetherAndTheSubtitleBreathes) {
    writable::frameState.elapsedTime = 0.7;
    drawMenuDecoration(MenuDecoration());
    const std::vector<DrawnSprite> sprites = scene.takeSprites();
    const DrawnSprite& logo = sprites.at(0);
    EXPECT_THAT(logo.posCosSin[0], DoubleNear(-0.5, floatPrecision));
    EXPECT_THAT(logo.posCosSin[1], DoubleNear(1.0, floatPrecision));
    EXPECT_THAT(logo.destMinAndSize[3], DoubleNear(4.0, floatPrecision));
    EXPECT_THAT(angleOf(logo), DoubleNear(std::sin(1.05), 1e-4));
    EXPECT_THAT(logo.zOffset, DoubleNear(0.1, floatPrecision));
    const DrawnSprite& subtitle = sprites.at(1);
    EXPECT_THAT(subtitle.posCosSin[0], DoubleNear(0.5, floatPrecision));
    EXPECT_THAT(subtitle.posCosSin[1], DoubleNear(-0.2, floatPrecision));
    EXPECT_THAT(subtitle.destMinAndSize[3], DoubleNear(0.75 + 0.05 * std::sin(3.5), floatPrecision));
    EXPECT_THAT(angleOf(subtitle), DoubleNear(7.0 + std::sin(1.05), 1e-4));
    EXPECT_THAT(subtitle.zOffset, DoubleNear(0.2, floatPrecision));
}

} // namespace
} // namespace dunkman
