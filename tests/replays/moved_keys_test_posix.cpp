#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "app/frame.h"
#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "app/recording_writer.h"
#include "app/reset.h"
#include "base/key_states.h"
#include "platform/simulated/gl_sim.h"
#include "platform/simulated/platform_sim.h"
#include "screens/screen.h"

// The golden trace of the show holds the keys and what is drawn, step by step. Here each key change of the shipped recording
// is moved by one step, to the one before and to the one after, and that trace must differ. The show is played once; at
// every change a child of the process goes on from there with the change moved, until its trace differs.
namespace dunkman {

namespace {

constexpr std::int64_t stepNanoseconds = 16666667;
constexpr std::size_t patience = 60; // steps in which a moved change has to show

// Keeps a sum over what the trace says of each game step.
class Watcher final : public FrameObserver {
public:
    Watcher() {
        simulated::setDrawTrace([this](std::string_view line) { add(line); });
        frameObserver = this;
    }
    ~Watcher() {
        simulated::setDrawTrace({});
        frameObserver = nullptr;
    }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    void inputApplied() override {
        isWatching = isCurrent(ScreenId::Game);
        if (!isWatching) {
            return;
        }
        steps.push_back(0);
        for (const auto& [key, state] : keyStates) {
            if (state != KeyState::Up) {
                add(std::to_string(key) + ' ' + std::to_string(static_cast<std::int32_t>(state)));
            }
        }
    }

    std::vector<std::size_t> steps; // by game step

private:
    void add(std::string_view line) {
        if (isWatching) {
            steps.back() = steps.back() * 1000003 + std::hash<std::string_view>()(line);
        }
    }

    bool isWatching = false;
};

struct Move {
    std::size_t record = 0; // which
    std::size_t change = 0; // of its changes
    int by = 0;             // steps: -1 or 1
};

void iterate() {
    simulated::machine.clockNanoseconds += stepNanoseconds;
    runIteration();
}

bool isReplaying() { return isCurrent(ScreenId::Game) && frameState.inputMode == InputMode::Replay; }

// To be called before the earlier one of the two steps.
void move(const Move& asked) {
    auto& records = writable::recording.records;
    InputRecord& from = records[asked.record];
    const KeyChange change = from.newKeyStates[asked.change];
    const auto frame = static_cast<std::uint64_t>(static_cast<std::int64_t>(from.frame) + asked.by);
    from.newKeyStates.erase(from.newKeyStates.begin() + static_cast<std::ptrdiff_t>(asked.change));
    const bool wasLast = asked.record + 1 == records.size();
    if (from.newKeyStates.empty() && !(wasLast && asked.by < 0)) { // the last one still ends the replay
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(asked.record));
    }
    auto place =
        std::lower_bound(records.begin(), records.end(), frame,
                         [](const InputRecord& record, std::uint64_t step) { return record.frame < step; });
    if (place == records.end() || place->frame != frame) {
        place = records.insert(place, InputRecord{frame, {}});
    }
    // Two changes of one key that come into one step keep their order.
    auto& changes = place->newKeyStates;
    changes.insert(asked.by < 0 ? changes.end() : changes.begin(), change);
}

// In the child: whether the trace of the game with the moved change differs from the undisturbed one.
bool differs(const Move& asked, const std::vector<std::size_t>& undisturbed, Watcher& watcher) {
    move(asked);
    std::size_t seen = watcher.steps.size();
    const std::size_t last = seen + patience;
    while (isReplaying() && seen < last) {
        iterate();
        for (; seen < watcher.steps.size(); ++seen) {
            if (seen >= undisturbed.size() || watcher.steps[seen] != undisturbed[seen]) {
                return true;
            }
        }
    }
    return seen < undisturbed.size() && !isReplaying(); // over too soon
}

bool differsInAChild(const Move& asked, const std::vector<std::size_t>& undisturbed, Watcher& watcher) {
    constexpr int different = 42;
    const pid_t child = fork();
    if (child == 0) {
        _exit(differs(asked, undisturbed, watcher) ? different : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == different;
}

// All that are to be made before the step that comes: its own changes to the one after it, those of the one after it here.
std::vector<Move> movesFromHere() {
    std::vector<Move> moves;
    const auto& records = recording.records;
    for (std::size_t record = recording.replayIndex;
         record < records.size() && records[record].frame <= recording.gameStep + 1; ++record) {
        for (std::size_t change = 0; change < records[record].newKeyStates.size(); ++change) {
            moves.push_back({record, change, records[record].frame == recording.gameStep ? 1 : -1});
        }
    }
    return moves;
}

class ShippedRecording : public testing::Test {
protected:
    ShippedRecording() {
        std::filesystem::current_path("data");
        resetProgram();
    }
    ~ShippedRecording() override {
        resetProgram();
        std::filesystem::current_path(before);
    }

    static std::vector<std::size_t> playWhole() {
        startUp(InputMode::Replay, ScreenId::Game);
        Watcher watcher;
        while (isReplaying()) {
            iterate();
        }
        resetProgram();
        return watcher.steps;
    }

    const std::filesystem::path before = std::filesystem::current_path();
};

TEST_F(ShippedRecording, ShowsInItsTraceWhenAnyKeyChangeMovesByAStep) {
    const std::vector<std::size_t> undisturbed = playWhole();
    startUp(InputMode::Replay, ScreenId::Game);
    std::size_t changes = 0;
    for (const InputRecord& record : recording.records) {
        changes += record.newKeyStates.size();
    }
    Watcher watcher;
    std::size_t moved = 0;
    while (isReplaying()) {
        for (const Move& asked : movesFromHere()) {
            EXPECT_TRUE(differsInAChild(asked, undisturbed, watcher))
                << "record " << asked.record << ", change " << asked.change << ", moved by " << asked.by;
            ++moved;
        }
        iterate();
    }
    EXPECT_EQ(watcher.steps, undisturbed); // the parent's own game
    EXPECT_EQ(moved, 2 * changes);
    std::cout << moved << " moves of " << changes << " key changes, all seen\n";
}

} // namespace

} // namespace dunkman
