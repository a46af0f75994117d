#include "tools/headless/trace.h"

#include <exception>
#include <utility>

#include "base/frame_state.h"
#include "base/key_states.h"
#include "json5/canonical.h"
#include "platform/simulated/gl_sim.h"
#include "screens/screen.h"
#include "world/trace.h"

namespace dunkman::headless {

namespace {

constexpr std::size_t flushSize = 1 << 20; // bytes

std::string_view modeName(InputMode mode) {
    switch (mode) {
    case InputMode::Record:
        return "Record";
    case InputMode::Replay:
        return "Replay";
    case InputMode::Live:
    default:
        return "Live";
    }
}

void appendKeyCode(std::string& out, std::int32_t virtualKey) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto code = static_cast<std::uint32_t>(virtualKey);
    out += "0x";
    // Two digits for every real key; a recording may name any number.
    bool leading = true;
    for (int shift = 28; shift >= 0; shift -= 4) {
        const std::uint32_t digit = (code >> static_cast<unsigned>(shift)) & 0xFu;
        leading = leading && digit == 0 && shift > 4;
        if (!leading) {
            out += digits[digit];
        }
    }
}

} // namespace

Trace::Trace(const Options& traceOptions, TraceSink traceOutput)
    : options(traceOptions), output(std::move(traceOutput)) {
    if (options.traceDraws) {
        simulated::setDrawTrace([this](std::string_view line) {
            text += line;
            text += '\n';
        });
    }
    frameObserver = this;
}

Trace::~Trace() {
    simulated::setDrawTrace({});
    frameObserver = nullptr;
    if (text.empty()) {
        return;
    }
    try {
        flush(); // what happened before the game stopped
    } catch (const std::exception&) {
        // The message that stopped the game is already on its way.
    }
}

void Trace::inputApplied() {
    text += "step " + std::to_string(steps) + " time=";
    appendHexFloat(text, frameState.elapsedTime);
    text += " dt=";
    appendHexFloat(text, frameState.frameDelta);
    text += " screen=";
    text += screenName(screenState.currentScreen);
    text += " mode=";
    text += modeName(frameState.inputMode);
    text += '\n';
    ++steps;
    gameStepRuns = isCurrent(ScreenId::Game);
    if (options.traceKeys) {
        appendKeys();
    }
    flushIfLarge();
}

void Trace::appendKeys() {
    for (const auto& [key, state] : keyStates) {
        if (state != KeyState::Up) {
            text += "key ";
            appendKeyCode(text, key);
            text += ' ' + std::to_string(static_cast<std::int32_t>(state)) + '\n';
        }
    }
}

void Trace::updated() {
    if (options.traceWorld && gameStepRuns) {
        appendWorldTrace(text);
    }
}

void Trace::end(std::int64_t iterations, std::string_view reason) {
    text += "end iterations=" + std::to_string(iterations) + " steps=" + std::to_string(steps) + " reason=";
    text += reason;
    text += '\n';
    flush();
}

void Trace::flushIfLarge() {
    if (text.size() >= flushSize) {
        flush();
    }
}

void Trace::flush() {
    output(text);
    text.clear();
}

} // namespace dunkman::headless
