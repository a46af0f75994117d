#include "app/unfinished_recording.h"

#include <fstream>
#include <system_error>

#include "app/recording_writer.h"
#include "base/frame_state.h"

namespace dunkman {

namespace {

namespace files = std::filesystem;

constexpr const char* besidePath = "recording-unfinished.json5";
constexpr const char* olderPath = "recording-unfinished-older.json5";
constexpr const char* temporaryName = "dunkman-recording-unfinished.json5";
constexpr std::uint64_t stepsBetween = 600; // ten seconds

bool isSomethingToKeep() {
    return frameState.inputMode == InputMode::Record && !recording.isSaved && !recording.records.empty();
}

bool putInPlace(const files::path& path, const std::string& text) {
    files::path fresh = path;
    fresh += ".new";
    if (!writeNewFile(fresh, text)) {
        return false;
    }
    std::error_code error;
    files::rename(fresh, path, error);
    if (error) {
        std::error_code ignored;
        files::remove(fresh, ignored);
    }
    return !error;
}

bool keepBeside(const std::string& text) {
    std::error_code ignored;
    if (!recording.isKept && files::is_regular_file(besidePath, ignored)) {
        files::rename(besidePath, olderPath, ignored);
    }
    const bool isWritten = putInPlace(besidePath, text);
    writable::recording.isKept = recording.isKept || isWritten;
    return isWritten;
}

std::string nameOf(const files::path& path) {
    const std::u8string name = path.u8string();
    return std::string(name.begin(), name.end());
}

} // namespace

bool writeNewFile(const files::path& path, std::string_view text) {
    std::error_code error;
    const files::file_status there = files::status(path, error);
    if (files::exists(there) && !files::is_regular_file(there)) {
        return false; // opening a pipe would wait for a reader
    }
    std::ofstream file(path, std::ios::binary);
    if (!file) {
        return false;
    }
    file << text;
    file.close();
    if (!file) {
        files::remove(path, error);
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
    std::error_code error;
    const files::path folder = files::temp_directory_path(error);
    const files::path path = folder / temporaryName;
    if (!error && putInPlace(path, text)) {
        return "What was recorded up to then is in " + nameOf(path) +
               ", as no file can be written beside recording.json5. Moved there and renamed to "
               "recording.json5 it is what the game replays.";
    }
    return "What was recorded is lost: neither recording-unfinished.json5 nor " + nameOf(path) +
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
        std::error_code ignored;
        files::remove(besidePath, ignored);
        writable::recording.isKept = false;
    }
}

} // namespace dunkman
