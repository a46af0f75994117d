#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>

#include "platform/simulated/shader_scan.h"
#include "render/gl.h"
#include "render/shader_preprocessor.h"

// The shaders that the game ships.
namespace dunkman {
namespace {

TEST(ShippedShaders, DeclareWhatSpritesSet) {
    std::map<std::string, std::uint32_t> declared;
    for (const char* file : {"data/drawable_basic.vert", "data/drawable_basic.frag"}) {
        for (const simulated::ShaderDeclaration& declaration :
             simulated::scanShader(preprocessShaderFile(file))) {
            declared[declaration.name] = declaration.type;
        }
    }
    EXPECT_THAT(declared, testing::ElementsAre(testing::Pair("uDestMinAndSize", GL_FLOAT_VEC4),
                                               testing::Pair("uGammaGainSaturation", GL_FLOAT_VEC3),
                                               testing::Pair("uMirrorFlags", GL_UNSIGNED_INT),
                                               testing::Pair("uPosCosSin", GL_FLOAT_VEC4),
                                               testing::Pair("uTexture", GL_SAMPLER_2D),
                                               testing::Pair("uTint", GL_FLOAT_VEC3),
                                               testing::Pair("uViewProjection", GL_FLOAT_MAT4),
                                               testing::Pair("zOffset", GL_FLOAT)));
}

#ifdef DUNKMAN_GLSLANG
TEST(ShippedShaders, PassTheReferenceCompilerAndLink) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "dunkman_shipped_shaders";
    std::filesystem::create_directories(folder);
    for (const char* file : {"drawable_basic.vert", "drawable_basic.frag"}) {
        std::ofstream(folder / file, std::ios::binary) << preprocessShaderFile(std::string("data/") + file);
    }
    for (const char* options : {" -l ", " -l -DPLAIN_SPRITES "}) {
        const std::string command = DUNKMAN_GLSLANG + std::string(options) +
                                    (folder / "drawable_basic.vert").string() + " " +
                                    (folder / "drawable_basic.frag").string();
        EXPECT_EQ(std::system(command.c_str()), 0) << options;
    }
    std::filesystem::remove_all(folder);
}
#endif

} // namespace
} // namespace dunkman
