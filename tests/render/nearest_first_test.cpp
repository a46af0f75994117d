#include "render/nearest_first.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <set>
#include <span>
#include <vector>

#include "base/frame_state_writer.h"
#include "render/renderer_objects.h"
#include "render/view.h"
#include "tests/render/sprite_scene.h"

// Where OpenGL is done in software, the sprites of a view are drawn from the front to the back.
namespace dunkman {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Names = std::vector<std::uint32_t>; // of textures

// Ten units away: the picture of 200 by 200 pixels shows what lies between -10 and 10.
constexpr Matrix4 view = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, -1, 0, 0, 9, 10};

class NearestFirst : public testing::Test {
protected:
    NearestFirst() {
        writable::frameState.clientWidth = 200;
        writable::frameState.clientHeight = 200;
        rendererObjects->software.emplace(ShaderSourceSet{}, ShaderSourceSet{});
        setViewProjection(view);
        scene.gl.calls.clear();
    }
    ~NearestFirst() override { writable::frameState = {}; }

    struct Look {
        std::uint32_t name; // of its texture
        Vec2 position;
        SpriteMode mode = SpriteMode::World;
        Vec2 size = {2.0, 2.0};
        double angle = 0.0;
        double zOffset = 0.0;
    };

    Names order(const std::vector<Look>& looks) {
        static std::span<const Look> drawn;
        drawn = looks;
        drawNearestFirst([] {
            for (const Look& look : drawn) {
                draw({.texture = SpriteScene::texture(look.name, 8, 8),
                      .mode = look.mode,
                      .position = look.position,
                      .size = look.size,
                      .angle = look.angle,
                      .zOffset = look.zOffset});
            }
        });
        return drawnNames();
    }

    Names drawnNames() {
        Names names;
        for (const DrawnSprite& sprite : scene.takeSprites()) {
            names.push_back(sprite.texture);
        }
        return names;
    }

    SpriteScene scene;
};

TEST_F(NearestFirst, DrawsFirstWhatStandsLowest) {
    EXPECT_THAT(order({{50, {0, 1}}, {51, {0, -1}}, {52, {0, 0}}}), ElementsAre(51, 52, 50));
}

TEST_F(NearestFirst, TakesDepthForNearness) {
    EXPECT_THAT(order({{50, {0, 0}}, {51, {0, 0}, SpriteMode::World, {2, 2}, 0.0, 0.5}}),
                ElementsAre(51, 50));
}

TEST_F(NearestFirst, DrawsWhatLiesOverTheRestBeforeAllOfIt) {
    EXPECT_THAT(order({{50, {0, -9}}, {51, {0, -8}, SpriteMode::Interface}}), ElementsAre(51, 50));
}

TEST_F(NearestFirst, KeepsTheOrderOfEquallyNearSprites) {
    EXPECT_THAT(order({{50, {0.5, 1}}, {51, {0, 1}}, {52, {1, 1}}}), ElementsAre(50, 51, 52));
}

TEST_F(NearestFirst, LetsNoneOvertakeByLessThanRoundingMayAddUpTo) {
    EXPECT_THAT(order({{50, {0, 0.001}}, {51, {0, 0}}}), ElementsAre(50, 51));
    EXPECT_THAT(order({{50, {0, 0.02}}, {51, {0, 0}}}), ElementsAre(51, 50));
}

// Its near edge is nearer than the one that stands in it, its far edge is farther.
TEST_F(NearestFirst, LetsNoneOvertakeAFlatSpriteThatItStandsIn) {
    const Look flat = {50, {0, 0}, SpriteMode::Flat, {6, 2}};
    EXPECT_THAT(order({flat, {51, {0, 0.5}}}), ElementsAre(50, 51));
    EXPECT_THAT(order({flat, {51, {0, -0.5}}}), ElementsAre(50, 51));
    EXPECT_THAT(order({flat, {51, {0, -1.5}}}), ElementsAre(51, 50));
}

TEST_F(NearestFirst, KnowsHowFarATurnedFlatSpriteReaches) {
    const Look upright = {50, {0, 0}, SpriteMode::Flat, {6, 1}};
    const Look turned = {50, {0, 0}, SpriteMode::Flat, {6, 1}, 90.0};
    EXPECT_THAT(order({upright, {51, {0, -2}, SpriteMode::World, {4, 4}}}), ElementsAre(51, 50));
    EXPECT_THAT(order({turned, {51, {0, -2}, SpriteMode::World, {4, 4}}}), ElementsAre(50, 51));
}

TEST_F(NearestFirst, PassesAnEquallyNearSpriteThatItDoesNotTouch) {
    const Look apart = {51, {-6, 0}};
    EXPECT_THAT(order({{50, {4, 2}, SpriteMode::World, {2, 6}}, apart, {52, {4, 0}}}),
                ElementsAre(52, 51, 50));
}

TEST_F(NearestFirst, LeavesOutWhatLiesOutsideThePicture) {
    EXPECT_THAT(order({{50, {12, 0}}, {51, {-12, 0}}, {52, {0, 12}}, {53, {0, -12}}}), IsEmpty());
    EXPECT_THAT(order({{50, {11, 0}}, {51, {-11, 0}}, {52, {0, 11}}, {53, {0, -11}}}),
                testing::UnorderedElementsAre(50, 51, 52, 53))
        << "they touch its edges";
}

TEST_F(NearestFirst, LeavesNothingOutWhereItCannotTellWhatLiesOutside) {
    writable::frameState.clientWidth = 0;
    EXPECT_THAT(order({{50, {12, 0}}}), ElementsAre(50));
}

TEST_F(NearestFirst, DrawsMoreThanItHasRoomForInPortions) {
    constexpr std::uint32_t first = 1000000;
    std::vector<Look> looks;
    for (std::uint32_t i = 0; i < 1000; ++i) {
        looks.push_back({first + i, {0.0, 5.0 - 0.01 * i}}); // each nearer than those before it
    }
    const Names names = order(looks);
    EXPECT_EQ(std::set<std::uint32_t>(names.begin(), names.end()).size(), 1000u);
    EXPECT_EQ(names.size(), 1000u);
    EXPECT_EQ(names.front(), first + 255u);
    EXPECT_EQ(names.back(), first + 768u);
}

TEST_F(NearestFirst, BeginsAfreshWithEveryPicture) {
    EXPECT_THAT(order({{50, {0, 0}}}), ElementsAre(50));
    EXPECT_THAT(order({{51, {0, 0}}}), ElementsAre(51));
    EXPECT_THAT(order({}), IsEmpty());
}

TEST_F(NearestFirst, ConcernsOnlyWhatIsDrawnWithin) {
    draw({.texture = SpriteScene::texture(50, 8, 8), .position = {0, 1}});
    EXPECT_THAT(drawnNames(), ElementsAre(50));
    draw({.texture = SpriteScene::texture(51, 8, 8), .position = {0, -1}});
    EXPECT_THAT(drawnNames(), ElementsAre(51));
}

TEST_F(NearestFirst, IsLeftToTheGraphicsCardWhereThereIsOne) {
    rendererObjects->software.reset();
    EXPECT_THAT(order({{50, {0, 1}}, {51, {0, -1}}, {52, {12, 0}}}), ElementsAre(50, 51, 52));
}

} // namespace
} // namespace dunkman
