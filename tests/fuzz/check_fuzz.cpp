#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "app/lifecycle.h"
#include "app/reset.h"
#include "json5/reader.h"
#include "screens/screen.h"
#include "tests/fuzz/busy_play.h"
#include "tests/tools/broken_example.h"
#include "tests/tools/source_shape.h"
#include "tools/inspect/data_check.h"

// The input changes files of a good data directory: "=== FILE" on a line, then what the file holds, up to the next such
// line. The check looks through the directory. When it finds nothing, the game must start with these files and go on for
// two seconds of walking, taking and striking. Each fault has to name a place that is there.
namespace {

using namespace dunkman;

constexpr int gameSteps = 120;
constexpr std::string_view sectionStart = "=== ";

constexpr std::array<std::string_view, 10> changeableFiles = {"images_compressed.json5",
                                                              "recipes.json5",
                                                              "prefabs.json5",
                                                              "scene.json5",
                                                              "recording.json5",
                                                              "drawable_basic.vert",
                                                              "drawable_basic.frag",
                                                              "drawable_sprite.glsl",
                                                              "AssetsCompressed/small.dds",
                                                              "intro.mp3"};

void require(bool condition, const std::string& what) {
    if (!condition) {
        std::fprintf(stderr, "check_fuzz: %s\n", what.c_str());
        std::abort();
    }
}

using Changes = std::map<std::string_view, std::string_view>; // by file

Changes changesOf(std::string_view input) {
    Changes changes;
    std::size_t start = input.starts_with(sectionStart) ? 0 : input.find("\n=== ");
    while (start < input.size()) {
        start += input[start] == '\n' ? 1u : 0u;
        const std::size_t nameStart = start + sectionStart.size();
        const std::size_t nameEnd = std::min(input.find('\n', nameStart), input.size());
        const std::size_t next = std::min(input.find("\n=== ", nameEnd), input.size());
        const std::string_view name = input.substr(nameStart, nameEnd - nameStart);
        if (std::find(changeableFiles.begin(), changeableFiles.end(), name) != changeableFiles.end()) {
            const std::size_t textStart = std::min(nameEnd + 1, next);
            changes[name] = input.substr(textStart, next - textStart);
        }
        start = next;
    }
    return changes;
}

// A good directory that lives as long as the process. It is the current one only while it is in use.
class Folder {
public:
    Folder() {
        for (const std::string_view file : changeableFiles) {
            good[file] = data.read(std::string(file));
        }
        std::filesystem::current_path(before);
    }

    void enter(const Changes& changes) const {
        std::filesystem::current_path(data.folder);
        for (const auto& [file, text] : changes) {
            data.write(std::string(file), text);
        }
    }

    void leave(const Changes& changes) const {
        for (const auto& [file, text] : changes) {
            data.write(std::string(file), good.at(file));
        }
        std::filesystem::current_path(before);
    }

    std::string textOf(const std::string& file) const { return data.read(file); }

private:
    const std::filesystem::path before = std::filesystem::current_path();
    const GoodData data;
    std::map<std::string_view, std::string> good;
};

// "FILE:LINE:COLUMN: message", with a line and a column that the file has.
void checkPlace(const Folder& folder, const std::string& fault) {
    const std::size_t fileEnd = fault.find(':');
    require(fileEnd != std::string::npos, "a fault without a file: " + fault);
    std::size_t line = 0;
    std::size_t column = 0;
    const char* const end = fault.data() + fault.size();
    const char* const lineEnd = std::from_chars(fault.data() + fileEnd + 1, end, line).ptr;
    require(lineEnd != end && *lineEnd == ':', "a fault without a line: " + fault);
    const char* const columnEnd = std::from_chars(lineEnd + 1, end, column).ptr;
    require(columnEnd != end && *columnEnd == ':', "a fault without a column: " + fault);
    require(fault.find_first_of("\r\n") == std::string::npos, "a fault of several lines: " + fault);
    const std::string text = folder.textOf(fault.substr(0, fileEnd));
    std::size_t lineStart = 0;
    for (std::size_t number = 1; number < line; ++number) {
        lineStart = text.find('\n', lineStart) + 1;
        require(lineStart != 0, "a fault behind the last line: " + fault);
    }
    const std::size_t length = std::min(text.find('\n', lineStart), text.size()) - lineStart;
    require(line >= 1 && column >= 1 && column <= length + 1, "a fault behind the end of its line: " + fault);
}

// What the check believes about places is what the reader reads.
void checkMap(std::string_view text) {
    JsonValue value;
    Json5Report report;
    try {
        parseDocument(std::string(text) + ' ', report, value);
    } catch (const std::exception&) {
        return;
    }
    if (report.code == Json5Error::None && !text.empty() && text.front() != '\0') {
        require(inspect::hasShapeOf(inspect::mapSource(text).top, value, text), "places and values differ");
    }
}

void play() {
    startUp(InputMode::Live, ScreenId::Game);
    playBusily(gameSteps);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    const Changes changes = changesOf({reinterpret_cast<const char*>(data), size});
    for (const auto& [file, text] : changes) {
        if (file.ends_with(".json5")) {
            checkMap(text);
        }
    }
    folder.enter(changes);
    const inspect::CheckResult result = inspect::checkData({""}); // a shader compiler would take all the time
    for (const std::string& fault : result.faults) {
        checkPlace(folder, fault);
    }
    if (result.faults.empty()) {
        try {
            play();
        } catch (const std::exception& error) {
            require(false, std::string("the game stops, though the check found nothing: ") + error.what());
        }
    }
    resetProgram();
    folder.leave(changes);
    return 0;
}
