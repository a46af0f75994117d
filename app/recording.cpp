#include "app/recording.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>

#include "base/fatal.h"
#include "base/frame_state.h"
#include "json5/reader.h"
#include "json5/value.h"
#include "json5/writer.h"
#include "screens/screen.h"

namespace dunkman {

std::vector<InputRecord> recording;
std::uint64_t gameStep = 0;
std::size_t replayIndex = 0;

namespace {

constexpr const char* recordingPath = "recording.json5";
constexpr const char* newRecordingPath = "recording.json5.new";

KeyChanges readChanges(const JsonValue& list) {
    KeyChanges changes;
    for (const JsonValue& change : list.asArray()) {
        const auto key = static_cast<std::int32_t>(change.get("key").asInteger());
        const auto state = static_cast<std::int32_t>(change.get("state").asInteger());
        changes.push_back({key, static_cast<KeyState>(state)});
    }
    return changes;
}

JsonValue writeChanges(const KeyChanges& changes) {
    JsonValue list = JsonValue::makeArray();
    for (const KeyChange& changed : changes) {
        JsonValue change = JsonValue::makeObject();
        change.member("key") = JsonValue::makeInteger(changed.virtualKey);
        change.member("state") = JsonValue::makeInteger(static_cast<std::int32_t>(changed.state));
        list.append() = std::move(change);
    }
    return list;
}

JsonValue writeRecords() {
    JsonValue list = JsonValue::makeArray();
    for (const InputRecord& record : recording) {
        JsonValue entry = JsonValue::makeObject();
        entry.member("frame") = JsonValue::makeInteger(static_cast<std::int64_t>(record.frame));
        entry.member("newKeyStates") = writeChanges(record.newKeyStates);
        list.append() = std::move(entry);
    }
    return list;
}

} // namespace

void loadRecording() {
    recording.clear();
    if (inputMode == InputMode::Record) {
        return;
    }
    const JsonValue file = parseFile(recordingPath);
    for (const JsonValue& element : file.asArray()) {
        element.asObject();
        InputRecord record;
        record.frame = static_cast<std::uint64_t>(element.get("frame").asInteger());
        record.newKeyStates = readChanges(element.get("newKeyStates"));
        recording.push_back(std::move(record));
    }
}

void recordStep(KeyChanges changes) {
    const std::uint64_t frame = gameStep;
    gameStep += 1;
    if (!changes.empty()) {
        recording.push_back({frame, std::move(changes)});
    }
}

void replayStep() {
    const std::uint64_t step = gameStep;
    gameStep += 1;
    if (replayIndex < recording.size() && recording[replayIndex].frame == step) {
        for (const KeyChange& change : recording[replayIndex].newKeyStates) {
            keyState(change.virtualKey) = change.state;
        }
        replayIndex += 1;
    }
    if (replayIndex == recording.size()) {
        inputMode = InputMode::Live;
        gameStep = 0;
        replayIndex = 0;
        switchTo(ScreenId::GameOver);
        clearKeyStates();
    }
}

void saveRecording() {
    std::ostringstream text;
    writeJson5(writeRecords(), text, "  ", 0);
    {
        std::ofstream file(newRecordingPath, std::ios::binary);
        file << text.str();
        file.flush();
        if (!file) {
            fatal("The recording cannot be saved: recording.json5.new cannot be written. Is the folder "
                  "write-protected or the disk full?");
        }
    }
    std::error_code error;
    std::filesystem::rename(newRecordingPath, recordingPath, error);
    if (error) {
        fatal("The recording is in recording.json5.new, but recording.json5 cannot be replaced: " +
              error.message() + ". Close programs that hold the file and rename the new one by hand.");
    }
}

void resetRecording() {
    recording.clear();
    gameStep = 0;
    replayIndex = 0;
}

} // namespace dunkman
