#include "tools/inspect/shader_text.h"

#include <algorithm>
#include <utility>

#include "render/shader_preprocessor.h"

namespace dunkman::inspect {

Spot ShaderText::spotAt(std::size_t offset) const {
    const std::string_view before = std::string_view(text).substr(0, offset);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    return {path, static_cast<std::size_t>(line), before.size() - (before.rfind('\n') + 1) + 1};
}

ShaderText scanShader(const std::string& path, std::string text) {
    constexpr std::string_view directive = "#include \"";
    ShaderText shader{path, std::move(text), {}, {}, {}};
    const std::string_view view = shader.text;
    std::size_t cursor = 0;
    while (cursor < view.size()) {
        const std::string_view rest = view.substr(cursor);
        if (rest.starts_with("/*")) {
            const std::size_t end = view.find("*/", cursor + 2);
            if (end == std::string_view::npos) {
                shader.openComment = cursor;
                break;
            }
            cursor = end + 2;
        } else if (rest.starts_with("//")) {
            cursor = view.find_first_of("\n\r", cursor + 2);
        } else if (rest.starts_with(directive)) {
            const std::size_t nameStart = cursor + directive.size();
            const std::size_t nameEnd = view.find('"', nameStart);
            if (nameEnd == std::string_view::npos) {
                shader.openInclude = cursor;
                break;
            }
            std::string formedPath = path + "\\..\\";
            formedPath += view.substr(nameStart, nameEnd - nameStart);
            shader.includes.push_back({cursor, nameEnd + 1, reducedIncludePath(formedPath)});
            cursor = nameEnd + 1;
        } else {
            ++cursor;
        }
    }
    return shader;
}

namespace {

bool isInInclude(const ShaderText& shader, std::size_t offset) {
    return std::any_of(
        shader.includes.begin(), shader.includes.end(),
        [offset](const ShaderInclude& include) { return include.offset < offset && offset < include.end; });
}

} // namespace

std::string withMarkedLines(const ShaderText& shader) {
    std::string marked;
    std::size_t number = 0;
    std::size_t start = 0;
    while (start < shader.text.size()) {
        const std::size_t end = shader.text.find('\n', start);
        std::string_view line = std::string_view(shader.text).substr(start, end - start);
        ++number;
        const bool isLast = end == std::string::npos; // what follows the include may follow it in its line
        const std::string_view ending = line.ends_with('\r') ? "\r\n" : "\n";
        line.remove_suffix(ending.size() - 1);
        marked += line;
        if (isLast) {
            break;
        }
        // Compilers are particular about what follows a directive; a line that ends in \ goes on in the next one.
        // A mark must not become part of a name that goes over lines.
        if (!line.starts_with('#') && !line.ends_with('\\') && !isInInclude(shader, end)) {
            marked += std::string(lineMark) + shader.path + ':' + std::to_string(number);
        }
        marked += ending;
        start = end + 1;
    }
    return marked;
}

} // namespace dunkman::inspect
