#include "world/drawable.h"

#include <gmock/gmock.h>

#include <array>

#include "base/fatal.h"
#include "render/image_table_writer.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"

namespace dunkman {

namespace {

class DrawableTest : public WorldFixture {
protected:
    Drawable drawable;
};

TEST_F(DrawableTest, WithAnImageAloneItIsDrawnAsTheImageIs) {
    drawable.useImage("box");
    drawable.draw();
    ASSERT_EQ(drawnSprites.size(), 1u);
    const DrawnSprite& sprite = drawnSprites[0];
    EXPECT_FALSE(sprite.mirrorX);
    EXPECT_EQ(sprite.mode, SpriteMode::World);
    EXPECT_THAT((std::array{sprite.gamma, sprite.gain, sprite.saturation}), testing::Each(1.0));
    EXPECT_THAT((std::array{sprite.tintR, sprite.tintG, sprite.tintB}), testing::Each(1.0));
    EXPECT_EQ(sprite.pivot, (Vec2{0.5, 0.5}));
    EXPECT_EQ(sprite.angle, 0.0);
    EXPECT_EQ(sprite.zOffset, 0.0);
}

TEST_F(DrawableTest, HasNoTextureUntilItIsGivenAnImage) {
    EXPECT_EQ(drawable.texture.name, 0u);
    EXPECT_EQ(drawable.imageKey, "");
}

TEST_F(DrawableTest, IsMirroredVerticallyFromTheStartAndSaysSoWhenSaved) {
    EXPECT_TRUE(drawable.mirrorY);
    const JsonValue saved = drawable.writeProperties();
    EXPECT_EQ(saved.get("mirrorY").kind, JsonKind::Bool);
    EXPECT_TRUE(saved.get("mirrorY").boolValue());
}

TEST_F(DrawableTest, ReadsHowItIsDrawnFromAScene) {
    drawable.readProperties(
        json("{mirrorX: true, mirrorY: false, isFlat: true, isUI: true, gamma: 2, gain: 0.5,"
             " saturation: 0.25, tintR: 0.1, tintG: 0.2, tintB: 0.3, pivot: [0.5, 1],"
             " zOffset: -0.5, tilt: 30, imageKey: 'box'}"));
    EXPECT_TRUE(drawable.mirrorX);
    EXPECT_FALSE(drawable.mirrorY);
    EXPECT_TRUE(drawable.isFlat);
    EXPECT_TRUE(drawable.isUI);
    EXPECT_EQ(drawable.gamma, 2.0);
    EXPECT_EQ(drawable.gain, 0.5);
    EXPECT_EQ(drawable.saturation, 0.25);
    EXPECT_EQ(drawable.tintR, 0.1);
    EXPECT_EQ(drawable.tintG, 0.2);
    EXPECT_EQ(drawable.tintB, 0.3);
    EXPECT_EQ(drawable.pivot, (Vec2{0.5, 1.0}));
    EXPECT_EQ(drawable.zOffset, -0.5);
    EXPECT_EQ(drawable.tilt, 30.0);
    EXPECT_EQ(drawable.imageKey, "box");
}

TEST_F(DrawableTest, CopiesTheWholeDescriptorOfItsImage) {
    drawable.readProperties(json("{imageKey: 'box'}"));
    const Texture2D& image = writable::pictures.imageTable.at("box");
    EXPECT_EQ(drawable.texture.name, image.name);
    EXPECT_EQ(drawable.texture.internalFormat, image.internalFormat);
    EXPECT_EQ(drawable.texture.width, 64u);
    EXPECT_EQ(drawable.texture.height, 32u);
    EXPECT_EQ(drawable.texture.levels, image.levels);
}

TEST_F(DrawableTest, LooksAKeptImageKeyUpAtEveryReading) {
    drawable.readProperties(json("{imageKey: 'box'}"));
    drawable.useImage("zombie");
    drawable.readProperties(json("{tilt: 1}"));
    EXPECT_EQ(drawable.texture.width, 64u);
}

TEST_F(DrawableTest, AnImageKeyThatIsNoStringIsIgnored) {
    drawable.readProperties(json("{imageKey: 5}"));
    EXPECT_EQ(drawable.imageKey, "");
    EXPECT_EQ(drawable.texture.name, 0u);
}

TEST_F(DrawableTest, AnUnknownImageKeyStopsTheGameAndIsNamed) {
    try {
        drawable.readProperties(json("{imageKey: 'parasol'}"));
        FAIL() << "the game went on";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("\"parasol\""));
    }
}

TEST_F(DrawableTest, AFloatSizeIsAHeightWhoseWidthFollowsTheImage) {
    drawable.readProperties(json("{imageKey: 'box', size: 2.0}"));
    EXPECT_EQ(drawable.size, (Vec2{4.0, 2.0}));
}

TEST_F(DrawableTest, AnIntegerSizeIsASquareOnPurpose) {
    drawable.readProperties(json("{imageKey: 'box', size: 2}"));
    EXPECT_EQ(drawable.size, (Vec2{2.0, 2.0}));
}

TEST_F(DrawableTest, APairSizeIsTakenAsItStands) {
    drawable.readProperties(json("{imageKey: 'box', size: [3, 2]}"));
    EXPECT_EQ(drawable.size, (Vec2{3.0, 2.0}));
}

TEST_F(DrawableTest, AFloatSizeWithoutAnImageIsASquare) {
    drawable.readProperties(json("{size: 2.5}"));
    EXPECT_EQ(drawable.size, (Vec2{2.5, 2.5}));
}

TEST_F(DrawableTest, TheFloatRuleUsesTheTextureOfTheMoment) {
    drawable.useImage("box");
    drawable.readProperties(json("{size: 3.0}"));
    EXPECT_EQ(drawable.size, (Vec2{6.0, 3.0}));
}

TEST_F(DrawableTest, APairOfAnotherFormLeavesTheFieldAsItWas) {
    drawable.pivot = {0.1, 0.2};
    drawable.readProperties(json("{pivot: [1, 2, 3]}"));
    drawable.readProperties(json("{pivot: ['a', 2]}"));
    EXPECT_EQ(drawable.pivot, (Vec2{0.1, 0.2}));
}

TEST_F(DrawableTest, BoundsLieAroundThePivot) {
    drawable.position = {10.0, 5.0};
    drawable.size = {2.0, 4.0};
    drawable.pivot = {0.5, 1.0};
    EXPECT_EQ(drawable.getBounds(), (Rect{9.0, 1.0, 11.0, 5.0}));
}

TEST_F(DrawableTest, WritesItsKeysAfterTheObjects) {
    std::vector<std::string> keys;
    const JsonValue saved = drawable.writeProperties();
    for (const JsonMember& member : saved.objectValue()) {
        keys.emplace_back(member.key());
    }
    ASSERT_GT(keys.size(), 4u);
    keys.resize(4);
    EXPECT_THAT(keys, testing::ElementsAre("_type", "position", "size", "imageKey"));
}

TEST_F(DrawableTest, DrawsNothingWithoutATexture) {
    drawable.draw();
    drawable.drawScaled({1.0, 1.0}, 0.0);
    EXPECT_TRUE(drawnSprites.empty());
}

TEST_F(DrawableTest, DrawHandsOverEveryFieldWithTheTiltAsAngle) {
    drawable.readProperties(
        json("{imageKey: 'box', position: [3, 4], size: [5, 6], mirrorX: true, mirrorY: false,"
             " gamma: 1.5, gain: 2.5, saturation: 3.5, tintR: 0.1, tintG: 0.2, tintB: 0.3,"
             " pivot: [0.25, 0.75], zOffset: 7, tilt: 8}"));
    drawable.draw();
    ASSERT_EQ(drawnSprites.size(), 1u);
    const DrawnSprite& sprite = drawnSprites[0];
    EXPECT_EQ(sprite.texture.name, pictures.imageTable.at("box").name);
    EXPECT_TRUE(sprite.mirrorX);
    EXPECT_FALSE(sprite.mirrorY);
    EXPECT_EQ(sprite.gamma, 1.5);
    EXPECT_EQ(sprite.gain, 2.5);
    EXPECT_EQ(sprite.saturation, 3.5);
    EXPECT_EQ(sprite.tintR, 0.1);
    EXPECT_EQ(sprite.tintG, 0.2);
    EXPECT_EQ(sprite.tintB, 0.3);
    EXPECT_EQ(sprite.position, (Vec2{3.0, 4.0}));
    EXPECT_EQ(sprite.size, (Vec2{5.0, 6.0}));
    EXPECT_EQ(sprite.pivot, (Vec2{0.25, 0.75}));
    EXPECT_EQ(sprite.scale, (Vec2{1.0, 1.0}));
    EXPECT_EQ(sprite.angle, 8.0);
    EXPECT_EQ(sprite.zOffset, 7.0);
}

TEST_F(DrawableTest, DrawingKeepsItsOwnPivot) {
    drawable.useImage("box");
    drawable.mirrorX = true;
    drawable.pivot = {0.25, 0.5};
    drawable.draw();
    EXPECT_EQ(drawable.pivot, (Vec2{0.25, 0.5}));
}

TEST_F(DrawableTest, DrawScaledHandsOverScaleAndAngle) {
    drawable.useImage("box");
    drawable.tilt = 5.0;
    drawable.drawScaled({2.0, 3.0}, 40.0);
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_EQ(drawnSprites[0].scale, (Vec2{2.0, 3.0}));
    EXPECT_EQ(drawnSprites[0].angle, 40.0);
}

struct ModeCase {
    bool isFlat;
    bool isUI;
    SpriteMode expected;
};

TEST_F(DrawableTest, TheOverlayFlagWinsOverTheFlatOne) {
    drawable.useImage("box");
    for (const ModeCase& row :
         {ModeCase{false, false, SpriteMode::World}, ModeCase{true, false, SpriteMode::Flat},
          ModeCase{false, true, SpriteMode::Interface}, ModeCase{true, true, SpriteMode::Interface}}) {
        drawable.isFlat = row.isFlat;
        drawable.isUI = row.isUI;
        drawable.draw();
        EXPECT_EQ(drawnSprites.back().mode, row.expected);
    }
}

} // namespace

} // namespace dunkman
