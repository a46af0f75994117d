#include "render/program.h"

#include <gmock/gmock.h>

#include "base/fatal.h"
#include "render/binding_state.h"
#include "render/gl.h"
#include "render/material.h"
#include "tests/fakes/fake_debugger.h"
#include "tests/fakes/recording_gl.h"

namespace dunkman {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ProgramBuilding : public testing::Test {
protected:
    ProgramBuilding() { fakeDebugger = {}; }

    static ShaderSourceSet twoStages() {
        ShaderSourceSet sources;
        sources.vertex = "vertex text";
        sources.fragment = "fragment text";
        return sources;
    }

    static ShaderSourceSet twoFiles() {
        ShaderSourceSet files;
        files.vertex = "v.vert";
        files.fragment = "f.frag";
        return files;
    }

    RecordingGl gl;
};

TEST_F(ProgramBuilding, CompilesLinksValidatesThenAsksWhatTheProgramDeclares) {
    const Program program(twoStages());
    EXPECT_EQ(program.name, 3u);
    EXPECT_THAT(gl.calls,
                ElementsAre("glCreateShader(GL_VERTEX_SHADER)", "glShaderSource(1, 1, \"vertex text\", null)",
                            "glCompileShader(1)", "glGetShaderiv(1, GL_COMPILE_STATUS)",
                            "glCreateShader(GL_FRAGMENT_SHADER)",
                            "glShaderSource(2, 1, \"fragment text\", null)", "glCompileShader(2)",
                            "glGetShaderiv(2, GL_COMPILE_STATUS)", "glCreateProgram()",
                            "glAttachShader(3, 1)", "glAttachShader(3, 2)", "glLinkProgram(3)",
                            "glGetProgramiv(3, GL_LINK_STATUS)", "glValidateProgram(3)",
                            "glGetProgramiv(3, GL_VALIDATE_STATUS)",
                            "glGetProgramInterfaceiv(3, GL_UNIFORM, GL_ACTIVE_RESOURCES)",
                            "glGetProgramInterfaceiv(3, GL_SHADER_STORAGE_BLOCK, GL_ACTIVE_RESOURCES)"));
}

TEST_F(ProgramBuilding, TakesTheStagesInTheirFixedOrder) {
    ShaderSourceSet sources;
    sources.vertex = sources.geometry = sources.tessellationControl = sources.tessellationEvaluation =
        sources.fragment = "text";
    const Program program(sources);
    std::vector<std::string> created;
    for (const std::string& call : gl.calls) {
        if (call.rfind("glCreateShader", 0) == 0) {
            created.push_back(call);
        }
    }
    EXPECT_THAT(created, ElementsAre("glCreateShader(GL_VERTEX_SHADER)", "glCreateShader(GL_GEOMETRY_SHADER)",
                                     "glCreateShader(GL_TESS_CONTROL_SHADER)",
                                     "glCreateShader(GL_TESS_EVALUATION_SHADER)",
                                     "glCreateShader(GL_FRAGMENT_SHADER)"));
}

TEST_F(ProgramBuilding, RecordsUniformsThenStorageBlocks) {
    gl.uniforms = {{"uTint", GL_FLOAT_VEC3, 4, 0}, {"uTexture", GL_SAMPLER_2D, 7, 2}};
    gl.storageBlocks = {{"Sprites", 5}};
    const Program program(ShaderSourceSet{});
    ASSERT_EQ(program.resources().size(), 3u);
    const ProgramResource& tint = program.resources()[0];
    EXPECT_EQ(tint.location, 4);
    EXPECT_EQ(tint.type, GL_FLOAT_VEC3);
    EXPECT_EQ(tint.unit, -1);
    const ProgramResource& texture = program.resources()[1];
    EXPECT_EQ(texture.location, 7);
    EXPECT_EQ(texture.unit, 2);
    const ProgramResource& block = program.resources()[2];
    EXPECT_EQ(block.location, 5);
    EXPECT_EQ(block.type, GL_SHADER_STORAGE_BUFFER);
    EXPECT_EQ(block.unit, -1);
    EXPECT_EQ(program.findResource("uTint"), 0);
    EXPECT_EQ(program.findResource("uTexture"), 1);
    EXPECT_EQ(program.findResource("Sprites"), 2);
}

TEST_F(ProgramBuilding, AsksForTheUnitOfSamplersAlone) {
    gl.uniforms = {{"uTint", GL_FLOAT_VEC3, 4, 0}, {"uTexture", GL_SAMPLER_2D, 7, 2}};
    gl.storageBlocks = {{"Sprites", 5}};
    const Program program(ShaderSourceSet{});
    const auto asked = std::vector<std::string>(gl.calls.begin() + 5, gl.calls.end());
    const std::string uniformQuery = "{GL_NAME_LENGTH, GL_LOCATION, GL_TYPE, GL_ARRAY_SIZE})";
    EXPECT_THAT(
        asked,
        ElementsAre(
            "glGetProgramInterfaceiv(1, GL_UNIFORM, GL_ACTIVE_RESOURCES)",
            "glGetProgramResourceiv(1, GL_UNIFORM, 0, " + uniformQuery,
            "glGetProgramResourceName(1, GL_UNIFORM, 0, 6)",
            "glGetProgramResourceiv(1, GL_UNIFORM, 1, " + uniformQuery, "glGetUniformiv(1, 7)",
            "glGetProgramResourceName(1, GL_UNIFORM, 1, 9)",
            "glGetProgramInterfaceiv(1, GL_SHADER_STORAGE_BLOCK, GL_ACTIVE_RESOURCES)",
            "glGetProgramResourceiv(1, GL_SHADER_STORAGE_BLOCK, 0, {GL_NAME_LENGTH, GL_BUFFER_BINDING})",
            "glGetProgramResourceName(1, GL_SHADER_STORAGE_BLOCK, 0, 8)"));
}

TEST_F(ProgramBuilding, RecordsAnArrayUnderTheDriversNameForIt) {
    gl.uniforms = {{"uWeights[0]", GL_FLOAT, 1, 0}};
    const Program program(ShaderSourceSet{});
    EXPECT_EQ(program.findResource("uWeights[0]"), 0);
    EXPECT_EQ(program.findResource("uWeights"), std::nullopt);
}

TEST_F(ProgramBuilding, LetsTheLaterOfTwoEqualNamesWin) {
    gl.uniforms = {{"same", GL_FLOAT, 1, 0}};
    gl.storageBlocks = {{"same", 5}};
    const Program program(ShaderSourceSet{});
    EXPECT_EQ(program.resources().size(), 2u);
    EXPECT_EQ(program.findResource("same"), 1);
}

TEST_F(ProgramBuilding, FindsNothingUnderAnUnknownName) {
    EXPECT_EQ(Program(ShaderSourceSet{}).findResource("uNowhere"), std::nullopt);
}

TEST_F(ProgramBuilding, ReportsAStageThatDoesNotCompileWithFileAndLog) {
    gl.compiles = false;
    gl.log = "0:1: nonsense";
    EXPECT_THROW(Program(twoStages(), twoFiles()), FatalError);
    EXPECT_THAT(fakeDebugger.lines, ElementsAre("0:1: nonsense"));
    ASSERT_EQ(fakeDebugger.breaks.size(), 1u);
    EXPECT_THAT(fakeDebugger.breaks[0],
                testing::AllOf(HasSubstr("vertex shader \"v.vert\""), HasSubstr("0:1: nonsense")));
    EXPECT_EQ(gl.calls.back(), "glGetShaderInfoLog(1, 1024)");
}

TEST_F(ProgramBuilding, GoesOnAfterAFailedStageWhenTheDeveloperDoes) {
    gl.compiles = false;
    fakeDebugger.developerGoesOn = true;
    const Program program(twoStages(), twoFiles());
    EXPECT_EQ(program.name, 3u);
    EXPECT_EQ(fakeDebugger.breaks.size(), 2u);
    EXPECT_THAT(gl.calls, testing::Contains("glAttachShader(3, 1)"));
}

TEST_F(ProgramBuilding, ReportsAProgramThatDoesNotLink) {
    gl.links = false;
    gl.log = "no main";
    EXPECT_THROW(Program(twoStages(), twoFiles()), FatalError);
    EXPECT_THAT(fakeDebugger.lines, ElementsAre("no main"));
    EXPECT_THAT(fakeDebugger.breaks[0],
                testing::AllOf(HasSubstr("\"v.vert\", \"f.frag\""), HasSubstr("link"), HasSubstr("no main")));
    EXPECT_EQ(gl.calls.back(), "glGetProgramInfoLog(3, 1024)");
}

TEST_F(ProgramBuilding, ReportsAProgramThatDoesNotValidate) {
    gl.validates = false;
    fakeDebugger.developerGoesOn = true;
    const Program program(twoStages(), twoFiles());
    ASSERT_EQ(fakeDebugger.breaks.size(), 1u);
    EXPECT_THAT(fakeDebugger.breaks[0], HasSubstr("validation"));
}

TEST_F(ProgramBuilding, CutsALogAt1024BytesWithItsNul) {
    gl.compiles = false;
    gl.log = std::string(5000, 'x');
    EXPECT_THROW(Program(twoStages(), twoFiles()), FatalError);
    EXPECT_EQ(fakeDebugger.lines[0].size(), 1023u);
}

TEST_F(ProgramBuilding, ReleaseDeletesAProgramThatIsNotInUse) {
    Program program(ShaderSourceSet{});
    gl.calls.clear();
    program.release();
    EXPECT_THAT(gl.calls, ElementsAre("glDeleteProgram(1)"));
    EXPECT_EQ(program.name, 0u);
}

TEST_F(ProgramBuilding, ReleaseUnbindsTheProgramInUseFirst) {
    Program program(ShaderSourceSet{});
    Material material(program);
    material.bind();
    gl.calls.clear();
    program.release();
    EXPECT_THAT(gl.calls, ElementsAre("glUseProgram(0)", "glDeleteProgram(1)"));
    EXPECT_EQ(bindingState.currentProgram, nullptr);
    EXPECT_EQ(bindingState.currentMaterial, nullptr);
}

TEST_F(ProgramBuilding, ReleaseLeavesAnotherProgramBound) {
    Program program(ShaderSourceSet{});
    Program other(ShaderSourceSet{});
    Material material(other);
    material.bind();
    program.release();
    EXPECT_EQ(bindingState.currentProgram, &other);
    EXPECT_EQ(bindingState.currentMaterial, &material);
}

TEST(OpaqueType, IsEachOfTheSeventyThree) {
    int count = 0;
    for (std::uint32_t type = 0; type < 0x10000; ++type) {
        count += isOpaqueType(type) ? 1 : 0;
    }
    EXPECT_EQ(count, 73);
}

TEST(OpaqueType, IsASamplerOrAnImage) {
    for (const GLenum type : {GL_SAMPLER_1D, GL_SAMPLER_2D_RECT_SHADOW, GL_SAMPLER_CUBE_MAP_ARRAY_SHADOW,
                              GL_INT_SAMPLER_BUFFER, GL_UNSIGNED_INT_SAMPLER_2D_MULTISAMPLE_ARRAY,
                              GL_IMAGE_1D, GL_INT_IMAGE_CUBE, GL_UNSIGNED_INT_IMAGE_2D_MULTISAMPLE_ARRAY}) {
        EXPECT_TRUE(isOpaqueType(type)) << type;
    }
    for (const GLenum type :
         {GL_FLOAT, GL_FLOAT_MAT4, GL_UNSIGNED_INT, GL_TEXTURE_2D, GL_SHADER_STORAGE_BUFFER}) {
        EXPECT_FALSE(isOpaqueType(type)) << type;
    }
}

} // namespace
} // namespace dunkman
