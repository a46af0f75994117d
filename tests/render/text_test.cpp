#include "render/text.h"

#include <gmock/gmock.h>

#include "render/image_table_writer.h"
#include "tests/render/sprite_scene.h"

namespace dunkman {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Letters 128 texels high, except that Z has 256; A is 64 texels wide, B 96, every other one 32. GL names: A 100,
// B 101 and so on.
class Text : public testing::Test {
protected:
    Text() {
        for (std::size_t letter = 0; letter < glyphCount; ++letter) {
            const std::uint32_t width = letter == 0 ? 64 : letter == 1 ? 96 : 32;
            writable::pictures.glyphTable[letter] = SpriteScene::texture(
                100 + static_cast<std::uint32_t>(letter), width, letter == 25 ? 256 : 128);
        }
    }

    struct Letter {
        std::uint32_t texture;
        double x;
        double y;

        friend bool operator==(const Letter&, const Letter&) = default;
    };

    std::vector<Letter> lettersOf(std::string_view text, double letterHeight, double wrapWidth, Rect box,
                                  Vec2 align) {
        drawText(text, 0, letterHeight, wrapWidth, box, align);
        std::vector<Letter> letters;
        for (const DrawnSprite& sprite : scene.takeSprites()) {
            letters.push_back({sprite.texture, sprite.posCosSin[0], sprite.posCosSin[1]});
        }
        return letters;
    }

