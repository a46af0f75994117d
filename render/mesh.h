#pragma once

#include <cstdint>

#include "render/handle.h"

namespace dunkman {

// A vertex array and how it is drawn.
class Mesh final : public HandleBase {
public:
    std::uint32_t mode = 0;  // GL primitive
    std::uint32_t count = 0; // vertices, or indices
    std::uint32_t indexType =
        0; // 0: not indexed; else GL_UNSIGNED_BYTE, GL_UNSIGNED_SHORT or GL_UNSIGNED_INT

    // Binds the vertex array, draws it whole, unbinds it.
    void draw() const;

    void release() override;
};

// The sprite quad: a strip of four vertices without attributes or buffers, which the vertex shader places.
Mesh makeQuadMesh();

} // namespace dunkman
