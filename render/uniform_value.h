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
    explicit UniformValue(float value) : UniformValue(GL_FLOAT, value) {}
    explicit UniformValue(const std::array<float, 2>& value) : UniformValue(GL_FLOAT_VEC2, value) {}
    explicit UniformValue(const std::array<float, 3>& value) : UniformValue(GL_FLOAT_VEC3, value) {}
    explicit UniformValue(const std::array<float, 4>& value) : UniformValue(GL_FLOAT_VEC4, value) {}
    explicit UniformValue(const Matrix4& value) : UniformValue(GL_FLOAT_MAT4, value) {}
    explicit UniformValue(std::uint32_t value) : UniformValue(GL_UNSIGNED_INT, value) {}
    explicit UniformValue(const SampledTexture& value) : UniformValue(GL_TEXTURE_2D, value) {}

    // The buffer to bind to a storage block; not owned.
    explicit UniformValue(const HandleBase* buffer) : UniformValue(GL_SHADER_STORAGE_BUFFER, buffer) {}

    // 0: never set.
    std::uint32_t type() const { return valueType; }

    // The payload as floats, for the floating-point types.
    const float* floats() const { return payload.data(); }

    // The payload as any other of the types above.
    template <typename Value> Value as() const {
        Value value;
        std::memcpy(&value, payload.data(), sizeof(Value));
        return value;
    }

private:
    template <typename Value> UniformValue(std::uint32_t glType, const Value& value) : valueType(glType) {
        static_assert(std::is_trivially_copyable_v<Value> && sizeof(Value) <= sizeof(payload));
        std::memcpy(payload.data(), &value, sizeof(Value));
    }

    // Room for the largest type, a 4 x 4 matrix; copied in and out byte by byte.
    std::array<float, 16> payload{};
    std::uint32_t valueType = 0;
};

} // namespace dunkman
