#include "render/mesh.h"

#include "render/gl.h"

namespace dunkman {

void Mesh::draw() const {
    glBindVertexArray(name);
    if (indexType == 0) {
        glDrawArrays(mode, 0, static_cast<GLsizei>(count));
    } else {
        glDrawElements(mode, static_cast<GLsizei>(count), indexType, nullptr);
    }
    glBindVertexArray(0);
}

void Mesh::release() {
    glDeleteVertexArrays(1, &name);
    name = 0;
}

Mesh makeQuadMesh() {
    Mesh quad;
    glCreateVertexArrays(1, &quad.name);
    quad.mode = GL_TRIANGLE_STRIP;
    quad.count = 4;
    return quad;
}

} // namespace dunkman
