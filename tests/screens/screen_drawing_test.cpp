#include <cmath>

#include "base/frame_state_writer.h"
#include "screens/intro_screen.h"
#include "screens/loading_screen.h"
#include "tests/fakes/program_fixture.h"
#include "tests/screens/draw_line.h"

namespace dunkman {

namespace {

class ScreenDrawing : public ProgramFixture {
protected:
    void enter(ScreenId id) {
        start(InputMode::Live);
        writable::frameState.aspectRatio = 16.0 / 9.0;
        switchTo(id);
    }

    static std::vector<DrawnSprite> render() {
        return drawnSprites(drawLines([] { screenState.currentScreen->render(); }));
    }

    static int count(const std::vector<DrawnSprite>& sprites, std::string_view image) {
        int found = 0;
        for (const DrawnSprite& sprite : sprites) {
            found += sprite.image == image ? 1 : 0;
        }
        return found;
    }
};

TEST_F(ScreenDrawing, EveryMenuLikeScreenBeginsWithTheBackground) {
    for (const ScreenId id : {ScreenId::Menu, ScreenId::GameOver, ScreenId::Pause, ScreenId::Loading,
                              ScreenId::Intro, ScreenId::Credits}) {
        enter(id);
        const std::vector<std::string> lines = drawLines([] { screenState.currentScreen->render(); });
        const std::vector<DrawnSprite> sprites = drawnSprites(lines);
        ASSERT_FALSE(sprites.empty());
        EXPECT_EQ(sprites[0].image, "menuBackground");
        EXPECT_FLOAT_EQ(static_cast<float>(sprites[0].z), -0.99f);
        EXPECT_EQ(sprites[0].flags, 10u);
        destroyScreens();
    }
}

TEST_F(ScreenDrawing, BackgroundKeepsItsHeightOnWideWindowsAndGrowsOnNarrowOnes) {
    enter(ScreenId::Loading);
    writable::frameState.aspectRatio = 21.0 / 9.0;
    EXPECT_NEAR(render()[0].dest[3], 18.0 / 1.4750996015936255, 1e-5);
    writable::frameState.aspectRatio = 4.0 / 3.0;
    EXPECT_NEAR(render()[0].dest[3], 13.5, 1e-5);
}

TEST_F(ScreenDrawing, LoadingShowsItsProgressInTheGlass) {
    enter(ScreenId::Loading);
    writable::frameState.elapsedTime = 3.2; // floor(6.4) * 0.1 = 0.6
    screenState.currentScreen->update();
    const std::vector<DrawnSprite> sprites = render();
    ASSERT_GE(sprites.size(), 2u);
    EXPECT_EQ(sprites[1].image, "cocktailFull");
    EXPECT_EQ(sprites[1].flags, 14u);
    EXPECT_NEAR(sprites[1].z, 0.36, 1e-6);
    EXPECT_EQ(lettersOf(sprites), "LOADING");
}

TEST_F(ScreenDrawing, StoryShowsFourCharactersAtItsStart) {
    EXPECT_EQ(typedCharacters(storyLines[0], 0.0), 4u);
    enter(ScreenId::Intro);
    EXPECT_EQ(lettersOf(render()), "WELC");
}

TEST_F(ScreenDrawing, StoryTypesEightCharactersASecondAndStaysWhole) {
    const StoryLine line = {10.0, "DUNKMAN"};
    EXPECT_EQ(typedCharacters(line, 10.0), 0u);
    EXPECT_EQ(typedCharacters(line, 10.49), 3u);
    EXPECT_EQ(typedCharacters(line, 10.875), 7u);
    EXPECT_EQ(typedCharacters(line, 99.0), 7u);
}

TEST_F(ScreenDrawing, StoryLinesRunDownwardAndStartAtTheirTimes) {
    enter(ScreenId::Intro);
    static_cast<IntroScreen&>(*screenState.currentScreen).storyTime = 11.5;
    std::vector<DrawnSprite> sprites = render();
    EXPECT_EQ(lettersOf(sprites), "WELCOMETOTHESTORYOFAGENTDUNKMANASIMPLEMANWORKINGHARDONTHEJOB");
    EXPECT_NEAR(sprites.back().centreY(), -3.6, 1e-5);
    EXPECT_NEAR(sprites.back().dest[3], 0.25, 1e-6);
    static_cast<IntroScreen&>(*screenState.currentScreen).storyTime = 11.7;
    sprites = render();
    EXPECT_EQ(sprites.back().image, "glyph:T"); // "T" of the third line
    EXPECT_NEAR(sprites.back().centreY(), -4.2, 1e-5);
}

TEST_F(ScreenDrawing, StoryLineSixIsTypedBeforeLineSevenStarts) {
    const StoryLine& webSite = storyLines[5];
    EXPECT_EQ(typedCharacters(webSite, storyLines[6].start), webSite.text.size());
    for (const char character : webSite.text) {
        EXPECT_TRUE(character == ' ' || (character >= 'A' && character <= 'Z')) << character;
    }
}

TEST_F(ScreenDrawing, MenuShowsEachHintBeforeItsKey) {
    enter(ScreenId::Menu);
    std::vector<std::string> order;
    for (const DrawnSprite& sprite : render()) {
        const std::string name = sprite.image.starts_with("glyph:") ? "text" : sprite.image;
        if (order.empty() || order.back() != name) {
            order.push_back(name);
        }
    }
    EXPECT_EQ(order, (std::vector<std::string>{"menuBackground", "logo", "logoTheGame", "pineapple",
                                               "cocktailFull", "flamingo", "palmTree", "text", "btnArrow",
                                               "text", "btnZ", "text", "btnX", "text", "btnX"}));
}

TEST_F(ScreenDrawing, MenuKeysWobbleTogether) {
    enter(ScreenId::Menu);
    writable::frameState.elapsedTime = 0.0; // cos 0 * 4 + 2 * cos 0 = 6 degrees
    for (const DrawnSprite& sprite : render()) {
        if (sprite.image.starts_with("btn")) {
            EXPECT_NEAR(sprite.pos[3], std::sin(-6.0 * 3.14159265359 / 180.0), 1e-6) << sprite.image;
        }
    }
}

TEST_F(ScreenDrawing, GameOverShowsTwoSpilledGlassesAndItsKeys) {
    enter(ScreenId::GameOver);
    const std::vector<DrawnSprite> sprites = render();
    EXPECT_EQ(lettersOf(sprites), "GAMEOVERRETRYQUIT");
    EXPECT_EQ(count(sprites, "cocktailSpill"), 2);
    EXPECT_EQ(count(sprites, "btnX"), 1);
    EXPECT_EQ(count(sprites, "btnEsc"), 1);
}

constexpr std::string_view creditLetters =
    "CODEQUILLMOSSGRAPHICSVESPERINEMUSICDROMBLEBASEDONZANDORELLABYHALVARDNUSK";

TEST_F(ScreenDrawing, CreditsNameEverybodyInOrder) {
    enter(ScreenId::Credits);
    EXPECT_EQ(lettersOf(render()), creditLetters);
}

TEST_F(ScreenDrawing, PauseShowsTheCreditsToo) {
    enter(ScreenId::Pause);
    EXPECT_EQ(lettersOf(render()), "PAUSED" + std::string(creditLetters) + "CONTINUEEXITTOMENU");
}

} // namespace

} // namespace dunkman
