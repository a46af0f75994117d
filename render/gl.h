#pragma once

#include <cstddef>
#include <cstdint>

// OpenGL as far as the renderer uses it: types, constants and one process-wide pointer for each entry point, named
// after it. Everything is expanded from two lists written by tools/generate_gl_loader.py; no system header takes
// part. Calls are made on the thread that owns the context, after the pointers were loaded (gl_loader.h).
namespace dunkman {

using GLenum = std::uint32_t;
using GLbitfield = std::uint32_t;
using GLboolean = std::uint8_t;
using GLint = std::int32_t;
using GLuint = std::uint32_t;
using GLsizei = std::int32_t;
using GLfloat = float;
using GLchar = char;
using GLintptr = std::ptrdiff_t;

#define GL_CONSTANT(name, value) inline constexpr GLenum name = value;
#define GL_OPAQUE_TYPE(name, value) inline constexpr GLenum name = value;
#include "render/gl_constants.inc"
#undef GL_CONSTANT
#undef GL_OPAQUE_TYPE

#define GL_FUNCTION(result, name, parameters, arguments) extern result(*name) parameters;
#define GL_SYSTEM_FUNCTION GL_FUNCTION
#include "render/gl_functions.inc"
#undef GL_SYSTEM_FUNCTION
#undef GL_FUNCTION

// Makes every pointer null again, for tests.
void resetGlFunctions();

} // namespace dunkman
