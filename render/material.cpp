#include "render/material.h"

#include <string>

#include "base/fatal.h"
#include "render/binding_state_writer.h"
#include "render/gl.h"

namespace dunkman {
namespace {

// A texture fits what samples or holds a plain 2D one; anything else fits its own type.
bool isAccepted(std::uint32_t declaredType, std::uint32_t valueType) {
    if (valueType == GL_TEXTURE_2D) {
        return declaredType == GL_SAMPLER_2D || declaredType == GL_IMAGE_2D;
    }
    return declaredType == valueType;
}

void enableWhen(bool condition, GLenum capability) {
    if (condition) {
        glEnable(capability);
    } else {
        glDisable(capability);
    }
}

} // namespace

MaterialBase::MaterialBase(const ProgramBase& program) : slots(program.resources().size()) {}

bool MaterialBase::setUniform(std::string_view name, const UniformValue& value) {
    return setUniform(program().findResource(name).value_or(-1), value);
}

bool MaterialBase::setUniform(std::int32_t resourceIndex, const UniformValue& value) {
    if (resourceIndex < 0) {
        return false;
    }
    const auto index = static_cast<std::size_t>(resourceIndex);
    const ProgramResource& resource = program().resources()[index];
    if (!isAccepted(resource.type, value.type())) {
        return false;
    }
    slots[index] = value;
    if (bindingState.currentMaterial == this) {
        uploadUniform(resource, slots[index]);
    }
    return true;
}

bool MaterialBase::hasUniform(std::int32_t resourceIndex) const {
    return resourceIndex >= 0 && slots[static_cast<std::size_t>(resourceIndex)].type() != 0;
}

void MaterialBase::bind() {
    if (bindingState.currentMaterial == this) {
        return;
    }
    const ProgramBase& own = program();
    const std::vector<ProgramResource>& resources = own.resources();
    if (bindingState.currentProgram != &own) {
        glUseProgram(own.name);
        writable::bindingState.currentProgram = &own;
        writable::bindingState.currentMaterial = nullptr;
        for (const ProgramResource& resource : resources) {
            if (resource.unit != -1) {
                glUniform1i(resource.location, resource.unit);
            }
        }
    }
    writable::bindingState.currentMaterial = this;
    for (std::size_t index = 0; index < slots.size(); ++index) {
        if (slots[index].type() != 0) {
            uploadUniform(resources[index], slots[index]);
        }
    }
}

Material::Material(const Program& program)
    : MaterialBase(program), depthFunc(GL_LESS), cullFace(GL_BACK), owner(&program) {}

void Material::applyRenderState() const {
    if (depthFunc == GL_ALWAYS && !depthWrite) {
        glDisable(GL_DEPTH_TEST);
    } else {
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(depthFunc);
        glDepthMask(depthWrite ? GL_TRUE : GL_FALSE);
    }
    enableWhen(cullFace != 0, GL_CULL_FACE);
    if (cullFace != 0) {
        glCullFace(cullFace);
    }
    enableWhen(blendMode != BlendMode::None, GL_BLEND);
    switch (blendMode) {
    case BlendMode::None:
        break;
    case BlendMode::Alpha:
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        break;
    case BlendMode::Additive:
        glBlendFunc(GL_ONE, GL_ONE);
        break;
    case BlendMode::Premultiplied:
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        break;
    }
}

void uploadUniform(const ProgramResource& resource, const UniformValue& value) {
    switch (value.type()) {
    case GL_FLOAT:
        return glUniform1fv(resource.location, 1, value.floats());
    case GL_FLOAT_VEC2:
        return glUniform2fv(resource.location, 1, value.floats());
    case GL_FLOAT_VEC3:
        return glUniform3fv(resource.location, 1, value.floats());
    case GL_FLOAT_VEC4:
        return glUniform4fv(resource.location, 1, value.floats());
    case GL_FLOAT_MAT4:
        return glUniformMatrix4fv(resource.location, 1, GL_FALSE, value.floats());
    case GL_UNSIGNED_INT: {
        const auto number = value.as<GLuint>();
        return glUniform1uiv(resource.location, 1, &number);
    }
    case GL_TEXTURE_2D: {
        const auto sampled = value.as<SampledTexture>();
        const auto unit = static_cast<GLuint>(resource.unit);
        glBindTextureUnit(unit, sampled.texture->name);
        return glBindSampler(unit, sampled.sampler->name);
    }
    case GL_SHADER_STORAGE_BUFFER:
        return glBindBufferBase(GL_SHADER_STORAGE_BUFFER, static_cast<GLuint>(resource.location),
                                value.as<const HandleBase*>()->name);
    default:
        fatal("A uniform value has the OpenGL type " + std::to_string(value.type()) +
              ", which no upload exists for. This is a fault in the program.");
    }
}

} // namespace dunkman
