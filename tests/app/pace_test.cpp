#include "app/pace.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "screens/screen_writer.h"
#include "tests/fakes/program_fixture.h"

namespace dunkman {

namespace {

class Pace : public ProgramFixture {
protected:
    void startWithProbe() {
        start(InputMode::Replay);
        installProbe(ScreenId::Menu);
        startPace();
        simulated::machine.debugLines.clear();
    }

    static std::vector<std::string> lines() {
        std::vector<std::string> told;
        for (const std::string& line : simulated::machine.debugLines) {
            if (line.starts_with("pace ")) {
                told.push_back(line.substr(0, line.find(" seconds")));
            }
        }
        return told;
    }
};

TEST_F(Pace, IsToldOfAScreenWhenItGivesWay) {
    startWithProbe();
    iterateAfter(stepNanoseconds);
    iterateAfter(2 * stepNanoseconds);
    EXPECT_TRUE(lines().empty());
    probe.onUpdate = [] { switchTo(ScreenId::Game); };
    iterateAfter(stepNanoseconds);
    EXPECT_THAT(lines(), testing::ElementsAre("pace Menu from=0 steps=4 dropped=0 frames=3"));
}

TEST_F(Pace, CountsTheStepsThatCameTooLateAsDropped) {
    startWithProbe();
    iterateAfter(10 * stepNanoseconds);
    endPace();
    EXPECT_THAT(lines(), testing::ElementsAre("pace Menu from=0 steps=3 dropped=7 frames=1"));
}

TEST_F(Pace, TakesATurnWithoutAStepForNoFrame) {
    startWithProbe();
    iterateAfter(stepNanoseconds);
    iterateAfter(1000);
    endPace();
    EXPECT_THAT(lines(), testing::ElementsAre("pace Menu from=0 steps=1 dropped=0 frames=1"));
}

TEST_F(Pace, IsToldEveryTenSecondsOfALongScreen) {
    startWithProbe();
    for (int i = 0; i < 601; ++i) {
        iterateAfter(stepNanoseconds);
    }
    endPace();
    EXPECT_THAT(lines(), testing::ElementsAre("pace Menu from=0 steps=600 dropped=0 frames=600",
                                              "pace Menu from=600 steps=1 dropped=0 frames=1"));
}

TEST_F(Pace, IsToldToTheEndWhenAStepEndsTheProgram) {
    startWithProbe();
    iterateAfter(stepNanoseconds);
    probe.onUpdate = [] { writable::screenState.currentScreen = nullptr; };
    EXPECT_THROW(iterateAfter(stepNanoseconds), simulated::ProgramExit);
    EXPECT_THAT(lines(), testing::ElementsAre("pace Menu from=0 steps=1 dropped=0 frames=1"));
}

} // namespace

} // namespace dunkman
