#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

// Expansion of `#include "` in shader sources.
namespace dunkman {

// The whole file, byte for byte. A file that cannot be opened is a debugBreak that names it; when the developer goes
// on from there, the text is empty.
std::string readTextFile(const std::string& path);

// The file's text with every include directive replaced by the expanded text of the file it names, which is looked
// up in the folder of the including file. A directive is exactly `#include "` up to the next quote, anywhere outside
// comments; comments stay. Stops the game with a message that names the file at an unclosed comment, a directive
// without closing quote, an include cycle, or when the result grows past maxExpandedShaderBytes.
std::string preprocessShaderFile(const std::string& path);

inline constexpr std::size_t maxExpandedShaderBytes = 1u << 20u;

// Expanded texts of one preprocessing run, by path as formed: including file, backslash, two dots, backslash, name.
using IncludeCache = std::unordered_map<std::string, std::string>;

// Gives the text of a file; the path is reduced (see reducedIncludePath).
using TextFileReader = std::function<std::string(const std::string& path)>;

// preprocessShaderFile with another source of files.
std::string expandIncludes(const std::string& path, IncludeCache& cache, const TextFileReader& readFile);

// A path as formed by nested includes, reduced by its letters alone, since only Windows drops a file name that is
// followed by a parent-directory step: "shaders\a.vert\..\b.glsl" is "shaders/b.glsl".
std::string reducedIncludePath(std::string_view formedPath);

} // namespace dunkman
