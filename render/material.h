#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "render/binding_state.h"
#include "render/program.h"
#include "render/uniform_value.h"

namespace dunkman {

// Hands a value to OpenGL, for the current program.
void upload(const ProgramResource& resource, float value);
void upload(const ProgramResource& resource, const std::array<float, 2>& value);
void upload(const ProgramResource& resource, const std::array<float, 3>& value);
void upload(const ProgramResource& resource, const std::array<float, 4>& value);
void upload(const ProgramResource& resource, const Matrix4& value);
void upload(const ProgramResource& resource, std::uint32_t value);
void upload(const ProgramResource& resource, const SampledTexture& value);
void upload(const ProgramResource& resource, const HandleBase* buffer);

// The values of a program's uniforms and storage blocks, one slot for each of its resources, all unset at first.
class MaterialBase {
public:
    virtual const ProgramBase& program() const = 0;

    // Stores a value by name; uploads it at once while this material is current. False, with nothing done, for a
    // name that the program does not have and for a value of another type than the program declares.
    bool setUniform(std::string_view name, const UniformValue& value);

    // The same by the index that the program's findResource gave, for names that are set over and over. A negative
    // index stands for a name that the program does not have.
    template <typename Value> bool setUniform(std::int32_t resourceIndex, const Value& value) {
        UniformValue* const slot = slotFor(resourceIndex, UniformValue::typeOf(value));
        if (slot == nullptr) {
            return false;
        }
        slot->set(value);
        if (isCurrent()) {
            upload(resources[static_cast<std::size_t>(resourceIndex)], value);
        }
        return true;
    }

    // Whether a value was ever set at that index.
    bool hasUniform(std::int32_t resourceIndex) const;

    // Makes this material current: uses its program, gives samplers and images their units, uploads all values.
    void bind();

protected:
    explicit MaterialBase(const ProgramBase& program);
    MaterialBase(const MaterialBase&) = default;
    MaterialBase& operator=(const MaterialBase&) = default;
    ~MaterialBase() = default;

private:
    // Where a value of that GL type goes; null for a negative index and for another type than the program declares.
    UniformValue* slotFor(std::int32_t resourceIndex, GLenum valueType);
    bool isCurrent() const { return bindingState.currentMaterial == this; }

    std::span<const ProgramResource> resources; // the program's
    std::vector<UniformValue> slots;            // in the same order
};

enum class BlendMode : std::uint32_t { None = 0, Alpha = 1, Additive = 2, Premultiplied = 3 };

// A program (not owned) with its values and a fixed render state.
class Material final : public MaterialBase {
public:
    BlendMode blendMode = BlendMode::None;
    std::uint32_t depthFunc; // GL comparison
    bool depthWrite = true;
    std::uint32_t cullFace; // 0: culling off; else the GL face

    // No blending, GL_LESS, depth writes on, back faces culled.
    explicit Material(const Program& program);

    const ProgramBase& program() const override { return *owner; }

    // Tells OpenGL the render state; the values follow with bind.
    void applyRenderState() const;

private:
    const Program* owner;
};

// The same for a value that knows its type itself. One of an unknown type stops the game.
void uploadUniform(const ProgramResource& resource, const UniformValue& value);

} // namespace dunkman
