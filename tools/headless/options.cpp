#include "tools/headless/options.h"

#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

namespace dunkman::headless {

const char* const usage =
    "dunkman-headless: runs the game on a simulated machine and prints what happens\n"
    "  --data DIR                   working directory of the run (data)\n"
    "  --mode live|record|replay    where input comes from (replay)\n"
    "  --screen NAME                the screen entered after start-up (Loading)\n"
    "  --iterations N               main-loop iterations to run (600)\n"
    "  --step-ns N                  nanoseconds between two iterations (16666667)\n"
    "  --size WxH                   client size in pixels (1920x1080)\n"
    "  --keys FILE                  simulated keyboard: lines \"ITERATION CODE down|up\", CODE like 0x57\n"
    "  --trace LIST                 any of screen,keys,world,draws (screen)\n"
    "  --out FILE                   write the trace there (standard output)\n"
    "  --expect FILE                print no trace; stop at the first line that FILE has otherwise\n"
    "  --help, --version            this, and the version\n";

namespace {

template <typename Integer>
Integer parseNumber(std::string_view option, std::string_view text, Integer least) {
    Integer value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < least) {
        throw UsageError(std::string(option) + " takes a whole number of at least " + std::to_string(least) +
                         ", not \"" + std::string(text) + "\"");
    }
    return value;
}

InputMode parseMode(std::string_view text) {
    if (text == "live") {
        return InputMode::Live;
    }
    if (text == "record") {
        return InputMode::Record;
    }
    if (text == "replay") {
        return InputMode::Replay;
    }
    throw UsageError("--mode takes live, record or replay, not \"" + std::string(text) + "\"");
}

platform::ClientSize parseSize(std::string_view text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos) {
        throw UsageError("--size takes WIDTHxHEIGHT, not \"" + std::string(text) + "\"");
    }
    return {parseNumber<std::uint32_t>("--size", text.substr(0, cross), 1),
            parseNumber<std::uint32_t>("--size", text.substr(cross + 1), 1)};
}

void parseTraceList(std::string_view list, Options& options) {
    while (true) {
        const std::size_t comma = list.find(',');
        const std::string_view item = list.substr(0, comma);
        if (item == "keys") {
            options.traceKeys = true;
        } else if (item == "world") {
            options.traceWorld = true;
        } else if (item == "draws") {
            options.traceDraws = true;
        } else if (item != "screen") {
            throw UsageError("--trace knows screen, keys, world and draws, not \"" + std::string(item) +
                             "\"");
        }
        if (comma == std::string_view::npos) {
            return;
        }
        list.remove_prefix(comma + 1);
    }
}

} // namespace

Options parseOptions(int argumentCount, const char* const* arguments) {
    Options options;
    for (int i = 1; i < argumentCount; i += 2) {
        const std::string_view option = arguments[i];
        if (i + 1 == argumentCount) {
            throw UsageError(std::string(option) + " needs a value, or is no option of this program");
        }
        const std::string_view value = arguments[i + 1];
        if (option == "--data") {
            options.dataFolder = value;
        } else if (option == "--mode") {
            options.mode = parseMode(value);
        } else if (option == "--screen") {
            if (!findScreen(value, options.screen)) {
                throw UsageError("--screen knows no screen named \"" + std::string(value) + "\"");
            }
        } else if (option == "--iterations") {
            options.iterations = parseNumber<std::int64_t>(option, value, 0);
        } else if (option == "--step-ns") {
            options.stepNanoseconds = parseNumber<std::int64_t>(option, value, 0);
        } else if (option == "--size") {
            options.size = parseSize(value);
        } else if (option == "--keys") {
            options.keysPath = value;
        } else if (option == "--trace") {
            parseTraceList(value, options);
        } else if (option == "--out") {
            options.outputPath = value;
        } else if (option == "--expect") {
            options.expectedPath = value;
        } else {
            throw UsageError("unknown option \"" + std::string(option) + "\"");
        }
    }
    if (options.stepNanoseconds != 0 &&
        options.iterations > std::numeric_limits<std::int64_t>::max() / options.stepNanoseconds) {
        throw UsageError("--iterations times --step-ns is more than the clock can hold");
    }
    if (!options.outputPath.empty() && !options.expectedPath.empty()) {
        throw UsageError("--out and --expect exclude each other: with --expect no trace is written");
    }
    return options;
}

} // namespace dunkman::headless
