#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dunkman::simulated {

// A uniform or storage block as a shader text declares it.
struct ShaderDeclaration {
    std::string name; // of an array: with "[0]" behind it, as drivers report it
    std::uint32_t type =
        0; // GL type, or GL_SHADER_STORAGE_BUFFER; 0: a type that the simulation does not know
    std::int32_t binding = 0;
    std::int32_t arraySize = 1;
};

// Finds the declarations `uniform TYPE name;` and `buffer NAME {` of an expanded shader text, in its order. Reads the
// plain words of the text and leaves comments out, but knows nothing of macros.
std::vector<ShaderDeclaration> scanShader(std::string_view text);

} // namespace dunkman::simulated
