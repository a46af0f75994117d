#include <cerrno>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "app/reset.h"
#include "tools/console/about.h"
#include "tools/console/binary_stdout.h"
#include "tools/console/fault.h"
#include "tools/headless/expected_trace.h"
#include "tools/headless/options.h"
#include "tools/headless/runner.h"

namespace {

using namespace dunkman;

constexpr int exitUsage = 2;

// Where a trace is printed. What a full disk refuses stops the run: a trace that is not whole must not pass for one.
class TraceFile {
public:
    // An empty path is standard output.
    explicit TraceFile(const std::string& path)
        : name(path.empty() ? "standard output" : path),
          file(path.empty() ? stdout : std::fopen(path.c_str(), "wb")) {
        if (file == nullptr) {
            throw headless::UsageError("--out: " + path + " cannot be written");
        }
    }
    ~TraceFile() {
        if (file != stdout) {
            std::fclose(file);
        }
    }
    TraceFile(const TraceFile&) = delete;
    TraceFile& operator=(const TraceFile&) = delete;

    void write(std::string_view text) {
        if (std::fwrite(text.data(), 1, text.size(), file) != text.size() || std::fflush(file) != 0) {
            throw std::runtime_error("The trace could not be written whole to " + name + ": " +
                                     std::generic_category().message(errno) +
                                     ". Make room or name another file with --out.");
        }
    }

private:
    std::string name;
    std::FILE* file;
};

// The game leaves its memory to the end of the process; leak checkers want to see it freed, however the run ends.
struct ResetAtEnd {
    ResetAtEnd() = default;
    ~ResetAtEnd() { resetProgram(); }
    ResetAtEnd(const ResetAtEnd&) = delete;
    ResetAtEnd& operator=(const ResetAtEnd&) = delete;
};

// Files named on the command line are opened before the run moves to the data folder.
int runWith(const headless::Options& options) {
    headless::KeyScript keyScript;
    if (!options.keysPath.empty()) {
        keyScript = headless::KeyScript::readFile(options.keysPath);
    }
    std::optional<headless::ExpectedTrace> expected;
    if (!options.expectedPath.empty()) {
        expected.emplace(options.expectedPath);
    }
    TraceFile file(options.outputPath);
    std::error_code error;
    std::filesystem::current_path(options.dataFolder, error);
    if (error) {
        throw headless::UsageError("--data: " + options.dataFolder + ": " + error.message());
    }
    simulated::makeStandardOutputBinary();
    const ResetAtEnd resetAtEnd;
    if (expected) {
        headless::run(options, std::move(keyScript), [&](std::string_view text) { expected->compare(text); });
        expected->finish();
    } else {
        headless::run(options, std::move(keyScript), [&](std::string_view text) { file.write(text); });
    }
    return 0;
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (console::tellAbout(argumentCount, arguments, "dunkman-headless", headless::usage)) {
        return 0;
    }
    try {
        return runWith(headless::parseOptions(argumentCount, arguments));
    } catch (const headless::UsageError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return exitUsage;
    } catch (const std::exception& error) {
        return console::endWithFault(error);
    }
}
