#pragma once

#include "json5/value.h"
#include "json5/writer.h"

#include <random>
#include <string>

// The texts that the readers and writers are measured with. All but the last are plain JSON, so that other
// libraries can read them too.
namespace dunkman::bench {

inline std::string coordinate(std::mt19937_64& random) {
    const std::string text = std::to_string(static_cast<double>(random() % 40000) / 1000.0 - 20.0);
    return text.substr(0, text.size() - 3);
}

// Entries as a scene has them: names, positions, now and then a prefab.
inline std::string sceneText(std::size_t textSize) {
    std::mt19937_64 random(1);
    std::string text = "[\n";
    while (text.size() < textSize) {
        text += R"(  { "recipe": "palmTreeTall", "tag": "scenery", "position": [)" + coordinate(random) +
                ", " + coordinate(random) + R"(], "mirrorX": )" + (random() % 2 == 0 ? "true" : "false") +
                ", \"zOffset\": 0.25 },\n";
        if (random() % 4 == 0) {
            text += R"(  { "prefab": "beachBar", "offset": [)" + coordinate(random) +
                    R"(, 3], "overrides": {"table": {"size": [1, 1.5]}} },)" + "\n";
        }
    }
    return text + "  null\n]\n";
}

inline std::string numberText(std::size_t textSize) {
    std::mt19937_64 random(2);
    std::string text = "[";
    while (text.size() < textSize) {
        text += std::to_string(static_cast<double>(random() % 100000000) / 100000.0) + ", ";
        text += std::to_string(random() % 1000000) + ", ";
    }
    return text + "0]\n";
}

// As the game writes what was played.
inline std::string recordingText(std::size_t textSize) {
    std::mt19937_64 random(3);
    JsonValue recording = JsonValue::makeArray();
    const int frames = static_cast<int>(textSize / 120);
    for (int frame = 0; frame < frames; ++frame) {
        JsonValue& record = recording.append() = JsonValue::makeObject();
        record.member("frame") = JsonValue::makeInteger(frame);
        JsonValue& change = (record.member("newKeyStates") = JsonValue::makeArray()).append();
        change = JsonValue::makeObject();
        change.member("key") = JsonValue::makeInteger(static_cast<std::int64_t>(random() % 128));
        change.member("state") = JsonValue::makeInteger(static_cast<std::int64_t>(random() % 4));
    }
    std::string text;
    writeJson5(recording, text, "  ");
    return text;
}

// The scene in the game's dialect: bare keys, single quotes, comments, trailing commas.
inline std::string dialectText(std::size_t textSize) {
    std::mt19937_64 random(1);
    std::string text = "// arena\n[\n";
    while (text.size() < textSize) {
        text += "  { recipe: \"palmTreeTall\", tag: \"scenery\", position: [" + coordinate(random) + ", " +
                coordinate(random) + "], mirrorX: " + (random() % 2 == 0 ? "true" : "false") +
                ", zOffset: 0.25 },\n";
        if (random() % 4 == 0) {
            text += "  // the bar\n  { prefab: 'beachBar', offset: [" + coordinate(random) +
                    ", 3], overrides: {table: {size: [1, 1.5]}} },\n";
        }
    }
    return text + "]\n";
}

} // namespace dunkman::bench
