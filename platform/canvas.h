#pragma once

#include <cstdint>

#include "platform/platform.h"
#include "render/gl.h"
#include "render/gl_loader.h"

namespace dunkman::platform {

// The picture that the game draws into, off the screen. After a swap the window's own buffer holds nothing
// that can be relied on, and a turn of the loop in which no step is due draws nothing; so the last picture is
// kept here and copied to the window before every swap. A context must be current in every call. Main thread
// only.
class Canvas {
public:
    // Asks the driver for what a canvas needs; stops the game with a message that names what is missing. After
    // loadGlFunctions.
    // Everything is drawn straight to the window until the first resize.
    void load(GlLookup driver, GlLookup systemLibrary);

    // From now on everything is drawn into a picture of this size, both sides at least 1, to which the last
    // picture is stretched. Does nothing for the size that it has.
    void resize(const ClientSize& size);

    // Copies the picture to the window's back buffer, which the caller swaps next.
    void present() const;

    // Keeps a copy of what is drawn by now, until the size changes.
    void keep();

    // Puts the copy over all that is drawn. False, and nothing done: there is none.
    bool bringBack() const;

private:
    struct Functions {
        void (*createFramebuffers)(GLsizei count, GLuint* names) = nullptr;
        void (*deleteFramebuffers)(GLsizei count, const GLuint* names) = nullptr;
        void (*createRenderbuffers)(GLsizei count, GLuint* names) = nullptr;
        void (*deleteRenderbuffers)(GLsizei count, const GLuint* names) = nullptr;
        void (*namedRenderbufferStorage)(GLuint name, GLenum format, GLsizei width, GLsizei height) = nullptr;
        void (*texImage2D)(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                           GLint border, GLenum format, GLenum type, const void* pixels) = nullptr;
        void (*namedFramebufferTexture)(GLuint framebuffer, GLenum attachment, GLuint texture,
                                        GLint level) = nullptr;
        void (*namedFramebufferRenderbuffer)(GLuint framebuffer, GLenum attachment, GLenum target,
                                             GLuint renderbuffer) = nullptr;
        void (*bindFramebuffer)(GLenum target, GLuint name) = nullptr;
        void (*blitNamedFramebuffer)(GLuint from, GLuint to, GLint fromX0, GLint fromY0, GLint fromX1,
                                     GLint fromY1, GLint toX0, GLint toY0, GLint toX1, GLint toY1,
                                     GLbitfield mask, GLenum filter) = nullptr;
    };

    struct Picture {
        ClientSize size;        // 0 x 0: there is none
        GLuint framebuffer = 0; // 0: the window's
        GLuint colour = 0;      // a texture
        GLuint depth = 0;       // a renderbuffer; 0: it has none
    };

    Picture makeColours(const ClientSize& size) const;
    Picture makePicture(const ClientSize& size) const;
    void copy(const Picture& from, GLuint to, const ClientSize& toSize) const;
    void copyRowsToWindow() const;
    void release(const Picture& unused) const;

    Functions gl;
    bool copiesByRows = false; // to the window
    Picture picture;
    Picture kept;
};

} // namespace dunkman::platform
