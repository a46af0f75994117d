#include "render/material.h"

#include <gmock/gmock.h>

#include "base/fatal.h"
#include "render/binding_state.h"
#include "render/gl.h"
#include "tests/fakes/recording_gl.h"

namespace dunkman {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FakeBuffer final : public HandleBase {
public:
    explicit FakeBuffer(std::uint32_t bufferName) { name = bufferName; }
    void release() override {}
};

class MaterialTest : public testing::Test {
protected:
    MaterialTest() {
        gl.uniforms = {{"one", GL_FLOAT, 10, 0},          {"two", GL_FLOAT_VEC2, 11, 0},
                       {"three", GL_FLOAT_VEC3, 12, 0},   {"four", GL_FLOAT_VEC4, 13, 0},
                       {"matrix", GL_FLOAT_MAT4, 14, 0},  {"number", GL_UNSIGNED_INT, 15, 0},
                       {"picture", GL_SAMPLER_2D, 16, 3}, {"pictures", GL_SAMPLER_2D_ARRAY, 17, 4},
                       {"image", GL_IMAGE_2D, 18, 0}};
        gl.storageBlocks = {{"Block", 6}};
        texture.name = 70;
        sampler.name = 80;
    }

    // A material of a program of its own, with the calls so far forgotten.
    Material makeMaterial() {
        Material material(program());
        gl.calls.clear();
        return material;
    }

    const Program& program() {
        if (!built) {
            built.emplace(ShaderSourceSet{});
        }
        return *built;
    }

