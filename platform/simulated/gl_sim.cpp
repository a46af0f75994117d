#include "platform/simulated/gl_sim.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/simulated/draw_trace.h"
#include "platform/simulated/shader_scan.h"
#include "render/gl.h"

namespace dunkman::simulated {
namespace {

struct Resource {
    ShaderDeclaration declaration;
    UniformStore value{};
};

struct LinkedProgram {
    std::string text;               // of all attached shaders
    std::vector<Resource> uniforms; // a uniform's location is its place here
    std::vector<Resource> blocks;
    TraceUniforms traced;
    std::size_t textureUnit = 0; // of the sprite's texture
};

struct State {
    GLuint lastName = 0;
    std::map<GLuint, std::string> shaders; // source texts
    std::map<GLuint, LinkedProgram> programs;
    LinkedProgram* used = nullptr;
    std::array<GLuint, 32> boundTextures{};
    bool isPictureKept = false;
};

State state;
DrawTrace drawTrace;

template <typename... Arguments> void ignore(const Arguments&...) {}

// What the game calls without ever noticing a result.
#define GL_FUNCTION(result, name, parameters, arguments)                                                     \
    result name##Ignored parameters {                                                                        \
        ignore arguments;                                                                                    \
        return static_cast<result>(0);                                                                       \
    }
#define GL_SYSTEM_FUNCTION GL_FUNCTION
#include "render/gl_functions.inc"
#undef GL_SYSTEM_FUNCTION
#undef GL_FUNCTION

GLuint newName() { return ++state.lastName; }

void newNames(GLsizei count, GLuint* names) { std::generate_n(names, count, newName); }

GLuint createShader(GLenum) { return newName(); }

void shaderSource(GLuint shader, GLsizei count, const GLchar* const* strings, const GLint*) {
    std::string& text = state.shaders[shader];
    for (GLsizei index = 0; index < count; ++index) {
        text += strings[index];
    }
}

void answerSuccess(GLuint, GLenum, GLint* parameters) { *parameters = 1; }

void answerEmptyLog(GLuint, GLsizei size, GLsizei*, GLchar* log) {
    if (size > 0) {
        *log = '\0';
    }
}

GLuint createProgram() {
    const GLuint name = newName();
    state.programs[name];
    return name;
}

void attachShader(GLuint program, GLuint shader) {
    state.programs[program].text += state.shaders[shader] + "\n";
}

void linkProgram(GLuint name) {
    LinkedProgram& program = state.programs[name];
    for (ShaderDeclaration& declaration : scanShader(program.text)) {
        auto& list = declaration.type == GL_SHADER_STORAGE_BUFFER ? program.blocks : program.uniforms;
        // Stages share what they both declare.
        const bool known = std::any_of(list.begin(), list.end(), [&](const Resource& resource) {
            return resource.declaration.name == declaration.name;
        });
        if (!known) {
            list.push_back({std::move(declaration), {}});
        }
    }
    const auto find = [&program](std::string_view uniform) -> const UniformStore* {
        for (const Resource& resource : program.uniforms) {
            if (resource.declaration.name == uniform) {
                return &resource.value;
            }
        }
        return nullptr;
    };
    for (const Resource& resource : program.uniforms) {
        if (resource.declaration.name == "uTexture") {
            program.textureUnit = static_cast<std::size_t>(resource.declaration.binding);
        }
    }
    program.traced = {
        find("uViewProjection"), find("uDestMinAndSize"),      find("uPosCosSin"), find("uMirrorFlags"),
        find("zOffset"),         find("uGammaGainSaturation"), find("uTint")};
}

void useProgram(GLuint name) { state.used = name == 0 ? nullptr : &state.programs[name]; }

void deleteProgram(GLuint name) {
    const auto found = state.programs.find(name);
    if (found != state.programs.end()) {
        state.used = state.used == &found->second ? nullptr : state.used;
        state.programs.erase(found);
    }
}

const std::vector<Resource>& resourcesOf(GLuint program, GLenum kind) {
    const LinkedProgram& linked = state.programs[program];
    return kind == GL_UNIFORM ? linked.uniforms : linked.blocks;
}

void getProgramInterfaceiv(GLuint program, GLenum kind, GLenum, GLint* parameters) {
    *parameters = static_cast<GLint>(resourcesOf(program, kind).size());
}

void getProgramResourceiv(GLuint program, GLenum kind, GLuint index, GLsizei propertyCount,
                          const GLenum* properties, GLsizei, GLsizei*, GLint* parameters) {
    const ShaderDeclaration& declaration = resourcesOf(program, kind)[index].declaration;
    for (GLsizei property = 0; property < propertyCount; ++property) {
        switch (properties[property]) {
        case GL_NAME_LENGTH:
            parameters[property] = static_cast<GLint>(declaration.name.size() + 1);
            break;
        case GL_LOCATION:
            parameters[property] = static_cast<GLint>(index);
            break;
        case GL_TYPE:
            parameters[property] = static_cast<GLint>(declaration.type);
            break;
        case GL_ARRAY_SIZE:
            parameters[property] = declaration.arraySize;
            break;
        case GL_BUFFER_BINDING:
            parameters[property] = declaration.binding;
            break;
        default:
            parameters[property] = 0;
        }
    }
}

void getProgramResourceName(GLuint program, GLenum kind, GLuint index, GLsizei size, GLsizei*, GLchar* name) {
    const std::string& text = resourcesOf(program, kind)[index].declaration.name;
    const std::size_t copied = text.copy(name, static_cast<std::size_t>(size) - 1);
    name[copied] = '\0';
}

void getUniformiv(GLuint program, GLint location, GLint* parameters) {
    *parameters = state.programs[program].uniforms[static_cast<std::size_t>(location)].declaration.binding;
}

// Where a uniform of the program in use keeps its value; null where OpenGL would refuse the call.
UniformStore* storeAt(GLint location) {
    if (state.used == nullptr || location < 0 ||
        static_cast<std::size_t>(location) >= state.used->uniforms.size()) {
        return nullptr;
    }
    return &state.used->uniforms[static_cast<std::size_t>(location)].value;
}

template <int Count> void uniformFloats(GLint location, GLsizei, const GLfloat* value) {
    if (UniformStore* const store = storeAt(location)) {
        std::copy_n(value, Count, store->floats.begin());
    }
}

void uniformUnsigned(GLint location, GLsizei, const GLuint* value) {
    if (UniformStore* const store = storeAt(location)) {
        store->number = *value;
    }
}

void uniformMatrix(GLint location, GLsizei, GLboolean, const GLfloat* value) {
    uniformFloats<16>(location, 1, value);
    if (drawTrace && state.used != nullptr && storeAt(location) == state.used->traced.viewProjection) {
        drawTrace(viewLine(state.used->traced));
    }
}

void createTextures(GLenum, GLsizei count, GLuint* names) { newNames(count, names); }

void bindTextureUnit(GLuint unit, GLuint texture) {
    if (unit < state.boundTextures.size()) {
        state.boundTextures[unit] = texture;
    }
}

void drawArrays(GLenum, GLint, GLsizei) {
    if (drawTrace && state.used != nullptr) {
        drawTrace(drawLine(state.used->traced, state.boundTextures.at(state.used->textureUnit)));
    }
}

} // namespace

