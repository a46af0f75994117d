#include "platform/simulated/shader_scan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "render/gl.h"

namespace dunkman::simulated {
namespace {

constexpr std::array<std::pair<std::string_view, GLenum>, 10> typeNames = {{
    {"float", GL_FLOAT},
    {"vec2", GL_FLOAT_VEC2},
    {"vec3", GL_FLOAT_VEC3},
    {"vec4", GL_FLOAT_VEC4},
    {"mat4", GL_FLOAT_MAT4},
    {"uint", GL_UNSIGNED_INT},
    {"int", GL_INT},
    {"sampler2D", GL_SAMPLER_2D},
    {"sampler2DArray", GL_SAMPLER_2D_ARRAY},
    {"image2D", GL_IMAGE_2D},
}};

GLenum typeByName(std::string_view name) {
    const auto found = std::find_if(typeNames.begin(), typeNames.end(),
                                    [name](const auto& entry) { return entry.first == name; });
    return found == typeNames.end() ? 0 : found->second;
}

bool isWordCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '_';
}

// Words and single punctuation characters, without spaces and comments.
std::vector<std::string_view> tokensOf(std::string_view text) {
    std::vector<std::string_view> tokens;
    std::size_t cursor = 0;
    while (cursor < text.size()) {
        if (text.substr(cursor, 2) == "//") {
            cursor = std::min(text.find_first_of("\r\n", cursor), text.size());
        } else if (text.substr(cursor, 2) == "/*") {
            const std::size_t end = text.find("*/", cursor + 2);
            cursor = end == std::string_view::npos ? text.size() : end + 2;
        } else if (isWordCharacter(text[cursor])) {
            std::size_t end = cursor;
            while (end < text.size() && isWordCharacter(text[end])) {
                ++end;
            }
            tokens.push_back(text.substr(cursor, end - cursor));
            cursor = end;
        } else {
            if (std::string_view(" \t\r\n").find(text[cursor]) == std::string_view::npos) {
                tokens.push_back(text.substr(cursor, 1));
            }
            ++cursor;
        }
    }
    return tokens;
}

class Scanner {
public:
    explicit Scanner(std::string_view text) : tokens(tokensOf(text)) {}

    std::vector<ShaderDeclaration> run() {
        while (position < tokens.size()) {
            const std::string_view token = next();
            if (token == "binding" && peek() == "=") {
                next();
                binding = numberOf(next());
            } else if (token == "uniform") {
                scanUniforms();
            } else if (token == "buffer") {
                declarations.push_back({std::string(next()), GL_SHADER_STORAGE_BUFFER, binding, 1});
            } else if (token == ";" || token == "{") {
                binding = 0;
            }
        }
        return std::move(declarations);
    }

private:
    std::string_view peek() const { return position < tokens.size() ? tokens[position] : std::string_view(); }
    std::string_view next() { return position < tokens.size() ? tokens[position++] : std::string_view(); }

    static std::int32_t numberOf(std::string_view digits) {
        std::int32_t number = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
        return number;
    }

    // What follows `uniform`: a type, then names up to the semicolon. A block has a brace there and is left alone.
    void scanUniforms() {
        while (peek() == "highp" || peek() == "mediump" || peek() == "lowp") {
            next();
        }
        const GLenum type = typeByName(next());
        while (!peek().empty() && isWordCharacter(peek().front())) {
            ShaderDeclaration declaration{std::string(next()), type, binding, 1};
            if (peek() == "[") {
                next();
                declaration.arraySize = numberOf(next());
                declaration.name += "[0]";
                next();
            }
            declarations.push_back(std::move(declaration));
            if (peek() == ",") {
                next();
            }
        }
    }

    std::vector<std::string_view> tokens;
    std::size_t position = 0;
    std::int32_t binding = 0; // of the layout that stands before the declaration at hand
    std::vector<ShaderDeclaration> declarations;
};

} // namespace

std::vector<ShaderDeclaration> scanShader(std::string_view text) { return Scanner(text).run(); }

} // namespace dunkman::simulated
