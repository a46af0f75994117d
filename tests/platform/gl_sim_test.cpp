#include "platform/simulated/gl_sim.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "app/reset.h"
#include "platform/simulated/shader_scan.h"
#include "render/gl.h"
#include "render/image_table_writer.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"
#include "render/sprite.h"
#include "render/view.h"

namespace dunkman {
namespace {

using simulated::scanShader;
using simulated::ShaderDeclaration;
using testing::ElementsAre;

std::vector<std::string> namesIn(std::string_view text) {
    std::vector<std::string> names;
    for (const ShaderDeclaration& declaration : scanShader(text)) {
        names.push_back(declaration.name);
    }
    return names;
}

TEST(ShaderScan, FindsUniformsWithTypeAndBinding) {
    const auto found =
        scanShader("#version 450\nuniform mat4 m;layout(binding = 3) uniform sampler2D s;\n"
                   "layout (std430, binding=2) buffer Block { float x[]; };uniform highp uint u;");
    ASSERT_EQ(found.size(), 4u);
    EXPECT_EQ(found[0].name, "m");
    EXPECT_EQ(found[0].type, GL_FLOAT_MAT4);
    EXPECT_EQ(found[1].type, GL_SAMPLER_2D);
    EXPECT_EQ(found[1].binding, 3);
    EXPECT_EQ(found[2].name, "Block");
    EXPECT_EQ(found[2].type, GL_SHADER_STORAGE_BUFFER);
    EXPECT_EQ(found[2].binding, 2);
    EXPECT_EQ(found[3].type, GL_UNSIGNED_INT);
    EXPECT_EQ(found[3].binding, 0);
}

TEST(ShaderScan, FindsListsAndArrays) {
    EXPECT_THAT(namesIn("uniform float a, b[4], c;"), ElementsAre("a", "b[0]", "c"));
    EXPECT_EQ(scanShader("uniform float b[4];")[0].arraySize, 4);
}

TEST(ShaderScan, IgnoresCommentsAndBlocks) {
    EXPECT_THAT(namesIn("// uniform float a;\n/* uniform float b; */ uniform Block { float c; };"),
                testing::IsEmpty());
}

TEST(ShaderScan, SurvivesTextThatEndsAnywhere) {
    const std::string text = "layout(binding = 3) uniform highp sampler2D s[2], t; buffer B {};/* c */ // d";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        EXPECT_LE(scanShader(std::string_view(text).substr(0, length)).size(), 4u);
    }
}

// The renderer with the shipped shaders on the simulated OpenGL.
class SimulatedGl : public testing::Test {
protected:
    SimulatedGl() {
        simulated::loadGlFunctions();
        std::filesystem::current_path(before / "data");
        createRenderer();
        simulated::setDrawTrace([this](std::string_view line) { lines.emplace_back(line); });
    }
    ~SimulatedGl() override {
        simulated::setDrawTrace({});
        resetProgram();
        std::filesystem::current_path(before);
    }

    void draw(const Texture2D& texture) {
        dunkman::draw({.texture = texture,
                       .mirrorX = true,
                       .mirrorY = true,
                       .gain = 0.5,
                       .tintG = 0.25,
                       .position = {1.0, -2.0},
                       .size = {3.0, 4.0},
                       .pivot = {0.5, 0.0},
                       .zOffset = 0.75});
    }

    std::filesystem::path before = std::filesystem::current_path();
    std::vector<std::string> lines;
};

TEST_F(SimulatedGl, TellsTheRendererWhatTheShadersDeclare) {
    EXPECT_EQ(rendererObjects->basic.program.resources().size(), 8u);
    EXPECT_GE(rendererObjects->basic.uniforms.viewProjection, 0);
    EXPECT_GE(rendererObjects->basic.uniforms.texture, 0);
    EXPECT_GE(rendererObjects->basic.uniforms.tint, 0);
}

TEST_F(SimulatedGl, TracesASpriteWithItsImageKey) {
    Texture2D& flamingo = writable::pictures.imageTable["flamingo"];
    glCreateTextures(GL_TEXTURE_2D, 1, &flamingo.name);
    draw(flamingo);
    EXPECT_THAT(lines, ElementsAre("draw image=flamingo flags=3 dest=-0x1.8p+0,-0x0p+0,0x1.8p+1,0x1p+2 "
                                   "pos=0x1p+0,-0x1p+1,0x1p+0,-0x0p+0 z=0x1.8p-1 ggs=0x1p+0,0x1p-1,0x1p+0 "
                                   "tint=0x1p+0,0x1p-2,0x1p+0"));
}

TEST_F(SimulatedGl, TracesAGlyphWithItsLetter) {
    glCreateTextures(GL_TEXTURE_2D, 1, &writable::pictures.glyphTable[2].name);
    draw(writable::pictures.glyphTable[2]);
    EXPECT_THAT(lines.at(0), testing::StartsWith("draw image=glyph:C flags="));
}

TEST_F(SimulatedGl, FindsImagesThatWereLoadedAfterTheFirstDraw) {
    glCreateTextures(GL_TEXTURE_2D, 1, &writable::pictures.imageTable["first"].name);
    draw(writable::pictures.imageTable["first"]);
    glCreateTextures(GL_TEXTURE_2D, 1, &writable::pictures.imageTable["second"].name);
    draw(writable::pictures.imageTable["second"]);
    EXPECT_THAT(lines.at(1), testing::StartsWith("draw image=second "));
}

TEST_F(SimulatedGl, SaysNoneForATextureOfNoTable) {
    Texture2D stray;
    glCreateTextures(GL_TEXTURE_2D, 1, &stray.name);
    draw(stray);
    EXPECT_THAT(lines.at(0), testing::StartsWith("draw image=none "));
}

TEST_F(SimulatedGl, TracesAViewBeforeTheSpritesDrawnThroughIt) {
    Matrix4 matrix{};
    matrix[0] = 0.5f;
    matrix[15] = 1.0f;
    setViewProjection(matrix);
    draw(writable::pictures.imageTable["any"]);
    setViewProjection(matrix);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0],
              "view 0x1p-1,0x0p+0,0x0p+0,0x0p+0,0x0p+0,0x0p+0,0x0p+0,0x0p+0,0x0p+0,0x0p+0,0x0p+0,0x0p+0,"
              "0x0p+0,0x0p+0,0x0p+0,0x1p+0");
    EXPECT_EQ(lines[2], lines[0]);
}

TEST_F(SimulatedGl, TracesNothingWhenNobodyLooks) {
    simulated::setDrawTrace({});
    draw(writable::pictures.imageTable["any"]);
    EXPECT_THAT(lines, testing::IsEmpty());
}

TEST_F(SimulatedGl, StartsNamesAgainAfterAReset) {
    releaseRenderer();
    simulated::resetGl();
    std::uint32_t name = 0;
    glCreateSamplers(1, &name);
    EXPECT_EQ(name, 1u);
}

} // namespace
} // namespace dunkman
