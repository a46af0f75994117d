#include "tests/fakes/recording_gl.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/frame_state_writer.h"
#include "render/gl.h"
#include "render/image_table.h"
#include "render/renderer.h"

namespace dunkman {
namespace {

RecordingGl* active = nullptr;

constexpr std::pair<GLenum, std::string_view> constantNames[] = {
#define GL_CONSTANT(name, value) {name, #name},
#define GL_OPAQUE_TYPE(name, value) {name, #name},
#include "render/gl_constants.inc"
#undef GL_OPAQUE_TYPE
#undef GL_CONSTANT
};

// Small numbers stand for many things; from here on a constant is told from a name or a count.
constexpr GLenum lowestNamedConstant = 0x0100;

// The first elements of an array argument.
template <typename Element> struct Elements {
    const Element* data;
    int count;
};

struct Text {
    std::string_view characters;
};

template <typename Number> std::string numberText(Number number) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), result.ptr};
}

std::string textOf(const Text& text) { return '"' + std::string(text.characters) + '"'; }
std::string textOf(const void* pointer) { return pointer == nullptr ? "null" : "*"; }
std::string textOf(GLint number) { return numberText(number); }
std::string textOf(GLfloat number) { return numberText(number); }
std::string textOf(GLboolean flag) { return flag == 0 ? "GL_FALSE" : "GL_TRUE"; }
std::string textOf(GLintptr number) { return numberText(number); }

std::string textOf(GLuint number) {
    const auto* const named = std::find_if(std::begin(constantNames), std::end(constantNames),
                                           [number](const auto& entry) { return entry.first == number; });
    return number >= lowestNamedConstant && named != std::end(constantNames) ? std::string(named->second)
                                                                             : numberText(number);
}

template <typename Element> std::string textOf(const Elements<Element>& elements) {
    std::string text = "{";
    for (int index = 0; index < elements.count; ++index) {
        text += (index == 0 ? "" : ", ") + textOf(elements.data[index]);
    }
    return text + "}";
}

// Writes a call down: CallRecorder{"glEnable"}(capability).
struct CallRecorder {
    std::string_view function;

    template <typename... Arguments> void operator()(const Arguments&... arguments) const {
        std::string line(function);
        std::string_view separator = "(";
        ((line.append(separator).append(textOf(arguments)), separator = ", "), ...);
        line += separator == "(" ? "()" : ")";
        active->calls.push_back(std::move(line));
    }
};

#define GL_FUNCTION(result, name, parameters, arguments)                                                     \
    result name##Recorded parameters {                                                                       \
        CallRecorder{#name} arguments;                                                                       \
        return static_cast<result>(0);                                                                       \
    }
#define GL_SYSTEM_FUNCTION GL_FUNCTION
#include "render/gl_functions.inc"
#undef GL_SYSTEM_FUNCTION
#undef GL_FUNCTION

// The functions below answer something, or get data that the record should show.

GLuint createShader(GLenum type) {
    CallRecorder{"glCreateShader"}(type);
    return ++active->lastName;
}

GLuint createProgram() {
    CallRecorder{"glCreateProgram"}();
    return ++active->lastName;
}

void shaderSource(GLuint shader, GLsizei count, const GLchar* const* strings, const GLint* lengths) {
    CallRecorder{"glShaderSource"}(shader, count, Text{*strings}, lengths);
}

void getShaderiv(GLuint shader, GLenum parameter, GLint* answer) {
    CallRecorder{"glGetShaderiv"}(shader, parameter);
    *answer = active->compiles ? 1 : 0;
}

void getProgramiv(GLuint program, GLenum parameter, GLint* answer) {
    CallRecorder{"glGetProgramiv"}(program, parameter);
    *answer = (parameter == GL_LINK_STATUS ? active->links : active->validates) ? 1 : 0;
}

void copyText(const std::string& text, GLsizei size, GLchar* target) {
    const std::size_t copied = text.copy(target, static_cast<std::size_t>(size) - 1);
    target[copied] = '\0';
}

void getShaderInfoLog(GLuint shader, GLsizei size, GLsizei*, GLchar* log) {
    CallRecorder{"glGetShaderInfoLog"}(shader, size);
    copyText(active->log, size, log);
}

void getProgramInfoLog(GLuint program, GLsizei size, GLsizei*, GLchar* log) {
    CallRecorder{"glGetProgramInfoLog"}(program, size);
    copyText(active->log, size, log);
}

void getProgramInterfaceiv(GLuint program, GLenum kind, GLenum parameter, GLint* answer) {
    CallRecorder{"glGetProgramInterfaceiv"}(program, kind, parameter);
    *answer = static_cast<GLint>(kind == GL_UNIFORM ? active->uniforms.size() : active->storageBlocks.size());
}

GLint answerProperty(GLenum kind, GLuint index, GLenum property) {
    if (kind == GL_UNIFORM) {
        const FakeUniform& uniform = active->uniforms[index];
        switch (property) {
        case GL_NAME_LENGTH:
            return static_cast<GLint>(uniform.name.size() + 1);
        case GL_LOCATION:
            return uniform.location;
        case GL_TYPE:
            return static_cast<GLint>(uniform.type);
        default:
            return 1;
        }
    }
    const FakeStorageBlock& block = active->storageBlocks[index];
    return property == GL_NAME_LENGTH ? static_cast<GLint>(block.name.size() + 1) : block.binding;
}

