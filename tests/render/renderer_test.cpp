#include "render/renderer.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "base/fatal.h"
#include "render/binding_state.h"
#include "render/gl.h"
#include "render/mesh.h"
#include "render/renderer_objects.h"
#include "render/sampler.h"
#include "render/sprite.h"
#include "render/view.h"
#include "tests/fakes/fake_debugger.h"
#include "tests/fakes/recording_gl.h"
#include "tests/render/sprite_scene.h"

namespace dunkman {
namespace {

using testing::ElementsAre;

// Runs in a folder of its own, since the renderer reads its shaders from the working directory.
class RendererStart : public testing::Test {
protected:
    RendererStart() {
        fakeDebugger = {};
        std::filesystem::create_directories(folder);
        std::filesystem::current_path(folder);
    }
    ~RendererStart() override {
        std::filesystem::current_path(before);
        std::filesystem::remove_all(folder);
    }

    static void write(const char* name, const char* text) { std::ofstream(name, std::ios::binary) << text; }

    RecordingGl gl;
    std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "dunkman_renderer_test";
};

TEST_F(RendererStart, BuildsTheProgramThenTheQuadThenTheSampler) {
    write("drawable_basic.vert", "#include \"common.glsl\"v");
    write("drawable_basic.frag", "f#include \"common.glsl\"");
    write("common.glsl", "+");
    createRenderer();
    EXPECT_EQ(gl.calls[1], "glShaderSource(1, 1, \"+v\", null)");
    EXPECT_EQ(gl.calls[5], "glShaderSource(2, 1, \"f+\", null)");
    const std::vector<std::string> afterProgram(gl.calls.begin() + 17, gl.calls.end());
    EXPECT_THAT(afterProgram,
                ElementsAre("glCreateVertexArrays(1)", "glCreateSamplers(1)",
                            "glSamplerParameteri(5, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE)",
                            "glSamplerParameteri(5, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)",
                            "glSamplerParameteri(5, GL_TEXTURE_WRAP_R, GL_CLAMP_TO_EDGE)",
                            "glSamplerParameteri(5, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR)",
                            "glSamplerParameteri(5, GL_TEXTURE_MAG_FILTER, GL_LINEAR)"));
}

TEST_F(RendererStart, DefinesThePlainProgramBehindTheVersion) {
    write("drawable_basic.vert", "v");
    write("drawable_basic.frag", "// a comment\n#version 450\nvoid main() {}\n");
    createRenderer();
    EXPECT_FALSE(isPreparedForSoftware());
    gl.calls.clear();
    prepareForSoftware();
    EXPECT_TRUE(isPreparedForSoftware());
    EXPECT_EQ(gl.calls[1], "glShaderSource(6, 1, \"v\", null)");
    EXPECT_EQ(gl.calls[5],
              "glShaderSource(7, 1, \"// a comment\n#version 450\n#define PLAIN_SPRITES\n#line 3\n"
              "void main() {}\n\", null)");
}

TEST_F(RendererStart, DefinesThePlainProgramFirstWhereThereIsNoVersion) {
    write("drawable_basic.vert", "v");
    write("drawable_basic.frag", "f");
    createRenderer();
    gl.calls.clear();
    prepareForSoftware();
    EXPECT_EQ(gl.calls[5], "glShaderSource(7, 1, \"#define PLAIN_SPRITES\n#line 1\nf\", null)");
}

TEST_F(RendererStart, NamesAMissingShaderFile) {
    write("drawable_basic.vert", "v");
    try {
        createRenderer();
        FAIL();
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("\"drawable_basic.frag\""));
    }
    EXPECT_EQ(rendererObjects, nullptr);
}

TEST_F(RendererStart, NamesAShaderFileThatDoesNotCompile) {
    write("drawable_basic.vert", "v");
    write("drawable_basic.frag", "f");
    gl.compiles = false;
    try {
        createRenderer();
        FAIL();
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("\"drawable_basic.vert\""));
    }
}

TEST(RendererEnd, DeletesProgramVertexArrayAndSamplerInThisOrder) {
    SpriteScene scene;
    releaseRenderer();
    EXPECT_THAT(scene.gl.calls, ElementsAre("glDeleteProgram(1)", "glDeleteVertexArrays(1, {2})",
                                            "glDeleteSamplers(1, {3})"));
}

TEST(RendererEnd, UnbindsTheProgramWhereItIsBound) {
    SpriteScene scene;
    rendererObjects->basic.material.bind();
    scene.gl.calls.clear();
    releaseRenderer();
    EXPECT_EQ(scene.gl.calls.front(), "glUseProgram(0)");
    EXPECT_EQ(bindingState.currentMaterial, nullptr);
}

TEST(RendererEnd, DoesNothingWithoutARenderer) {
    SpriteScene scene;
    releaseRenderer();
    scene.gl.calls.clear();
    releaseRenderer();
    EXPECT_THAT(scene.gl.calls, testing::IsEmpty());
}

TEST(RendererEnd, CanBeForgottenWithoutTouchingOpenGl) {
    SpriteScene scene;
    rendererObjects->basic.material.bind();
    scene.gl.calls.clear();
    resetRenderer();
    EXPECT_EQ(bindingState.currentMaterial, nullptr);
    EXPECT_THAT(scene.gl.calls, testing::IsEmpty());
}

TEST(QuadMesh, IsAStripOfFourVerticesWithoutData) {
    RecordingGl gl;
    const Mesh quad = makeQuadMesh();
    EXPECT_EQ(quad.mode, GL_TRIANGLE_STRIP);
    EXPECT_EQ(quad.count, 4u);
    EXPECT_EQ(quad.indexType, 0u);
    EXPECT_THAT(gl.calls, ElementsAre("glCreateVertexArrays(1)"));
}

TEST(MeshDrawing, BindsDrawsAndUnbinds) {
    RecordingGl gl;
    Mesh mesh;
    mesh.name = 4;
    mesh.mode = GL_TRIANGLES;
    mesh.count = 6;
    mesh.draw();
    EXPECT_THAT(gl.takeCalls(),
                ElementsAre("glBindVertexArray(4)", "glDrawArrays(4, 0, 6)", "glBindVertexArray(0)"));
    mesh.indexType = GL_UNSIGNED_SHORT;
    mesh.draw();
    EXPECT_THAT(gl.takeCalls(),
                ElementsAre("glBindVertexArray(4)", "glDrawElements(4, 6, GL_UNSIGNED_SHORT, null)",
                            "glBindVertexArray(0)"));
    mesh.release();
    EXPECT_THAT(gl.takeCalls(), ElementsAre("glDeleteVertexArrays(1, {4})"));
    EXPECT_EQ(mesh.name, 0u);
}

TEST(ViewProjection, ReachesOpenGlWhileTheMaterialIsCurrent) {
    SpriteScene scene;
    Matrix4 matrix{};
    matrix[0] = 1.0f;
    matrix[12] = -0.0f;
    setViewProjection(matrix);
    EXPECT_THAT(scene.gl.calls, testing::IsEmpty());
    rendererObjects->basic.material.bind();
    EXPECT_EQ(scene.gl.calls.back(),
              "glUniformMatrix4fv(0, 1, GL_FALSE, {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, -0, 0, 0, 0})");
}

} // namespace
} // namespace dunkman
