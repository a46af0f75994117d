#include "tools/inspect/data_check.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "json5/reader.h"
#include "tools/inspect/faults.h"

namespace dunkman::inspect {

namespace {

std::string readText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// A sound file that ends right behind its value reports the end as one that ends too early does. Only in the sound one
// a space behind the text makes the report vanish.
bool isSound(const Json5Report& report, const std::string& path) {
    if (report.code != Json5Error::EndOfInput) {
        return report.code == Json5Error::None;
    }
    Json5Report spaced;
    JsonValue ignored;
    parseDocument(readText(path) + ' ', spaced, ignored);
    return spaced.code == Json5Error::None;
}

std::string describe(const Json5Report& report) {
    if (!report.message.empty()) {
        return report.message;
    }
    switch (report.code) {
    case Json5Error::EndOfInput:
        return "The file ends too early.";
    case Json5Error::StreamFailed:
        return "The file cannot be read.";
    case Json5Error::SecondPushBack:
        return "A slash that starts no comment.";
    default:
        return "A number is malformed.";
    }
}

bool hasOuterSpace(std::string_view key) {
    constexpr std::string_view space = " \t\r\n";
    return !key.empty() && (space.find(key.front()) != std::string_view::npos ||
                            space.find(key.back()) != std::string_view::npos);
}

void checkKeys(const std::string& path, const JsonValue& value, Faults& faults) {
    for (const JsonMember& member : value.objectValue()) {
        if (hasOuterSpace(member.key())) {
            faults.add(
                path, "The key " + quoted(member.key()) +
                          " has white space in it. Unquoted keys run up to the colon, and white space behind "
                          "a comment belongs to the key: quote it, with nothing between it and the comment.");
        }
        checkKeys(path, member.value, faults);
    }
    for (const JsonValue& element : value.arrayValue()) {
        checkKeys(path, element, faults);
    }
}

} // namespace

JsonValue readDataFile(const std::string& path, JsonKind wantedTop, Faults& faults) {
    if (!std::filesystem::is_regular_file(path)) {
        faults.add(path, "The file is missing.");
        return {};
    }
    Json5Report report;
    JsonValue value;
    try {
        value = parseFile(path, report);
    } catch (const std::exception& error) {
        faults.add(path, std::string("A number does not fit: ") + error.what() + '.');
        return {};
    }
    if (!isSound(report, path)) {
        faults.add(path + ':' + std::to_string(report.position.line + 1) + ':' +
                       std::to_string(report.position.column + 1),
                   describe(report));
    } else if (value.kind != wantedTop) {
        faults.add(path, wantedTop == JsonKind::Array ? "The top level is no array."
                                                      : "The top level is no object.");
    }
    checkKeys(path, value, faults);
    return value;
}

std::vector<std::string> checkData() {
    Faults faults;
    const JsonValue images = readDataFile("images_compressed.json5", JsonKind::Object, faults);
    const JsonValue recipes = readDataFile("recipes.json5", JsonKind::Object, faults);
    const JsonValue prefabs = readDataFile("prefabs.json5", JsonKind::Object, faults);
    const JsonValue scene = readDataFile("scene.json5", JsonKind::Array, faults);
    const JsonValue recording = readDataFile("recording.json5", JsonKind::Array, faults);
    checkImages(images, faults);
    checkObjects(images, recipes, prefabs, scene, faults);
    checkRecording(recording, faults);
    checkShaders(faults);
    checkMusic(faults);
    return faults.lines;
}

} // namespace dunkman::inspect
