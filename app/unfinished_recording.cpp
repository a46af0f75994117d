#include "app/unfinished_recording.h"

#include <system_error>

#include "app/recording_writer.h"
#include "base/files.h"
#include "base/frame_state.h"

namespace dunkman {

namespace {

constexpr const char* besidePath = "recording-unfinished.json5";
constexpr const char* olderPath = "recording-unfinished-older.json5";
constexpr const char* temporaryName = "dunkman-recording-unfinished.json5";
constexpr std::uint64_t stepsBetween = 600; // ten seconds

bool isSomethingToKeep() {
    return frameState.inputMode == InputMode::Record && !recording.isSaved && !recording.records.empty();
}

bool putInPlace(const std::string& path, const std::string& text) {
    const std::string fresh = path + ".new";
    if (!writeNewFile(fresh, text)) {
        return false;
    }
    const std::error_code error = renameFile(fresh, path);
    if (error) {
        removeFile(fresh);
    }
    return !error;
}

bool keepBeside(const std::string& text) {
    if (!recording.isKept && statusOf(besidePath).kind == FileKind::Ordinary) {
        renameFile(besidePath, olderPath);
    }
    const bool isWritten = putInPlace(besidePath, text);
    writable::recording.isKept = recording.isKept || isWritten;
    return isWritten;
}

} // namespace

bool writeNewFile(const std::string& path, std::string_view text) {
    const FileKind there = statusOf(path).kind;
    if (there != FileKind::None && there != FileKind::Ordinary) {
        return false; // opening a pipe would wait for a reader
    }
    File file = File::toWrite(path);
    if (!file.isOpen()) {
        return false;
    }
    const bool isWritten = file.write(text);
    if (!file.close() || !isWritten) {
        removeFile(path);
        return false;
    }
    return true;
}

std::string keepUnfinishedRecording() {
    if (!isSomethingToKeep()) {
        return {};
    }
    const std::string text = recordingText();
    if (keepBeside(text)) {
        return "What was recorded up to then is in recording-unfinished.json5. Renamed to recording.json5 "
               "it is what the game replays.";
    }
    const std::string folder = temporaryFolder();
    const std::string path = pathIn(folder, temporaryName);
    if (!folder.empty() && putInPlace(path, text)) {
        return "What was recorded up to then is in " + path +
               ", as no file can be written beside recording.json5. Moved there and renamed to "
               "recording.json5 it is what the game replays.";
    }
    return "What was recorded is lost: neither recording-unfinished.json5 nor " + path +
           " can be written. Make room or allow writing before the next game.";
}

void keepRecordingNowAndThen() {
    if (recording.gameStep >= recording.keptSteps + stepsBetween) {
        writable::recording.keptSteps = recording.gameStep;
        if (isSomethingToKeep()) {
            keepBeside(recordingText());
        }
    }
}

void dropUnfinishedRecording() {
    if (recording.isKept) {
        removeFile(besidePath);
        writable::recording.isKept = false;
    }
}

} // namespace dunkman
