#include "app/start_times.h"

#include <gmock/gmock.h>

#include <string>

#include "app/reset.h"
#include "base/key_states.h"
#include "tests/fakes/program_fixture.h"

namespace dunkman {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class StartTimes : public testing::Test {
protected:
    StartTimes() { resetProgram(); }
    ~StartTimes() override { resetProgram(); }

    static void spend(std::int64_t milliseconds) {
        simulated::machine.clockNanoseconds += milliseconds * 1000000;
    }
};

TEST_F(StartTimes, SplitTheTimeFromTheStartOfTheProcessToTheFirstFrame) {
    simulated::machine.processAgeNanoseconds = 63040000;
    simulated::machine.clockNanoseconds = 5000000000; // a clock that did not begin with the process
    beginStartTimes();
    spend(200);
    noteStarted("window");
    spend(90);
    noteStarted("context");
    spend(33);
    tellStartTimes();
    EXPECT_THAT(simulated::machine.debugLines,
                ElementsAre("start process=63.0 window=200.0 context=90.0 frame=33.0"));
}

TEST_F(StartTimes, AreToldOnce) {
    beginStartTimes();
    tellStartTimes();
    simulated::machine.debugLines.clear();
    tellStartTimes();
    EXPECT_THAT(simulated::machine.debugLines, IsEmpty());
}

// The whole program, which its player leaves in the second step.
class StartOfTheProgram : public ProgramFixture, protected FrameObserver {
    void updated() override {
        ++steps;
        if (steps == 2) {
            press(keys::escape);
        }
    }

    int steps = 0;
};

TEST_F(StartOfTheProgram, IsToldOnceWithAllItsWork) {
    frameObserver = this;
    runProgram(InputMode::Record);
    EXPECT_THAT(simulated::machine.debugLines,
                Contains("start process=0.0 recording=0.0 window=0.0 context=0.0 shaders=0.0 pictures=0.0 "
                         "warm-up=0.0 screen=0.0 music=0.0 frame=0.0")
                    .Times(1));
}

TEST_F(StartTimes, AreForgottenByAReset) {
    beginStartTimes();
    noteStarted("window");
    resetProgram();
    tellStartTimes();
    EXPECT_THAT(simulated::machine.debugLines, IsEmpty());
}

} // namespace

} // namespace dunkman
