// dunkman-frames: plays the game off screen, with its real shaders and textures, and measures or keeps its frames.
// See `usage`.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/offscreen/offscreen.h"
#include "platform/simulated/platform_sim.h"
#include "render/binding_state_writer.h"
#include "render/image_table.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"
#include "render/shader_preprocessor.h"
#include "render/warm_up.h"
#include "screens/screen.h"
#include "tools/console/about.h"
#include "tools/console/fault.h"
#include "tools/frames/arguments.h"
#include "tools/frames/stage.h"
#include "tools/headless/options.h"

namespace {

using namespace dunkman;

constexpr const char* usage =
    "dunkman-frames [OPTION VALUE]...: the game off screen; prints the driver and what was asked for\n"
    "  --data DIR             working directory of the run (data)\n"
    "  --size WxH             size of the picture (1920x1080)\n"
    "  --screen NAME          the screen entered after start-up (Game)\n"
    "  --mode MODE            replay or record, which plays by keys (replay)\n"
    "  --keys FILE            simulated keyboard, as dunkman-headless takes it\n"
    "  --picture STEP:FILE    keeps that step as a picture (PPM); may be given more than once\n"
    "  --measure STEP:FRAMES  times that many frames from that step on, each followed by a floor: the next "
    "frame with a\n"
    "                         shader that only samples and cuts out; may be given more than once\n"
    "  --steps N              steps that a measured frame is late, 1 to 3 (3)\n"
    "  --help, --version      this, and the version\n"
    "Steps count from 0. What lies between is played, but not drawn.\n";

struct Options {
    frames::Beginning beginning = {.screen = ScreenId::Game};
    std::map<std::int64_t, std::string> pictures;
    std::map<std::int64_t, std::int64_t> measurements;
    std::int64_t steps = 3;
};

Options parse(int count, char** arguments) {
    Options options;
    for (int i = 1; i < count; i += 2) {
        const std::string_view option = arguments[i];
        if (i + 1 == count) {
            throw std::invalid_argument(std::string(option) + " needs a value");
        }
        const std::string_view value = arguments[i + 1];
        if (option == "--data") {
            options.beginning.data = value;
        } else if (option == "--size") {
            options.beginning.size = frames::sizeOf(value);
        } else if (option == "--screen") {
            if (!findScreen(value, options.beginning.screen)) {
                throw std::invalid_argument("there is no screen \"" + std::string(value) + "\"");
            }
        } else if (option == "--mode" && (value == "replay" || value == "record")) {
            options.beginning.mode = value == "replay" ? InputMode::Replay : InputMode::Record;
        } else if (option == "--keys") {
            options.beginning.keysPath = value;
        } else if (option == "--picture") {
            const auto [step, file] = frames::halvesOf(value, ':');
            options.pictures[frames::numberOf(step)] = std::filesystem::absolute(file).string();
        } else if (option == "--measure") {
            const auto [step, frames] = frames::halvesOf(value, ':');
            options.measurements[frames::numberOf(step)] =
                std::max<std::int64_t>(frames::numberOf(frames), 1);
        } else if (option == "--steps") {
            options.steps = std::clamp<std::int64_t>(frames::numberOf(value), 1, 3);
        } else {
            throw std::invalid_argument("there is no " + std::string(option) + " " + std::string(value));
        }
    }
    return options;
}

void keepPicture(std::int64_t step, const std::string& path) {
    frames::runUntil(step);
    frames::iterate();
    const offscreen::Picture picture = offscreen::takePicture();
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        throw std::runtime_error(path + " cannot be written");
    }
    std::fprintf(file, "P6\n%u %u\n255\n", picture.width, picture.height);
    const std::size_t written = std::fwrite(picture.rgb.data(), 1, picture.rgb.size(), file);
    if (std::fclose(file) != 0 || written != picture.rgb.size()) {
        throw std::runtime_error(path + " cannot be written whole");
    }
}

