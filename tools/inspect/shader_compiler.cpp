#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "render/renderer.h"
#include "tools/inspect/shader_check.h"

namespace dunkman::inspect {

namespace {

// A folder for the files of one run, gone afterwards.
class TemporaryFolder {
public:
    TemporaryFolder()
        : path(std::filesystem::temp_directory_path() /
               ("dunkman_check_" +
                std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()))) {
        std::filesystem::create_directories(path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string write(const std::string& name, std::string_view text) const {
        std::ofstream(path / name, std::ios::binary) << text;
        return (path / name).string();
    }

    std::string read(const std::string& name) const {
        std::ifstream file(path / name, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    const std::filesystem::path path;
};

// The column of the name that an error is about: "'colour' : undeclared identifier".
std::size_t columnOf(std::string_view message, const Spot& spot) {
    const std::size_t opening = message.find('\'');
    const std::size_t closing = message.find('\'', opening + 1);
    if (closing == std::string_view::npos || closing == opening + 1) {
        return 1;
    }
    std::ifstream file(spot.file, std::ios::binary);
    std::string line;
    for (std::size_t number = 0; number < spot.line && std::getline(file, line);) {
        ++number;
    }
    const std::size_t found = line.find(message.substr(opening + 1, closing - opening - 1));
    return found == std::string::npos ? 1 : found + 1;
}

// The first error of "ERROR: FILE:LINE: MESSAGE", or of the linker's "ERROR: MESSAGE". What follows mostly comes of it.
bool reportFirstError(std::string_view output, const ShaderStage& stage, std::string_view file,
                      Faults& faults) {
    const std::string start = "ERROR: " + std::string(file) + ':';
    const std::size_t found = output.find(start);
    if (found == std::string_view::npos) {
        return false;
    }
    std::string_view error = output.substr(found + start.size());
    error = error.substr(0, error.find_first_of("\r\n"));
    std::size_t line = 1;
    std::from_chars(error.data(), error.data() + error.size(), line);
    const std::size_t message = error.find(": ");
    error.remove_prefix(message == std::string_view::npos ? 0 : message + 2);
    Spot spot = sourceOfLine(stage, line);
    spot.column = columnOf(error, spot);
    while (error.ends_with(' ')) {
        error.remove_suffix(1);
    }
    faults.add(spot, "The shader does not compile: " + std::string(error) + '.');
    return true;
}

void reportLinkError(std::string_view output, const ShaderStage& stage, Faults& faults) {
    constexpr std::string_view start = "ERROR: ";
    std::string message(output.substr(output.find(start) + start.size()));
    message = message.substr(0, message.find("\n\n"));
    std::replace_if(
        message.begin(), message.end(), [](char letter) { return letter == '\n' || letter == '\r'; }, ' ');
    faults.add({stage.path, 1, 1}, "The shaders do not link: " + message);
}

} // namespace

ShaderCompiler compileShaders(const std::string& compiler, const ShaderStage& vertex,
                              const ShaderStage& fragment, Faults& faults) {
    // The game makes two programs of them where OpenGL is done in software.
    for (const std::string& options : {std::string(), " -D" + std::string(plainSpritesDefinition)}) {
        const TemporaryFolder folder;
        const std::string vertexFile = folder.write("stage.vert", vertex.markedText);
        const std::string fragmentFile = folder.write("stage.frag", fragment.markedText);
        const std::string log = (folder.path / "log").string();
        const std::string command =
            compiler + options + " -l \"" + vertexFile + "\" \"" + fragmentFile + "\" > \"" + log + "\" 2>&1";
        if (std::system(command.c_str()) == 0) {
            continue;
        }
        const std::string output = folder.read("log");
        if (output.find("ERROR: ") == std::string::npos) {
            return ShaderCompiler::Absent;
        }
        if (!reportFirstError(output, vertex, vertexFile, faults) &&
            !reportFirstError(output, fragment, fragmentFile, faults)) {
            reportLinkError(output, vertex, faults);
        }
        break; // one error, not each of them twice
    }
    return ShaderCompiler::Present;
}

} // namespace dunkman::inspect
