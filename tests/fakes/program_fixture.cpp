#include "tests/fakes/program_fixture.h"

#include "app/reset.h"
#include "platform/simulated/gl_sim.h"
#include "screens/screen_writer.h"
#include "tools/headless/runner.h"

namespace dunkman {

void ProbeScreen::update() {
    log.emplace_back("update");
    if (onUpdate != nullptr) {
        onUpdate();
    }
}

void ProbeScreen::render() {
    log.emplace_back("render");
    if (onRender != nullptr) {
        onRender();
    }
}

ProgramFixture::ProgramFixture() { resetProgram(); }

ProgramFixture::~ProgramFixture() {
    if (replacedScreen != nullptr) {
        writable::screenState.screenTable[replacedId] = replacedScreen;
    }
    resetProgram();
}

void ProgramFixture::start(InputMode mode, ScreenId screen) {
    startUp(mode, screen);
    simulated::machine.bufferSwaps = 0;
}

LoopEnd ProgramFixture::iterateAfter(std::int64_t nanoseconds) {
    simulated::machine.clockNanoseconds += nanoseconds;
    return runIteration();
}

int ProgramFixture::iterateUntil(ScreenId screen, int most) {
    int iterations = 0;
    while (iterations < most && !isCurrent(screen)) {
        iterateAfter(stepNanoseconds);
        ++iterations;
    }
    return iterations;
}

void ProgramFixture::installProbe(ScreenId id) {
    replacedId = id;
    replacedScreen = screenState.screenTable.at(id);
    writable::screenState.screenTable[id] = &probe;
    writable::screenState.currentScreen = &probe;
}

std::vector<std::string> ProgramFixture::drawLines(void (*action)()) {
    std::vector<std::string> lines;
    simulated::setDrawTrace([&lines](std::string_view line) { lines.emplace_back(line); });
    action();
    simulated::setDrawTrace({});
    return lines;
}

} // namespace dunkman