// The least that a fragment of a sprite can ask for.
constexpr const char* floorFragment = "#version 450\n"
                                      "layout(binding = 0) uniform sampler2D uTexture;\n"
                                      "in vec2 texturePoint;\n"
                                      "layout(location = 0) out vec4 fragmentColour;\n"
                                      "void main() {\n"
                                      "    vec4 texel = texture(uTexture, texturePoint);\n"
                                      "    if (texel.a < 0.5) {\n"
                                      "        discard;\n"
                                      "    }\n"
                                      "    fragmentColour = texel;\n"
                                      "}\n";

std::unique_ptr<RendererObjects> makeFloorRenderer() {
    ShaderSourceSet sources;
    sources.vertex = preprocessShaderFile("drawable_basic.vert");
    sources.fragment = floorFragment;
    auto floor = std::make_unique<RendererObjects>(sources, ShaderSourceSet());
    if (isPreparedForSoftware()) { // the same pixels by the same samplers
        floor->software.emplace(sources, ShaderSourceSet());
        floor->software->coverage = rendererObjects->software->coverage;
    }
    return floor;
}

void swapRenderer(std::unique_ptr<RendererObjects>& other) {
    std::swap(rendererObjects, other);
    writable::bindingState = {};
    // The state of rendering comes with the first sprite. Not with the backdrop, which turns depth writes off before it is drawn.
    drawUnseen(pictures.imageTable.begin()->second);
}

double timeOfFrame(std::int64_t steps) {
    const auto start = std::chrono::steady_clock::now();
    frames::iterate(steps);
    offscreen::finishDrawing();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double medianOf(std::vector<double>& times) {
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2);
}

void measure(std::int64_t step, std::int64_t frames, std::int64_t steps) {
    static std::unique_ptr<RendererObjects> other = makeFloorRenderer();
    frames::runUntil(step);
    std::vector<double> times;
    std::vector<double> floors;
    double work = 0.0; // of all threads
    for (std::int64_t frame = -1; frame < frames; ++frame) {
        const std::clock_t before = std::clock();
        const double time = timeOfFrame(steps);
        const std::clock_t after = std::clock();
        swapRenderer(other);
        const double floor = timeOfFrame(steps);
        swapRenderer(other);
        if (frame >= 0) { // the first after a jump does not count
            times.push_back(time);
            floors.push_back(floor);
            work += static_cast<double>(after - before) * 1000.0 / CLOCKS_PER_SEC;
        }
    }
    const double median = medianOf(times);
    const double floor = medianOf(floors);
    std::printf("frames from=%lld count=%lld steps=%lld median=%.2f least=%.2f most=%.2f work=%.2f "
                "floor=%.2f ratio=%.2f\n",
                static_cast<long long>(step), static_cast<long long>(frames), static_cast<long long>(steps),
                median, times.front(), times.back(), work / static_cast<double>(frames), floor,
                median / floor);
    std::fflush(stdout);
}

void run(const Options& options) {
    frames::begin(options.beginning);
    std::printf("driver %s\n", offscreen::driverName().c_str());
    auto picture = options.pictures.begin();
    auto measurement = options.measurements.begin();
    while (picture != options.pictures.end() || measurement != options.measurements.end()) {
        const bool isPicture = measurement == options.measurements.end() ||
                               (picture != options.pictures.end() && picture->first <= measurement->first);
        if (isPicture) {
            keepPicture(picture->first, picture->second);
            ++picture;
        } else {
            measure(measurement->first, measurement->second, options.steps);
            ++measurement;
        }
    }
}

} // namespace

int main(int count, char** arguments) {
    if (console::tellAbout(count, arguments, "dunkman-frames", usage)) {
        return 0;
    }
    try {
        run(parse(count, arguments));
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "%s\n%s", error.what(), usage);
        return 2;
    } catch (const headless::UsageError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    } catch (const simulated::ProgramExit&) {
        std::fprintf(stderr, "the show ended before the last step that was asked for\n");
        return 1;
    } catch (const std::exception& error) {
        return console::endWithFault(error);
    }
    return 0;
}