void loadGlFunctions() {
#define GL_FUNCTION(result, name, parameters, arguments) name = name##Ignored;
#define GL_SYSTEM_FUNCTION GL_FUNCTION
#include "render/gl_functions.inc"
#undef GL_SYSTEM_FUNCTION
#undef GL_FUNCTION
    glCreateShader = createShader;
    glShaderSource = shaderSource;
    glGetShaderiv = answerSuccess;
    glGetProgramiv = answerSuccess;
    glGetShaderInfoLog = answerEmptyLog;
    glGetProgramInfoLog = answerEmptyLog;
    glCreateProgram = createProgram;
    glAttachShader = attachShader;
    glLinkProgram = linkProgram;
    glUseProgram = useProgram;
    glDeleteProgram = deleteProgram;
    glGetProgramInterfaceiv = getProgramInterfaceiv;
    glGetProgramResourceiv = getProgramResourceiv;
    glGetProgramResourceName = getProgramResourceName;
    glGetUniformiv = getUniformiv;
    glUniform1fv = uniformFloats<1>;
    glUniform2fv = uniformFloats<2>;
    glUniform3fv = uniformFloats<3>;
    glUniform4fv = uniformFloats<4>;
    glUniform1uiv = uniformUnsigned;
    glUniformMatrix4fv = uniformMatrix;
    glCreateTextures = createTextures;
    glCreateSamplers = newNames;
    glCreateVertexArrays = newNames;
    glBindTextureUnit = bindTextureUnit;
    glDrawArrays = drawArrays;
}

void resetGl() {
    state = State();
    forgetTextureKeys();
}

void keepPicture() { state.isPictureKept = true; }
bool bringPictureBack() { return state.isPictureKept; }

void setDrawTrace(DrawTrace trace) { drawTrace = std::move(trace); }

} // namespace dunkman::simulated
