#include "platform/unseen_draws.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include "app/reset.h"
#include "render/gl.h"

namespace dunkman::platform {
namespace {

using testing::ElementsAre;

struct Driver {
    std::string renderer = "llvmpipe (LLVM 15.0.6, 256 bits)";
    std::vector<std::string> calls;
};

Driver driver;

std::string nameOf(GLenum capability) {
    return capability == GL_RASTERIZER_DISCARD ? "discard" : std::to_string(capability);
}

void enable(GLenum capability) { driver.calls.push_back("enable " + nameOf(capability)); }
void disable(GLenum capability) { driver.calls.push_back("disable " + nameOf(capability)); }
void drawArrays(GLenum, GLint, GLsizei count) { driver.calls.push_back("draw " + std::to_string(count)); }

const std::uint8_t* getString(GLenum) {
    return reinterpret_cast<const std::uint8_t*>(driver.renderer.c_str());
}

GlFunction ask(const char* name) {
    return std::string_view(name) == "glGetString" ? reinterpret_cast<GlFunction>(getString) : nullptr;
}

class UnseenDraws : public testing::Test {
protected:
    UnseenDraws() {
        driver = Driver();
        connect();
    }
    ~UnseenDraws() override { resetProgram(); }

    static void connect() {
        glEnable = enable;
        glDisable = disable;
        glDrawArrays = drawArrays;
        skipUnseenDrawsInSoftware(ask);
    }

    static void draw(GLsizei count) { glDrawArrays(GL_TRIANGLE_STRIP, 0, count); }
};

TEST_F(UnseenDraws, StayWithTheGame) {
    glEnable(GL_RASTERIZER_DISCARD);
    draw(4);
    draw(5);
    glDisable(GL_RASTERIZER_DISCARD);
    EXPECT_THAT(driver.calls, ElementsAre("enable discard", "disable discard"));
}

TEST_F(UnseenDraws, LeaveTheSeenOnesAlone) {
    draw(4);
    glEnable(GL_RASTERIZER_DISCARD);
    draw(5);
    glDisable(GL_RASTERIZER_DISCARD);
    draw(6);
    EXPECT_THAT(driver.calls, ElementsAre("draw 4", "enable discard", "disable discard", "draw 6"));
}

TEST_F(UnseenDraws, AreNotMadeSeenByAnotherCapability) {
    glEnable(GL_SCISSOR_TEST);
    draw(4);
    glEnable(GL_RASTERIZER_DISCARD);
    glDisable(GL_SCISSOR_TEST);
    draw(5);
    EXPECT_THAT(driver.calls, ElementsAre("enable " + nameOf(GL_SCISSOR_TEST), "draw 4", "enable discard",
                                          "disable " + nameOf(GL_SCISSOR_TEST)));
}

TEST_F(UnseenDraws, AreForgottenByAnotherContext) {
    glEnable(GL_RASTERIZER_DISCARD);
    connect();
    draw(4);
    EXPECT_THAT(driver.calls, ElementsAre("enable discard", "draw 4"));
}

TEST_F(UnseenDraws, GoToAGraphicsCard) {
    driver.renderer = "NVIDIA GeForce GTX 1050/PCIe/SSE2";
    connect();
    EXPECT_EQ(glEnable, enable);
    EXPECT_EQ(glDisable, disable);
    EXPECT_EQ(glDrawArrays, drawArrays);
}

} // namespace
} // namespace dunkman::platform
