#include "screens/story_view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>

#include "app/reset.h"
#include "base/frame_state_writer.h"
#include "render/gl.h"
#include "screens/intro_screen.h"
#include "tests/fakes/program_fixture.h"
#include "tests/screens/draw_line.h"

// The story in windows that are too low for all of its lines.
namespace dunkman {

namespace {

constexpr double precision = 1e-5; // of positions that went through floats

GLsizei scissorRows = -1; // -1: nothing is cut off
bool scissorIsOn = false;

void noteScissor(GLint, GLint, GLsizei, GLsizei height) { scissorRows = height; }
void noteEnabled(GLenum capability) { scissorIsOn = scissorIsOn || capability == GL_SCISSOR_TEST; }
void noteDisabled(GLenum capability) { scissorIsOn = scissorIsOn && capability != GL_SCISSOR_TEST; }

// A line as it is on the screen.
struct ShownLine {
    double bottom;
    double top;
};

class StoryWindow : public ProgramFixture, public testing::WithParamInterface<platform::ClientSize> {
protected:
    StoryWindow() {
        start(InputMode::Live);
        writable::frameState.clientWidth = GetParam().width;
        writable::frameState.clientHeight = GetParam().height;
        writable::frameState.aspectRatio =
            static_cast<double>(frameState.clientWidth) / static_cast<double>(frameState.clientHeight);
        halfHeight = 9.0 / frameState.aspectRatio;
        switchTo(ScreenId::Intro);
        glScissor = noteScissor;
        glEnable = noteEnabled;
        glDisable = noteDisabled;
        scissorIsOn = false;
    }

    // What one rendering of the story draws.
    std::vector<std::string> linesAt(double storyTime) {
        scissorRows = -1;
        static_cast<IntroScreen&>(*screenState.currentScreen).storyTime = storyTime;
        return drawLines([] { screenState.currentScreen->render(); });
    }

    // The lines of text, from the first down, under the view that each was drawn with.
    std::vector<ShownLine> shownAt(double storyTime) {
        std::vector<ShownLine> shown;
        double scaleY = 0.0;
        double shift = 0.0;
        double lastY = 0.0;
        for (const std::string& line : linesAt(storyTime)) {
            if (line.starts_with("view ")) {
                const std::vector<double> matrix = numbers(line.substr(5));
                scaleY = matrix[5];
                shift = matrix[13];
                continue;
            }
            const DrawnSprite letter = drawnSprites({line}).at(0);
            if (!letter.image.starts_with("glyph:") || (!shown.empty() && letter.pos[1] == lastY)) {
                continue;
            }
            lastY = letter.pos[1];
            const auto onScreen = [&](double y) { return (y * scaleY + shift) * halfHeight; };
            shown.push_back({onScreen(letter.pos[1]), onScreen(letter.pos[1] + letter.dest[3])});
        }
        return shown;
    }

    // Where lines are cut off, after a rendering; infinite where they are not.
    double cut() const {
        return scissorRows < 0 ? HUGE_VAL : (2.0 * scissorRows / frameState.clientHeight - 1.0) * halfHeight;
    }

    double pixel() const { return 2.0 * halfHeight / frameState.clientHeight; }

    // When the line has been typed; the next one may have begun.
    static double endOf(std::size_t line) {
        return storyLines[line].start + static_cast<double>(storyLines[line].text.size()) / 8.0;
    }

    // When the line and the ones above it have stood still the longest.
    static double restOf(std::size_t line) {
        return line + 1 < storyLines.size() ? storyLines[line + 1].start - 1e-9 : 46.0;
    }

    // Before, while and after the view follows each line.
    static std::vector<double> interestingTimes() {
        std::vector<double> times = {0.0};
        for (std::size_t line = 1; line < storyLines.size(); ++line) {
            for (const double seconds : {0.0, 0.15, 0.3, 0.45, 1.0}) {
                times.push_back(storyLines[line].start + seconds);
            }
        }
        times.push_back(46.0);
        return times;
    }

