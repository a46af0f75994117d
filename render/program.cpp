#include "render/program.h"

#include <string>

#include "base/debug_output.h"
#include "render/binding_state_writer.h"
#include "render/gl.h"

namespace dunkman {
namespace {

constexpr GLsizei logBytes = 1024; // longer logs lose their end

using LogQuery = void (*)(GLuint name, GLsizei size, GLsizei* length, GLchar* log);

// `what` failed: the driver's log goes to the debugger, then the developer is asked in.
void reportFailure(const std::string& what, GLuint name, LogQuery queryLog) {
    std::array<GLchar, logBytes> log{};
    queryLog(name, logBytes, nullptr, log.data());
    log.back() = '\0';
    debugText(log.data());
    debugBreak(what + ":\n" + log.data());
}

struct Stage {
    GLenum type;
    const char* title;
    const std::string ShaderSourceSet::*text;
};

constexpr std::array<Stage, 5> stages = {{
    {GL_VERTEX_SHADER, "vertex", &ShaderSourceSet::vertex},
    {GL_GEOMETRY_SHADER, "geometry", &ShaderSourceSet::geometry},
    {GL_TESS_CONTROL_SHADER, "tessellation control", &ShaderSourceSet::tessellationControl},
    {GL_TESS_EVALUATION_SHADER, "tessellation evaluation", &ShaderSourceSet::tessellationEvaluation},
    {GL_FRAGMENT_SHADER, "fragment", &ShaderSourceSet::fragment},
}};

GLuint compileShader(const std::string& source, const Stage& stage, const std::string& fileName) {
    const GLuint shader = glCreateShader(stage.type);
    const GLchar* const text = source.c_str();
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint compiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled == 0) {
        reportFailure(std::string("The ") + stage.title + " shader \"" + fileName + "\" does not compile",
                      shader, glGetShaderInfoLog);
    }
    return shader;
}

std::string allFileNames(const ShaderSourceSet& fileNames) {
    std::string list;
    for (const Stage& stage : stages) {
        if (const std::string& fileName = fileNames.*stage.text; !fileName.empty()) {
            list += (list.empty() ? "\"" : ", \"") + fileName + "\"";
        }
    }
    return list;
}

void requireProgramStatus(GLuint program, GLenum status, const std::string& failure) {
    GLint succeeded = 0;
    glGetProgramiv(program, status, &succeeded);
    if (succeeded == 0) {
        reportFailure(failure, program, glGetProgramInfoLog);
    }
}

} // namespace

ProgramBase::ProgramBase() {
    indices.max_load_factor(1.0f);
    indices.rehash(8);
}

void ProgramBase::release() {
    if (bindingState.currentProgram == this) {
        glUseProgram(0);
        writable::bindingState = {};
    }
    glDeleteProgram(name);
    name = 0;
}

std::optional<std::int32_t> ProgramBase::findResource(std::string_view resourceName) const {
    const auto found = indices.find(resourceName);
    if (found == indices.end()) {
        return std::nullopt;
    }
    return found->second;
}

void ProgramBase::recordResources() {
    GLint count = 0;
    glGetProgramInterfaceiv(name, GL_UNIFORM, GL_ACTIVE_RESOURCES, &count);
    for (GLint index = 0; index < count; ++index) {
        recordUniform(static_cast<std::uint32_t>(index));
    }
    count = 0;
    glGetProgramInterfaceiv(name, GL_SHADER_STORAGE_BLOCK, GL_ACTIVE_RESOURCES, &count);
    for (GLint index = 0; index < count; ++index) {
        recordStorageBlock(static_cast<std::uint32_t>(index));
    }
}

void ProgramBase::recordUniform(std::uint32_t index) {
    constexpr std::array<GLenum, 4> asked = {GL_NAME_LENGTH, GL_LOCATION, GL_TYPE, GL_ARRAY_SIZE};
    std::array<GLint, 4> answers{};
    glGetProgramResourceiv(name, GL_UNIFORM, index, 4, asked.data(), 4, nullptr, answers.data());
    ProgramResource resource;
    resource.location = answers[1];
    resource.type = static_cast<std::uint32_t>(answers[2]);
    if (isOpaqueType(resource.type)) {
        glGetUniformiv(name, resource.location, &resource.unit);
    }
    record(GL_UNIFORM, index, answers[0], resource);
}

void ProgramBase::recordStorageBlock(std::uint32_t index) {
    constexpr std::array<GLenum, 2> asked = {GL_NAME_LENGTH, GL_BUFFER_BINDING};
    std::array<GLint, 2> answers{};
    glGetProgramResourceiv(name, GL_SHADER_STORAGE_BLOCK, index, 2, asked.data(), 2, nullptr, answers.data());
    ProgramResource resource;
    resource.location = answers[1];
    resource.type = GL_SHADER_STORAGE_BUFFER;
    record(GL_SHADER_STORAGE_BLOCK, index, answers[0], resource);
}

void ProgramBase::record(std::uint32_t kind, std::uint32_t index, std::int32_t nameLength,
                         const ProgramResource& resource) {
    // The length counts the closing NUL.
    std::string resourceName(static_cast<std::size_t>(nameLength > 0 ? nameLength : 1), '\0');
    glGetProgramResourceName(name, kind, index, static_cast<GLsizei>(resourceName.size()), nullptr,
                             resourceName.data());
    resourceName.resize(resourceName.find('\0') != std::string::npos ? resourceName.find('\0')
                                                                     : resourceName.size());
    indices[resourceName] = static_cast<std::int32_t>(records.size());
    records.push_back(resource);
}

Program::Program(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames) {
    std::vector<GLuint> shaders;
    for (const Stage& stage : stages) {
        if (const std::string& source = sources.*stage.text; !source.empty()) {
            shaders.push_back(compileShader(source, stage, fileNames.*stage.text));
        }
    }
    name = glCreateProgram();
    for (const GLuint shader : shaders) {
        glAttachShader(name, shader);
    }
    const std::string title = "The shader program of " + allFileNames(fileNames);
    glLinkProgram(name);
    requireProgramStatus(name, GL_LINK_STATUS, title + " does not link");
    glValidateProgram(name);
    requireProgramStatus(name, GL_VALIDATE_STATUS, title + " does not pass validation");
    // The shaders are kept, attached: they live as long as the process, like the program.
    recordResources();
}

bool isOpaqueType(std::uint32_t type) {
    switch (type) {
#define GL_CONSTANT(name, value)
#define GL_OPAQUE_TYPE(name, value) case name:
#include "render/gl_constants.inc"
#undef GL_OPAQUE_TYPE
#undef GL_CONSTANT
        return true;
    default:
        return false;
    }
}

} // namespace dunkman