void getProgramResourceiv(GLuint program, GLenum kind, GLuint index, GLsizei count, const GLenum* properties,
                          GLsizei, GLsizei*, GLint* answers) {
    CallRecorder{"glGetProgramResourceiv"}(program, kind, index, Elements<GLenum>{properties, count});
    for (GLsizei property = 0; property < count; ++property) {
        answers[property] = answerProperty(kind, index, properties[property]);
    }
}

void getProgramResourceName(GLuint program, GLenum kind, GLuint index, GLsizei size, GLsizei*, GLchar* name) {
    CallRecorder{"glGetProgramResourceName"}(program, kind, index, size);
    copyText(kind == GL_UNIFORM ? active->uniforms[index].name : active->storageBlocks[index].name, size,
             name);
}

void getUniformiv(GLuint program, GLint location, GLint* answer) {
    CallRecorder{"glGetUniformiv"}(program, location);
    for (const FakeUniform& uniform : active->uniforms) {
        if (uniform.location == location) {
            *answer = uniform.unit;
        }
    }
}

template <int Count> void uniformFloats(GLint location, GLsizei count, const GLfloat* value) {
    CallRecorder{"glUniform" + std::string(1, static_cast<char>('0' + Count)) +
                 "fv"}(location, count, Elements<GLfloat>{value, Count});
}

void uniformMatrix(GLint location, GLsizei count, GLboolean transpose, const GLfloat* value) {
    CallRecorder{"glUniformMatrix4fv"}(location, count, transpose, Elements<GLfloat>{value, 16});
}

void uniformUnsigned(GLint location, GLsizei count, const GLuint* value) {
    CallRecorder{"glUniform1uiv"}(location, count, Elements<GLuint>{value, 1});
}

void createTextures(GLenum target, GLsizei count, GLuint* names) {
    CallRecorder{"glCreateTextures"}(target, count);
    *names = ++active->lastName;
}

void createSamplers(GLsizei count, GLuint* names) {
    CallRecorder{"glCreateSamplers"}(count);
    *names = ++active->lastName;
}

void createVertexArrays(GLsizei count, GLuint* names) {
    CallRecorder{"glCreateVertexArrays"}(count);
    *names = ++active->lastName;
}

void samplerParameteri(GLuint sampler, GLenum parameter, GLint value) {
    CallRecorder{"glSamplerParameteri"}(sampler, parameter, static_cast<GLenum>(value));
}

// Of the texels the first byte is written down, which tells the levels of a test's picture apart.
void compressedTextureSubImage(GLuint texture, GLint level, GLint x, GLint y, GLsizei width, GLsizei height,
                               GLenum format, GLsizei bytes, const void* data) {
    const GLint first = *static_cast<const unsigned char*>(data);
    CallRecorder{"glCompressedTextureSubImage2D"}(texture, level, x, y, width, height, format, bytes,
                                                  Elements<GLint>{&first, 1});
}

void deleteTextures(GLsizei count, const GLuint* names) {
    CallRecorder{"glDeleteTextures"}(count, Elements<GLuint>{names, count});
}

void deleteSamplers(GLsizei count, const GLuint* names) {
    CallRecorder{"glDeleteSamplers"}(count, Elements<GLuint>{names, count});
}

void deleteVertexArrays(GLsizei count, const GLuint* names) {
    CallRecorder{"glDeleteVertexArrays"}(count, Elements<GLuint>{names, count});
}

void resetRenderState() {
    resetRenderer();
    writable::frameState = {};
}

} // namespace

RecordingGl::RecordingGl() {
    resetRenderState();
    active = this;
#define GL_FUNCTION(result, name, parameters, arguments) name = name##Recorded;
#define GL_SYSTEM_FUNCTION GL_FUNCTION
#include "render/gl_functions.inc"
#undef GL_SYSTEM_FUNCTION
#undef GL_FUNCTION
    glCreateShader = createShader;
    glCreateProgram = createProgram;
    glShaderSource = shaderSource;
    glGetShaderiv = getShaderiv;
    glGetProgramiv = getProgramiv;
    glGetShaderInfoLog = getShaderInfoLog;
    glGetProgramInfoLog = getProgramInfoLog;
    glGetProgramInterfaceiv = getProgramInterfaceiv;
    glGetProgramResourceiv = getProgramResourceiv;
    glGetProgramResourceName = getProgramResourceName;
    glGetUniformiv = getUniformiv;
    glUniform1fv = uniformFloats<1>;
    glUniform2fv = uniformFloats<2>;
    glUniform3fv = uniformFloats<3>;
    glUniform4fv = uniformFloats<4>;
    glUniformMatrix4fv = uniformMatrix;
    glUniform1uiv = uniformUnsigned;
    glCreateTextures = createTextures;
    glCreateSamplers = createSamplers;
    glCreateVertexArrays = createVertexArrays;
    glSamplerParameteri = samplerParameteri;
    glCompressedTextureSubImage2D = compressedTextureSubImage;
    glDeleteTextures = deleteTextures;
    glDeleteSamplers = deleteSamplers;
    glDeleteVertexArrays = deleteVertexArrays;
}

RecordingGl::~RecordingGl() {
    resetRenderState();
    active = nullptr;
}

std::vector<std::string> RecordingGl::takeCalls() { return std::exchange(calls, {}); }

} // namespace dunkman
