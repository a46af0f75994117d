#include "app/recording.h"

#include <string>
#include <system_error>
#include <utility>

#include "app/recording_writer.h"
#include "app/unfinished_recording.h"
#include "base/fatal.h"
#include "base/files.h"
#include "base/frame_state_writer.h"
#include "base/key_states_writer.h"
#include "json5/data_file.h"
#include "json5/value.h"
#include "json5/writer.h"
#include "screens/screen.h"

namespace dunkman {

RecordedGame writable::recording;
constinit const RecordedGame& recording = writable::recording;

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
    for (const InputRecord& record : recording.records) {
        JsonValue entry = JsonValue::makeObject();
        entry.member("frame") = JsonValue::makeInteger(static_cast<std::int64_t>(record.frame));
        entry.member("newKeyStates") = writeChanges(record.newKeyStates);
        list.append() = std::move(entry);
    }
    return list;
}

} // namespace

void loadRecording() {
    writable::recording.records.clear();
    if (frameState.inputMode == InputMode::Record) {
        return;
    }
    const JsonValue file = loadDataFile(recordingPath);
    for (const JsonValue& element : file.asArray()) {
        element.asObject();
        InputRecord record;
        record.frame = static_cast<std::uint64_t>(element.get("frame").asInteger());
        record.newKeyStates = readChanges(element.get("newKeyStates"));
        writable::recording.records.push_back(std::move(record));
    }
}

void recordStep(KeyChanges changes) {
    const std::uint64_t frame = recording.gameStep;
    writable::recording.gameStep += 1;
    if (!changes.empty()) {
        writable::recording.records.push_back({frame, std::move(changes)});
    }
}

void replayStep() {
    const std::uint64_t step = recording.gameStep;
    writable::recording.gameStep += 1;
    if (recording.replayIndex < recording.records.size() &&
        recording.records[recording.replayIndex].frame == step) {
        for (const KeyChange& change : recording.records[recording.replayIndex].newKeyStates) {
            keyState(change.virtualKey) = change.state;
        }
        writable::recording.replayIndex += 1;
    }
    if (recording.replayIndex == recording.records.size()) {
        writable::frameState.inputMode = InputMode::Live;
        writable::recording.gameStep = 0;
        writable::recording.replayIndex = 0;
        switchTo(ScreenId::GameOver);
        clearKeyStates();
    }
}

std::string recordingText() {
    std::string text;
    writeJson5(writeRecords(), text, "  ", 0);
    return text;
}

void saveRecording() {
    if (!writeNewFile(newRecordingPath, recordingText())) {
        fatal("The recording cannot be saved: recording.json5.new cannot be written. Is the folder "
              "write-protected or the disk full?");
    }
    writable::recording.isSaved = true;
    if (const std::error_code error = renameFile(newRecordingPath, recordingPath)) {
        fatal("The recording is in recording.json5.new, but recording.json5 cannot be replaced: " +
              error.message() + ". Close programs that hold the file and rename the new one by hand.");
    }
    dropUnfinishedRecording();
}

} // namespace dunkman
