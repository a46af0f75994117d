#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "render/gl.h"
#include "render/sampler.h"
#include "render/texture.h"
#include "render/view.h"

namespace dunkman {

// What a uniform of a GL_TEXTURE_2D value refers to; neither is owned.
struct SampledTexture {
    const Texture2D* texture;
    const Sampler* sampler;
};

// A value for a uniform or a storage block: its GL type and as many bytes as that type needs.
class UniformValue {
public:
    UniformValue() = default; // unset
    template <typename Value>
    requires(!std::is_pointer_v<Value>) explicit UniformValue(const Value& value) { set(value); }

    // The buffer to bind to a storage block; not owned.
    explicit UniformValue(const HandleBase* buffer) { set(buffer); }

    // The GL type of what a uniform can be set to; for anything else there is none.
    static constexpr GLenum typeOf(float) { return GL_FLOAT; }
    static constexpr GLenum typeOf(const std::array<float, 2>&) { return GL_FLOAT_VEC2; }
    static constexpr GLenum typeOf(const std::array<float, 3>&) { return GL_FLOAT_VEC3; }
    static constexpr GLenum typeOf(const std::array<float, 4>&) { return GL_FLOAT_VEC4; }
    static constexpr GLenum typeOf(const Matrix4&) { return GL_FLOAT_MAT4; }
    static constexpr GLenum typeOf(std::uint32_t) { return GL_UNSIGNED_INT; }
    static constexpr GLenum typeOf(const SampledTexture&) { return GL_TEXTURE_2D; }
    static constexpr GLenum typeOf(const HandleBase*) { return GL_SHADER_STORAGE_BUFFER; }
    template <typename Value> static constexpr GLenum typeOf(const Value&) = delete;

    // Takes as many bytes as the value has and leaves the others: what is set over and over is not copied whole.
    template <typename Value> void set(const Value& value) {
        static_assert(std::is_trivially_copyable_v<Value> && sizeof(Value) <= sizeof(payload));
        valueType = typeOf(value);
        std::memcpy(payload.data(), &value, sizeof(Value));
    }

    // 0: never set.
    std::uint32_t type() const { return valueType; }

    // The payload as one of the types above.
    template <typename Value> Value as() const {
        Value value;
        std::memcpy(&value, payload.data(), sizeof(Value));
        return value;
    }

private:
    // Room for the largest type, a 4 x 4 matrix; copied in and out byte by byte.
    std::array<float, 16> payload{};
    std::uint32_t valueType = 0;
};

} // namespace dunkman
