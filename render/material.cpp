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

MaterialBase::MaterialBase(const ProgramBase& program)
    : resources(program.resources()), slots(resources.size()) {}

UniformValue* MaterialBase::slotFor(std::int32_t resourceIndex, GLenum valueType) {
    if (resourceIndex < 0) {
        return nullptr;
    }
    const auto index = static_cast<std::size_t>(resourceIndex);
    return isAccepted(resources[index].type, valueType) ? &slots[index] : nullptr;
}

bool MaterialBase::setUniform(std::string_view name, const UniformValue& value) {
    const std::int32_t resourceIndex = program().findResource(name).value_or(-1);
    UniformValue* const slot = slotFor(resourceIndex, value.type());
    if (slot == nullptr) {
        return false;
    }
    *slot = value;
    if (isCurrent()) {
        uploadUniform(resources[static_cast<std::size_t>(resourceIndex)], value);
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

void upload(const ProgramResource& resource, float value) { glUniform1fv(resource.location, 1, &value); }

void upload(const ProgramResource& resource, const std::array<float, 2>& value) {
    glUniform2fv(resource.location, 1, value.data());
}

void upload(const ProgramResource& resource, const std::array<float, 3>& value) {
    glUniform3fv(resource.location, 1, value.data());
}

void upload(const ProgramResource& resource, const std::array<float, 4>& value) {
    glUniform4fv(resource.location, 1, value.data());
}

void upload(const ProgramResource& resource, const Matrix4& value) {
    glUniformMatrix4fv(resource.location, 1, GL_FALSE, value.data());
}

void upload(const ProgramResource& resource, std::uint32_t value) {
    glUniform1uiv(resource.location, 1, &value);
}

void upload(const ProgramResource& resource, const SampledTexture& value) {
    const auto unit = static_cast<GLuint>(resource.unit);
    glBindTextureUnit(unit, value.texture->name);
    glBindSampler(unit, value.sampler->name);
}

void upload(const ProgramResource& resource, const HandleBase* buffer) {
    glBindBufferBase(GL_SHADER_STORAGE_BUFFER, static_cast<GLuint>(resource.location), buffer->name);
}

void uploadUniform(const ProgramResource& resource, const UniformValue& value) {
    switch (value.type()) {
    case GL_FLOAT:
        return upload(resource, value.as<float>());
    case GL_FLOAT_VEC2:
        return upload(resource, value.as<std::array<float, 2>>());
    case GL_FLOAT_VEC3:
        return upload(resource, value.as<std::array<float, 3>>());
    case GL_FLOAT_VEC4:
        return upload(resource, value.as<std::array<float, 4>>());
    case GL_FLOAT_MAT4:
        return upload(resource, value.as<Matrix4>());
    case GL_UNSIGNED_INT:
        return upload(resource, value.as<std::uint32_t>());
    case GL_TEXTURE_2D:
        return upload(resource, value.as<SampledTexture>());
    case GL_SHADER_STORAGE_BUFFER:
        return upload(resource, value.as<const HandleBase*>());
    default:
        fatal("A uniform value has the OpenGL type " + std::to_string(value.type()) +
              ", which no upload exists for. This is a fault in the program.");
    }
}

} // namespace dunkman