    double halfHeight = 0.0;
};

TEST_P(StoryWindow, ShowsEveryLineWholeAtItsEnd) {
    for (std::size_t line = 0; line < storyLines.size(); ++line) {
        const std::vector<ShownLine> shown = shownAt(endOf(line));
        ASSERT_GT(shown.size(), line);
        EXPECT_GE(shown[line].bottom, -halfHeight + 0.5 - precision) << "line " << line;
        EXPECT_LE(shown[line].top, std::min(cut(), -1.2)) << "line " << line;
    }
}

TEST_P(StoryWindow, CutsThroughNoLineAtRest) {
    for (std::size_t line = 0; line < storyLines.size(); ++line) {
        for (const ShownLine& other : shownAt(restOf(line))) {
            const bool isWhole = other.top <= cut() + pixel() / 2.0 && other.bottom >= -halfHeight;
            const bool isGone = other.bottom >= cut();
            EXPECT_TRUE(isWhole || isGone) << other.bottom << " to " << other.top << ", cut at " << cut();
        }
    }
}

TEST_P(StoryWindow, KeepsItsLinesOffTheLogo) {
    for (const double time : interestingTimes()) {
        const std::vector<ShownLine> shown = shownAt(time);
        if (!shown.empty() && shown.front().top > -1.2 + precision) {
            EXPECT_LE(cut(), -1.2 + pixel()) << time;
            EXPECT_GE(cut(), -1.8 - pixel()) << time;
        }
    }
    EXPECT_FALSE(scissorIsOn); // the next screen is drawn whole
}

TEST_P(StoryWindow, MovesTheViewNoFurtherThanTheLowestLineNeeds) {
    for (std::size_t line = 0; line < storyLines.size(); ++line) {
        const double unmoved = -3.0 - 0.6 * static_cast<double>(line) - 0.125;
        const double needed = std::max(-halfHeight + 0.5 - unmoved, 0.0);
        EXPECT_NEAR(storyViewAt(restOf(line)).lowered, needed, 1e-12) << "line " << line;
    }
}

TEST_P(StoryWindow, FollowsALineInHalfASecondFromItsStart) {
    for (std::size_t line = 1; line < storyLines.size(); ++line) {
        const double start = storyLines[line].start;
        EXPECT_DOUBLE_EQ(storyViewAt(start).lowered, storyViewAt(start - 0.001).lowered);
        const double before = storyViewAt(start).lowered;
        const double after = storyViewAt(start + 0.5).lowered;
        EXPECT_DOUBLE_EQ(after, storyViewAt(restOf(line)).lowered);
        EXPECT_NEAR(storyViewAt(start + 0.25).lowered, (before + after) / 2.0, 1e-12);
        double last = before;
        for (double seconds = 0.0; seconds <= 0.5; seconds += 0.01) {
            EXPECT_GE(storyViewAt(start + seconds).lowered, last);
            last = storyViewAt(start + seconds).lowered;
        }
    }
}

TEST_P(StoryWindow, DrawsWithTheOneViewAsLongAsNoLineIsTooLow) {
    for (const double time : interestingTimes()) {
        const std::vector<std::string> drawn = linesAt(time);
        const auto views = std::count_if(drawn.begin(), drawn.end(),
                                         [](const std::string& line) { return line.starts_with("view "); });
        const bool isTooLow = storyViewAt(time).lowered > 0.0;
        EXPECT_EQ(views, isTooLow ? 3 : 1) << time;
        EXPECT_EQ(scissorRows >= 0, isTooLow) << time;
        EXPECT_EQ(drawn.front().starts_with("view "), true);
        if (isTooLow) {
            EXPECT_EQ(drawn.back(), drawn.front()); // put back as it was
        }
    }
}

TEST_P(StoryWindow, DrawsTheLinesWhereTheyAlwaysWere) {
    const std::vector<DrawnSprite> sprites = drawnSprites(linesAt(46.0));
    std::vector<double> rows;
    for (const DrawnSprite& sprite : sprites) {
        if (sprite.image.starts_with("glyph:") && (rows.empty() || rows.back() != sprite.centreY())) {
            rows.push_back(sprite.centreY());
        }
    }
    ASSERT_EQ(rows.size(), storyLines.size());
    for (std::size_t line = 0; line < rows.size(); ++line) {
        EXPECT_NEAR(rows[line], -3.0 - 0.6 * static_cast<double>(line), precision);
    }
}

std::string windowName(const testing::TestParamInfo<platform::ClientSize>& info) {
    return std::to_string(info.param.width) + "x" + std::to_string(info.param.height);
}

INSTANTIATE_TEST_SUITE_P(FromFourToThreeToTwentyOneToNine, StoryWindow,
                         testing::Values(platform::ClientSize{1024, 768}, platform::ClientSize{1600, 1200},
                                         platform::ClientSize{1500, 1000}, platform::ClientSize{1280, 800},
                                         platform::ClientSize{1366, 768}, platform::ClientSize{1920, 1080},
                                         platform::ClientSize{640, 360}, platform::ClientSize{2560, 1080},
                                         platform::ClientSize{2520, 1080}, platform::ClientSize{3440, 1440}),
                         windowName);

class Story : public testing::Test {
protected:
    ~Story() override { resetProgram(); }
};

TEST_F(Story, StandsStillForItsFirstSixteenSecondsAtSixteenToNine) {
    writable::frameState.aspectRatio = 16.0 / 9.0;
    EXPECT_EQ(storyViewAt(16.5).lowered, 0.0);
    EXPECT_GT(storyViewAt(16.6).lowered, 0.0);
}

TEST_F(Story, KeepsAllNineLinesAtFourToThree) {
    writable::frameState.aspectRatio = 4.0 / 3.0;
    const StoryView view = storyViewAt(46.0);
    EXPECT_NEAR(storyLineCentre(0) + view.lowered + storyLetterHeight / 2.0, -1.2, 1e-12);
    EXPECT_DOUBLE_EQ(view.cutAt, -1.2);
}

TEST_F(Story, CutsBelowTheLogoHoweverItRocks) {
    std::array<char, 20> header = {};
    std::ifstream("data/AssetsCompressed/logo.dds", std::ios::binary).read(header.data(), header.size());
    const auto number = [&header](std::size_t at) {
        return static_cast<unsigned char>(header.at(at)) +
               256.0 * static_cast<unsigned char>(header.at(at + 1));
    };
    const double height = 4.0;
    const double width = height * number(16) / number(12);
    const double degree = 3.14159265359 / 180.0;
    const double lowest = 1.0 - std::cos(degree) * height / 2.0 - std::sin(degree) * width / 2.0;
    EXPECT_GT(lowest, -1.2);
}

} // namespace

} // namespace dunkman
