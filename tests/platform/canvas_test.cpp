#include "platform/canvas.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/reset.h"
#include "base/fatal.h"

namespace dunkman::platform {
namespace {

// A driver with nothing but framebuffers. What is drawn is a word; the window's own buffer holds rubbish
// after a swap.
struct Driver {
    std::map<GLuint, std::string> pictures; // by framebuffer
    std::map<GLuint, ClientSize> sizes;     // of textures and renderbuffers
    std::map<GLuint, std::map<GLenum, GLuint>> attached;
    GLuint bound = 0;
    ClientSize
        windowSize; // as the driver last looked: when a viewport is set while drawing goes to the window
    GLuint lastName = 0;
    GLuint boundTexture = 0;
    std::set<GLint> copiedRows; // of the window, one by one
    std::string renderer = "a graphics card";
    std::string version = "4.5 (Compatibility Profile) Mesa 22.3.6";
    GLint alphaBits = 8; // of the window
    std::string missing;

    void draw(const std::string& picture) { pictures[bound] = picture; }
    std::string swap() {
        std::string shown = pictures[0];
        copiedRows.clear();
        pictures[0] = "rubbish";
        return shown;
    }
};

Driver driver;

void createNames(GLsizei count, GLuint* names) {
    for (GLsizei index = 0; index < count; ++index) {
        names[index] = ++driver.lastName;
    }
}

void createFramebuffers(GLsizei count, GLuint* names) {
    createNames(count, names);
    driver.pictures[names[0]] = "undefined";
}

void deleteFramebuffers(GLsizei, const GLuint* names) {
    if (*names != 0) { // as OpenGL does
        driver.pictures.erase(*names);
    }
}
void deleteStored(GLsizei, const GLuint* names) { driver.sizes.erase(*names); }

void storage(GLuint name, GLenum, GLsizei width, GLsizei height) {
    driver.sizes[name] = {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
}

void createTextures(GLenum, GLsizei count, GLuint* names) { createNames(count, names); }
void bindTextureUnit(GLuint, GLuint name) { driver.boundTexture = name; }

void texImage(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum, GLenum, const void*) {
    storage(driver.boundTexture, 0, width, height);
}

void attach(GLuint framebuffer, GLenum attachment, GLenum, GLuint renderbuffer) {
    driver.attached[framebuffer][attachment] = renderbuffer;
}

void attachTexture(GLuint framebuffer, GLenum attachment, GLuint texture, GLint) {
    driver.attached[framebuffer][attachment] = texture;
}

void bind(GLenum, GLuint name) { driver.bound = name; }

void blit(GLuint from, GLuint to, GLint, GLint fromY0, GLint fromX1, GLint fromY1, GLint, GLint toY0,
          GLint toX1, GLint toY1, GLbitfield, GLenum) {
    const GLint height = fromY1 - fromY0;
    if (height == 1) { // turned around, it covers the same row
        EXPECT_EQ(toY0, fromY1);
        EXPECT_EQ(toY1, fromY0);
        EXPECT_EQ(toX1, fromX1);
        EXPECT_EQ(to, 0u);
        driver.copiedRows.insert(fromY0);
        if (driver.copiedRows.size() == driver.windowSize.height) {
            driver.pictures[to] = driver.pictures[from] + ", by rows";
        }
        return;
    }
    const bool isStretched = fromX1 != toX1 || height != toY1 - toY0;
    driver.pictures[to] = driver.pictures[from] + (isStretched ? ", stretched" : "");
}

const std::uint8_t* getString(GLenum name) {
    constexpr GLenum versionName = 0x1F02;
    return reinterpret_cast<const std::uint8_t*>(
        (name == versionName ? driver.version : driver.renderer).c_str());
}

void getIntegers(GLenum name, GLint* values) {
    constexpr GLenum alphaBits = 0x0D55;
    *values = name == alphaBits && driver.bound == 0 ? driver.alphaBits : 0;
}

void viewport(GLint, GLint, GLsizei width, GLsizei height) {
    if (driver.bound == 0) {
        driver.windowSize = {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
    }
}

void clear(GLbitfield) { driver.draw("clear"); }

template <typename Function> GlFunction address(Function* function) {
    return reinterpret_cast<GlFunction>(function);
}

GlFunction ask(const char* name) {
    static const std::map<std::string, GlFunction> functions = {
        {"glCreateFramebuffers", address(createFramebuffers)},
        {"glDeleteFramebuffers", address(deleteFramebuffers)},
        {"glCreateRenderbuffers", address(createNames)},
        {"glDeleteRenderbuffers", address(deleteStored)},
        {"glNamedRenderbufferStorage", address(storage)},
        {"glNamedFramebufferRenderbuffer", address(attach)},
        {"glBindFramebuffer", address(bind)},
        {"glNamedFramebufferTexture", address(attachTexture)},
        {"glBlitNamedFramebuffer", address(blit)},
        {"glTexImage2D", address(texImage)},
        {"glGetString", address(getString)},
        {"glGetIntegerv", address(getIntegers)},
    };
    return name == driver.missing || !functions.contains(name) ? nullptr : functions.at(name);
}

class CanvasTest : public testing::Test {
protected:
    CanvasTest() {
        driver = Driver();
        glClear = clear;
        glViewport = viewport;
        glCreateTextures = createTextures;
        glDeleteTextures = deleteStored;
        glBindTextureUnit = bindTextureUnit;
    }
    ~CanvasTest() override { resetProgram(); }

    // What a swap puts on the screen.
    std::string show() const {
        canvas.present();
        return driver.swap();
    }

    Canvas canvas;
};

TEST_F(CanvasTest, LetsTheDriverSeeTheSizeOfTheWindowBeforeItIsCopiedTo) {
    canvas.load(ask, ask);
    canvas.resize({960, 540});
    canvas.present();
    EXPECT_EQ(driver.windowSize.width, 960u);
    EXPECT_EQ(driver.windowSize.height, 540u);
    EXPECT_NE(driver.bound, 0u); // what is drawn next goes to the picture again
}

TEST_F(CanvasTest, ShowsWhatWasDrawn) {
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    driver.draw("step 1");
    EXPECT_EQ(show(), "step 1");
}

TEST_F(CanvasTest, GoesToTheWindowRowByRowInSoftware) {
    for (const char* const version : {"22.3.6", "23.1.4", "25.0.7-2"}) {
        driver = Driver();
        driver.renderer = "llvmpipe (LLVM 19.1.7, 256 bits)";
        driver.version = std::string("4.5 (Compatibility Profile) Mesa ") + version;
        canvas = Canvas();
        canvas.load(ask, ask);
        canvas.resize({960, 540});
        driver.draw("step 1");
        EXPECT_EQ(show(), "step 1, by rows") << version;
        driver.draw("step 2");
        EXPECT_EQ(show(), "step 2, by rows") << version;
    }
}

TEST_F(CanvasTest, GoesToAWindowWithoutAlphaRowByRowWithMesa22) {
    driver.renderer = "llvmpipe (LLVM 15.0.6, 256 bits)";
    driver.alphaBits = 0;
    canvas.load(ask, ask);
    canvas.resize({960, 540});
    driver.draw("step 1");
    EXPECT_EQ(show(), "step 1, by rows");
}

TEST_F(CanvasTest, GoesToTheWindowAtOnceWhereRowsAreNoQuickerToCopy) {
    for (const char* const missing : {"", "glGetIntegerv"}) {
        driver = Driver();
        driver.renderer = "llvmpipe (LLVM 19.1.7, 256 bits)";
        driver.version = "4.5 (Compatibility Profile) Mesa 25.0.7-2";
        driver.alphaBits = missing[0] == 0 ? 0 : 8;
        driver.missing = missing;
        canvas = Canvas();
        canvas.load(ask, ask);
        canvas.resize({960, 540});
        driver.draw("step 1");
        EXPECT_EQ(show(), "step 1") << missing;
    }
}

TEST_F(CanvasTest, GoesToTheWindowOfAGraphicsCardAtOnce) {
    canvas.load(ask, ask);
    canvas.resize({960, 540});
    driver.draw("step 1");
    EXPECT_EQ(show(), "step 1");
}

TEST_F(CanvasTest, LeavesNoTextureBound) {
    canvas.load(ask, ask);
    canvas.resize({960, 540});
    canvas.keep();
    EXPECT_EQ(driver.boundTexture, 0u);
}

TEST_F(CanvasTest, ShowsTheLastPictureAgainWhenNothingWasDrawn) {
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    driver.draw("step 1");
    show();
    EXPECT_EQ(show(), "step 1");
    EXPECT_EQ(show(), "step 1");
    driver.draw("step 2");
    EXPECT_EQ(show(), "step 2");
}

TEST_F(CanvasTest, IsClearBeforeAnythingWasDrawn) {
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    EXPECT_EQ(show(), "clear");
}

TEST_F(CanvasTest, DrawsToTheWindowUntilItHasASize) {
    canvas.load(ask, ask);
    driver.draw("step 1");
    EXPECT_EQ(show(), "step 1");
}

TEST_F(CanvasTest, KeepsTheLastPictureWhenTheWindowChangesItsSize) {
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    driver.draw("step 1");
    canvas.load(ask, ask);
    canvas.resize({960, 540});
    EXPECT_EQ(show(), "step 1, stretched");
}

TEST_F(CanvasTest, FreesThePictureOfTheOldSize) {
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    canvas.load(ask, ask);
    canvas.resize({960, 540});
    EXPECT_EQ(driver.sizes.size(), 2u); // colour and depth
    for (const auto& [name, size] : driver.sizes) {
        EXPECT_EQ(size.width, 960u) << name;
        EXPECT_EQ(size.height, 540u) << name;
    }
    driver.pictures.erase(0);
    EXPECT_EQ(driver.pictures.size(), 1u);
}

TEST_F(CanvasTest, KeepsWhatItHasForTheSameSize) {
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    const GLuint names = driver.lastName;
    canvas.resize({1920, 1080});
    EXPECT_EQ(driver.lastName, names);
}

TEST_F(CanvasTest, BringsBackWhatWasKept) {
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    driver.draw("backdrop");
    canvas.keep();
    driver.draw("step 1");
    EXPECT_TRUE(canvas.bringBack());
    EXPECT_EQ(show(), "backdrop");
    driver.draw("another backdrop");
    canvas.keep();
    driver.draw("step 2");
    EXPECT_TRUE(canvas.bringBack());
    EXPECT_EQ(show(), "another backdrop");
}

TEST_F(CanvasTest, BringsNothingBackBeforeAnythingWasKept) {
    canvas.keep(); // without a picture
    EXPECT_FALSE(canvas.bringBack());
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    driver.draw("step 1");
    EXPECT_FALSE(canvas.bringBack());
    EXPECT_EQ(show(), "step 1");
}

TEST_F(CanvasTest, ForgetsWhatWasKeptInAnotherSize) {
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    canvas.keep();
    canvas.resize({960, 540});
    EXPECT_FALSE(canvas.bringBack());
    EXPECT_EQ(driver.sizes.size(), 2u) << "colour and depth of the new picture";
}

TEST_F(CanvasTest, KeepsNoDepths) {
    canvas.load(ask, ask);
    canvas.resize({1920, 1080});
    canvas.keep();
    canvas.keep();
    EXPECT_EQ(driver.sizes.size(), 3u);
}

TEST_F(CanvasTest, NamesWhatTheDriverLacks) {
    driver.missing = "glBlitNamedFramebuffer";
    try {
        canvas.load(ask, ask);
        FAIL() << "a missing function was accepted";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("glBlitNamedFramebuffer"));
    }
}

} // namespace
} // namespace dunkman::platform
