// dunkman-film: plays the show off screen and gives out every step's picture and sound. See `usage`.
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/film/film.h"
#include "platform/offscreen/offscreen.h"
#include "platform/simulated/platform_sim.h"
#include "tools/console/about.h"
#include "tools/console/fault.h"
#include "tools/frames/arguments.h"
#include "tools/frames/stage.h"

namespace {

using namespace dunkman;

constexpr const char* usage =
    "dunkman-film [OPTION VALUE]...: plays the show off screen, 60 pictures a second, to standard output: "
    "row by row\n"
    "from below, four bytes (red, green, blue, nothing) a pixel\n"
    "  --sound FILE  their sound: 32-bit floats, stereo, 48000 a second\n"
    "  --data DIR    working directory of the run (data)\n"
    "  --size WxH    size of the pictures (1920x1080)\n"
    "  --from STEP   the first step that is given out, from 0 (0); what lies before is played\n"
    "  --steps N     how many, at most (all)\n"
    "  --help, --version\n"
    "                this, and the version\n"
    "Prints \"steps N\" to standard error now and then: how many have been given out.\n";

constexpr std::size_t floatsPerStep = 2 * 48000 / 60;
constexpr std::int64_t stepsPerReport = 15;

struct Options {
    frames::Beginning beginning;
    std::string sound;
    std::int64_t from = 0;
    std::int64_t steps = std::numeric_limits<std::int64_t>::max();
};

Options parse(int count, char** arguments) {
    Options options;
    for (int i = 1; i < count; i += 2) {
        const std::string_view option = arguments[i];
        if (i + 1 == count) {
            throw std::invalid_argument(std::string(option) + " needs a value");
        }
        const std::string_view value = arguments[i + 1];
        if (option == "--sound") {
            options.sound = value;
        } else if (option == "--data") {
            options.beginning.data = value;
        } else if (option == "--size") {
            options.beginning.size = frames::sizeOf(value);
        } else if (option == "--from") {
            options.from = frames::numberOf(value);
        } else if (option == "--steps") {
            options.steps = frames::numberOf(value);
        } else {
            throw std::invalid_argument("there is no option " + std::string(option));
        }
    }
    return options;
}

template <typename Value> void write(std::FILE* file, const Value& values, const std::string& name) {
    if (std::fwrite(values.data(), sizeof values[0], values.size(), file) != values.size()) {
        throw std::runtime_error(name +
                                 " could not be written whole: " + std::generic_category().message(errno));
    }
}

class SoundFile {
public:
    explicit SoundFile(const std::string& path) : name(path) {
        if (!path.empty() && (file = std::fopen(path.c_str(), "wb")) == nullptr) {
            throw std::runtime_error(path + " cannot be written: " + std::generic_category().message(errno));
        }
    }
    ~SoundFile() {
        if (file != nullptr) {
            std::fclose(file);
        }
    }
    SoundFile(const SoundFile&) = delete;
    SoundFile& operator=(const SoundFile&) = delete;

    void append(const std::array<float, floatsPerStep>& sound) {
        if (file != nullptr) {
            write(file, sound, name);
        }
    }

    void finish() {
        if (file != nullptr && std::fflush(file) != 0) {
            throw std::runtime_error(
                name + " could not be written whole: " + std::generic_category().message(errno));
        }
    }

private:
    std::string name;
    std::FILE* file = nullptr;
};

void report(std::int64_t steps) { std::fprintf(stderr, "steps %lld\n", static_cast<long long>(steps)); }

void giveOut(const Options& options, SoundFile& soundFile) {
    std::vector<std::uint8_t> pixels;
    std::array<float, floatsPerStep> sound{};
    while (frames::stepsBegun() < options.from) {
        frames::runUntil(frames::stepsBegun() + 1);
        film::takeSound(sound); // the music goes on behind what nobody sees
    }
    std::int64_t steps = 0;
    try {
        for (; steps < options.steps; ++steps) {
            frames::iterate();
            offscreen::readPixelsFromBelow(pixels);
            film::takeSound(sound);
            write(stdout, pixels, "The pictures");
            soundFile.append(sound);
            if (steps % stepsPerReport == 0) {
                report(steps);
            }
        }
    } catch (const simulated::ProgramExit&) {
        // The show is over; its last step draws nothing.
    }
    if (std::fflush(stdout) != 0) {
        throw std::runtime_error("The pictures could not be written whole: " +
                                 std::generic_category().message(errno));
    }
    soundFile.finish();
    report(steps);
}

} // namespace

int main(int count, char** arguments) {
    if (console::tellAbout(count, arguments, "dunkman-film", usage)) {
        return 0;
    }
    std::signal(SIGPIPE, SIG_IGN); // whoever reads the pictures may go: that is told, not died of
    try {
        const Options options = parse(count, arguments);
        SoundFile soundFile(options.sound);
        frames::begin(options.beginning);
        for (const std::string& line : simulated::machine.debugLines) {
            if (line.starts_with("audio: ")) {
                std::fprintf(stderr, "%s\n", line.c_str());
            }
        }
        giveOut(options, soundFile);
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "%s\n%s", error.what(), usage);
        return 2;
    } catch (const simulated::ProgramExit&) {
        std::fprintf(stderr, "the show ended before the first step that was asked for\n");
        return 1;
    } catch (const std::exception& error) {
        return console::endWithFault(error);
    }
    return 0;
}
