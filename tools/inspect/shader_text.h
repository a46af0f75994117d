#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/inspect/faults.h"

namespace dunkman::inspect {

struct ShaderInclude {
    std::size_t offset = 0; // of the directive
    std::size_t end = 0;    // behind its closing quote
    std::string file;       // that it names, from the current directory
};

// What the shader preprocessor finds in one file.
struct ShaderText {
    std::string path;
    std::string text;
    std::vector<ShaderInclude> includes;
    std::optional<std::size_t> openComment; // without an end; nothing behind it counts
    std::optional<std::size_t> openInclude; // without its closing quote

    Spot spotAt(std::size_t offset) const;
};

ShaderText scanShader(const std::string& path, std::string text);

// The text with the file and line in a comment at the end of nearly each line: "//@drawable_basic.vert:12".
std::string withMarkedLines(const ShaderText& shader);

inline constexpr std::string_view lineMark = "//@";

} // namespace dunkman::inspect
