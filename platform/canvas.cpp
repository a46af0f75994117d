#include "platform/canvas.h"

#include "platform/software_gl.h"

namespace dunkman::platform {

namespace {

// Values of the OpenGL registry that nothing but the canvas uses.
constexpr GLenum framebufferTarget = 0x8D40;  // GL_FRAMEBUFFER
constexpr GLenum renderbufferTarget = 0x8D41; // GL_RENDERBUFFER
constexpr GLenum colourAttachment = 0x8CE0;   // GL_COLOR_ATTACHMENT0
constexpr GLenum depthAttachment = 0x8D00;    // GL_DEPTH_ATTACHMENT
constexpr GLenum colourFormat = 0x1908;       // GL_RGBA
constexpr GLenum colourOrder = 0x80E1;        // GL_BGRA
constexpr GLenum depthFormat = 0x81A6;        // GL_DEPTH_COMPONENT24, as a window's depth buffer has it
constexpr GLenum nearest = 0x2600;            // GL_NEAREST

template <typename Function>
void load(Function*& pointer, const char* name, GlLookup driver, GlLookup systemLibrary) {
    const GlFunction answer = driver(name);
    if (isMissingGlFunction(reinterpret_cast<std::intptr_t>(answer))) {
        refuseDriver(name, systemLibrary);
    }
    pointer = reinterpret_cast<Function*>(answer);
}

GLsizei widthOf(const ClientSize& size) { return static_cast<GLsizei>(size.width); }
GLsizei heightOf(const ClientSize& size) { return static_cast<GLsizei>(size.height); }

} // namespace

void Canvas::load(GlLookup driver, GlLookup systemLibrary) {
    platform::load(gl.createFramebuffers, "glCreateFramebuffers", driver, systemLibrary);
    platform::load(gl.deleteFramebuffers, "glDeleteFramebuffers", driver, systemLibrary);
    platform::load(gl.createRenderbuffers, "glCreateRenderbuffers", driver, systemLibrary);
    platform::load(gl.deleteRenderbuffers, "glDeleteRenderbuffers", driver, systemLibrary);
    platform::load(gl.namedRenderbufferStorage, "glNamedRenderbufferStorage", driver, systemLibrary);
    platform::load(gl.texImage2D, "glTexImage2D", systemLibrary, systemLibrary);
    platform::load(gl.namedFramebufferRenderbuffer, "glNamedFramebufferRenderbuffer", driver, systemLibrary);
    platform::load(gl.namedFramebufferTexture, "glNamedFramebufferTexture", driver, systemLibrary);
    platform::load(gl.bindFramebuffer, "glBindFramebuffer", driver, systemLibrary);
    platform::load(gl.blitNamedFramebuffer, "glBlitNamedFramebuffer", driver, systemLibrary);
    copiesByRows = copiesRowsAsMemory(systemLibrary);
}

void Canvas::resize(const ClientSize& size) {
    if (size.width == picture.size.width && size.height == picture.size.height) {
        return;
    }
    const Picture last = picture;
    picture = makePicture(size);
    release(kept);
    kept = {};
    gl.bindFramebuffer(framebufferTarget, picture.framebuffer);
    if (last.framebuffer == 0) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        return;
    }
    copy(last, picture.framebuffer, size);
    release(last);
}

void Canvas::present() const {
    if (picture.framebuffer == 0) {
        return;
    }
    // With the window as the target of drawing and a viewport set for it: some drivers look only then whether the window
    // has another size by now, and go on showing the old picture otherwise.
    gl.bindFramebuffer(framebufferTarget, 0);
    glViewport(0, 0, widthOf(picture.size), heightOf(picture.size));
    if (copiesByRows) {
        copyRowsToWindow();
    } else {
        copy(picture, 0, picture.size);
    }
    gl.bindFramebuffer(framebufferTarget, picture.framebuffer);
}

void Canvas::keep() {
    if (picture.framebuffer == 0) {
        return;
    }
    if (kept.framebuffer == 0) {
        kept = makeColours(picture.size);
    }
    copy(picture, kept.framebuffer, kept.size);
}

bool Canvas::bringBack() const {
    if (kept.framebuffer == 0) {
        return false;
    }
    copy(kept, picture.framebuffer, picture.size);
    return true;
}

// A texture and not a renderbuffer, and of no certain format: only so can the order of its colours be asked for, which is
// that of windows.
Canvas::Picture Canvas::makeColours(const ClientSize& size) const {
    Picture made;
    made.size = size;
    glCreateTextures(GL_TEXTURE_2D, 1, &made.colour);
    glBindTextureUnit(0, made.colour); // the active one: nothing in the game makes another so
    gl.texImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(colourFormat), widthOf(size), heightOf(size), 0,
                  colourOrder, GL_UNSIGNED_BYTE, nullptr);
    glBindTextureUnit(0, 0);
    gl.createFramebuffers(1, &made.framebuffer);
    gl.namedFramebufferTexture(made.framebuffer, colourAttachment, made.colour, 0);
    return made;
}

Canvas::Picture Canvas::makePicture(const ClientSize& size) const {
    Picture made = makeColours(size);
    gl.createRenderbuffers(1, &made.depth);
    gl.namedRenderbufferStorage(made.depth, depthFormat, widthOf(size), heightOf(size));
    gl.namedFramebufferRenderbuffer(made.framebuffer, depthAttachment, renderbufferTarget, made.depth);
    return made;
}

void Canvas::copy(const Picture& from, GLuint to, const ClientSize& toSize) const {
    gl.blitNamedFramebuffer(from.framebuffer, to, 0, 0, widthOf(from.size), heightOf(from.size), 0, 0,
                            widthOf(toSize), heightOf(toSize), GL_COLOR_BUFFER_BIT, nearest);
}

// Mesa 22 copies what it need not turn around as memory and draws all else as a picture, which takes eight times as long. A
// window's rows run downwards there and the canvas's upwards, but a single row turned around stays what it is.
void Canvas::copyRowsToWindow() const {
    for (GLint row = 0; row < heightOf(picture.size); ++row) {
        gl.blitNamedFramebuffer(picture.framebuffer, 0, 0, row, widthOf(picture.size), row + 1, 0, row + 1,
                                widthOf(picture.size), row, GL_COLOR_BUFFER_BIT, nearest);
    }
}

void Canvas::release(const Picture& unused) const {
    // OpenGL passes over the name 0.
    gl.deleteFramebuffers(1, &unused.framebuffer);
    glDeleteTextures(1, &unused.colour);
    gl.deleteRenderbuffers(1, &unused.depth);
}

} // namespace dunkman::platform