    RecordingGl gl;
    std::optional<Program> built;
    Texture2D texture;
    Sampler sampler;
};

TEST_F(MaterialTest, StartsAsOpaqueDepthTestedAndCulled) {
    const Material material = makeMaterial();
    EXPECT_EQ(material.blendMode, BlendMode::None);
    EXPECT_EQ(material.depthFunc, GL_LESS);
    EXPECT_TRUE(material.depthWrite);
    EXPECT_EQ(material.cullFace, GL_BACK);
    EXPECT_EQ(&material.program(), &program());
}

TEST_F(MaterialTest, OnlyStoresValuesWhileItIsNotCurrent) {
    Material material = makeMaterial();
    EXPECT_TRUE(material.setUniform("one", UniformValue(1.5f)));
    EXPECT_THAT(gl.calls, IsEmpty());
}

TEST_F(MaterialTest, KnowsWhichValuesItHas) {
    Material material = makeMaterial();
    const std::int32_t one = program().findResource("one").value();
    EXPECT_FALSE(material.hasUniform(one));
    material.setUniform(one, 1.5f);
    EXPECT_TRUE(material.hasUniform(one));
    EXPECT_FALSE(material.hasUniform(-1)) << "no such name";
}

TEST_F(MaterialTest, UploadsAtOnceWhileItIsCurrent) {
    Material material = makeMaterial();
    material.bind();
    gl.calls.clear();
    EXPECT_TRUE(material.setUniform("one", UniformValue(1.5f)));
    EXPECT_THAT(gl.calls, ElementsAre("glUniform1fv(10, 1, {1.5})"));
}

TEST_F(MaterialTest, BindUsesTheProgramGivesUnitsThenUploadsWhatIsSetInRecordOrder) {
    Material material = makeMaterial();
    material.setUniform("number", UniformValue(9u));
    material.setUniform("one", UniformValue(0.25f));
    material.bind();
    EXPECT_THAT(gl.calls, ElementsAre("glUseProgram(1)", "glUniform1i(16, 3)", "glUniform1i(17, 4)",
                                      "glUniform1i(18, 0)", "glUniform1fv(10, 1, {0.25})",
                                      "glUniform1uiv(15, 1, {9})"));
    EXPECT_EQ(bindingState.currentProgram, &program());
    EXPECT_EQ(bindingState.currentMaterial, &material);
}

TEST_F(MaterialTest, BindDoesNothingWhenCurrent) {
    Material material = makeMaterial();
    material.setUniform("one", UniformValue(0.25f));
    material.bind();
    gl.calls.clear();
    material.bind();
    EXPECT_THAT(gl.calls, IsEmpty());
}

TEST_F(MaterialTest, BindOfASecondMaterialOfTheProgramKeepsTheProgram) {
    Material first = makeMaterial();
    Material second = makeMaterial();
    first.bind();
    second.setUniform("one", UniformValue(2.0f));
    gl.calls.clear();
    second.bind();
    EXPECT_THAT(gl.calls, ElementsAre("glUniform1fv(10, 1, {2})"));
    EXPECT_EQ(bindingState.currentMaterial, &second);
}

TEST_F(MaterialTest, ValueStoredUnderAnotherMaterialArrivesWithTheNextBind) {
    Material first = makeMaterial();
    Material second = makeMaterial();
    first.bind();
    second.bind();
    gl.calls.clear();
    EXPECT_TRUE(first.setUniform("one", UniformValue(3.0f)));
    EXPECT_THAT(gl.calls, IsEmpty());
    first.bind();
    EXPECT_THAT(gl.calls, ElementsAre("glUniform1fv(10, 1, {3})"));
}

TEST_F(MaterialTest, RefusesANameThatTheProgramLacks) {
    Material material = makeMaterial();
    material.bind();
    gl.calls.clear();
    EXPECT_FALSE(material.setUniform("nowhere", UniformValue(1.0f)));
    EXPECT_FALSE(material.setUniform(-1, 1.0f));
    EXPECT_THAT(gl.calls, IsEmpty());
}

TEST_F(MaterialTest, RefusesAnotherTypeThanDeclared) {
    Material material = makeMaterial();
    EXPECT_FALSE(material.setUniform("one", UniformValue(1u)));
    EXPECT_FALSE(material.setUniform("three", UniformValue(std::array<float, 4>{})));
    EXPECT_FALSE(material.setUniform("picture", UniformValue(1.0f)));
    EXPECT_FALSE(material.setUniform("one", UniformValue(SampledTexture{&texture, &sampler})));
    material.bind();
    EXPECT_EQ(gl.calls.back(), "glUniform1i(18, 0)"); // nothing was stored
}

TEST_F(MaterialTest, TakesATextureForAPlainSamplerOrImageButNotForAnArrayOfThem) {
    Material material = makeMaterial();
    const UniformValue value(SampledTexture{&texture, &sampler});
    EXPECT_TRUE(material.setUniform("picture", value));
    EXPECT_TRUE(material.setUniform("image", value));
    EXPECT_FALSE(material.setUniform("pictures", value));
}

TEST_F(MaterialTest, UploadsEveryTypeWithItsOwnCall) {
    Material material = makeMaterial();
    material.bind();
    gl.calls.clear();
    Matrix4 matrix{};
    for (std::size_t element = 0; element < matrix.size(); ++element) {
        matrix[element] = static_cast<float>(element);
    }
    const FakeBuffer buffer(90);
    EXPECT_TRUE(material.setUniform("one", UniformValue(-0.0f)));
    EXPECT_TRUE(material.setUniform("two", UniformValue(std::array<float, 2>{1.0f, 2.0f})));
    EXPECT_TRUE(material.setUniform("three", UniformValue(std::array<float, 3>{1.0f, 2.0f, 3.0f})));
    EXPECT_TRUE(material.setUniform("four", UniformValue(std::array<float, 4>{1.0f, 2.0f, 3.0f, 4.0f})));
    EXPECT_TRUE(material.setUniform("matrix", UniformValue(matrix)));
    EXPECT_TRUE(material.setUniform("number", UniformValue(77u)));
    EXPECT_TRUE(material.setUniform("picture", UniformValue(SampledTexture{&texture, &sampler})));
    EXPECT_TRUE(material.setUniform("Block", UniformValue(&buffer)));
    EXPECT_THAT(gl.calls,
                ElementsAre("glUniform1fv(10, 1, {-0})", "glUniform2fv(11, 1, {1, 2})",
                            "glUniform3fv(12, 1, {1, 2, 3})", "glUniform4fv(13, 1, {1, 2, 3, 4})",
                            "glUniformMatrix4fv(14, 1, GL_FALSE, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, "
                            "12, 13, 14, 15})",
                            "glUniform1uiv(15, 1, {77})", "glBindTextureUnit(3, 70)", "glBindSampler(3, 80)",
                            "glBindBufferBase(GL_SHADER_STORAGE_BUFFER, 6, 90)"));
}

TEST_F(MaterialTest, CannotUploadAnUnsetValue) {
    EXPECT_THROW(uploadUniform(ProgramResource{}, UniformValue()), FatalError);
}

TEST_F(MaterialTest, AppliesDepthCullingAndBlendingInThisOrder) {
    makeMaterial().applyRenderState();
    EXPECT_THAT(gl.calls,
                ElementsAre("glEnable(GL_DEPTH_TEST)", "glDepthFunc(GL_LESS)", "glDepthMask(GL_TRUE)",
                            "glEnable(GL_CULL_FACE)", "glCullFace(GL_BACK)", "glDisable(GL_BLEND)"));
}

TEST_F(MaterialTest, TurnsTheDepthTestOffWhenItWouldDoNothing) {
    Material material = makeMaterial();
    material.depthFunc = GL_ALWAYS;
    material.depthWrite = false;
    material.cullFace = 0;
    material.applyRenderState();
    EXPECT_THAT(gl.calls,
                ElementsAre("glDisable(GL_DEPTH_TEST)", "glDisable(GL_CULL_FACE)", "glDisable(GL_BLEND)"));
}

TEST_F(MaterialTest, KeepsTheDepthTestForWritingAlone) {
    Material material = makeMaterial();
    material.depthFunc = GL_ALWAYS;
    material.applyRenderState();
    EXPECT_EQ(gl.calls[0], "glEnable(GL_DEPTH_TEST)");
    EXPECT_EQ(gl.calls[1], "glDepthFunc(GL_ALWAYS)");
}

TEST_F(MaterialTest, BlendsByMode) {
    Material material = makeMaterial();
    const auto blending = [&](BlendMode mode) {
        material.blendMode = mode;
        gl.calls.clear();
        material.applyRenderState();
        return std::vector<std::string>(gl.calls.begin() + 5, gl.calls.end());
    };
    EXPECT_THAT(blending(BlendMode::Alpha),
                ElementsAre("glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)"));
    EXPECT_THAT(blending(BlendMode::Additive),
                ElementsAre("glEnable(GL_BLEND)", "glBlendFunc(1, 1)")); // GL_ONE
    EXPECT_THAT(blending(BlendMode::Premultiplied),
                ElementsAre("glEnable(GL_BLEND)", "glBlendFunc(1, GL_ONE_MINUS_SRC_ALPHA)"));
}

} // namespace
} // namespace dunkman
