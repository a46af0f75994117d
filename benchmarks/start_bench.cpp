#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "app/lifecycle.h"
#include "app/reset.h"
#include "assets/catalog_writer.h"
#include "platform/simulated/gl_sim.h"
#include "platform/unpacked_textures.h"
#include "render/dds.h"
#include "render/gl.h"
#include "render/texture_coverage.h"

// What start-up does with the game's files, beside reading the same bytes one after the other. OpenGL takes everything
// and draws nothing; music is not decoded. Run from the repository's root.
namespace dunkman {
namespace {

namespace files = std::filesystem;

// While it lives, the working directory is the game's data.
class InData {
public:
    InData() { files::current_path(before / "data"); }
    ~InData() { files::current_path(before); }
    InData(const InData&) = delete;
    InData& operator=(const InData&) = delete;

private:
    files::path before = files::current_path();
};

std::vector<std::string> pictureFiles() {
    std::vector<std::string> paths;
    for (const files::directory_entry& entry : files::recursive_directory_iterator("AssetsCompressed")) {
        if (entry.path().extension() == ".dds") {
            paths.push_back(entry.path().generic_string());
        }
    }
    return paths;
}

// Everything that start-up reads but the music.
std::vector<std::string> startFiles() {
    std::vector<std::string> paths = pictureFiles();
    for (const char* path : {"images_compressed.json5", "recipes.json5", "prefabs.json5", "scene.json5",
                             "recording.json5", "drawable_basic.vert", "drawable_basic.frag"}) {
        paths.emplace_back(path);
    }
    return paths;
}

// The least that it can take: into a buffer that is there already.
void readPlainly(benchmark::State& state, const std::vector<std::string>& paths) {
    std::vector<char> buffer(8 * 1024 * 1024);
    std::int64_t bytes = 0;
    for (auto iteration : state) {
        for (const std::string& path : paths) {
            std::FILE* const file = std::fopen(path.c_str(), "rb");
            if (file == nullptr) {
                state.SkipWithError("run it from the repository's root");
                return;
            }
            std::setvbuf(file, nullptr, _IONBF, 0);
            bytes += static_cast<std::int64_t>(std::fread(buffer.data(), 1, buffer.size(), file));
            benchmark::DoNotOptimize(buffer.data());
            std::fclose(file);
        }
    }
    state.SetBytesProcessed(bytes);
}

void plainReadOfPictures(benchmark::State& state) {
    const InData folder;
    readPlainly(state, pictureFiles());
}
BENCHMARK(plainReadOfPictures)->Unit(benchmark::kMillisecond);

void readPictures(benchmark::State& state) {
    const InData folder;
    const std::vector<std::string> paths = pictureFiles();
    for (auto iteration : state) {
        for (const std::string& path : paths) {
            benchmark::DoNotOptimize(readDds(path));
        }
    }
}
BENCHMARK(readPictures)->Unit(benchmark::kMillisecond);

void coverageOfPictures(benchmark::State& state) {
    const InData folder;
    std::vector<DdsImage> images;
    for (const std::string& path : pictureFiles()) {
        images.push_back(readDds(path));
    }
    for (auto iteration : state) {
        for (const DdsImage& image : images) {
            benchmark::DoNotOptimize(coverageOf(image));
        }
    }
}
BENCHMARK(coverageOfPictures)->Unit(benchmark::kMillisecond);

void loadCatalogue(benchmark::State& state) {
    const InData folder;
    simulated::loadGlFunctions();
    for (auto iteration : state) {
        writable::assetCatalog.loadAll();
        state.PauseTiming();
        writable::assetCatalog.releaseAll();
        state.ResumeTiming();
    }
}
BENCHMARK(loadCatalogue)->Unit(benchmark::kMillisecond);

const std::uint8_t* softwareRenderer(GLenum) { return reinterpret_cast<const std::uint8_t*>("llvmpipe"); }
void takeTexels(GLuint, GLint, GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, const void* texels) {
    benchmark::DoNotOptimize(texels);
}
GlFunction askSoftware(const char* name) {
    return std::string_view(name) == "glGetString" ? reinterpret_cast<GlFunction>(softwareRenderer)
                                                   : reinterpret_cast<GlFunction>(takeTexels);
}

// Where OpenGL is done in software, start-up unpacks the textures.
void loadCatalogueUnpacked(benchmark::State& state) {
    const InData folder;
    simulated::loadGlFunctions();
    platform::unpackTexturesInSoftware(askSoftware, askSoftware);
    for (auto iteration : state) {
        writable::assetCatalog.loadAll();
        state.PauseTiming();
        writable::assetCatalog.releaseAll();
        state.ResumeTiming();
    }
    simulated::loadGlFunctions();
}
BENCHMARK(loadCatalogueUnpacked)->Unit(benchmark::kMillisecond);

void plainReadOfAll(benchmark::State& state) {
    const InData folder;
    readPlainly(state, startFiles());
}
BENCHMARK(plainReadOfAll)->Unit(benchmark::kMillisecond);

void wholeStart(benchmark::State& state) {
    const InData folder;
    for (auto iteration : state) {
        startUp(InputMode::Replay);
        state.PauseTiming();
        resetProgram();
        state.ResumeTiming();
    }
}
BENCHMARK(wholeStart)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace dunkman