    SpriteScene scene;
};

TEST_F(Text, OfNothingDrawsNothing) {
    EXPECT_THAT(lettersOf("", 0.5, 0.0, {0, 0, 8, 8}, {0.5, 0.5}), IsEmpty());
    EXPECT_THAT(lettersOf("   ", 0.5, 0.0, {0, 0, 8, 8}, {0.5, 0.5}), IsEmpty());
}

TEST_F(Text, IsDrawnUprightAsAnInterfaceSpriteFromItsLowerLeftCorner) {
    drawText("B", 0, 0.5, 0.0, {}, {0.0, 0.0});
    const DrawnSprite letter = scene.takeSprites().at(0);
    EXPECT_EQ(letter.texture, 101u);
    EXPECT_EQ(letter.flags, 10u);
    EXPECT_THAT(letter.destMinAndSize, ElementsAre(0.0, 0.0, 0.375, 0.5)); // 96 / 128 of the height
    EXPECT_THAT(letter.posCosSin, ElementsAre(0.0, 0.0, 1.0, 0.0));
    EXPECT_EQ(letter.zOffset, 0.0);
}

TEST_F(Text, SetsLettersSideBySide) {
    EXPECT_THAT(lettersOf("ABC", 0.5, 0.0, {}, {0.0, 0.0}),
                ElementsAre(Letter{100, 0.0, 0.0}, Letter{101, 0.25, 0.0}, Letter{102, 0.625, 0.0}));
}

TEST_F(Text, LeavesTheLetterHeightFreeForASpace) {
    EXPECT_THAT(lettersOf("A B", 0.5, 0.0, {}, {0.0, 0.0}),
                ElementsAre(Letter{100, 0.0, 0.0}, Letter{101, 0.25 + 0.5, 0.0}));
}

TEST_F(Text, LeavesTwoLetterHeightsForTwoSpaces) {
    EXPECT_EQ(lettersOf("A  A", 0.5, 0.0, {}, {0.0, 0.0})[1].x, 0.25 + 1.0);
}

TEST_F(Text, SizesAllLettersByTheHeightOfA) {
    drawText("Z", 0, 0.5, 0.0, {}, {0.0, 0.0});
    EXPECT_THAT(scene.takeSprites().at(0).destMinAndSize, ElementsAre(0.0, 0.0, 0.125, 1.0));
}

TEST_F(Text, LiesAtTheLowEdgeInTheMiddleOrAtTheHighEdgeOfItsBox) {
    const Rect box = {1.0, 2.0, 5.0, 10.0};
    EXPECT_THAT(lettersOf("A", 0.5, 0.0, box, {0.0, 0.0}), ElementsAre(Letter{100, 1.0, 2.0}));
    EXPECT_THAT(lettersOf("A", 0.5, 0.0, box, {0.5, 0.5}), ElementsAre(Letter{100, 2.875, 5.75}));
    EXPECT_THAT(lettersOf("A", 0.5, 0.0, box, {1.0, 1.0}), ElementsAre(Letter{100, 4.75, 9.5}));
}

TEST_F(Text, IsCentredOnAPointByACollapsedBox) {
    EXPECT_THAT(lettersOf("AA", 0.5, 0.0, {0.0, -3.0, 0.0, -3.0}, {0.5, 0.5}),
                ElementsAre(Letter{100, -0.25, -3.25}, Letter{100, 0.0, -3.25}));
}

TEST_F(Text, CountsNoSpaceAtItsEndIntoItsBox) {
    EXPECT_EQ(lettersOf("A  ", 0.5, 0.0, {}, {1.0, 0.0}), lettersOf("A", 0.5, 0.0, {}, {1.0, 0.0}));
}

TEST_F(Text, KeepsTheBoxFromTheStartEvenBeforeSpaces) {
    // The box begins at (0, 0), so leading spaces do count once a letter follows.
    EXPECT_EQ(lettersOf(" A", 0.5, 0.0, {}, {1.0, 0.0})[0].x, -(0.5 + 0.25) + 0.5);
}

TEST_F(Text, NeverWrapsAtWidthZero) {
    const auto letters = lettersOf(std::string(100, 'A'), 0.5, 0.0, {}, {0.0, 0.0});
    ASSERT_EQ(letters.size(), 100u);
    EXPECT_EQ(letters.back(), (Letter{100, 24.75, 0.0}));
}

TEST_F(Text, WrapsBehindTheLetterThatCrossesTheWidth) {
    EXPECT_THAT(lettersOf("AAAA", 0.5, 0.4, {}, {0.0, 0.0}),
                ElementsAre(Letter{100, 0.0, 0.0}, Letter{100, 0.25, 0.0}, Letter{100, 0.0, 0.5},
                            Letter{100, 0.25, 0.5}));
}

TEST_F(Text, DoesNotWrapAtExactlyTheWidth) {
    EXPECT_THAT(lettersOf("AAA", 0.5, 0.5, {}, {0.0, 0.0}),
                ElementsAre(Letter{100, 0.0, 0.0}, Letter{100, 0.25, 0.0}, Letter{100, 0.5, 0.0}));
}

TEST_F(Text, AdvancesALineByTheHeightOfTheLetterThatWrapped) {
    EXPECT_THAT(lettersOf("ZA", 0.5, 0.1, {}, {0.0, 0.0}),
                ElementsAre(Letter{125, 0.0, 0.0}, Letter{100, 0.0, 1.0}));
}

TEST_F(Text, DoesNotWrapBehindASpace) {
    EXPECT_THAT(lettersOf("A A", 0.5, 0.3, {}, {0.0, 0.0}),
                ElementsAre(Letter{100, 0.0, 0.0}, Letter{100, 0.75, 0.0}));
}

TEST_F(Text, TakesEveryOtherByteForASpace) {
    const auto spaced = lettersOf("A A", 0.5, 0.0, {}, {0.5, 0.5});
    for (const char other : {'a', '1', '@', '[', '\n', '\xe4'}) {
        EXPECT_EQ(lettersOf(std::string("A") + other + "A", 0.5, 0.0, {}, {0.5, 0.5}), spaced);
    }
}

TEST_F(Text, TakesGlyphsWithoutTexelsForOneTexel) {
    writable::pictures.glyphTable.fill(Texture2D());
    drawText("A", 0, 0.5, 0.0, {}, {0.0, 0.0});
    EXPECT_THAT(scene.takeSprites().at(0).destMinAndSize, ElementsAre(0.0, 0.0, 0.5, 0.5));
}

} // namespace
} // namespace dunkman
