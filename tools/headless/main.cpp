#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/fatal.h"
#include "tools/console/binary_stdout.h"
#include "tools/headless/options.h"
#include "tools/headless/runner.h"

namespace {

using namespace dunkman;

constexpr int exitFatal = 1;
constexpr int exitUsage = 2;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OutputFile = std::unique_ptr<std::FILE, CloseFile>;

// The game leaves its memory to the end of the process; leak checkers want to see it freed, however the run ends.
struct ResetAtEnd {
    ResetAtEnd() = default;
    ~ResetAtEnd() { headless::resetProgram(); }
    ResetAtEnd(const ResetAtEnd&) = delete;
    ResetAtEnd& operator=(const ResetAtEnd&) = delete;
};

// Files named on the command line are opened before the run moves to the data folder.
int runWith(const headless::Options& options) {
    headless::KeyScript keyScript;
    if (!options.keysPath.empty()) {
        keyScript = headless::KeyScript::readFile(options.keysPath);
    }
    OutputFile file;
    if (!options.outputPath.empty()) {
        file.reset(std::fopen(options.outputPath.c_str(), "wb"));
        if (!file) {
            throw headless::UsageError("--out: " + options.outputPath + " cannot be written");
        }
    }
    std::error_code error;
    std::filesystem::current_path(options.dataFolder, error);
    if (error) {
        throw headless::UsageError("--data: " + options.dataFolder + ": " + error.message());
    }
    simulated::makeStandardOutputBinary();
    const ResetAtEnd resetAtEnd;
    std::FILE* const output = file ? file.get() : stdout;
    headless::run(options, std::move(keyScript), [output](std::string_view text) {
        std::fwrite(text.data(), 1, text.size(), output);
        std::fflush(output);
    });
    return 0;
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount == 2 && std::string_view(arguments[1]) == "--help") {
        std::fputs(headless::usage, stdout);
        return 0;
    }
    try {
        return runWith(headless::parseOptions(argumentCount, arguments));
    } catch (const headless::UsageError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return exitUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return exitFatal;
    }
}
