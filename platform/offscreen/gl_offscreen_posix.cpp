#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <array>
#include <cstring>
#include <string>

#include "base/fatal.h"
#include "platform/canvas.h"
#include "platform/offscreen/offscreen.h"
#include "platform/simulated/gl_sim.h"
#include "platform/simulated/platform_sim.h"
#include "platform/software_gl.h"
#include "platform/unpacked_textures.h"
#include "render/gl.h"
#include "render/gl_loader.h"

namespace dunkman {

namespace {

// Of OpenGL, what only the tools around the game need.
constexpr GLenum glRgb = 0x1907;
constexpr GLenum glRgba = 0x1908;
constexpr GLenum glPackAlignment = 0x0D05;
constexpr GLenum glRenderer = 0x1F01;
constexpr GLenum glVersion = 0x1F02;
void (*glReadPixels)(GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, void*) = nullptr;
void (*glPixelStorei)(GLenum, GLint) = nullptr;
void (*glFinish)() = nullptr;
const unsigned char* (*glGetString)(GLenum) = nullptr;

// No window and no surface: the game draws into its canvas, as it does on Windows.
struct Screen {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
    platform::Canvas canvas;
    platform::ClientSize size;
};

Screen screen;

void require(bool succeeded, const char* what) {
    if (!succeeded) {
        fatal(std::string("There is no off-screen OpenGL here: ") + what +
              " failed. Install libegl1 and libgl1-mesa-dri.");
    }
}

void openScreen() {
    screen.display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    require(screen.display != EGL_NO_DISPLAY, "eglGetPlatformDisplay");
    require(eglInitialize(screen.display, nullptr, nullptr) == EGL_TRUE, "eglInitialize");
    require(eglBindAPI(EGL_OPENGL_API) == EGL_TRUE, "eglBindAPI");
    // Left out, the surface would be a window.
    constexpr std::array<EGLint, 5> wanted = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE,
                                              EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint configs = 0;
    require(eglChooseConfig(screen.display, wanted.data(), &config, 1, &configs) == EGL_TRUE && configs == 1,
            "eglChooseConfig");
    screen.context = eglCreateContext(screen.display, config, EGL_NO_CONTEXT, nullptr);
    require(screen.context != EGL_NO_CONTEXT, "eglCreateContext");
    require(eglMakeCurrent(screen.display, EGL_NO_SURFACE, EGL_NO_SURFACE, screen.context) == EGL_TRUE,
            "eglMakeCurrent");
    screen.size = simulated::machine.clientSize;
}

void closeScreen() {
    if (screen.display != EGL_NO_DISPLAY) {
        eglMakeCurrent(screen.display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroyContext(screen.display, screen.context);
        eglTerminate(screen.display);
    }
    screen = Screen();
}

GlFunction lookUp(const char* name) { return eglGetProcAddress(name); }

template <typename Function> void lookUpFor(Function*& pointer, const char* name) {
    pointer = reinterpret_cast<Function*>(lookUp(name));
}

} // namespace

namespace simulated {

void loadGlFunctions() {
    closeScreen();
    openScreen();
    dunkman::loadGlFunctions(lookUp, lookUp);
    platform::unpackTexturesInSoftware(lookUp, lookUp);
    platform::keepMemoryInSoftware(lookUp);
    machine.drawsInSoftware = platform::isGlDoneInSoftware(lookUp);
    screen.canvas.load(lookUp, lookUp);
    screen.canvas.resize(screen.size);
    lookUpFor(glReadPixels, "glReadPixels");
    lookUpFor(glPixelStorei, "glPixelStorei");
    lookUpFor(glFinish, "glFinish");
    lookUpFor(glGetString, "glGetString");
}

void resetGl() { closeScreen(); }

void keepPicture() { screen.canvas.keep(); }
bool bringPictureBack() { return screen.canvas.bringBack(); }

} // namespace simulated

namespace offscreen {

Picture takePicture() {
    Picture picture;
    picture.width = screen.size.width;
    picture.height = screen.size.height;
    const std::size_t row = std::size_t{3} * picture.width;
    std::vector<std::uint8_t> fromBelow(row * picture.height);
    glPixelStorei(glPackAlignment, 1);
    glReadPixels(0, 0, static_cast<GLsizei>(picture.width), static_cast<GLsizei>(picture.height), glRgb,
                 GL_UNSIGNED_BYTE, fromBelow.data());
    picture.rgb.resize(fromBelow.size());
    for (std::size_t y = 0; y < picture.height; ++y) {
        std::memcpy(&picture.rgb[y * row], &fromBelow[(picture.height - 1 - y) * row], row);
    }
    return picture;
}

void readPixelsFromBelow(std::vector<std::uint8_t>& rgba) {
    rgba.resize(std::size_t{4} * screen.size.width * screen.size.height);
    glReadPixels(0, 0, static_cast<GLsizei>(screen.size.width), static_cast<GLsizei>(screen.size.height),
                 glRgba, GL_UNSIGNED_BYTE, rgba.data());
}

void finishDrawing() { glFinish(); }

std::string driverName() {
    const auto text = [](GLenum name) {
        return std::string(reinterpret_cast<const char*>(glGetString(name)));
    };
    return text(glRenderer) + ", OpenGL " + text(glVersion);
}

} // namespace offscreen

} // namespace dunkman
