#include "render/gl_loader.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/fatal.h"
#include "render/gl.h"

namespace dunkman {
namespace {

std::vector<std::string> systemNames;
std::vector<std::string> driverNames;
std::string missingName;
std::intptr_t missingAnswer = 0;

void anyFunction() {}

GlFunction answerFor(const char* name) {
    return name == missingName ? reinterpret_cast<GlFunction>(missingAnswer) : &anyFunction;
}

GlFunction fakeSystemLibrary(const char* name) {
    if (std::string_view(name) == "glGetString") {
        return nullptr; // a library without it: nothing is called here
    }
    systemNames.emplace_back(name);
    return answerFor(name);
}

GlFunction fakeDriver(const char* name) {
    driverNames.emplace_back(name);
    return answerFor(name);
}

class GlLoader : public testing::Test {
protected:
    GlLoader() {
        systemNames.clear();
        driverNames.clear();
        missingName.clear();
        missingAnswer = 0;
    }
    ~GlLoader() override { resetGlFunctions(); }
};

TEST_F(GlLoader, AsksTheDriverForTheFortyFourLaterFunctions) {
    loadGlFunctions(fakeSystemLibrary, fakeDriver);
    EXPECT_EQ(driverNames.size(), 44u);
}

TEST_F(GlLoader, AsksTheDriverInRegistryOrder) {
    loadGlFunctions(fakeSystemLibrary, fakeDriver);
    // From OpenGL 2.0 over 3.0 and 4.3 to 4.5.
    EXPECT_EQ(driverNames.front(), "glAttachShader");
    const auto place = [](const char* name) {
        return std::find(driverNames.begin(), driverNames.end(), name) - driverNames.begin();
    };
    EXPECT_LT(place("glUseProgram"), place("glBindVertexArray"));
    EXPECT_LT(place("glBindVertexArray"), place("glGetProgramInterfaceiv"));
    EXPECT_LT(place("glGetProgramInterfaceiv"), place("glCreateTextures"));
}

TEST_F(GlLoader, TakesTheFunctionsOfVersionOneFromTheSystemLibrary) {
    loadGlFunctions(fakeSystemLibrary, fakeDriver);
    EXPECT_THAT(systemNames, testing::UnorderedElementsAre(
                                 "glBlendFunc", "glClear", "glClearColor", "glCullFace", "glDeleteTextures",
                                 "glDepthFunc", "glDepthMask", "glDisable", "glDrawArrays", "glDrawElements",
                                 "glEnable", "glScissor", "glViewport"));
}

TEST_F(GlLoader, StoresTheAnswers) {
    loadGlFunctions(fakeSystemLibrary, fakeDriver);
    EXPECT_EQ(reinterpret_cast<GlFunction>(glUseProgram), &anyFunction);
    EXPECT_EQ(reinterpret_cast<GlFunction>(glClear), &anyFunction);
}

TEST_F(GlLoader, NamesTheFunctionThatTheDriverLacks) {
    missingName = "glCreateTextures";
    try {
        loadGlFunctions(fakeSystemLibrary, fakeDriver);
        FAIL() << "a missing function was accepted";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("OpenGL 4.5"));
        EXPECT_THAT(error.what(), testing::HasSubstr("glCreateTextures"));
    }
    EXPECT_EQ(glCreateTextures, nullptr);
}

const std::uint8_t* describeItself(GLenum name) {
    const char* const text = name == 0x1F00 ? "Maker" : name == 0x1F01 ? "Software" : "1.1.0";
    return reinterpret_cast<const std::uint8_t*>(text);
}

GlFunction oldSystemLibrary(const char* name) {
    return std::string_view(name) == "glGetString" ? reinterpret_cast<GlFunction>(&describeItself)
                                                   : &anyFunction;
}

TEST_F(GlLoader, NamesTheVersionVendorAndRendererOfADriverThatIsTooOld) {
    missingName = "glCreateTextures";
    try {
        loadGlFunctions(oldSystemLibrary, fakeDriver);
        FAIL() << "a missing function was accepted";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("version 1.1.0, vendor Maker, renderer Software"));
    }
}

TEST_F(GlLoader, TakesTheAnswersZeroToThreeAndMinusOneForMissing) {
    for (const std::intptr_t answer : {0, 1, 2, 3, -1}) {
        missingName = "glBindSampler";
        missingAnswer = answer;
        EXPECT_THROW(loadGlFunctions(fakeSystemLibrary, fakeDriver), FatalError) << answer;
    }
}

TEST(GlFunctionAnswer, OfAnyOtherValueIsAnAddress) {
    EXPECT_FALSE(isMissingGlFunction(4));
    EXPECT_FALSE(isMissingGlFunction(-2)); // a high address
    EXPECT_FALSE(isMissingGlFunction(0x10000));
}

} // namespace
} // namespace dunkman
